#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <platen/utcore.h>
#include <platen/utcore_host.h>
#include "tests/support/files.h"

using namespace std::string_literals;

namespace {

TEST(HostText, ReadsLinesOfEveryEnding) {
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"", {}},
        {"a\nb\r\nc\rd", {"a", "b", "c", "d"}},
        {"\n\r\n\r\r", {"", "", "", ""}},
        // As long as the buffer, its end belongs to it; longer, the rest comes next.
        {"12345\r\nx", {"12345", "x"}},
        {"12345\rx", {"12345", "x"}},
        {"1234567\nx", {"12345", "67", "x"}},
        {"a\0b\n\0"s,
         {"a\x1A"
          "b",
          "\x1A"}},
        {"\xFF\xFE\n", {"\xFF\xFE"}},
    };
    const TemporaryFolder folder;
    for (const auto& [bytes, expected] : cases) {
        SCOPED_TRACE(bytes);
        writeBytes(folder.path("lines"), bytes);
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
            std::fopen(folder.path("lines").string().c_str(), "rb"), std::fclose);
        ASSERT_NE(file, nullptr);
        std::vector<std::string> lines;
        char text[6];
        while (ut::nfgets(text, sizeof(text), file.get()) == text) {
            lines.push_back(text);
        }
        EXPECT_EQ(lines, expected);
        EXPECT_EQ(ut::nfgets(text, 1, file.get()), nullptr);
    }
}

TEST(HostText, RemovesSpacesAtTheEndsAskedFor) {
    const std::wstring text = L" \t\r\na b\x3000 ";
    EXPECT_EQ(ut::removeSpaces(text, ""), text);
    EXPECT_EQ(ut::removeSpaces(text, "b"), L"a b\x3000 ");
    EXPECT_EQ(ut::removeSpaces(text, "e"), L" \t\r\na b");
    EXPECT_EQ(ut::removeSpaces(text, "eb"), L"a b");
    EXPECT_EQ(ut::removeSpaces(L" \t ", "e"), L"");
}

TEST(HostFileName, GivesFullPathsAndNames) {
    const std::filesystem::path here = std::filesystem::current_path();
    const ut::FileName file(L"b/./c/../a.pc3");
    EXPECT_EQ(file.getFullPath(), (here / "b" / "a.pc3").wstring());
    EXPECT_EQ(file.getFullName(), L"a.pc3");
    EXPECT_EQ(ut::FileName(L"b/").getFullName(), L"");
    EXPECT_EQ(ut::FileName(L"").getFullPath(), L"");
}

TEST(HostFileName, ComparesFullPaths) {
    const std::wstring here = std::filesystem::current_path().wstring();
    const std::tuple<std::wstring, std::wstring, bool> cases[] = {
        {L"b", here + L"/b", true}, {L"b//", L"x/../b", true}, {L"b", L"b/c", false},
        {L"b", L"bb", false},       {L"/", L"/..", true},      {L"/", L"/b", false},
        {L"", here, false},         {L"", L"", true},
    };
    for (const auto& [left, right, same] : cases) {
        EXPECT_EQ(ut::FileName(left) == ut::FileName(right), same)
            << ut::encodeUtf8(left) << " " << ut::encodeUtf8(right);
    }
}

TEST(HostLibrary, IsNotLoadedWithoutOne) {
    for (const wchar_t* const name : {L"", L"platen-no-such-library", L"/no/such/library"}) {
        const ut::DynamicLibrary library(name, ut::DynamicLibrary::Now);
        EXPECT_FALSE(library.isLoaded());
        EXPECT_EQ(library.function<void()>("anything"), nullptr);
    }
}

}  // namespace
