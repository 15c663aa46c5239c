// Texts wrapped on a device whose fonts say anything of their extents.

#include <wx/dc.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include <platen/gui_images.h>
#include <platen/utcore.h>
#include "fuzz/oracle.h"

namespace {

/// A device that draws nothing; a text is as wide as the bytes of the input say of its letters.
class NoDevice final : public wxDCImpl {
public:
    NoDevice(wxDC* owner, std::string_view widths) : wxDCImpl(owner), widths_(widths) {}

    bool CanDrawBitmap() const override { return false; }
    bool CanGetTextExtent() const override { return true; }
    int GetDepth() const override { return 24; }
    wxSize GetPPI() const override { return {96, 96}; }
    void Clear() override {}
    void SetFont(const wxFont&) override {}
    void SetPen(const wxPen&) override {}
    void SetBrush(const wxBrush&) override {}
    void SetBackground(const wxBrush&) override {}
    void SetBackgroundMode(int) override {}
    void SetLogicalFunction(wxRasterOperationMode) override {}
    wxCoord GetCharHeight() const override { return -1; }
    wxCoord GetCharWidth() const override { return 0; }
    void SetPalette(const wxPalette&) override {}
    void DoGetSize(int* width, int* height) const override { *width = *height = 100; }
    void DoGetSizeMM(int* width, int* height) const override { *width = *height = 26; }
    void DoSetClippingRegion(wxCoord, wxCoord, wxCoord, wxCoord) override {}
    void DoSetDeviceClippingRegion(const wxRegion&) override {}
    void DestroyClippingRegion() override {}
    bool DoGetPixel(wxCoord, wxCoord, wxColour*) const override { return false; }
    bool DoFloodFill(wxCoord, wxCoord, const wxColour&, wxFloodFillStyle) override { return false; }
    void DoDrawPoint(wxCoord, wxCoord) override {}
    void DoDrawLine(wxCoord, wxCoord, wxCoord, wxCoord) override {}
    void DoDrawArc(wxCoord, wxCoord, wxCoord, wxCoord, wxCoord, wxCoord) override {}
    void DoDrawEllipticArc(wxCoord, wxCoord, wxCoord, wxCoord, double, double) override {}
    void DoDrawRectangle(wxCoord, wxCoord, wxCoord, wxCoord) override {}
    void DoDrawRoundedRectangle(wxCoord, wxCoord, wxCoord, wxCoord, double) override {}
    void DoDrawEllipse(wxCoord, wxCoord, wxCoord, wxCoord) override {}
    void DoCrossHair(wxCoord, wxCoord) override {}
    void DoDrawIcon(const wxIcon&, wxCoord, wxCoord) override {}
    void DoDrawBitmap(const wxBitmap&, wxCoord, wxCoord, bool) override {}
    void DoDrawText(const wxString&, wxCoord, wxCoord) override {}
    void DoDrawRotatedText(const wxString&, wxCoord, wxCoord, double) override {}
    bool DoBlit(wxCoord, wxCoord, wxCoord, wxCoord, wxDC*, wxCoord, wxCoord, wxRasterOperationMode,
                bool, wxCoord, wxCoord) override {
        return false;
    }
    void DoDrawLines(int, const wxPoint[], wxCoord, wxCoord) override {}
    void DoDrawPolygon(int, const wxPoint[], wxCoord, wxCoord, wxPolygonFillMode) override {}
    void DoGetTextExtent(const wxString& text, wxCoord* width, wxCoord* height, wxCoord* descent,
                         wxCoord* leading, const wxFont*) const override {
        const std::size_t at = text.length() % std::max<std::size_t>(widths_.size(), 1);
        const int said = widths_.empty() ? 0 : static_cast<signed char>(widths_[at]);
        *width = said == 127 ? 0x7FFFFFFF : said == -128 ? -0x7FFFFFFF : said * 3;
        *height = said;
        for (wxCoord* const other : {descent, leading}) {
            if (other != nullptr) {
                *other = said;
            }
        }
    }

private:
    std::string_view widths_;
};

class Device : public wxDC {
public:
    explicit Device(std::string_view widths) : wxDC(new NoDevice(this, widths)) {}
};

/// Everything but what wrapping may change: blanks become line ends, lines at the ends go.
std::wstring letters(const wxString& text) {
    std::wstring result;
    for (const wxUniChar character : text) {
        if (character != ' ' && character != '\r' && character != '\n') {
            result += static_cast<wchar_t>(character.GetValue());
        }
    }
    return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t divider = std::min<std::size_t>(input.size(), 8);
    Device dc(input.substr(0, divider));
    const wxString text(ut::decodePath(input.substr(divider)));
    const int width = input.empty() ? 0 : static_cast<signed char>(input.front()) * 4;
    const wxString wrapped = wut::ImageUtils::wrapText(text, {0, 0, width, 0}, dc);
    require(letters(wrapped) == letters(text));
    require(wrapped.find("\r\r") == wxString::npos && !wrapped.StartsWith("\r\n"));
    // Each line is broken once, so that there are at most twice as many.
    const auto linesOf = [](const wxString& lines) {
        return std::count(lines.begin(), lines.end(), '\n') +
               std::count(lines.begin(), lines.end(), '\r') + 1;
    };
    require(wrapped.Freq('\n') + 1 <= 2 * linesOf(text));
    return 0;
}
