#include <gmock/gmock.h>
#include <wx/frame.h>

#include <string>
#include <utility>

#include <platen/gui_look.h>
#include <platen/utcore.h>
#include "tests/gui/boxes.h"
#include "tests/gui/screen.h"
#include "tests/support/files.h"
#include "tests/support/german.h"

namespace {

using testing::ElementsAre;
using Box = BoxCatcher::Box;

TEST(Messages, HaveTheProductForACaption) {
    wxFrame frame(nullptr, wxID_ANY, "Messages");
    frame.Show();
    const std::wstring text = L"100% %s \u0416 \"x\"\nsecond line";
    constexpr int question = wxYES_NO | wxICON_QUESTION;
    const BoxCatcher catcher(wxID_NO);
    wut::errorBox(text.c_str());
    const wut::BasePolicy bad;
    bad.showError();
    {
        const German german{{"Bad input", "Ung\xC3\xBCltig"}};
        bad.showError();
        EXPECT_EQ(bad.errorMessage(), L"Ung\u00FCltig");
        EXPECT_EQ(wut::BasePolicy("Bad input").errorMessage(), "Bad input");
    }
    wut::BasePolicy("Copies: 1 to 99").showError(&frame);
    ut::Config::setRegProduct(L"Pl\u00E4ne 7");
    EXPECT_EQ(wut::messageBox(text.c_str(), nullptr, question, &frame), wxNO);
    wut::messageBox(L"", L"", question, nullptr, 5, 5);
    wut::messageBox(L"Replace?", L"Plot", question | wxNO_DEFAULT, &frame);
    ut::Config::setRegProduct(L"");
    EXPECT_THAT(
        catcher.boxes,
        ElementsAre(Box{text, L"Platen", 517, &frame}, Box{L"Bad input", L"Platen", 517, &frame},
                    Box{L"Ung\u00FCltig", L"Platen", 517, &frame},
                    Box{L"Copies: 1 to 99", L"Platen", 517, &frame},
                    Box{text, L"Pl\u00E4ne 7", question, &frame},
                    Box{L"", L"Pl\u00E4ne 7", question, &frame},
                    Box{L"Replace?", L"Plot", question | wxNO_DEFAULT, &frame}));
}

TEST(Messages, AskForAFolder) {
    wxFrame frame(nullptr, wxID_ANY, "Messages");
    frame.Show();
    const TemporaryFolder known;
    const wxString before = known.path("x").parent_path().wstring();
    wxString folder = before;
    // GTK's chooser does not tell where it begins.
    const std::wstring begin = onWindows() ? before.ToStdWstring() : L"";
    const German german{{"Select Folder", "Ordner w\xC3\xA4hlen"}};
    for (const auto& [answer, result] : {std::pair(wxID_CANCEL, before), {wxID_OK, "other"}}) {
        const BoxCatcher catcher(answer, "other");
        EXPECT_EQ(wut::selectFolderDlg(folder, &frame), answer == wxID_OK);
        EXPECT_THAT(catcher.boxes, ElementsAre(Box{L"Ordner w\u00E4hlen", begin, 0, &frame}));
        EXPECT_EQ(folder, result);
    }
}

}  // namespace
