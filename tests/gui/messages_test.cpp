#include <gmock/gmock.h>
#include <wx/filename.h>
#include <wx/frame.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <string>

#include <platen/gui_look.h>
#include <platen/utcore.h>
#include "tests/gui/boxes.h"
#include "tests/gui/screen.h"
#include "tests/gui/support/gui.h"
#include "tests/gui/translations.h"
#include "tests/support/files.h"

namespace {

using testing::ElementsAre;
using Box = BoxCatcher::Box;

class Messages : public testing::Test {
protected:
    void SetUp() override { frame_.Show(); }

    wxFrame frame_{nullptr, wxID_ANY, "Messages"};
};

TEST_F(Messages, HaveTheProductForACaption) {
    const std::wstring text = L"100% %s \u0416 \"x\"\nsecond line";
    constexpr int question = wxYES_NO | wxICON_QUESTION;
    const BoxCatcher catcher(wxID_NO);
    wut::errorBox(text.c_str());
    const wut::BasePolicy bad;
    bad.showError();
    {
        const German german("Bad input", "Ung\xC3\xBCltig");
        bad.showError();
        EXPECT_EQ(bad.errorMessage(), L"Ung\u00FCltig");
        EXPECT_EQ(wut::BasePolicy("Bad input").errorMessage(), "Bad input");
    }
    wut::BasePolicy("Copies: 1 to 99").showError(&frame_);
    ut::Config::setRegProduct(L"Pl\u00E4ne 7");
    EXPECT_EQ(wut::messageBox(text.c_str(), nullptr, question, &frame_), wxNO);
    wut::messageBox(L"", L"", question, nullptr, 5, 5);
    wut::messageBox(L"Replace?", L"Plot", question | wxNO_DEFAULT, &frame_);
    ut::Config::setRegProduct(L"");
    EXPECT_THAT(
        catcher.boxes,
        ElementsAre(Box{text, L"Platen", 517, &frame_}, Box{L"Bad input", L"Platen", 517, &frame_},
                    Box{L"Ung\u00FCltig", L"Platen", 517, &frame_},
                    Box{L"Copies: 1 to 99", L"Platen", 517, &frame_},
                    Box{text, L"Pl\u00E4ne 7", question, &frame_},
                    Box{L"", L"Pl\u00E4ne 7", question, &frame_},
                    Box{L"Replace?", L"Plot", question | wxNO_DEFAULT, &frame_}));
}

/// Waits within a modal box until it is drawn, keeps its picture, types a text and presses Return.
class Watcher : public wxTimer {
public:
    explicit Watcher(const wxString& typed = wxString()) : typed_(typed) { Start(100); }

    void Notify() override {
        const wxImage now = display();
        const wxRect changed = difference(before_, now);
        quiet_ = !changed.IsEmpty() && alike(last_, now) ? quiet_ + 1 : 0;
        last_ = now;
        // The frame, the window and what is in it are drawn one after the other.
        if (quiet_ < 5) {
            return;
        }
        wxUIActionSimulator user;
        if (!picture.IsOk()) {
            picture = now.GetSubImage(changed);
            user.MouseMove(changed.GetPosition() + changed.GetSize() / 2);
            user.Text(typed_);
        }
        user.Char(WXK_RETURN);
    }

    wxImage picture;

private:
    wxString typed_;
    wxImage before_ = settledDisplay();
    wxImage last_ = before_;
    int quiet_ = 0;
};

TEST_F(Messages, AreShown) {
    Watcher watcher;
    EXPECT_EQ(wut::messageBox(L"The device \"Print As PDF\" is not installed.\n"
                              L"Choose another one, or install it.",
                              nullptr, wxOK | wxICON_ERROR | wxCENTRE),
              wxOK);
    ASSERT_TRUE(watcher.picture.IsOk());
    leavePicture("error_box", watcher.picture);
}

TEST_F(Messages, AskForAFolder) {
    const TemporaryFolder chosen;
    const wxString before = chosen.path("").wstring();
    wxString folder = before;
    {
        // Wine's folder chooser opens at the desktop, whatever it is told.
        Watcher watcher(onWindows() ? folder : wxString());
        EXPECT_TRUE(wut::selectFolderDlg(folder, &frame_));
        EXPECT_TRUE(wxFileName::DirName(folder).SameAs(wxFileName::DirName(before))) << folder;
        ASSERT_TRUE(watcher.picture.IsOk());
        leavePicture("folder_chooser", watcher.picture);
    }
    folder = before;
    const German german("Select Folder", "Ordner w\xC3\xA4hlen");
    const BoxCatcher catcher(wxID_CANCEL);
    EXPECT_FALSE(wut::selectFolderDlg(folder, &frame_));
    EXPECT_THAT(catcher.boxes, ElementsAre(Box{L"Ordner w\u00E4hlen", L"", 0, &frame_}));
    EXPECT_EQ(folder, before);
}

}  // namespace
