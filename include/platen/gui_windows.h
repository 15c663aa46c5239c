/// Windows of the toolkit beside windows of the system: a search field, places on displays and, on
/// Windows only, wrappers of native windows.
#pragma once

#ifdef _WIN32
#include <wx/msw/wrapwin.h>
#endif

#include <wx/gdicmn.h>
#include <wx/srchctrl.h>

#ifdef _WIN32
#include <wx/toplevel.h>

#include <memory>
#endif

#include <platen/platen_api.h>

namespace wut {

/// Moves `rect`, in pixels of the screen, so that it lies on one display; its size stays.
///
/// The display is the one that shows the centre of the rectangle, otherwise the one that shows its
/// top left corner, otherwise the one of the application's top window, otherwise the first. The
/// rectangle may overhang the display by 4 pixels on every side, as frames of windows do. One that
/// is as wide as that or wider goes to the left edge only from beyond one of the edges; the same
/// holds for heights and the top edge.
///
/// `clientAreaOnly` leaves out what task bars cover. Without any display the rectangle stays.
PLATEN_API void adjustWindowRectangleToDisplay(wxRect& rect, bool clientAreaOnly);

/// A search field that shows its cancel button while it holds text.
///
/// The button follows events of type wxEVT_TEXT. What sends none (the value given at creation,
/// ChangeValue) leaves the button as it is, unless the toolkit's own field shows and hides it by
/// itself, as GTK's does.
class PLATEN_API QuorSearchCtrl : public wxSearchCtrl {
public:
    /// Call `Create` before anything else.
    QuorSearchCtrl() = default;
    QuorSearchCtrl(wxWindow* parent, wxWindowID id, const wxString& value = wxEmptyString,
                   const wxPoint& pos = wxDefaultPosition, const wxSize& size = wxDefaultSize,
                   long style = 0, const wxValidator& validator = wxDefaultValidator,
                   const wxString& name = wxASCII_STR(wxSearchCtrlNameStr));

    /// As wxSearchCtrl's.
    bool Create(wxWindow* parent, wxWindowID id, const wxString& value = wxEmptyString,
                const wxPoint& pos = wxDefaultPosition, const wxSize& size = wxDefaultSize,
                long style = 0, const wxValidator& validator = wxDefaultValidator,
                const wxString& name = wxASCII_STR(wxSearchCtrlNameStr));

    /// Shows or hides the button for a wxEVT_TEXT, which is never consumed. Other events are the
    /// validator's first, as everywhere.
    bool TryBefore(wxEvent& event) override;

private:
    wxDECLARE_DYNAMIC_CLASS(QuorSearchCtrl);
};

#ifdef _WIN32

/// A window of the toolkit that stands for a native window which is not its own, so that dialogs
/// can have that one as their parent.
///
/// The native window keeps its window procedure and stays the native window's owner's: the wrapper
/// takes no messages, and destroying it leaves the native window alone. Dialogs that still have it
/// as their parent go with it.
class PLATEN_API HWND_wxWrapper : public wxTopLevelWindow {
public:
    /// Wraps nothing.
    HWND_wxWrapper() = default;
    ~HWND_wxWrapper() override;

    /// What `getWxWrappedWindow` returns.
    static std::unique_ptr<HWND_wxWrapper> make(HWND handle, bool addToTopLevelList);

    /// What the native window says now; false when there is none.
    bool IsShown() const override;
    /// Deletes the wrapper at once, and hides nothing.
    bool Destroy() override;

private:
    /// `handle` is a window.
    void attach(HWND handle);
};

/// A new wrapper of the native window `handle`, or, when that is null, of this thread's active
/// window. It wraps nothing when there is none, or when `handle` is no window (any more).
///
/// `addToTopLevelList` makes one that wraps a window known as a top-level window of the
/// application: a modal dialog disables it with the others and enables it afterwards. While it is
/// known, the application counts as having that window open.
///
/// The caller owns the result.
PLATEN_API wxWindow* getWxWrappedWindow(HWND handle, bool addToTopLevelList);

/// Remembers which native window is active, and whether it, its parent and a given window are
/// enabled; destroying it restores all that. Meanwhile it has a wrapper of the active window, known
/// as a top-level window, for dialogs to have as their parent.
///
/// A copy remembers the same and shares the wrapper, which goes with the last of them; each
/// restores when it is destroyed. Assigning drops what was remembered before without restoring it.
class PLATEN_API WindowRestore {
public:
    /// Without an active window, `window` counts as the active one; when that is null, too, there
    /// is nothing to restore and no wrapper.
    explicit WindowRestore(HWND window);
    WindowRestore(const WindowRestore&) = default;
    WindowRestore& operator=(const WindowRestore&) = default;
    /// Enables or disables the given window, then the parent, then the window that was active, as
    /// they were, and makes the latter active again unless it is the given one. Nothing happens
    /// when the window that was active is gone; other windows that are gone are left out.
    virtual ~WindowRestore();

    /// The wrapper; null when there is nothing to restore. Borrowed.
    wxWindow* wxActiveWindow() const { return wrapper_.get(); }

private:
    HWND active_ = nullptr;
    HWND parent_ = nullptr;
    HWND window_ = nullptr;
    BOOL activeEnabled_ = FALSE;
    BOOL parentEnabled_ = FALSE;
    BOOL windowEnabled_ = FALSE;
    std::shared_ptr<HWND_wxWrapper> wrapper_;
};

#endif

}  // namespace wut
