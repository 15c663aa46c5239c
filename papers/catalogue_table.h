/// The papers of the Windows print system, by paper id.
#pragma once

#include <array>
#include <string_view>

#include <platen/oda.h>

namespace wut {

struct CataloguePaper {
    OdDbPlotSettings::PlotPaperUnits units;
    /// Ends with a null character.
    std::wstring_view name;
};

using enum OdDbPlotSettings::PlotPaperUnits;

/// Indexed by id; nothing has the id 0. The names are the system's own, which spells some papers
/// in two ways and measures a few in an unexpected unit.
// clang-format off
inline constexpr std::array<CataloguePaper, 119> cataloguePapers = {{
    {kInches, L""},
    {kInches, L"Letter"},
    {kInches, L"Letter Small"},
    {kInches, L"Tabloid"},
    {kInches, L"Ledger"},
    {kInches, L"Legal"},
    {kInches, L"Statement"},
    {kInches, L"Executive"},
    {kMillimeters, L"A3"},
    {kMillimeters, L"A4"},
    {kMillimeters, L"A4 Small"},  // 10
    {kMillimeters, L"A5"},
    {kMillimeters, L"B4 (JIS)"},
    {kMillimeters, L"B5 (JIS)"},
    {kInches, L"Folio"},
    {kMillimeters, L"Quarto"},
    {kInches, L"10x14"},
    {kInches, L"11x17"},
    {kInches, L"Note"},
    {kInches, L"Envelope #9"},
    {kInches, L"Envelope #10"},  // 20
    {kInches, L"Envelope #11"},
    {kInches, L"Envelope #12"},
    {kInches, L"Envelope #14"},
    {kInches, L"C size sheet"},
    {kInches, L"D size sheet"},
    {kInches, L"E size sheet"},
    {kMillimeters, L"Envelope DL"},
    {kMillimeters, L"Envelope C5"},
    {kMillimeters, L"Envelope C3"},
    {kMillimeters, L"Envelope C4"},  // 30
    {kMillimeters, L"Envelope C6"},
    {kMillimeters, L"Envelope C65"},
    {kMillimeters, L"Envelope B4"},
    {kMillimeters, L"Envelope B5"},
    {kMillimeters, L"Envelope B6"},
    {kMillimeters, L"Envelope"},
    {kInches, L"Envelope Monarch"},
    {kInches, L"6 3/4 Envelope"},
    {kInches, L"US Std Fanfold"},
    {kInches, L"German Std Fanfold"},  // 40
    {kInches, L"German Legal Fanfold"},
    {kMillimeters, L"B4 (ISO)"},
    {kMillimeters, L"Japanese Postcard"},
    {kInches, L"9x11"},
    {kInches, L"10x11"},
    {kInches, L"15x11"},
    {kMillimeters, L"Envelope Invite"},
    {kInches, L"Reserved48"},
    {kInches, L"Reserved49"},
    {kInches, L"Letter Extra"},  // 50
    {kInches, L"Legal Extra"},
    {kInches, L"Tabloid Extra"},
    {kInches, L"A4 Extra"},
    {kInches, L"Letter Transverse"},
    {kMillimeters, L"A4 Transverse"},
    {kInches, L"Letter Extra Transverse"},
    {kMillimeters, L"Super A"},
    {kMillimeters, L"Super B"},
    {kInches, L"Letter Plus"},
    {kMillimeters, L"A4 Plus"},  // 60
    {kMillimeters, L"A5 Transverse"},
    {kMillimeters, L"B5 (JIS) Transverse"},
    {kMillimeters, L"A3 Extra"},
    {kMillimeters, L"A5 Extra"},
    {kMillimeters, L"B5 (ISO) Extra"},
    {kMillimeters, L"A2"},
    {kMillimeters, L"A3 Transverse"},
    {kMillimeters, L"A3 Extra Transverse"},
    {kMillimeters, L"Japanese Double Postcard"},
    {kMillimeters, L"A6"},  // 70
    {kInches, L"Japanese Envelope Kaku #2"},
    {kInches, L"Japanese Envelope Kaku #3"},
    {kInches, L"Japanese Envelope Chou #3"},
    {kInches, L"Japanese Envelope Chou #4"},
    {kInches, L"Letter Rotated"},
    {kMillimeters, L"A3 Rotated"},
    {kMillimeters, L"A4 Rotated"},
    {kMillimeters, L"A5 Rotated"},
    {kMillimeters, L"B4 (JIS) Rotated"},
    {kMillimeters, L"B5 (JIS) Rotated"},  // 80
    {kMillimeters, L"Japanese Postcard Rotated"},
    {kMillimeters, L"Double Japan Postcard Rotated"},
    {kMillimeters, L"A6 Rotated"},
    {kInches, L"Japan Envelope Kaku #2 Rotated"},
    {kInches, L"Japan Envelope Kaku #3 Rotated"},
    {kInches, L"Japan Envelope Chou #3 Rotated"},
    {kInches, L"Japan Envelope Chou #4 Rotated"},
    {kMillimeters, L"B6 (JIS)"},
    {kMillimeters, L"B6 (JIS) Rotated"},
    {kInches, L"12x11"},  // 90
    {kInches, L"Japan Envelope You #4"},
    {kInches, L"Japan Envelope You #4 Rotated"},
    {kMillimeters, L"PRC 16K"},
    {kMillimeters, L"PRC 32K"},
    {kMillimeters, L"PRC 32K(Big)"},
    {kMillimeters, L"PRC Envelope #1"},
    {kMillimeters, L"PRC Envelope #2"},
    {kMillimeters, L"PRC Envelope #3"},
    {kMillimeters, L"PRC Envelope #4"},
    {kMillimeters, L"PRC Envelope #5"},  // 100
    {kMillimeters, L"PRC Envelope #6"},
    {kMillimeters, L"PRC Envelope #7"},
    {kMillimeters, L"PRC Envelope #8"},
    {kMillimeters, L"PRC Envelope #9"},
    {kMillimeters, L"PRC Envelope #10"},
    {kMillimeters, L"PRC 16K Rotated"},
    {kMillimeters, L"PRC 32K Rotated"},
    {kMillimeters, L"PRC 32K(Big) Rotated"},
    {kMillimeters, L"PRC Envelope #1 Rotated"},
    {kMillimeters, L"PRC Envelope #2 Rotated"},  // 110
    {kMillimeters, L"PRC Envelope #3 Rotated"},
    {kMillimeters, L"PRC Envelope #4 Rotated"},
    {kMillimeters, L"PRC Envelope #5 Rotated"},
    {kMillimeters, L"PRC Envelope #6 Rotated"},
    {kMillimeters, L"PRC Envelope #7 Rotated"},
    {kMillimeters, L"PRC Envelope #8 Rotated"},
    {kMillimeters, L"PRC Envelope #9 Rotated"},
    {kMillimeters, L"PRC Envelope #10 Rotated"},
}};
// clang-format on

}  // namespace wut
