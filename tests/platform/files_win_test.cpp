#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <random>
#include <vector>

#include <platen/utcore.h>

namespace {

/// A path of its own, because tests of several builds may run at a time.
std::wstring temporary() {
    return std::filesystem::temp_directory_path().wstring() + L"platen " +
           std::to_wstring(std::random_device{}());
}

const std::vector<std::string_view> pieces = {"new"};

std::string content(const std::wstring& path) {
    ut::ByteBuffer bytes;
    bool tooLarge = false;
    return ut::readFile(path, 100, bytes, tooLarge) ? "unreadable" : std::string(bytes.view());
}

TEST(WindowsFiles, ReadOnlyFileIsNotReplaced) {
    const std::wstring file = temporary() + L".ctb";
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
    std::wstring folder = temporary();
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
