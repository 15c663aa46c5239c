#include <gmock/gmock.h>
#include <wx/filename.h>
#include <wx/frame.h>
#include <wx/timer.h>
#include <wx/translation.h>
#include <wx/uiaction.h>

#include <string>
#include <string_view>

#include <platen/gui_look.h>
#include <platen/utcore.h>
#include "tests/gui/boxes.h"
#include "tests/gui/screen.h"
#include "tests/gui/support/gui.h"
#include "tests/support/files.h"

using namespace std::string_view_literals;

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
    wut::BasePolicy().showError();
    wut::BasePolicy("Copies: 1 to 99").showError(&frame_);
    ut::Config::setRegProduct(L"Pl\u00E4ne 7");
    EXPECT_EQ(wut::messageBox(text.c_str(), nullptr, question, &frame_), wxNO);
    wut::messageBox(L"", L"", question, nullptr, 5, 5);
    wut::messageBox(L"Replace?", L"Plot", question | wxNO_DEFAULT, &frame_);
    ut::Config::setRegProduct(L"");
    EXPECT_THAT(
        catcher.boxes,
        ElementsAre(Box{text, L"Platen", 517, &frame_}, Box{L"Bad input", L"Platen", 517, &frame_},
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

/// Knows the title in German.
class OneMessage : public wxTranslationsLoader {
public:
    wxMsgCatalog* LoadCatalog(const wxString& domain, const wxString&) override {
        // As compilers of translations write it: a header, the places of two texts and of what they
        // are translated to, and these four.
        constexpr std::string_view file =
            "\xDE\x12\x04\x95\0\0\0\0\2\0\0\0\x1C\0\0\0\x2C\0\0\0\0\0\0\0\x3C\0\0\0"
            "\0\0\0\0\x3C\0\0\0\x0D\0\0\0\x3D\0\0\0\x28\0\0\0\x4B\0\0\0\x0E\0\0\0\x74\0\0\0"
            "\0Select Folder\0Content-Type: text/plain; charset=UTF-8\n\0Ordner w\xC3\xA4hlen\0"sv;
        return wxMsgCatalog::CreateFromData(
            wxScopedCharBuffer::CreateNonOwned(file.data(), file.size()), domain);
    }
    wxArrayString GetAvailableTranslations(const wxString&) const override {
        return wxArrayString(1, {wxString("de")});
    }
};

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
    auto* translations = new wxTranslations;
    wxTranslations::Set(translations);
    translations->SetLoader(new OneMessage);
    translations->SetLanguage("de");
    ASSERT_TRUE(translations->AddCatalog("application"));
    const BoxCatcher catcher(wxID_CANCEL);
    EXPECT_FALSE(wut::selectFolderDlg(folder, &frame_));
    wxTranslations::Set(nullptr);
    EXPECT_THAT(catcher.boxes, ElementsAre(Box{L"Ordner w\u00E4hlen", L"", 0, &frame_}));
    EXPECT_EQ(folder, before);
}

}  // namespace
