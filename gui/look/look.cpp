#include <wx/app.h>
#include <wx/colour.h>
#include <wx/window.h>

#include <cstddef>
#include <cstdint>
#include <iterator>

#include <platen/gui_look.h>

namespace wut {

namespace {

constexpr std::int32_t sizes[] = {10};

const wxWindow* topWindow() { return wxTheApp == nullptr ? nullptr : wxTheApp->GetTopWindow(); }

}  // namespace

bool guiSetColorTheme(ut::EGuiColorTheme theme) {
    ut::ThemeColorManager::getInstance().setTheme(theme);
    return true;
}

wxColour guiColor(ut::EGuiColor color) {
    const std::uint32_t reference = ut::guiColorRef(color);
    const auto byte = [reference](unsigned place) {
        return static_cast<unsigned char>(reference >> 8 * place & 0xFF);
    };
    return wxColour(byte(0), byte(1), byte(2));
}

const wchar_t* guiFontName(ut::EGuiFontName) { return L"Open Sans"; }

int guiSize(ut::EGuiSize size) {
    const auto index = static_cast<std::size_t>(size);
    return index < std::size(sizes) ? sizes[index] : 0;
}

int fromDIP(int value) {
    const wxWindow* top = topWindow();
    return top == nullptr ? value : top->FromDIP(value);
}

int toDIP(int value) {
    const wxWindow* top = topWindow();
    return top == nullptr ? value : top->ToDIP(value);
}

}  // namespace wut
