/// The colours, faces and sizes of the host application's GUI, as far as Platen asks for them: a
/// stand-in that a host replaces by its own.
///
/// All of it belongs to the thread of the GUI.
#pragma once

#include <cstdint>

#include <platen/platen_api.h>

namespace ut {

/// What the GUI looks like as a whole.
enum class EGuiColorTheme { Light = 0, Dark = 1 };

/// What a colour is used for. Texts, links, errors and warnings can be read on each of the four
/// backgrounds.
enum class EGuiColor {
    WindowBackground = 0,
    /// A group within a window.
    PanelBackground,
    /// What the user types or chooses in.
    FieldBackground,
    ButtonBackground,
    Text,
    DisabledText,
    Border,
    /// Behind what is selected.
    Highlight,
    HighlightText,
    Link,
    Error,
    Warning,
    /// Around the sheet of a preview.
    PreviewBackground,
    /// The sheet itself.
    Paper,
    /// The line around what a device can print on, drawn on the sheet.
    PrintableArea,
};

/// How many `EGuiColor` has.
constexpr int guiColorCount = static_cast<int>(EGuiColor::PrintableArea) + 1;

/// What a text is for.
enum class EGuiFontName {
    Default = 0,
    Caption = 1,
};

/// What is measured.
enum class EGuiSize {
    /// Points of the GUI font.
    FontPoints = 0,
};

/// Knows the current theme, which is light at first.
class PLATEN_API ThemeColorManager {
public:
    static ThemeColorManager& getInstance();  ///< The only one; lives as long as the program.

    ThemeColorManager(const ThemeColorManager&) = delete;
    ThemeColorManager& operator=(const ThemeColorManager&) = delete;

    /// A value that is no theme leaves the current one. Tells nobody.
    void setTheme(EGuiColorTheme theme);
    EGuiColorTheme theme() const { return theme_; }  ///< The current one.

private:
    ThemeColorManager() = default;
    ~ThemeColorManager() = default;

    EGuiColorTheme theme_ = EGuiColorTheme::Light;
};

/// The colour in the current theme as 0x00BBGGRR; black for a value that is no GUI colour.
PLATEN_API std::uint32_t guiColorRef(EGuiColor color);

}  // namespace ut
