// Mail, sent with the MAPI32.DLL that stands beside the test program.
#include "gui/os/mail_win.h"

#include <gtest/gtest.h>
#include <wx/utils.h>

#include <filesystem>
#include <string>

#include "tests/support/files.h"
#include "tests/support/wine_key_win.h"

namespace {

class Mail : public testing::Test {
protected:
    void answer(unsigned long result) {
        wxSetEnv("PLATEN_TEST_MAIL_RECORD", folder_.wide("record"));
        wxSetEnv("PLATEN_TEST_MAIL_RESULT", std::to_string(result));
    }

    TemporaryFolder folder_;
};

TEST_F(Mail, HasTheFileAttached) {
    answer(0);
    const HWND parent = reinterpret_cast<HWND>(std::uintptr_t{4660});
    EXPECT_EQ(wut::sendByMail(L"sub/../Pl\x00E4ne 1.pdf", parent), wut::MS_Sent);
    // In the ANSI code page.
    const std::string path = std::filesystem::current_path().string() + "\\Pl\xE4ne 1.pdf";
    EXPECT_EQ(readBytes(folder_.path("record")),
              "session 0 window 4660 flags 11 reserved 0\n"
              "subject Pl\xE4ne 1.pdf\n"
              "note < >\n"
              "message flags 4 recipients 0 files 1\n"
              "zero otherwise 1\n"
              "path " +
                  path + "\nname " + path + "\n");
    EXPECT_EQ(GetModuleHandleW(L"MAPI32.DLL"), nullptr);
}

TEST_F(Mail, IsSentWhenTheUserCancelsToo) {
    const std::pair<unsigned long, wut::EMailStatus> cases[] = {
        {1, wut::MS_Sent},
        {2, wut::MS_Failed},
        {0xFFFFFFFF, wut::MS_Failed},
    };
    for (const auto& [result, status] : cases) {
        answer(result);
        EXPECT_EQ(wut::sendByMail(L"a.pdf", nullptr), status) << result;
    }
}

TEST_F(Mail, NeedsAService) {
    EXPECT_EQ(wut::sendByMail(L"a.pdf", nullptr, L"platen-no-such-library.dll"), wut::MS_NoMail);
    // A library of the system, but not for mail.
    EXPECT_EQ(wut::sendByMail(L"a.pdf", nullptr, L"version.dll"), wut::MS_NoMail);
}

TEST_F(Mail, IsNotSentUnderWine) {
    EXPECT_FALSE(wut::isUnderWine());
    answer(0);
    const WineKey key;
    EXPECT_TRUE(wut::isUnderWine());
    EXPECT_EQ(wut::sendByMail(L"a.pdf", nullptr), wut::MS_NoMail);
    EXPECT_TRUE(folder_.files().empty());
}

}  // namespace
