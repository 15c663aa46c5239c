#include <gmock/gmock.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/fs_mem.h>
#include <wx/panel.h>
#include <wx/wizard.h>
#include <wx/xrc/xmlres.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <platen/gui_look.h>
#include "tests/gui/boxes.h"
#include "tests/gui/screen.h"
#include "tests/gui/support/gui.h"
#include "tests/support/files.h"
#include "tests/support/german.h"
#include "tests/support/log_keeper.h"

namespace {

using testing::_;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Box = BoxCatcher::Box;

constexpr const char* resources = R"(<?xml version="1.0" encoding="UTF-8"?>
<resource xmlns="http://www.wxwidgets.org/wxxrc" version="2.5.3.0">
  <object class="wxDialog" name="dialog"><title>A dialog</title>
    <object class="wxBoxSizer"><object class="sizeritem"><flag>wxALL</flag><border>40</border>
      <object class="wxStaticText"><label>Paper size: ISO full bleed A1</label></object>
    </object></object>
  </object>
  <object class="wxFrame" name="frame"><title>A frame</title></object>
  <object class="wxPanel" name="panel"><object class="wxButton" name="MyButton"/></object>
  <object class="wxWizard" name="wizard"><title>A wizard</title>
    <object class="wxWizardPageSimple" name="MyPage"/>
  </object>
  <object class="wxPanel" name="OddPanel">
    <object class="NoSuchClass" name="MyUnknown"/>
  </object>
</resource>)";

class XmlResources : public testing::Test {
protected:
    static void SetUpTestSuite() {
        wxFileSystem::AddHandler(new wxMemoryFSHandler);
        wxMemoryFSHandler::AddFile("look.xrc", resources);
        wxXmlResource::Get()->InitAllHandlers();
        ASSERT_TRUE(wxXmlResource::Get()->Load("memory:look.xrc"));
    }
    static void TearDownTestSuite() {
        delete wxXmlResource::Set(nullptr);
        wxMemoryFSHandler::RemoveFile("look.xrc");
    }

    wxFrame parent_{nullptr, wxID_ANY, "Parent"};
};

TEST_F(XmlResources, BecomeWindowsOrAreNamedInOneBox) {
    wxDialog dialog;
    wxFrame frame;
    wxWizard wizard;
    auto* given = new wxPanel;
    wxPanel* made = nullptr;
    const std::pair<std::wstring, std::function<bool(const wchar_t*)>> loaders[] = {
        {L"dialog", [&](auto name) { return wut::loadDialog(&dialog, &parent_, name); }},
        {L"wizard", [&](auto name) { return wut::loadWizard(&wizard, &parent_, name); }},
        {L"frame", [&](auto name) { return wut::loadFrame(&frame, &parent_, name); }},
        {L"panel", [&](auto name) { return wut::loadPanel(given, &parent_, name); }},
        {L"panel", [&](auto name) { return (made = wut::loadPanel(&parent_, name)) != nullptr; }},
    };
    // The user sees what is logged to this target as soon as the application is idle.
    wxLogGui shown;
    wxLog* before = wxLog::SetActiveTarget(&shown);
    for (const auto& [kind, load] : loaders) {
        // (There is a button of the last name, but no window of any of these kinds.)
        for (const std::wstring name :
             {L"Missing", L"100% %s%n%ls \u0416\u00E4 \U0001F4D0 \"q\"", L"", L"MyButton"}) {
            const BoxCatcher catcher;
            EXPECT_FALSE(load(name.c_str()));
            settle();
            wxLog::FlushActive();
            std::string format = "Failed to load ";
            format.append(kind.begin(), kind.end()).append(" \"%ls\" from XRC");
            // What else looks like a format is none.
            const German german{{format, "100% \xC3\xBC %d: \"%ls\", %ls"}};
            EXPECT_FALSE(load(name.c_str()));
            EXPECT_THAT(catcher.boxes,
                        ElementsAre(Box{L"Failed to load " + kind + L" \"" + name + L"\" from XRC",
                                        L"Platen", 517, nullptr},
                                    Box{L"100% \u00FC %d: \"" + name + L"\", %ls", L"Platen", 517,
                                        nullptr}));
        }
        const BoxCatcher catcher;
        EXPECT_TRUE(load(kind.c_str()));
        EXPECT_THAT(catcher.boxes, IsEmpty());
    }
    wxLog::SetActiveTarget(before);
    EXPECT_THAT((std::vector{dialog.GetTitle(), wizard.GetTitle(), frame.GetTitle()}),
                ElementsAre("A dialog", "A wizard", "A frame"));
    // Windows that are not there are not loaded.
    const BoxCatcher catcher;
    wxPanel unborn;
    EXPECT_FALSE(wut::loadDialog(nullptr, &parent_, L"dialog") ||
                 wut::loadWizard(nullptr, &parent_, L"wizard") ||
                 wut::loadFrame(nullptr, &parent_, L"frame") ||
                 wut::loadPanel(nullptr, &parent_, L"panel") ||
                 wut::loadPanel(&unborn, nullptr, L"panel") ||
                 wut::loadDialog(&dialog, nullptr, nullptr));
    EXPECT_EQ(wut::loadPanel(nullptr, L"panel"), nullptr);
    EXPECT_EQ(catcher.boxes.size(), 7u);
    for (const wxPanel* panel : {given, made}) {
        EXPECT_EQ(panel->GetParent(), &parent_);
        EXPECT_NE(panel->FindWindow("MyButton"), nullptr);
    }
}

