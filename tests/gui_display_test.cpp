// The display that the other tests of the GUI rely on.
#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/panel.h>

#include "tests/support/gui.h"

namespace {

TEST(Display, ShowsWhatAWindowDraws) {
    wxFrame frame(nullptr, wxID_ANY, "Display", wxPoint(50, 60), wxSize(300, 200));
    wxPanel panel(&frame);
    panel.SetBackgroundColour(wxColour(30, 160, 90));
    frame.Show();
    ASSERT_TRUE(settleUntil([&] {
        const wxImage image = screenshot(panel);
        const int x = image.GetWidth() / 2;
        const int y = image.GetHeight() / 2;
        return image.GetRed(x, y) == 30 && image.GetGreen(x, y) == 160 && image.GetBlue(x, y) == 90;
    }));
}

}  // namespace
