/// Windows that the system knows and the toolkit does not. Windows only.
#pragma once

#include <wx/msw/wrapwin.h>

#include <functional>
#include <utility>
#include <vector>

/// The class of all of them.
const wchar_t* nativeWindowClass();

/// A top-level window, gone with the object.
class NativeWindow {
public:
    /// `owner` stays below it and takes it along when destroyed. It is shown, but not active.
    explicit NativeWindow(const wchar_t* title, HWND owner = nullptr);
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;
    ~NativeWindow() { destroy(); }

    HWND handle() const { return handle_; }
    bool enabled() const { return ::IsWindowEnabled(handle_); }
    bool active() const { return ::GetActiveWindow() == handle_; }

    void activate() { ::SetActiveWindow(handle_); }
    void enable(bool enabled) { ::EnableWindow(handle_, enabled); }
    void destroy() { ::DestroyWindow(handle_); }

    /// Every change of a native window between enabled and disabled, in order.
    using Changes = std::vector<std::pair<HWND, bool>>;
    static Changes& changes();

    /// Gets the messages above WM_USER that native windows get, when it is set.
    using Listener = std::function<void(HWND window, UINT message, WPARAM first, LPARAM second)>;
    static Listener& listener();

private:
    HWND handle_;
};
