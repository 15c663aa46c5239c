/// Papers: the catalogue of Windows paper ids, and the papers of the built-in plot devices.
#pragma once

#include <cstddef>
#include <cstdint>

#include <platen/oda.h>
#include <platen/platen_api.h>

class wxString;

namespace wut {

/// One paper of a built-in plot device. Lengths are in `units`.
struct PaperSizeInfo {
    const wchar_t* displayName;  ///< The name shown to people.
    /// The display name with an underscore for each blank: the name stored in configurations.
    const wchar_t* canonicalName;
    /// Of the whole paper.
    ///@{
    double width;
    double height;
    ///@}
    OdDbPlotSettings::PlotPaperUnits units;
    /// Margins in the order in which `CustomPaperSize` has them.
    ///@{
    double left;
    double bottom;
    double right;
    double top;
    ///@}
};

/// Papers of the PDF device, of the image devices, and common plotter papers.
///@{
PLATEN_API extern const PaperSizeInfo* const cPdfPapers;
PLATEN_API extern const std::size_t cPdfPapersCount;
PLATEN_API extern const PaperSizeInfo* const cImagePapers;
PLATEN_API extern const std::size_t cImagePapersCount;
PLATEN_API extern const PaperSizeInfo* const cNonePapers;
PLATEN_API extern const std::size_t cNonePapersCount;
///@}

/// The unit in which the paper of a Windows paper id is measured; millimetres above id 118.
PLATEN_API OdDbPlotSettings::PlotPaperUnits getUnitsForDevice(unsigned short id);

/// True when `name` is "User" (in any case) and a decimal number, which goes to `id`. `id` stays
/// otherwise. Text after the number does not matter.
PLATEN_API bool isCustomPaperSize(int& id, const wchar_t* name);

/// The Windows paper id of a name, ignoring case; the low 16 bits of the number of a custom name;
/// 0 for a name that is not known, empty or null.
PLATEN_API std::int16_t getPSnumber(const wchar_t* name);

/// The name of a Windows paper id from 1 to 118, otherwise "User" and the id in decimal.
PLATEN_API OdString getCanonicalPSname(std::int16_t id);

/// Orders paper names for people: digit runs by value, case ignored.
struct PLATEN_API CmpCollatedNoCaseWx {
    bool operator()(const wxString& left, const wxString& right) const;
};

}  // namespace wut
