#include <wx/app.h>
#include <wx/dcclient.h>
#include <wx/frame.h>

#include <platen/gui_text.h>

namespace wut {
namespace {

/// Keeps an application running whose only window goes meanwhile.
class KeepsRunning {
public:
    KeepsRunning() : wouldExit_(wxTheApp->GetExitOnFrameDelete()) {
        if (wouldExit_) {
            wxTheApp->SetExitOnFrameDelete(false);
        }
    }
    KeepsRunning(const KeepsRunning&) = delete;
    KeepsRunning& operator=(const KeepsRunning&) = delete;
    ~KeepsRunning() {
        if (wouldExit_) {
            wxTheApp->SetExitOnFrameDelete(true);
        }
    }

private:
    bool wouldExit_;
};

}  // namespace

TextWrapper::TextWrapper(wxWindow* window, const wxString& text, int widthMax, wxFont* font) {
    if (font != nullptr) {
        window->SetFont(*font);
    }
    Wrap(window, text, widthMax);
}

void TextWrapper::OnOutputLine(const wxString& line) { wrappedText_ += line; }

void TextWrapper::OnNewLine() { wrappedText_ += '\n'; }

// wxWidgets' values share what they hold, so that a copy costs nothing.
// NOLINTBEGIN(performance-unnecessary-value-param)
WrappedString::WrappedString(wxWindow*, const wxString& text, int widthMax, wxFont font)
    : font_(font) {
    const KeepsRunning running;
    wxFrame frame(nullptr, wxID_ANY, wxEmptyString);
    text_ = TextWrapper(&frame, text, widthMax, &font_).wrappedText();
    extents_ = wxClientDC(&frame).GetMultiLineTextExtent(text_);
}

void WrappedString::drawText(wxDC& dc, wxPoint position, wxColour colour) {
    dc.SetBackgroundMode(wxTRANSPARENT);
    dc.SetTextForeground(colour);
    dc.SetFont(font_);
    dc.DrawText(text_, position);
}
// NOLINTEND(performance-unnecessary-value-param)

}  // namespace wut
