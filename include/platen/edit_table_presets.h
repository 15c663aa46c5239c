/// Tables that are made from public standards.
#pragma once

#include <span>
#include <string_view>

#include <platen/edit_result.h>
#include <platen/platen_api.h>
#include <platen/plotstyle.h>

namespace platen {

struct TablePreset {
    /// As `applyPreset` takes it.
    std::string_view name;
    /// What it gives, for a list.
    std::string_view purpose;
};

/// Those that there are:
///
/// - iso-0.13, iso-0.18, iso-0.25, iso-0.35, iso-0.5: line widths in millimetres of ISO 128-20 (and
///   the technical pens of ISO 9175-1), each wider by the square root of two: 0.13, 0.18, 0.25,
///   0.35, 0.5, 0.7, 1.0, 1.4, 2.0. Colours 1, 2, 3 ... have them in order from the one that the
///   preset is named after; other colours have that one.
/// - black: everything in black, as drawings are reproduced on paper of one colour. No standard is
///   behind it.
/// - grayscale: colours by how bright they are, on the table's own flag for that. Likewise.
/// - screening: colours 1 to 10 with 100, 90 ... 10 % of ink, the tenths that tint charts are
///   printed in. Likewise.
///
/// Which colour has which width is no standard's, and always the same here.
PLATEN_API std::span<const TablePreset> tablePresets();

/// Makes `table`, a fresh one, what the preset says: the styles of a colour table are set, a named
/// one gets styles that are named after what they are.
PLATEN_API EditResult applyPreset(std::string_view preset, CPlotStyleTable& table);

}  // namespace platen
