// Mail, sent with the MAPI32.DLL that stands beside the test program.
#include "gui/os/mail_win.h"

#include <gtest/gtest.h>
#include <wx/utils.h>

#include <filesystem>
#include <string>
#include <utility>

#include "tests/support/files.h"

namespace {

TEST(Mail, HasTheFileAttached) {
    const TemporaryFolder folder;
    wxSetEnv("PLATEN_TEST_MAIL_RECORD", folder.wide("record"));
    // The user may cancel.
    for (const auto& [result, status] : {std::pair("0", wut::MS_Sent),
                                         {"1", wut::MS_Sent},
                                         {"2", wut::MS_Failed},
                                         {"4294967295", wut::MS_Failed}}) {
        wxSetEnv("PLATEN_TEST_MAIL_RESULT", result);
        const HWND parent = reinterpret_cast<HWND>(std::uintptr_t{4660});
        EXPECT_EQ(wut::sendByMail(L"sub/../Pl\x00E4ne 1.pdf", parent), status) << result;
        // In the ANSI code page.
        const std::string path = std::filesystem::current_path().string() + "\\Pl\xE4ne 1.pdf";
        EXPECT_EQ(readBytes(folder.path("record")),
                  "session 0 window 4660 flags 11 reserved 0\n"
                  "subject Pl\xE4ne 1.pdf\n"
                  "note < >\n"
                  "message flags 4 recipients 0 files 1\n"
                  "zero otherwise 1\n"
                  "path " +
                      path + "\nname " + path + "\n");
    }
    EXPECT_EQ(GetModuleHandleW(L"MAPI32.DLL"), nullptr);
}

TEST(Mail, IsNotLookedForWhereThereIsNone) {
    // A library that is not there, one of the system that is not for mail, and Wine have no
    // service.
    const TemporaryFolder folder;
    wxSetEnv("PLATEN_TEST_MAIL_RECORD", folder.wide("record"));
    EXPECT_EQ(wut::sendByMail(L"a.pdf", nullptr, L"platen-no-such-library.dll"), wut::MS_NoMail);
    EXPECT_EQ(wut::sendByMail(L"a.pdf", nullptr, L"version.dll"), wut::MS_NoMail);
    EXPECT_FALSE(wut::isUnderWine());
    // Should the key be left behind, it goes with the server of the registry.
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Wine\\Wine\\Config", 0, nullptr,
                              REG_OPTION_VOLATILE, KEY_READ, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(key);
    EXPECT_TRUE(wut::isUnderWine());
    EXPECT_EQ(wut::sendByMail(L"a.pdf", nullptr), wut::MS_NoMail);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Wine\\Wine");
    EXPECT_TRUE(folder.files().empty());
}

}  // namespace
