// What only Windows has.
#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <iterator>
#include <string>

#include <platen/gui_os.h>
#include "gui/os/folders_win.h"
#include "tests/gui/support/gui.h"
#include "tests/gui/support/processes.h"
#include "tests/support/files.h"

namespace {

/// A class of files or of addresses, which `command` opens, while it lives.
class FileClass {
public:
    FileClass(const std::wstring& name, const std::wstring& text, const std::wstring& command)
        : path_(name) {
        set(L"", nullptr, text);
        set(L"", L"URL Protocol", L"");
        set(L"\\shell\\open\\command", nullptr, command);
    }
    FileClass(const FileClass&) = delete;
    FileClass& operator=(const FileClass&) = delete;
    ~FileClass() { RegDeleteTreeW(HKEY_CLASSES_ROOT, path_.c_str()); }

private:
    void set(const std::wstring& below, const wchar_t* value, const std::wstring& text) const {
        RegSetKeyValueW(HKEY_CLASSES_ROOT, (path_ + below).c_str(), value, REG_SZ, text.c_str(),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }

    std::wstring path_;
};

/// Changes a setting of the user's locale while it lives.
class UserSetting {
public:
    UserSetting(LCTYPE setting, const wchar_t* value) : setting_(setting) {
        GetLocaleInfoW(LOCALE_USER_DEFAULT, setting, before_, static_cast<int>(std::size(before_)));
        SetLocaleInfoW(LOCALE_USER_DEFAULT, setting, value);
    }
    UserSetting(const UserSetting&) = delete;
    UserSetting& operator=(const UserSetting&) = delete;
    ~UserSetting() { SetLocaleInfoW(LOCALE_USER_DEFAULT, setting_, before_); }

private:
    LCTYPE setting_;
    wchar_t before_[16] = L"";
};

TEST(Programs, StartAsTheFlagsSay) {
    const struct {
        int flags;
        int show;
    } cases[] = {{1, SW_SHOWDEFAULT}, {6, SW_MINIMIZE}, {8 | 4, SW_HIDE}};
    const TemporaryFolder folder;
    for (const auto& entry : cases) {
        wut::OsShell().executeCommand(
            L"A title", childCommand({"start", folder.path("start").string()}).c_str(),
            entry.flags);
        EXPECT_EQ(readBytes(folder.path("start")),
                  "title: A title\nshow: " + std::to_string(entry.show) + "\npriority: 32\n");
        std::filesystem::remove(folder.path("start"));
    }
}

TEST(Programs, OpenDocumentsAndPages) {
    const TemporaryFolder folder;
    const std::filesystem::path opened = folder.path("opened");
    const FileClass extension(L".platentest", L"platentest", L"");
    const FileClass documents(L"platentest", L"",
                              childCommand({"arguments", opened.string()}) + L" \"%1\"");
    const std::string document = folder.path("a.platentest").string();
    writeBytes(document, "");
    for (const std::string& page : {document, std::string("platentest://page/1")}) {
        const OdString address(std::wstring(page.begin(), page.end()));
        EXPECT_TRUE(page == document ? wut::LaunchDefaultApplication(address)
                                     : wut::LaunchDefaultBrowser(address, false));
        EXPECT_TRUE(settleUntil([&] { return readBytes(opened) == page + "\n"; })) << page;
        std::filesystem::remove(opened);
    }
    EXPECT_TRUE(settleUntil([] { return childCount() == 0; }));
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
    const UserSetting list(LOCALE_SLIST, L"|#");
    const UserSetting decimal(LOCALE_SDECIMAL, L",");
    EXPECT_EQ(wut::getSystemDefaultSeparator(), L'|');
    EXPECT_EQ(wut::getSystemDecimalSeparator(), L',');
}

TEST(KeyboardState, IsReadAndSet) {
    EXPECT_FALSE(wut::getKeyboardState(nullptr));
    EXPECT_FALSE(wut::setKeyboardState(nullptr));
    unsigned char states[256];
    ASSERT_TRUE(wut::getKeyboardState(states));
    for (const bool down : {true, false}) {
        const unsigned char state = down ? 0x80 : 0;
        states[VK_F9] = state;
        ASSERT_TRUE(wut::setKeyboardState(states));
        EXPECT_EQ(GetKeyState(VK_F9) < 0, down);
        unsigned char after[256] = {};
        ASSERT_TRUE(wut::getKeyboardState(after));
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
