/// Texts wrapped at the width of a window.
#pragma once

#include <wx/colour.h>
#include <wx/font.h>
#include <wx/gdicmn.h>
#include <wx/string.h>
#include <wx/textwrapper.h>

#include <platen/platen_api.h>

class wxDC;
class wxWindow;

namespace wut {

// A line of a given text ends with a line feed, with a carriage return, or with both in this order:
// the same lines have the same size and look in every system, and the result has line feeds alone.

/// A text wrapped at words, as wide as the font of a window makes it.
class PLATEN_API TextWrapper : public wxTextWrapper {
public:
    /// Wraps `text` at `widthMax` pixels (-1: not at all); a word that is wider stands alone on its
    /// line. A `font` that is not null becomes the window's font for good. Without a window nothing
    /// is wrapped.
    TextWrapper(wxWindow* window, const wxString& text, int widthMax, wxFont* font);

    /// The lines, separated by line feeds.
    const wxString& wrappedText() const { return wrappedText_; }

    /// Appends to the text.
    void OnOutputLine(const wxString& line) override;
    /// Appends a line feed.
    void OnNewLine() override;

private:
    wxString wrappedText_;
};

/// A text wrapped at words, its font and its size.
class PLATEN_API WrappedString {
public:
    WrappedString() = default;

    /// Wraps `text` at `widthMax` pixels (-1: not at all), measured on a window of its own for
    /// which there has to be a display. The window that is passed is not used and may be null.
    WrappedString(wxWindow* window, const wxString& text, int widthMax, wxFont font);

    /// The lines, separated by line feeds.
    wxString string() const { return text_; }
    /// In pixels, of all lines.
    wxSize extents() const { return extents_; }
    wxFont font() const { return font_; }         ///< As it was given.
    bool empty() const { return text_.empty(); }  ///< There is no text.

    /// Draws the lines with their upper left corner at `position`, leaving what is behind them.
    void drawText(wxDC& dc, wxPoint position, wxColour colour);

private:
    wxString text_;
    wxSize extents_ = wxSize(0, 0);
    wxFont font_;
};

}  // namespace wut
