#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/frame.h>
#include <wx/menu.h>

#include <memory>
#include <string>

#include <platen/gui_look.h>
#include "gui/look/font_face.h"

namespace {

TEST(MenuItems, AreDrawnInTheFaceOfTheGui) {
    wxMenu menu;
    wxMenuItem item(&menu, wxID_ANY, "Plot...");
    wut::setFace(item, L"No Such Face 7");
    EXPECT_FALSE(item.GetFont().IsOk());
    EXPECT_FALSE(item.IsOwnerDrawn());
    wut::setGuiFont(&item);
    EXPECT_EQ(item.GetFont().GetFaceName(), "Open Sans");
    EXPECT_TRUE(item.IsOwnerDrawn());
}

TEST(ProgramResources, GiveTheirBytes) {
    unsigned char* bytes = nullptr;
    ASSERT_EQ(wut::getRawBitmap(bytes, L"PLOT_LOGO"), 4u);
    const std::unique_ptr<unsigned char[]> owner(bytes);
    EXPECT_EQ(std::string(bytes, bytes + 4), std::string("B\0\xFFM", 4));
    EXPECT_EQ(wut::getRawBitmap(bytes, L"PLOT_LOGO_2"), 0u);
}

/// As on a display of twice the usual resolution.
class FineFrame : public wxFrame {
public:
    FineFrame() : wxFrame(nullptr, wxID_ANY, "Fine") {}
    wxSize GetDPI() const override { return wxSize(192, 192); }
};

TEST(Pixels, AreThoseOfTheTopWindow) {
    ASSERT_EQ(wxTheApp->GetTopWindow(), nullptr);
    EXPECT_EQ(wut::fromDIP(10), 10);
    EXPECT_EQ(wut::toDIP(10), 10);
    FineFrame frame;
    EXPECT_EQ(wut::fromDIP(10), 20);
    EXPECT_EQ(wut::toDIP(10), 5);
}

}  // namespace
