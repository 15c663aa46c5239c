/// The GUI colours of the themes.
#pragma once

#include <cstdint>

#include <platen/utcore_theme.h>

namespace ut {

struct ThemeColors {
    EGuiColor color;
    /// 0xRRGGBB.
    std::uint32_t light;
    std::uint32_t dark;
};

/// In the order of `EGuiColor`.
inline constexpr ThemeColors themeTable[] = {
    {EGuiColor::WindowBackground, 0xF4F5F7, 0x24282E},
    {EGuiColor::PanelBackground, 0xEAECEF, 0x2D3239},
    {EGuiColor::FieldBackground, 0xFFFFFF, 0x1B1E23},
    {EGuiColor::ButtonBackground, 0xE1E4E8, 0x383E47},
    {EGuiColor::Text, 0x1B1F24, 0xE8EAED},
    {EGuiColor::DisabledText, 0x7A828C, 0x8B939E},
    {EGuiColor::Border, 0xA9B1BB, 0x565E69},
    {EGuiColor::Highlight, 0x1F66C1, 0x2F6FC4},
    {EGuiColor::HighlightText, 0xFFFFFF, 0xFFFFFF},
    {EGuiColor::Link, 0x0B57B0, 0x7AB7FF},
    {EGuiColor::Error, 0xB3261E, 0xFF9B94},
    {EGuiColor::Warning, 0x7A4D00, 0xF5C15C},
    {EGuiColor::PreviewBackground, 0x8C939C, 0x14161A},
    {EGuiColor::Paper, 0xFFFFFF, 0xFFFFFF},
    {EGuiColor::PrintableArea, 0x1F66C1, 0x1F66C1},
};

}  // namespace ut
