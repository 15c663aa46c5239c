/// The look that dialogs share, and their way of failing: fonts, colours of the theme, dialogs from
/// XML resources, message boxes.
///
/// All of it belongs to the thread of the GUI, but for what `log.h` declares.
#pragma once

#include <wx/event.h>
#include <wx/string.h>

#include <cstddef>
#include <optional>

#include <platen/log.h>
#include <platen/platen_api.h>
#include <platen/utcore_theme.h>

class wxColour;
class wxDC;
class wxDialog;
class wxFont;
class wxFrame;
class wxMenuItem;
class wxPanel;
class wxWindow;

// ---------------------------------------------------------------------------------------------
// Colours

class wxColorThemeChangedEvent;

/// The type of `wxColorThemeChangedEvent`.
wxDECLARE_EXPORTED_EVENT(PLATEN_API, wxEVT_COLOR_THEME_CHANGED, wxColorThemeChangedEvent);

/// Tells a window that the colours of the theme have changed. Its object is that window, its
/// identifier 0; it does not propagate to parents, which are told themselves.
class PLATEN_API wxColorThemeChangedEvent : public wxEvent {
public:
    wxColorThemeChangedEvent();
    wxColorThemeChangedEvent(const wxColorThemeChangedEvent& other);
    ~wxColorThemeChangedEvent() override;
    wxColorThemeChangedEvent& operator=(const wxColorThemeChangedEvent&) = delete;

    wxEvent* Clone() const override;

    /// Tells every window of the application, and has each top-level window drawn anew. Top-level
    /// windows are told in the order of their list; below each, depth first, its children in their
    /// order.
    ///
    /// On Windows the walk goes through native windows: each of them, at every depth, is sent the
    /// message that `RegisterWindowMessageW(L"Quor/WM_COLORTHEMECHANGED")` numbers, both parameters
    /// 0, and the wxWidgets windows among the children get the event before that. Then come the
    /// windows that the application's top window owns. Those of them that wxWidgets has in its list
    /// of top-level windows are so walked twice. Elsewhere only wxWidgets windows are reached.
    ///
    /// Handlers may destroy any windows, also their own. Windows that a handler makes are not told,
    /// as they are made in the new colours. A handler may set another theme and broadcast: that
    /// broadcast is complete before this one goes on.
    static void BroadcastColorThemeChanged();

private:
    wxDECLARE_DYNAMIC_CLASS(wxColorThemeChangedEvent);
};

