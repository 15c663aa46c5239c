#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "utcore.h"

namespace {

namespace fs = std::filesystem;

const std::vector<std::string_view> pieces = {"new"};

std::string content(const std::wstring& path) {
    ut::ByteBuffer bytes;
    bool tooLarge = false;
    return ut::readFile(path, 100, bytes, tooLarge) ? "unreadable" : std::string(bytes.view());
}

TEST(WindowsFiles, ReadOnlyFileIsNotReplaced) {
    const std::wstring file = (fs::temp_directory_path() / "platen read-only.ctb").wstring();
    ASSERT_FALSE(ut::replaceFile(file, std::vector<std::string_view>{"old"}));
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY));
    const ut::SystemError error = ut::replaceFile(file, pieces);
    EXPECT_EQ(error.code, static_cast<std::uint32_t>(ERROR_ACCESS_DENIED));
    EXPECT_EQ(content(file), "old");
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_FALSE(ut::replaceFile(file, pieces));
    EXPECT_EQ(content(file), "new");
    EXPECT_NE(GetFileAttributesW(file.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0u);
    DeleteFileW(file.c_str());
}

TEST(WindowsFiles, LongPathsAndSlashes) {
    std::wstring folder = fs::temp_directory_path().wstring() + L"platen";
    std::vector<std::wstring> folders;
    while (folder.size() < 400) {
        folder += L"/" + std::wstring(90, L'f');
        folders.push_back(L"\\\\?\\" + ut::correctSlashes(folder));
    }
    CreateDirectoryW((fs::temp_directory_path().wstring() + L"platen").c_str(), nullptr);
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
    RemoveDirectoryW((fs::temp_directory_path().wstring() + L"platen").c_str());
}

TEST(WindowsFiles, DeviceIsWrittenStraight) {
    const ut::SystemError error = ut::replaceFile(L"NUL", pieces);
    EXPECT_FALSE(error) << error.message();
}

}  // namespace
