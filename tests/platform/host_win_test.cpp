#include <gtest/gtest.h>
#include <windows.h>
#include <zlib.h>

#include <filesystem>

#include <platen/utcore_host.h>
#include "tests/support/files.h"

namespace {

TEST(HostFileName, IgnoresCase) {
    EXPECT_TRUE(ut::FileName(L"C:\\B\\\x00C4") == ut::FileName(L"c:/b/\x00E4\\"));
    EXPECT_TRUE(ut::FileName(L"C:\\") == ut::FileName(L"c:/"));
    EXPECT_FALSE(ut::FileName(L"C:\\") == ut::FileName(L"C:\\b"));
    EXPECT_FALSE(ut::FileName(L"\\\\server\\share") == ut::FileName(L"\\\\server\\other"));
}

TEST(HostLibrary, IsLoadedFromTheFoldersOfLibrariesOnly) {
    wchar_t zlib[MAX_PATH];
    ASSERT_NE(GetModuleFileNameW(GetModuleHandleW(L"zlib1.dll"), zlib, MAX_PATH), 0u);
    const TemporaryFolder folder;
    const std::filesystem::path copy = folder.path("planted.dll");
    std::filesystem::copy_file(zlib, copy);
    {
        const CurrentFolder here(copy.parent_path());
        const ut::DynamicLibrary planted(L"planted.dll", ut::DynamicLibrary::Now);
        EXPECT_FALSE(planted.isLoaded());
        const ut::DynamicLibrary named(L"./planted.dll", ut::DynamicLibrary::Lazy);
        auto* const version = named.function<const char*()>("zlibVersion");
        ASSERT_NE(version, nullptr);
        EXPECT_STREQ(version(), zlibVersion());
        EXPECT_EQ(named.function<void()>("noSuchFunction"), nullptr);
        EXPECT_NE(GetModuleHandleW(L"planted.dll"), nullptr);
    }
    // Gone with its object.
    EXPECT_EQ(GetModuleHandleW(L"planted.dll"), nullptr);
    // The system's own are found by name.
    EXPECT_NE(ut::DynamicLibrary(L"version.dll", ut::DynamicLibrary::Now)
                  .function<void()>("GetFileVersionInfoW"),
              nullptr);
}

TEST(HostErrors, AreTheSystems) {
    SetLastError(ERROR_DISK_FULL);
    EXPECT_EQ(ut::sysErrorCode(), 112u);
}

}  // namespace