namespace wut {

/// Makes `theme` the current one; always true. Windows learn of it from
/// `wxColorThemeChangedEvent::BroadcastColorThemeChanged` only.
PLATEN_API bool guiSetColorTheme(ut::EGuiColorTheme theme);

/// The colour in the current theme, opaque.
PLATEN_API wxColour guiColor(ut::EGuiColor color);

// ---------------------------------------------------------------------------------------------
// Fonts and sizes

/// The face of the GUI font, "Open Sans".
PLATEN_API const wchar_t* guiFontName(ut::EGuiFontName name);

/// A size of the GUI; 0 for a value that is none.
PLATEN_API int guiSize(ut::EGuiSize size);

/// True when the system has fonts of this face. What fonts there are is looked up once.
[[nodiscard]] PLATEN_API bool isFontAvailable(const wchar_t* face);

// For null, the functions below do nothing.

/// Gives the font the GUI's face. False when the system does not have it, and the font stays as it
/// was.
PLATEN_API bool setGuiFont(wxFont* font);
/// Gives the window the GUI's face; size and weight stay. Does nothing where the face is missing.
PLATEN_API void setGuiFont(wxWindow* window);
/// The same for what is drawn next.
PLATEN_API void setGuiFont(wxDC* dc);
/// The same for the font that a menu item is drawn in, which is then owner-drawn: call it before
/// the item joins its menu. Only Windows draws menu items so; elsewhere they keep the desktop's
/// font.
PLATEN_API void setGuiFont(wxMenuItem* item);

/// Sets the size of the window's font, and makes it bold when `bold`; otherwise the weight stays.
PLATEN_API void setFontSize(wxWindow* window, int pointSize, bool bold);
/// Makes the window's font bold (weight 700) or normal (400).
PLATEN_API void setFontBold(wxWindow* window, bool bold);

/// Device-independent pixels to pixels of the application's top window; unchanged without one.
PLATEN_API int fromDIP(int value);
/// Pixels of the application's top window to device-independent ones; unchanged without one.
PLATEN_API int toDIP(int value);

// ---------------------------------------------------------------------------------------------
// XML resources

// Windows are loaded from what the application has given to `wxXmlResource::Get()`. When that fails
// an error box says so in the user's language ("Failed to load dialog \"%ls\" from XRC" and its
// like are keys of translations), and that is all the user sees: what wxWidgets has to say about
// the reason is logged as debug messages. The window given is not created then. A null window
// fails, and so does a panel without a parent.

/// Makes the window `dialog` what the resource `name` says.
[[nodiscard]] PLATEN_API bool loadDialog(wxDialog* dialog, wxWindow* parent, const wchar_t* name);
/// `wizard` is a `wxWizard`.
[[nodiscard]] PLATEN_API bool loadWizard(wxDialog* wizard, wxWindow* parent, const wchar_t* name);
/// The same for a frame and for a panel.
///@{
[[nodiscard]] PLATEN_API bool loadFrame(wxFrame* frame, wxWindow* parent, const wchar_t* name);
[[nodiscard]] PLATEN_API bool loadPanel(wxPanel* panel, wxWindow* parent, const wchar_t* name);
///@}
/// Makes the panel, which `parent` owns; null when that fails.
[[nodiscard]] PLATEN_API wxPanel* loadPanel(wxWindow* parent, const wchar_t* name);

/// The bytes of a picture among the resources, as they are stored: of a PNG file, say, all of it.
/// On Windows `name` is looked up among the resources of type RCDATA of the program first. Then,
/// and elsewhere, it is a location as `wxFileSystem` knows them: a file, or "memory:plotter.png"
/// with the handlers that the application has added.
///
/// Returns the number of bytes; the caller owns them and destroys them with delete[]. When there is
/// no such resource, or it holds nothing or more than 256 MiB, returns 0 and sets `bytes` to null.
[[nodiscard]] PLATEN_API std::size_t getRawBitmap(unsigned char*& bytes, const wchar_t* name);

// ---------------------------------------------------------------------------------------------
// Boxes

/// Shows a message box and returns the button pressed (`wxOK`, `wxYES` ...). Without a caption it
/// has the product's name.
PLATEN_API int messageBox(const wchar_t* text, const wchar_t* caption = nullptr,
                          int style = wxOK | wxCENTRE, wxWindow* parent = nullptr, int x = -1,
                          int y = -1);

/// Shows an error in a box with the product's name for a caption.
PLATEN_API void errorBox(const wchar_t* text);

/// Lets the user choose a folder, beginning at `folder`. True when one was chosen, which is then in
/// `folder`; it stays as it was otherwise.
[[nodiscard]] PLATEN_API bool selectFolderDlg(wxString& folder, wxWindow* parent = nullptr);

/// What is asked of something the user gives, with the message for what does not satisfy it.
class PLATEN_API BasePolicy {
public:
    /// The message is "Bad input", translated when it is asked for or shown.
    BasePolicy();
    /// The message is in the user's language already.
    explicit BasePolicy(const wxString& errorMessage);
    virtual ~BasePolicy();

    /// In the language that the user has now, unless it was given.
    wxString errorMessage() const;

    /// Shows the message in an error box.
    void showError(wxWindow* parent = nullptr) const;

private:
    std::optional<wxString> errorMessage_;
};

}  // namespace wut
