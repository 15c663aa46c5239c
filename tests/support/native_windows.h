/// Windows that the system knows and the toolkit does not. Windows only.
#pragma once

#include <wx/msw/wrapwin.h>

#include <utility>
#include <vector>

/// A top-level window of a class of its own, gone with the object.
class NativeWindow {
public:
    /// `owner` stays below it and takes it along when destroyed. It is shown, but not active.
    explicit NativeWindow(const wchar_t* title, HWND owner = nullptr);
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;
    ~NativeWindow();

    HWND handle() const { return handle_; }
    bool exists() const { return ::IsWindow(handle_); }
    bool enabled() const { return ::IsWindowEnabled(handle_); }
    bool active() const { return ::GetActiveWindow() == handle_; }

    void activate() { ::SetActiveWindow(handle_); }
    void enable(bool enabled) { ::EnableWindow(handle_, enabled); }
    /// Once only; later it does nothing.
    void destroy();

    /// Every change of a NativeWindow between enabled and disabled, in order.
    using Changes = std::vector<std::pair<HWND, bool>>;
    static Changes& changes();

private:
    HWND handle_;
};
