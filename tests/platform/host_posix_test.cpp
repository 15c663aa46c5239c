#include <dlfcn.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include <platen/utcore.h>
#include <platen/utcore_host.h>
#include "tests/support/files.h"

namespace {

TEST(HostFileName, TellsCaseAndBytesApart) {
    EXPECT_FALSE(ut::FileName(L"/b/A") == ut::FileName(L"/b/a"));
    EXPECT_FALSE(ut::FileName(L"/b/\xDCFF") == ut::FileName(L"/b/\xDCFE"));
    EXPECT_EQ(ut::FileName(L"/b/../\xDCFF").getFullPath(), L"/\xDCFF");
}

TEST(HostLibrary, IsLoadedFromTheFoldersOfLibrariesOnly) {
    Dl_info zlib{};
    ASSERT_NE(::dladdr(reinterpret_cast<void*>(&zlibVersion), &zlib), 0);
    const TemporaryFolder folder;
    const std::filesystem::path copy = folder.path("libplanted.so");
    std::filesystem::copy_file(zlib.dli_fname, copy);
    {
        const CurrentFolder here(copy.parent_path());
        const ut::DynamicLibrary planted(L"libplanted.so", ut::DynamicLibrary::Now);
        EXPECT_FALSE(planted.isLoaded());
        const ut::DynamicLibrary named(L"./libplanted.so", ut::DynamicLibrary::Lazy);
        auto* const version = named.function<const char*()>("zlibVersion");
        ASSERT_NE(version, nullptr);
        EXPECT_NE(version, &zlibVersion);
        EXPECT_STREQ(version(), zlibVersion());
        EXPECT_EQ(named.function<void()>("noSuchFunction"), nullptr);
    }
    // Gone with its object.
    EXPECT_EQ(::dlopen(copy.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST(HostErrors, AreErrno) {
    errno = ENOSPC;
    EXPECT_EQ(ut::sysErrorCode(), 28u);
}

TEST(Settings, StartAsTheEnvironmentHasThem) {
    ASSERT_EQ(::setenv("PLATEN_PLOT_FOLDER_X", "/pl\xC3\xA4ne/\xFF", 1), 0);
    EXPECT_EQ(ut::encodePath(ut::getSetting(L"PlotFolderX")), "/pl\xC3\xA4ne/\xFF");
    ASSERT_EQ(::unsetenv("PLATEN_PLOT_FOLDER_X"), 0);
    EXPECT_EQ(ut::getSetting(L"PlotFolderX"), L"");
}

}  // namespace
