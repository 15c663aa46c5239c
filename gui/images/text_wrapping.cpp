#include <wx/app.h>
#include <wx/arrstr.h>
#include <wx/dcclient.h>
#include <wx/dynarray.h>
#include <wx/frame.h>

#include <algorithm>
#include <cstddef>

#include <platen/gui_text.h>
#include "gui/images/line_feeds.h"

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

/// The blank at which a line that is too wide is broken: the last one with less than `widthMax`
/// pixels before it. Where the first word alone is wider, the last of those behind it. `npos` when
/// the line fits or is one word.
std::size_t breakOf(const wxString& line, int widthMax, const wxDC& dc) {
    wxArrayInt widths;
    dc.GetPartialTextExtents(line, widths);
    const auto fitting = static_cast<std::size_t>(
        std::lower_bound(widths.begin(), widths.end(), widthMax) - widths.begin());
    if (fitting == line.length()) {
        return wxString::npos;
    }
    const std::size_t blank = line.rfind(' ', fitting);
    if (blank != wxString::npos) {
        return blank;
    }
    const std::size_t wordEnd = line.find(' ', fitting);
    if (wordEnd == wxString::npos) {
        return wxString::npos;
    }
    return std::min(line.find_first_not_of(' ', wordEnd), line.length()) - 1;
}

}  // namespace

TextWrapper::TextWrapper(wxWindow* window, const wxString& text, int widthMax, wxFont* font) {
    const wxString lines = withLineFeeds(text);
    if (window == nullptr) {
        TextWrapper::OnOutputLine(lines);
        return;
    }
    if (font != nullptr) {
        window->SetFont(*font);
    }
    // As the base does it, which however gives up on a line at a word that is too wide.
    const wxClientDC dc(window);
    bool isFirst = true;
    for (wxString line : wxSplit(lines, '\n', '\0')) {
        if (!isFirst) {
            TextWrapper::OnNewLine();
        }
        isFirst = false;
        std::size_t end = wxString::npos;
        while (widthMax >= 0 && (end = breakOf(line, widthMax, dc)) != wxString::npos) {
            TextWrapper::OnOutputLine(line.substr(0, end));
            line.erase(0, end + 1);
            if (line.empty()) {
                break;
            }
            TextWrapper::OnNewLine();
        }
        TextWrapper::OnOutputLine(line);
    }
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
