#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include <platen/utcore.h>
#include "tests/support/files.h"

namespace {

const std::vector<std::string_view> pieces = {"new"};

/// Also of files that the C++ library cannot open.
std::string content(const std::wstring& path) {
    ut::ByteBuffer bytes;
    bool tooLarge = false;
    return ut::readFile(path, 100, bytes, tooLarge) ? "unreadable" : std::string(bytes.view());
}

TEST(WindowsFiles, ReadOnlyFileIsNotReplaced) {
    const TemporaryFolder temporary;
    const std::wstring file = temporary.wide("a table.ctb");
    ASSERT_FALSE(ut::replaceFile(file, std::vector<std::string_view>{"old"}));
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY));
    const ut::SystemError error = ut::replaceFile(file, pieces);
    EXPECT_EQ(error.code, static_cast<std::uint32_t>(ERROR_ACCESS_DENIED));
    EXPECT_EQ(content(file), "old");
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_FALSE(ut::replaceFile(file, pieces));
    EXPECT_EQ(content(file), "new");
    EXPECT_NE(GetFileAttributesW(file.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0u);
}

TEST(WindowsFiles, LongPathsAndSlashes) {
    const TemporaryFolder temporary;
    std::wstring folder = temporary.wide("a folder");
    std::vector<std::wstring> folders = {folder};
    while (folder.size() < 400) {
        folder += L"/" + std::wstring(90, L'f');
        folders.push_back(L"\\\\?\\" + ut::correctSlashes(folder));
    }
    for (const std::wstring& each : folders) {
        CreateDirectoryW(each.c_str(), nullptr);
    }
    const std::wstring file = folder + L"/table.ctb";
    for (int round = 0; round < 2; ++round) {
        const ut::SystemError error = ut::replaceFile(file, pieces);
        EXPECT_FALSE(error) << error.message();
        EXPECT_EQ(content(file), "new");
    }
    DeleteFileW((folders.back() + L"\\table.ctb").c_str());
    for (; !folders.empty(); folders.pop_back()) {
        EXPECT_TRUE(RemoveDirectoryW(folders.back().c_str())) << "something was left behind";
    }
}

TEST(WindowsFiles, DeviceIsWrittenStraight) {
    const ut::SystemError error = ut::replaceFile(L"NUL", pieces);
    EXPECT_FALSE(error) << error.message();
}

}  // namespace
