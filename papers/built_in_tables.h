/// The papers of the built-in plot devices, row by row.
#pragma once

#include <array>
#include <string_view>

#include <platen/oda.h>

namespace wut {

/// How a row's margins were measured when it was recorded.
enum class MarginSource {
    /// As they stand.
    Exact,
    /// In single precision, from the area that the sheet leaves for plotting.
    SinglePrecision,
};

/// The margins that many sheets share, in the order of `PaperSizeInfo`.
struct SheetMargins {
    double left;
    double bottom;
    double right;
    double top;
    MarginSource source;
};

struct Sheet {
    /// Ends with a null character.
    std::wstring_view name;
    double width;
    double height;
    OdDbPlotSettings::PlotPaperUnits units;
    const SheetMargins& margins;
};

using enum OdDbPlotSettings::PlotPaperUnits;

// clang-format off
inline constexpr SheetMargins noMargins = {0, 0, 0, 0, MarginSource::Exact};

/// 1/32 inch: a sheet that a device can print to its edge.
inline constexpr SheetMargins bleedMillimeters =
    {0.79375, 0.79375, 0.79375, 0.79375, MarginSource::SinglePrecision};
inline constexpr SheetMargins bleedInches =
    {0.03125, 0.03125, 0.03125, 0.03125, MarginSource::SinglePrecision};

inline constexpr SheetMargins expandMillimeters =
    {5.79375, 10.79375, 5.79375, 10.79375, MarginSource::SinglePrecision};
inline constexpr SheetMargins normalMillimeters =
    {5.79375, 17.79375, 5.79375, 17.79375, MarginSource::SinglePrecision};
inline constexpr SheetMargins expandInches =
    {0.2281, 0.42495, 0.2281, 0.42495, MarginSource::SinglePrecision};
inline constexpr SheetMargins normalInches =
    {0.2281, 0.70054, 0.2281, 0.70054, MarginSource::SinglePrecision};

inline constexpr SheetMargins plotterSheet = {0.25, 0.25, 0.25, 0.25, MarginSource::Exact};
inline constexpr SheetMargins plotterInches = {0.25, 0.75, 0.25, 0.75, MarginSource::Exact};
inline constexpr SheetMargins plotterMillimeters = {7.5, 20, 7.5, 20, MarginSource::Exact};
// clang-format on

/// Papers of the PDF device.
// clang-format off
inline constexpr std::array<Sheet, 115> pdfSheets = {{
    {L"A0", 841, 1189, kMillimeters, noMargins},
    {L"A1", 594, 841, kMillimeters, noMargins},
    {L"A2", 420, 594, kMillimeters, noMargins},
    {L"A3", 297, 420, kMillimeters, noMargins},
    {L"A4", 210, 297, kMillimeters, noMargins},
    {L"A5", 148, 210, kMillimeters, noMargins},
    {L"B0", 1000, 1414, kMillimeters, noMargins},
    {L"B1", 707, 1000, kMillimeters, noMargins},
    {L"B2", 500, 707, kMillimeters, noMargins},
    {L"B3", 353, 500, kMillimeters, noMargins},
    {L"B4", 250, 353, kMillimeters, noMargins},
    {L"B5", 176, 250, kMillimeters, noMargins},
    {L"ANSI A", 8.5, 11, kInches, noMargins},
    {L"ANSI B", 11, 17, kInches, noMargins},
    {L"ANSI C", 17, 22, kInches, noMargins},
    {L"ANSI D", 22, 34, kInches, noMargins},
    {L"ANSI E", 34, 44, kInches, noMargins},
    {L"Arch A", 9, 12, kInches, noMargins},
    {L"Arch B", 12, 18, kInches, noMargins},
    {L"Arch C", 18, 24, kInches, noMargins},
    {L"Arch D", 24, 36, kInches, noMargins},
    {L"Arch E", 36, 48, kInches, noMargins},
    {L"ISO full bleed B5 (250.00 x 176.00 MM)", 250, 176, kMillimeters, bleedMillimeters},
    {L"ISO full bleed B5 (176.00 x 250.00 MM)", 176, 250, kMillimeters, bleedMillimeters},
    {L"ISO full bleed B4 (353.00 x 250.00 MM)", 353, 250, kMillimeters, bleedMillimeters},
    {L"ISO full bleed B4 (250.00 x 353.00 MM)", 250, 353, kMillimeters, bleedMillimeters},
    {L"ISO full bleed B3 (500.00 x 353.00 MM)", 500, 353, kMillimeters, bleedMillimeters},
    {L"ISO full bleed B3 (353.00 x 500.00 MM)", 353, 500, kMillimeters, bleedMillimeters},
    {L"ISO full bleed B2 (707.00 x 500.00 MM)", 707, 500, kMillimeters, bleedMillimeters},
    {L"ISO full bleed B2 (500.00 x 707.00 MM)", 500, 707, kMillimeters, bleedMillimeters},
    {L"ISO full bleed B1 (1000.00 x 707.00 MM)", 1000, 707, kMillimeters, bleedMillimeters},
    {L"ISO full bleed B1 (707.00 x 1000.00 MM)", 707, 1000, kMillimeters, bleedMillimeters},
    {L"ISO full bleed B0 (1414.00 x 1000.00 MM)", 1414, 1000, kMillimeters, bleedMillimeters},
    {L"ISO full bleed B0 (1000.00 x 1414.00 MM)", 1000, 1414, kMillimeters, bleedMillimeters},
    {L"ISO full bleed A5 (210.00 x 148.00 MM)", 210, 148, kMillimeters, bleedMillimeters},
    {L"ISO full bleed A5 (148.00 x 210.00 MM)", 148, 210, kMillimeters, bleedMillimeters},
    {L"ISO full bleed 2A0 (1189.00 x 1682.00 MM)", 1189, 1682, kMillimeters, bleedMillimeters},
    {L"ISO full bleed 4A0 (1682.00 x 2378.00 MM)", 1682, 2378, kMillimeters, bleedMillimeters},
    {L"ISO full bleed A4 (297.00 x 210.00 MM)", 297, 210, kMillimeters, bleedMillimeters},
    {L"ISO full bleed A4 (210.00 x 297.00 MM)", 210, 297, kMillimeters, bleedMillimeters},
    {L"ISO full bleed A3 (420.00 x 297.00 MM)", 420, 297, kMillimeters, bleedMillimeters},
    {L"ISO full bleed A3 (297.00 x 420.00 MM)", 297, 420, kMillimeters, bleedMillimeters},
    {L"ISO full bleed A2 (594.00 x 420.00 MM)", 594, 420, kMillimeters, bleedMillimeters},
    {L"ISO full bleed A2 (420.00 x 594.00 MM)", 420, 594, kMillimeters, bleedMillimeters},
    {L"ISO full bleed A1 (841.00 x 594.00 MM)", 841, 594, kMillimeters, bleedMillimeters},
    {L"ISO full bleed A1 (594.00 x 841.00 MM)", 594, 841, kMillimeters, bleedMillimeters},
    {L"ISO full bleed A0 (841.00 x 1189.00 MM)", 841, 1189, kMillimeters, bleedMillimeters},
    {L"ARCH full bleed E1 (30.00 x 42.00 Inches)", 30, 42, kInches, bleedInches},
    {L"ARCH full bleed E (36.00 x 48.00 Inches)", 36, 48, kInches, bleedInches},
    {L"ARCH full bleed D (36.00 x 24.00 Inches)", 36, 24, kInches, bleedInches},
    {L"ARCH full bleed D (24.00 x 36.00 Inches)", 24, 36, kInches, bleedInches},
    {L"ARCH full bleed C (24.00 x 18.00 Inches)", 24, 18, kInches, bleedInches},
    {L"ARCH full bleed C (18.00 x 24.00 Inches)", 18, 24, kInches, bleedInches},
    {L"ARCH full bleed B (18.00 x 12.00 Inches)", 18, 12, kInches, bleedInches},
    {L"ARCH full bleed B (12.00 x 18.00 Inches)", 12, 18, kInches, bleedInches},
    {L"ARCH full bleed A (12.00 x 9.00 Inches)", 12, 9, kInches, bleedInches},
    {L"ARCH full bleed A (9.00 x 12.00 Inches)", 9, 12, kInches, bleedInches},
    {L"ANSI full bleed F (28.00 x 40.00 Inches)", 28, 40, kInches, bleedInches},
    {L"ANSI full bleed E (34.00 x 44.00 Inches)", 34, 44, kInches, bleedInches},
    {L"ANSI full bleed D (34.00 x 22.00 Inches)", 34, 22, kInches, bleedInches},
    {L"ANSI full bleed D (22.00 x 34.00 Inches)", 22, 34, kInches, bleedInches},
    {L"ANSI full bleed C (22.00 x 17.00 Inches)", 22, 17, kInches, bleedInches},
    {L"ANSI full bleed C (17.00 x 22.00 Inches)", 17, 22, kInches, bleedInches},
    {L"ANSI full bleed B (17.00 x 11.00 Inches)", 17, 11, kInches, bleedInches},
    {L"ANSI full bleed B (11.00 x 17.00 Inches)", 11, 17, kInches, bleedInches},
    {L"ANSI full bleed A (11.00 x 8.50 Inches)", 11, 8.5, kInches, bleedInches},
    {L"ANSI full bleed A (8.50 x 11.00 Inches)", 8.5, 11, kInches, bleedInches},
    {L"ISO expand A0 (841.00 x 1189.00 MM)", 841, 1189, kMillimeters, expandMillimeters},
    {L"ISO A0 (841.00 x 1189.00 MM)", 841, 1189, kMillimeters, normalMillimeters},
    {L"ISO expand A1 (841.00 x 594.00 MM)", 841, 594, kMillimeters, expandMillimeters},
    {L"ISO expand A1 (594.00 x 841.00 MM)", 594, 841, kMillimeters, expandMillimeters},
    {L"ISO A1 (841.00 x 594.00 MM)", 841, 594, kMillimeters, normalMillimeters},
    {L"ISO A1 (594.00 x 841.00 MM)", 594, 841, kMillimeters, normalMillimeters},
    {L"ISO expand A2 (594.00 x 420.00 MM)", 594, 420, kMillimeters, expandMillimeters},
    {L"ISO expand A2 (420.00 x 594.00 MM)", 420, 594, kMillimeters, expandMillimeters},
    {L"ISO A2 (594.00 x 420.00 MM)", 594, 420, kMillimeters, normalMillimeters},
    {L"ISO A2 (420.00 x 594.00 MM)", 420, 594, kMillimeters, normalMillimeters},
    {L"ISO expand A3 (420.00 x 297.00 MM)", 420, 297, kMillimeters, expandMillimeters},
    {L"ISO expand A3 (297.00 x 420.00 MM)", 297, 420, kMillimeters, expandMillimeters},
    {L"ISO A3 (420.00 x 297.00 MM)", 420, 297, kMillimeters, normalMillimeters},
    {L"ISO A3 (297.00 x 420.00 MM)", 297, 420, kMillimeters, normalMillimeters},
    {L"ISO expand A4 (297.00 x 210.00 MM)", 297, 210, kMillimeters, expandMillimeters},
    {L"ISO expand A4 (210.00 x 297.00 MM)", 210, 297, kMillimeters, expandMillimeters},
    {L"ISO A4 (297.00 x 210.00 MM)", 297, 210, kMillimeters, normalMillimeters},
    {L"ISO A4 (210.00 x 297.00 MM)", 210, 297, kMillimeters, normalMillimeters},
    {L"ARCH expand E1 (30.00 x 42.00 Inches)", 30, 42, kInches, expandInches},
    {L"ARCH E1 (30.00 x 42.00 Inches)", 30, 42, kInches, normalInches},
    {L"ARCH expand E (36.00 x 48.00 Inches)", 36, 48, kInches, expandInches},
    {L"ARCH E (36.00 x 48.00 Inches)", 36, 48, kInches, normalInches},
    {L"ARCH expand D (36.00 x 24.00 Inches)", 36, 24, kInches, expandInches},
    {L"ARCH expand D (24.00 x 36.00 Inches)", 24, 36, kInches, expandInches},
    {L"ARCH D (36.00 x 24.00 Inches)", 36, 24, kInches, normalInches},
    {L"ARCH D (24.00 x 36.00 Inches)", 24, 36, kInches, normalInches},
    {L"ARCH expand C (24.00 x 18.00 Inches)", 24, 18, kInches, expandInches},
    {L"ARCH expand C (18.00 x 24.00 Inches)", 18, 24, kInches, expandInches},
    {L"ARCH C (24.00 x 18.00 Inches)", 24, 18, kInches, normalInches},
    {L"ARCH C (18.00 x 24.00 Inches)", 18, 24, kInches, normalInches},
    {L"ANSI expand E (34.00 x 44.00 Inches)", 34, 44, kInches, expandInches},
    {L"ANSI E (34.00 x 44.00 Inches)", 34, 44, kInches, normalInches},
    {L"ANSI expand D (34.00 x 22.00 Inches)", 34, 22, kInches, expandInches},
    {L"ANSI expand D (22.00 x 34.00 Inches)", 22, 34, kInches, expandInches},
    {L"ANSI D (34.00 x 22.00 Inches)", 34, 22, kInches, normalInches},
    {L"ANSI D (22.00 x 34.00 Inches)", 22, 34, kInches, normalInches},
    {L"ANSI expand C (22.00 x 17.00 Inches)", 22, 17, kInches, expandInches},
    {L"ANSI expand C (17.00 x 22.00 Inches)", 17, 22, kInches, expandInches},
    {L"ANSI C (22.00 x 17.00 Inches)", 22, 17, kInches, normalInches},
    {L"ANSI C (17.00 x 22.00 Inches)", 17, 22, kInches, normalInches},
    {L"ANSI expand B (17.00 x 11.00 Inches)", 17, 11, kInches, expandInches},
    {L"ANSI expand B (11.00 x 17.00 Inches)", 11, 17, kInches, expandInches},
    {L"ANSI B (17.00 x 11.00 Inches)", 17, 11, kInches, normalInches},
    {L"ANSI B (11.00 x 17.00 Inches)", 11, 17, kInches, normalInches},
    {L"ANSI expand A (11.00 x 8.50 Inches)", 11, 8.5, kInches, expandInches},
    {L"ANSI expand A (8.50 x 11.00 Inches)", 8.5, 11, kInches, expandInches},
    {L"ANSI A (11.00 x 8.50 Inches)", 11, 8.5, kInches, normalInches},
    {L"ANSI A (8.50 x 11.00 Inches)", 8.5, 11, kInches, normalInches},
}};
// clang-format on

/// Papers of the image devices: every size landscape, then every size portrait.
// clang-format off
inline constexpr std::array<Sheet, 12> imageSheets = {{
    {L"VGA (640.00 x 480.00 Pixels)", 640, 480, kPixels, noMargins},
    {L"XGA (1024.00 x 768.00 Pixels)", 1024, 768, kPixels, noMargins},
    {L"Super VGA (800.00 x 600.00 Pixels)", 800, 600, kPixels, noMargins},
    {L"XGA Hi-Res (1600.00 x 1200.00 Pixels)", 1600, 1200, kPixels, noMargins},
    {L"Sun Hi-Res (1600.00 x 1280.00 Pixels)", 1600, 1280, kPixels, noMargins},
    {L"Sun Standard (1152.00 x 900.00 Pixels)", 1152, 900, kPixels, noMargins},
    {L"VGA (480.00 x 640.00 Pixels)", 480, 640, kPixels, noMargins},
    {L"XGA (768.00 x 1024.00 Pixels)", 768, 1024, kPixels, noMargins},
    {L"Super VGA (600.00 x 800.00 Pixels)", 600, 800, kPixels, noMargins},
    {L"XGA Hi-Res (1200.00 x 1600.00 Pixels)", 1200, 1600, kPixels, noMargins},
    {L"Sun Hi-Res (1280.00 x 1600.00 Pixels)", 1280, 1600, kPixels, noMargins},
    {L"Sun Standard (900.00 x 1152.00 Pixels)", 900, 1152, kPixels, noMargins},
}};
// clang-format on

/// Common plotter papers, for callers that have no device to ask.
// clang-format off
inline constexpr std::array<Sheet, 40> noneSheets = {{
    {L"Letter (8.50 x 11.00 Inches)", 8.5, 11, kInches, plotterSheet},
    {L"Legal (8.50 x 14.0 Inches)", 8.5, 14, kInches, plotterSheet},
    {L"ANSI A (8.50 x 11.00 Inches)", 8.5, 11, kInches, plotterInches},
    {L"ANSI A (11.00 x 8.50 Inches)", 11, 8.5, kInches, plotterInches},
    {L"ANSI B (11.00 x 17.00 Inches)", 11, 17, kInches, plotterInches},
    {L"ANSI B (17.00 x 11.00 Inches)", 17, 11, kInches, plotterInches},
    {L"ANSI C (17.00 x 22.00 Inches)", 17, 22, kInches, plotterInches},
    {L"ANSI C (22.00 x 17.00 Inches)", 22, 17, kInches, plotterInches},
    {L"ANSI D (22.00 x 34.00 Inches)", 22, 34, kInches, plotterInches},
    {L"ANSI D (34.00 x 22.00 Inches)", 34, 22, kInches, plotterInches},
    {L"ANSI E (34.00 x 44.00 Inches)", 34, 44, kInches, plotterInches},
    {L"ANSI E (44.00 x 34.00 Inches)", 44, 34, kInches, plotterInches},
    {L"ARCH C (18.00 x 24.00 Inches)", 18, 24, kInches, plotterInches},
    {L"ARCH C (24.00 x 18.00 Inches)", 24, 18, kInches, plotterInches},
    {L"ARCH D (24.00 x 36.00 Inches)", 24, 36, kInches, plotterInches},
    {L"ARCH D (36.00 x 24.00 Inches)", 36, 24, kInches, plotterInches},
    {L"ARCH E (36.00 x 48.00 Inches)", 36, 48, kInches, plotterInches},
    {L"ARCH E (48.00 x 36.00 Inches)", 48, 36, kInches, plotterInches},
    {L"ARCH E1 (30.00 x 42.00 Inches)", 30, 42, kInches, plotterInches},
    {L"ARCH E1 (42.00 x 30.00 Inches)", 42, 30, kInches, plotterInches},
    {L"ISO A4 (210.00 x 297.00 MM)", 210, 297, kMillimeters, plotterMillimeters},
    {L"ISO A4 (297.00 x 210.00 MM)", 297, 210, kMillimeters, plotterMillimeters},
    {L"ISO A3 (297.00 x 420.00 MM)", 297, 420, kMillimeters, plotterMillimeters},
    {L"ISO A3 (420.00 x 297.00 MM)", 420, 297, kMillimeters, plotterMillimeters},
    {L"ISO A2 (420.00 x 594.00 MM)", 420, 594, kMillimeters, plotterMillimeters},
    {L"ISO A2 (594.00 x 420.00 MM)", 594, 420, kMillimeters, plotterMillimeters},
    {L"ISO A1 (594.00 x 841.00 MM)", 594, 841, kMillimeters, plotterMillimeters},
    {L"ISO A1 (841.00 x 594.00 MM)", 841, 594, kMillimeters, plotterMillimeters},
    {L"ISO A0 (841.00 x 1189.00 MM)", 841, 1189, kMillimeters, plotterMillimeters},
    {L"ISO A0 (1189.00 x 841.00 MM)", 1189, 841, kMillimeters, plotterMillimeters},
    {L"ISO B5 (176.00 x 250.00 MM)", 176, 250, kMillimeters, plotterMillimeters},
    {L"ISO B5 (250.00 x 176.00 MM)", 250, 176, kMillimeters, plotterMillimeters},
    {L"ISO B4 (250.00 x 353.00 MM)", 250, 353, kMillimeters, plotterMillimeters},
    {L"ISO B4 (353.00 x 250.00 MM)", 353, 250, kMillimeters, plotterMillimeters},
    {L"ISO B2 (500.00 x 707.00 MM)", 500, 707, kMillimeters, plotterMillimeters},
    {L"ISO B2 (707.00 x 500.00 MM)", 707, 500, kMillimeters, plotterMillimeters},
    {L"ISO B1 (707.00 x 1000.00 MM)", 707, 1000, kMillimeters, plotterMillimeters},
    {L"ISO B1 (1000.00 x 707.00 MM)", 1000, 707, kMillimeters, plotterMillimeters},
    {L"ISO C5 (229.00 x 162.00 MM)", 229, 162, kMillimeters, plotterMillimeters},
    {L"700mm (700.00 x 1000.00 MM)", 700, 1000, kMillimeters, plotterMillimeters},
}};
// clang-format on

}  // namespace wut
