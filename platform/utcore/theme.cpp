#include <cstddef>
#include <iterator>
#include <span>

#include <platen/utcore_theme.h>
#include "platform/utcore/theme_table.h"

namespace ut {

namespace {

constexpr bool standsInOrder(std::span<const ThemeColors> table) {
    for (std::size_t index = 0; index < table.size(); ++index) {
        if (static_cast<std::size_t>(table[index].color) != index) {
            return false;
        }
    }
    return true;
}

static_assert(std::size(themeTable) == guiColorCount, "a colour without values");
static_assert(standsInOrder(themeTable), "a colour is looked up by its number");

}  // namespace

ThemeColorManager& ThemeColorManager::getInstance() {
    static ThemeColorManager manager;
    return manager;
}

void ThemeColorManager::setTheme(EGuiColorTheme theme) {
    if (theme == EGuiColorTheme::Light || theme == EGuiColorTheme::Dark) {
        theme_ = theme;
    }
}

std::uint32_t guiColorRef(EGuiColor color) {
    const int index = static_cast<int>(color);
    if (index < 0 || index >= guiColorCount) {
        return 0;
    }
    const ThemeColors& colors = themeTable[index];
    const bool dark = ThemeColorManager::getInstance().theme() == EGuiColorTheme::Dark;
    const std::uint32_t rgb = dark ? colors.dark : colors.light;
    return (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;
}

}  // namespace ut
