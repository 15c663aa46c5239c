#include <platen/gui_windows.h>

namespace wut {
namespace {

/// Marks wrappers among windows: their name.
constexpr const char wrapperName[] = "foreignWindowWrapper";

BOOL isEnabled(HWND window) { return ::IsWindow(window) && ::IsWindowEnabled(window); }

void restoreEnabled(HWND window, BOOL enabled) {
    if (::IsWindow(window)) {
        ::EnableWindow(window, enabled);
    }
}

}  // namespace

// --- HWND_wxWrapper ------------------------------------------------------------------------------

HWND_wxWrapper::~HWND_wxWrapper() {
    // The base would destroy the window that it has a handle of.
    SetHWND(nullptr);
    SetName(wxString());
    wxTopLevelWindows.DeleteObject(this);
}

std::unique_ptr<HWND_wxWrapper> HWND_wxWrapper::make(HWND handle, bool addToTopLevelList) {
    auto wrapper = std::make_unique<HWND_wxWrapper>();
    if (handle == nullptr) {
        handle = ::GetActiveWindow();
    }
    if (::IsWindow(handle)) {
        wrapper->attach(handle);
        if (addToTopLevelList) {
            wxTopLevelWindows.Append(wrapper.get());
        }
    }
    return wrapper;
}

bool HWND_wxWrapper::IsShown() const { return ::IsWindowVisible(GetHWND()); }

bool HWND_wxWrapper::Destroy() {
    // With a handle the base would hide the window and wait for idle time.
    SetHWND(nullptr);
    return wxTopLevelWindow::Destroy();
}

// Not SubclassWin or AssociateHandle: a handle can have one window of wx only, and the active
// window may well be one; and a window procedure that is replaced can only be put back in order.
void HWND_wxWrapper::attach(HWND handle) {
    SetHWND(handle);
    AdoptAttributesFromHWND();
    // Whether it is enabled the base asks the system each time.
    m_isShown = ::IsWindowVisible(handle);
    SetName(wrapperName);
}

wxWindow* getWxWrappedWindow(HWND handle, bool addToTopLevelList) {
    return HWND_wxWrapper::make(handle, addToTopLevelList).release();
}

// --- WindowRestore -------------------------------------------------------------------------------

WindowRestore::WindowRestore(HWND window) : active_(::GetActiveWindow()) {
    if (active_ == nullptr) {
        active_ = window;
    }
    if (active_ == nullptr) {
        return;
    }
    parent_ = ::GetParent(active_);
    window_ = window;
    activeEnabled_ = isEnabled(active_);
    parentEnabled_ = isEnabled(parent_);
    windowEnabled_ = isEnabled(window_);
    wrapper_ = HWND_wxWrapper::make(active_, true);
}

WindowRestore::~WindowRestore() {
    wrapper_.reset();
    if (!::IsWindow(active_)) {
        return;
    }
    restoreEnabled(window_, windowEnabled_);
    restoreEnabled(parent_, parentEnabled_);
    restoreEnabled(active_, activeEnabled_);
    if (active_ != window_) {
        ::SetActiveWindow(active_);
    }
}

}  // namespace wut
