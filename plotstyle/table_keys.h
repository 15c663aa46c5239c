/// The keys of a plot style table.
#pragma once

#include <array>

#include "pia/node_keys.h"
#include "plotstyle.h"

/// The table-wide settings in the order of the file, and the blocks that follow them.
struct PlotStyleTableKeys {
    static constexpr std::array<NodeKey<CPlotStyleTable>, 5> settings{{
        {.name = L"description", .member = &CPlotStyleTable::description_},
        {.name = L"aci_table_available", .member = &CPlotStyleTable::aciAvailable_},
        {.name = L"scale_factor", .member = &CPlotStyleTable::scaleFactor_},
        {.name = L"apply_factor", .member = &CPlotStyleTable::applyFactor_},
        {.name = L"custom_lineweight_display_units",
         .member = &CPlotStyleTable::displayUnits_,
         .presence = KeyPresence::Optional},
    }};

    static constexpr PiaKey aciTable = L"aci_table";
    static constexpr PiaKey styles = L"plot_style";
    static constexpr PiaKey lineWeights = L"custom_lineweight_table";
};