TEST_F(XmlResources, LeaveTheReasonInTheLog) {
    const BoxCatcher catcher;
    LogKeeper log;
    EXPECT_EQ(wut::loadPanel(&parent_, L"Missing"), nullptr);
    EXPECT_EQ(wxLog::GetActiveTarget(), &log);
    // What is wrong with a window that was loaded all the same stays an error.
    EXPECT_NE(wut::loadPanel(&parent_, L"OddPanel"), nullptr);
    EXPECT_THAT(log.records, ElementsAre(FieldsAre(wxLOG_Debug, HasSubstr(L"Missing"), _),
                                         FieldsAre(wxLOG_Error, HasSubstr(L"NoSuchClass"), _)));
    EXPECT_EQ(catcher.boxes.size(), 1u);
}

TEST_F(XmlResources, AreShownInBothThemes) {
    const wxImage before = settledDisplay();
    wxDialog dialog;
    ASSERT_TRUE(wut::loadDialog(&dialog, nullptr, L"dialog"));
    for (wxWindow* window : {static_cast<wxWindow*>(&dialog), dialog.GetChildren().front()}) {
        wut::setGuiFont(window);
        window->Bind(wxEVT_COLOR_THEME_CHANGED, [=](wxColorThemeChangedEvent&) {
            window->SetBackgroundColour(wut::guiColor(ut::EGuiColor::WindowBackground));
            window->SetForegroundColour(wut::guiColor(ut::EGuiColor::Text));
        });
    }
    dialog.Fit();
    dialog.Show();
    for (const auto theme : {ut::EGuiColorTheme::Dark, ut::EGuiColorTheme::Light}) {
        wut::guiSetColorTheme(theme);
        wxColorThemeChangedEvent::BroadcastColorThemeChanged();
        const wxImage picture = settledDisplay();
        const wxPoint corner = dialog.ClientToScreen(wxPoint(4, 4));
        EXPECT_EQ(wxColour(picture.GetRed(corner.x, corner.y), picture.GetGreen(corner.x, corner.y),
                           picture.GetBlue(corner.x, corner.y)),
                  wut::guiColor(ut::EGuiColor::WindowBackground));
        leavePicture(theme == ut::EGuiColorTheme::Dark ? "dialog_dark" : "dialog_light",
                     picture.GetSubImage(difference(before, picture)));
    }
}

TEST_F(XmlResources, GiveTheBytesOfPictures) {
    const TemporaryFolder folder;
    const std::string content("\x89PNG\r\n\x1A\n\0\xFF raw", 14);
    writeBytes(folder.path("logo.png"), content);
    writeBytes(folder.path("empty.png"), "");
    wxMemoryFSHandler::AddFile("logo.png", content.data(), content.size());
    for (const auto& [name, expected] : {std::pair(folder.wide("logo.png"), content),
                                         {L"memory:logo.png", content},
                                         {folder.wide("empty.png"), ""},
                                         {folder.wide(""), ""},
                                         {L"memory:missing.png", ""},
                                         {L"", ""},
                                         {L"/dev/zero", ""}}) {
        unsigned char* bytes = reinterpret_cast<unsigned char*>(1);
        const std::size_t size = wut::getRawBitmap(bytes, name.c_str());
        const std::unique_ptr<unsigned char[]> owner(bytes);
        EXPECT_EQ(bytes == nullptr, size == 0);
        EXPECT_EQ(std::string(bytes, bytes + size), expected);
    }
    wxMemoryFSHandler::RemoveFile("logo.png");
}

}  // namespace
