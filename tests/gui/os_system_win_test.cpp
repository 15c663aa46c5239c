// What only Windows has.
#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <iterator>
#include <string>
#include <utility>

#include <platen/gui_os.h>
#include "gui/os/folders_win.h"
#include "tests/gui/support/gui.h"
#include "tests/gui/support/processes.h"
#include "tests/support/files.h"

namespace {

TEST(Programs, StartAsTheFlagsSay) {
    const TemporaryFolder folder;
    for (const auto& [flags, show] :
         {std::pair(1, SW_SHOWDEFAULT), {6, SW_MINIMIZE}, {8 | 4, SW_HIDE}}) {
        wut::OsShell().executeCommand(
            L"A title", childCommand({"start", folder.path("start").string()}).c_str(), flags);
        EXPECT_EQ(readBytes(folder.path("start")),
                  "title: A title\nshow: " + std::to_string(show) + "\npriority: 32\n");
        std::filesystem::remove(folder.path("start"));
    }
}

void setClass(const wchar_t* key, const std::wstring& text) {
    RegSetKeyValueW(HKEY_CLASSES_ROOT, key, nullptr, REG_SZ, text.c_str(),
                    static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

TEST(Programs, OpenDocuments) {
    const TemporaryFolder folder;
    const std::filesystem::path opened = folder.path("opened");
    setClass(L".platentest", L"platentest");
    setClass(L"platentest\\shell\\open\\command",
             childCommand({"arguments", opened.string()}) + L" \"%1\"");
    const std::filesystem::path document = folder.path("a.platentest");
    writeBytes(document, "");
    EXPECT_TRUE(wut::LaunchDefaultApplication(OdString(document.wstring())));
    EXPECT_TRUE(settleUntil([&] { return readBytes(opened) == document.string() + "\n"; }));
    EXPECT_TRUE(settleUntil([] { return childCount() == 0; }));
    RegDeleteTreeW(HKEY_CLASSES_ROOT, L".platentest");
    RegDeleteTreeW(HKEY_CLASSES_ROOT, L"platentest");
}

TEST(Drives, AndFoldersAreThoseThatTheApplicationKnows) {
    const std::pair<unsigned, int> cases[] = {
        {DRIVE_UNKNOWN, 5}, {DRIVE_NO_ROOT_DIR, 5}, {DRIVE_REMOVABLE, 0}, {DRIVE_FIXED, 1},
        {DRIVE_REMOTE, 4},  {DRIVE_CDROM, 2},       {DRIVE_RAMDISK, 5},
    };
    for (const auto& [type, kind] : cases) {
        EXPECT_EQ(static_cast<int>(wut::volumeKind(type)), kind) << type;
    }
    EXPECT_EQ(wut::getDriveType(L"C:\\"), wut::FSV_Fixed);
    EXPECT_EQ(wut::getDriveType(L"Q:\\"), wut::FSV_Unknown);

    const auto folder = [](int index) {
        return wut::folderPathByCSIDL(wut::placesBarFolderCSIDLByIndex(index)).text();
    };
    EXPECT_TRUE(std::filesystem::is_directory(folder(wut::PBF_Personal)));
    EXPECT_NE(folder(wut::PBF_Personal), folder(wut::PBF_Desktop));
    // The drives are no folder.
    EXPECT_EQ(folder(wut::PBF_Drives), L"");
}

TEST(Separators, AreTheUsers) {
    for (const auto& [setting, separator] :
         {std::pair(LOCALE_SLIST, &wut::getSystemDefaultSeparator),
          {LOCALE_SDECIMAL, &wut::getSystemDecimalSeparator}}) {
        wchar_t before[16] = L"";
        GetLocaleInfoW(LOCALE_USER_DEFAULT, setting, before, static_cast<int>(std::size(before)));
        SetLocaleInfoW(LOCALE_USER_DEFAULT, setting, L"|#");
        EXPECT_EQ(separator(), L'|');
        SetLocaleInfoW(LOCALE_USER_DEFAULT, setting, before);
    }
}

TEST(KeyboardState, IsReadAndSet) {
    EXPECT_FALSE(wut::getKeyboardState(nullptr));
    EXPECT_FALSE(wut::setKeyboardState(nullptr));
    unsigned char states[256], after[256];
    ASSERT_TRUE(wut::getKeyboardState(states));
    for (const int state : {0x80, 0}) {
        states[VK_F9] = static_cast<unsigned char>(state);
        ASSERT_TRUE(wut::setKeyboardState(states) && wut::getKeyboardState(after));
        EXPECT_EQ(GetKeyState(VK_F9) & 0x80, state);
        EXPECT_EQ(after[VK_F9] & 0x80, state);
    }
}

TEST(Keys, TellAltGrFromAlt) {
    const auto press = [](DWORD flags) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = VK_RMENU;
        input.ki.dwFlags = KEYEVENTF_EXTENDEDKEY | flags;
        SendInput(1, &input, sizeof(input));
    };
    press(0);
    EXPECT_TRUE(settleUntil(wut::isAltGrDown));
    press(KEYEVENTF_KEYUP);
    EXPECT_TRUE(settleUntil([] { return !wut::isAltGrDown(); }));
}

std::wstring reported;

void takeReport(const wchar_t* reason) { reported = reason; }

TEST(FormattingErrors, OfTheCLibraryGoToTheHandler) {
    // The library of most hosts; these tests are built with another one.
    const ut::DynamicLibrary library(L"ucrtbase.dll", ut::DynamicLibrary::Now);
    auto* const format =
        library.function<std::size_t(wchar_t*, std::size_t, const wchar_t*, const std::tm*)>(
            "wcsftime");
    auto* const handler = library.function<void*()>("_get_invalid_parameter_handler");
    ASSERT_TRUE(format != nullptr && handler != nullptr);
    void* const before = handler();
    wut::setFormattingErrorHandler(takeReport);
    reported.clear();
    wchar_t text[32];
    const std::tm time{};
    EXPECT_EQ(format(text, std::size(text), L"%!", &time), 0u);
    EXPECT_EQ(reported, L"the C library refused an argument");
    wut::setFormattingErrorHandler(nullptr);
    EXPECT_EQ(handler(), before);
}

}  // namespace
