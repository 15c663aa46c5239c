/// The keys of the "meta" block, in the order of the file.
#pragma once

#include <array>

#include <platen/pmp.h>
#include "pia/node_keys.h"

template <>
struct NodeKeys<CMetaNode> {
    using Node = CMetaNode;
    static constexpr auto optional = KeyPresence::Optional;

    static constexpr std::array all{
        nodeKey<&Node::userDefinedModelPathname>(L"user_defined_model_pathname"),
        nodeKey<&Node::userDefinedModelBasename>(L"user_defined_model_basename"),
        nodeKey<&Node::driverPathname>(L"driver_pathname"),
        nodeKey<&Node::driverVersion>(L"driver_version"),
        nodeKey<&Node::driverTagLine>(L"driver_tag_line"),
        nodeKey<&Node::toolkitVersion>(L"toolkit_version"),
        nodeKey<&Node::driverType>(L"driver_type"),
        nodeKey<&Node::canonicalFamilyName>(L"canonical_family_name"),
        nodeKey<&Node::showCustomFirst>(L"show_custom_first"),
        nodeKey<&Node::truetypeAsText>(L"truetype_as_text"),
        nodeKey<&Node::canonicalModelName>(L"canonical_model_name"),
        nodeKey<&Node::localizedFamilyName>(L"localized_family_name"),
        nodeKey<&Node::localizedModelName>(L"localized_model_name"),
        nodeKey<&Node::fileOnly>(L"file_only"),
        nodeKey<&Node::modelAbilities>(L"model_abilities"),
        nodeKey<&Node::udmDescription>(L"udm_description"),
        nodeKey<&Node::winDeviceName>(
            L"win_device_name",
            {.presence = optional,
             .written = [](const Node& n) { return !n.winDeviceName.empty(); }}),
        nodeKey<&Node::winDriverName>(
            L"win_driver_name",
            {.presence = optional,
             .written = [](const Node& n) { return !n.winDriverName.empty(); }}),
        nodeKey<&Node::shortNetName>(L"short_net_name", {.presence = optional}),
        nodeKey<&Node::friendlyNetName>(L"friendly_net_name", {.presence = optional}),
        nodeKey<&Node::dmDriverVersion>(
            L"dm_driver_version",
            {.presence = optional,
             .written = [](const Node& n) { return n.dmDriverVersion != 0; }}),
        nodeKey<&Node::defaultSystemCfg>(L"default_system_cfg", {.presence = optional}),
        nodeKey<&Node::platform>(
            L"platform",
            {.presence = optional, .written = [](const Node& n) { return !n.platform.empty(); }}),
        nodeKey<&Node::locale>(
            L"locale",
            {.presence = optional, .written = [](const Node& n) { return !n.locale.empty(); }}),
        nodeKey<&Node::configDescription>(
            L"config_description",
            {.presence = optional,
             .written = [](const Node& n) { return !n.configDescription.empty(); }}),
        nodeKey<&Node::configAutospool>(L"config_autospool", {.presence = optional}),
    };
};
