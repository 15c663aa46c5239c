#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include <platen/utcore.h>
#include <platen/utcore_host.h>
#include "tests/support/files.h"

namespace {

TEST(Paths, PartsOfPathsOfBothSystems) {
    const std::array<const wchar_t*, 3> cases[] = {
        {L"", L"", L""},
        {L"a.pmp", L"a.pmp", L""},
        {L"b/a.pmp", L"a.pmp", L"b"},
        {L"b//a.pmp", L"a.pmp", L"b"},
        {L"/b/c/a.pmp", L"a.pmp", L"/b/c"},
        {L"/a.pmp", L"a.pmp", L"/"},
        {L"b/", L"", L"b"},
    };
    for (const auto& [path, name, folder] : cases) {
        EXPECT_EQ(ut::fileNameOf(path), name);
        EXPECT_EQ(ut::folderOf(path), folder);
    }
    for (const wchar_t* windows :
         {L"C:\\b\\a.pmp", L"c:a.pmp", L"\\\\server\\share\\a.pmp", L"b\\a.pmp", L"C:/b\\a.pmp"}) {
        EXPECT_EQ(ut::fileNameOf(windows), L"a.pmp");
    }
    EXPECT_EQ(ut::fileNameOf(L"1:a"), L"1:a");
}

TEST(Paths, JoinsAndExtends) {
    EXPECT_EQ(ut::joinPath(L"", L"a"), L"a");
    EXPECT_EQ(ut::joinPath(L"b/", L"a"), L"b/a");
    EXPECT_EQ(ut::joinPath(L"b", L"a"), std::filesystem::path(L"b").append(L"a").wstring());
    EXPECT_EQ(ut::withExtension(L"b.c/a", L"pmp"), L"b.c/a.pmp");
    EXPECT_EQ(ut::withExtension(L"b.c/a.d.e", L"pmp"), L"b.c/a.d.pmp");
    EXPECT_EQ(ut::withExtension(L"b/.a", L"pmp"), L"b/.a.pmp");
    EXPECT_EQ(ut::fullPath(L"a.pmp"), (std::filesystem::current_path() / L"a.pmp").wstring());
    const std::wstring full = ut::fullPath(L"b/a.pmp");
    EXPECT_EQ(ut::fullPath(full), full);
}

TEST(Paths, ExistingFilesAndFolders) {
    const TemporaryFolder folder;
    writeBytes(folder.path("f"), "");
    const std::wstring file = folder.wide("f");
    EXPECT_TRUE(ut::fileExists(file) && ut::FileName(file).exists());
    EXPECT_FALSE(ut::folderExists(file));
    const std::wstring here{ut::folderOf(file)};
    EXPECT_TRUE(ut::folderExists(here));
    EXPECT_FALSE(ut::fileExists(here));
    for (const std::wstring& none :
         {std::wstring(), folder.wide("g"), file + std::wstring(1, L'\0'), folder.wide("f/x")}) {
        EXPECT_FALSE(ut::fileExists(none) || ut::folderExists(none) || ut::FileName(none).exists());
    }
}

TEST(Settings, AreWhatTheyWereSetTo) {
    EXPECT_EQ(ut::getSetting(L"NoSuchSetting"), L"");
    ut::setSetting(L"TestSetting", L"one");
    ut::setSetting(L"TestSetting", L"two");
    EXPECT_EQ(ut::getSetting(L"TestSetting"), L"two");
    ut::setSetting(L"TestSetting", L"");
    EXPECT_EQ(ut::getSetting(L"TestSetting"), L"");
}

}  // namespace
