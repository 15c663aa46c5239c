/// A plot style table in words.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <platen/inspect.h>
#include <platen/plotstyle.h>

namespace cli::words {

/// "colours 1-9, 12" for ascending colour indices.
std::string coloursInWords(const std::vector<int>& colours);

/// What the style asks for beyond the settings of a fresh style; `weights` are its table's.
std::string settingsInWords(const CPlotStyle& style, const CCustomLineweightTable& weights);

/// The settings of the table and its styles, one line each.
void describeTable(const CPlotStyleTable& table, platen::FileKind kind, std::ostream& out);

}  // namespace cli::words
