/// The blocks of a plot configuration, in the order of the file.
#pragma once

#include <array>

#include <platen/plotcfg.h>
#include "plotcfg/custom_codec.h"
#include "plotcfg/device_keys.h"
#include "plotcfg/media_keys.h"
#include "pmp/meta_keys.h"

template <>
struct NodeKeys<CPlotCfg3> {
    using Node = CPlotCfg3;
    static constexpr std::array all{
        nodeKey<&Node::meta>(L"meta"),
        nodeKey<&Node::media>(L"media"),
        nodeKey<&Node::io>(L"io"),
        nodeKey<&Node::resColorMem>(L"res_color_mem"),
        nodeKey<&Node::custom>(L"custom", {.presence = KeyPresence::Optional}),
    };
};
