#include <wx/app.h>
#include <wx/msw/private.h>
#include <wx/window.h>

#include <vector>

#include "gui/look/theme_broadcast.h"

namespace wut {

namespace {

const UINT themeChangedMessage = ::RegisterWindowMessageW(L"Quor/WM_COLORTHEMECHANGED");

/// Listed before anybody is told: who is told may destroy windows or change their order.
std::vector<HWND> childrenOf(HWND parent) {
    std::vector<HWND> children;
    for (HWND child = ::GetWindow(parent, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        children.push_back(child);
    }
    return children;
}

BOOL CALLBACK append(HWND window, LPARAM windows) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

/// The children of the desktop. Other programs move theirs at any time, so that going from one to
/// the next would not be safe; the order is the same.
std::vector<HWND> windowsOfDesktop() {
    std::vector<HWND> windows;
    ::EnumWindows(append, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

HWND ownerOf(HWND window) {
    const bool isChild = (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) != 0;
    return isChild ? ::GetParent(window) : ::GetWindow(window, GW_OWNER);
}

void walk(HWND window) {
    ::SendMessageW(window, themeChangedMessage, 0, 0);
    for (const HWND child : childrenOf(window)) {
        if (!::IsWindow(child)) {
            continue;
        }
        if (wxWindow* known = wxFindWinFromHandle(child); known != nullptr) {
            sendThemeChanged(*known);
        }
        if (::IsWindow(child)) {
            walk(child);
        }
    }
}

}  // namespace

void tellThemeChangedWithin(wxWindow& window) { walk(GetHwndOf(&window)); }

void tellThemeChangedOwned() {
    const wxWindow* top = wxTheApp == nullptr ? nullptr : wxTheApp->GetTopWindow();
    if (top == nullptr) {
        return;
    }
    const HWND owner = GetHwndOf(top);
    for (const HWND window : windowsOfDesktop()) {
        if (window != owner && ownerOf(window) == owner) {
            walk(window);
        }
    }
}

}  // namespace wut
