/// The keys of a plot style table.
#pragma once

#include <array>

#include <platen/plotstyle.h>
#include "pia/node_keys.h"

/// The table-wide settings in the order of the file.
template <>
struct NodeKeys<CPlotStyleTable> {
    using Node = CPlotStyleTable;

    static constexpr std::array all{
        nodeKey<&Node::description_>(L"description"),
        nodeKey<&Node::aciAvailable_>(L"aci_table_available"),
        nodeKey<&Node::scaleFactor_>(L"scale_factor"),
        nodeKey<&Node::applyFactor_>(L"apply_factor"),
        nodeKey<&Node::displayUnits_>(L"custom_lineweight_display_units",
                                      {.presence = KeyPresence::Optional}),
    };
};

/// The blocks that follow the settings.
struct PlotStyleTableKeys {
    static constexpr PiaKey aciTable = L"aci_table";
    static constexpr PiaKey styles = L"plot_style";
    static constexpr PiaKey lineWeights = L"custom_lineweight_table";
};
