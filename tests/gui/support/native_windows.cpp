#include "tests/gui/support/native_windows.h"

namespace {

LRESULT CALLBACK receive(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_ENABLE) {
        NativeWindow::changes().emplace_back(window, first != FALSE);
    } else if (message > WM_USER && NativeWindow::listener()) {
        NativeWindow::listener()(window, message, first, second);
    }
    return ::DefWindowProcW(window, message, first, second);
}

}  // namespace

const wchar_t* nativeWindowClass() {
    static const wchar_t name[] = L"PlatenTestWindow";
    static const ATOM registered = [] {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = receive;
        windowClass.hInstance = ::GetModuleHandleW(nullptr);
        windowClass.hbrBackground = ::GetSysColorBrush(COLOR_APPWORKSPACE);
        windowClass.lpszClassName = name;
        return ::RegisterClassW(&windowClass);
    }();
    return registered != 0 ? name : nullptr;
}

NativeWindow::NativeWindow(const wchar_t* title, HWND owner)
    // Only for a popup GetParent answers with the owner.
    : handle_(::CreateWindowExW(0, nativeWindowClass(), title,
                                (owner != nullptr ? WS_POPUP : 0U) | WS_OVERLAPPEDWINDOW, 40, 40,
                                420, 260, owner, nullptr, ::GetModuleHandleW(nullptr), nullptr)) {
    ::ShowWindow(handle_, SW_SHOWNOACTIVATE);
}

NativeWindow::Changes& NativeWindow::changes() {
    static Changes changes;
    return changes;
}

NativeWindow::Listener& NativeWindow::listener() {
    static Listener listener;
    return listener;
}
