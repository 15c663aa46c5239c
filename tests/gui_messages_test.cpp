#include <gmock/gmock.h>
#include <wx/dirdlg.h>
#include <wx/filename.h>
#include <wx/frame.h>
#include <wx/timer.h>
#include <wx/translation.h>
#include <wx/uiaction.h>

#include <string>

#include "gui_look.h"
#include "tests/gui_boxes.h"
#include "tests/gui_screen.h"
#include "tests/support/files.h"
#include "tests/support/gui.h"
#include "utcore.h"

namespace {

using testing::ElementsAre;
using Box = BoxCatcher::Box;

class Messages : public testing::Test {
protected:
    void SetUp() override { frame_.Show(); }
    void TearDown() override { ut::Config::setRegProduct(L""); }

    wxFrame frame_{nullptr, wxID_ANY, "Messages"};
};

TEST_F(Messages, HaveTheProductForACaption) {
    const std::wstring text = L"100% %s \u0416 \"x\"\nsecond line";
    {
        const BoxCatcher catcher;
        wut::errorBox(text.c_str());
        EXPECT_THAT(catcher.boxes, ElementsAre(Box{text, L"Platen", 517, &frame_}));
    }
    ut::Config::setRegProduct(L"Pl\u00E4ne 7");
    constexpr int question = wxYES_NO | wxICON_QUESTION;
    const BoxCatcher catcher(wxID_NO);
    EXPECT_EQ(wut::messageBox(text.c_str(), nullptr, question, &frame_, -1, -1), wxNO);
    EXPECT_EQ(wut::messageBox(L"", L"", wxYES_NO | wxICON_WARNING, nullptr, 5, 5), wxNO);
    EXPECT_EQ(wut::messageBox(L"Replace?", L"Plot", question | wxNO_DEFAULT, &frame_, -1, -1),
              wxNO);
    EXPECT_THAT(catcher.boxes,
                ElementsAre(Box{text, L"Pl\u00E4ne 7", question, &frame_},
                            Box{L"", L"Pl\u00E4ne 7", wxYES_NO | wxICON_WARNING, &frame_},
                            Box{L"Replace?", L"Plot", question | wxNO_DEFAULT, &frame_}));
}

TEST_F(Messages, OfPoliciesAreErrors) {
    const BoxCatcher catcher;
    const wut::BasePolicy plain;
    EXPECT_EQ(plain.errorMessage(), L"Bad input");
    plain.showError();
    const wut::BasePolicy copies("Copies: 1 to 99");
    copies.showError(&frame_);
    EXPECT_THAT(catcher.boxes, ElementsAre(Box{L"Bad input", L"Platen", 517, &frame_},
                                           Box{L"Copies: 1 to 99", L"Platen", 517, &frame_}));
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
                              nullptr, wxOK | wxICON_ERROR | wxCENTRE, nullptr, -1, -1),
              wxOK);
    ASSERT_TRUE(watcher.picture.IsOk());
    leavePicture("error_box", watcher.picture);
}

/// A catalogue of one message, as compilers of translations write it.
std::string catalogue(const std::string& original, const std::string& translated) {
    const std::string header = "Content-Type: text/plain; charset=UTF-8\n";
    std::string file;
    const auto number = [&file](std::size_t value) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            file += static_cast<char>(value >> shift & 0xFF);
        }
    };
    constexpr std::size_t tables = 28;
    constexpr std::size_t texts = tables + 2 * 16;
    for (const std::size_t value : {std::size_t{0x950412DE}, std::size_t{0}, std::size_t{2}, tables,
                                    tables + 16, std::size_t{0}, texts}) {
        number(value);
    }
    std::string pool;
    for (const std::string& text : {std::string(), original, header, translated}) {
        number(text.size());
        number(texts + pool.size());
        pool += text + '\0';
    }
    return file + pool;
}

class OneMessage : public wxTranslationsLoader {
public:
    wxMsgCatalog* LoadCatalog(const wxString& domain, const wxString&) override {
        const std::string file = catalogue("Select Folder", "Ordner w\xC3\xA4hlen");
        return wxMsgCatalog::CreateFromData(
            wxScopedCharBuffer::CreateNonOwned(file.data(), file.size()), domain);
    }
    wxArrayString GetAvailableTranslations(const wxString&) const override {
        return wxArrayString(1, {wxString("de")});
    }
};

/// Turns down a folder chooser, and keeps its title.
class FolderRefuser : public wxModalDialogHook {
public:
    FolderRefuser() { Register(); }
    ~FolderRefuser() override { Unregister(); }

    wxString title;

protected:
    int Enter(wxDialog* dialog) override {
        const auto* chooser = dynamic_cast<wxDirDialog*>(dialog);
        title = chooser == nullptr ? wxString("no folder chooser") : chooser->GetMessage();
        return wxID_CANCEL;
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
    const FolderRefuser refuser;
    EXPECT_FALSE(wut::selectFolderDlg(folder, &frame_));
    wxTranslations::Set(nullptr);
    EXPECT_EQ(refuser.title, L"Ordner w\u00E4hlen");
    EXPECT_EQ(folder, before);
}

}  // namespace
