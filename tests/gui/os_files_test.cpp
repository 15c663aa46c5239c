// Position files, folders and lists of files.
#include <gtest/gtest.h>
#include <wx/fileconf.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <platen/gui_os.h>
#include <platen/utcore.h>
#include "tests/support/files.h"

namespace {

constexpr double unset = -99;

/// What a file gives in its own order, c to b, and whether it was read.
using Positions = std::pair<std::vector<double>, bool>;

Positions positionsOf(const std::wstring& path) {
    double a = unset, b = unset, c = unset, d = unset, e = unset, f = unset;
    const bool read = wut::readPositionFile(OdString(path), a, b, c, d, e, f);
    return {{c, f, e, d, a, b}, read};
}

TEST(PositionFile, HoldsSixLinesWithANumberEach) {
    const std::string longLine(2046, ' ');
    const std::tuple<const char*, std::string, std::vector<double>, bool> cases[] = {
        {"endings but the last", "1\r\n2\r3\n4\r\n5\r6", {1, 2, 3, 4, 5, 6}, true},
        {"more lines", "1\n2\n3\n4\n5\n6\nseven\n", {1, 2, 3, 4, 5, 6}, true},
        {"numbers", " 1.5\t\n-2e3\n+.25\n1e-3\n 007 \n-0.5", {1.5, -2000, .25, .001, 7, -.5}, true},
        {"five lines", "1\n2\n3\n4\n5\n", {1, 2, 3, 4, 5}, false},
        {"nothing", "", {}, false},
        {"a comma", "1\n1,5\n3\n4\n5\n6\n", {1}, false},
        {"an empty line", "1\n2\n\n4\n5\n6\n7\n", {1, 2}, false},
        {"two numbers", "1\n2\n3 4\n", {1, 2}, false},
        {"a unit", "1mm\n", {}, false},
        {"too large", "1\n1e999\n", {1}, false},
        {"no number", "1\nnan\n", {1}, false},
        {"other bytes", "1\n\xFF\xB2\n", {1}, false},
        {"a long line", "1\n" + longLine.substr(1) + "2\n3\n4\n5\n6\n", {1, 2, 3, 4, 5, 6}, true},
        {"cut in a number", "1\n" + longLine + "23\n4\n5\n6\n7\n8\n", {1}, false},
    };
    const TemporaryFolder folder;
    const std::wstring path = folder.wide("") + L"\x00E9\x4F4D.txt";
    for (auto [what, text, expected, read] : cases) {
        const std::string_view bytes = text;
        ASSERT_FALSE(ut::replaceFile(path, {&bytes, 1}));
        // What was not read keeps its value.
        expected.resize(6, unset);
        EXPECT_EQ(positionsOf(path), (Positions{expected, read})) << what;
    }
    const Positions none{std::vector<double>(6, unset), false};
    EXPECT_EQ(positionsOf(folder.wide("none")), none);
    EXPECT_EQ(positionsOf(folder.wide("")), none);
}

TEST(Folders, AreNumberedAndComparedByTheirFullPaths) {
    for (const auto& [index, identifier] :
         {std::pair(-1, 17), {0, 0}, {1, 17}, {2, 5}, {3, 6}, {4, 18}, {5, 8}, {6, 17}}) {
        EXPECT_EQ(wut::placesBarFolderCSIDLByIndex(index), identifier) << index;
    }
    const std::wstring here = std::filesystem::current_path().wstring();
    EXPECT_TRUE(wut::areIdenticalFolders(L"b/../c/", OdString(here + L"/c")));
    EXPECT_FALSE(wut::areIdenticalFolders(L"b", L"c"));
}

TEST(RecentFiles, LoseWhatIsGoneOrRepeated) {
    const TemporaryFolder folder;
    wxFileConfig config(wxString(), wxString(), wxString(), wxString(), 0);
    const auto restored = [&] {
        std::vector<std::wstring> paths;
        for (const OdString& file :
             wut::restoreCorrectFileListFromWxFileConfigGroup(config, L"/Recent")) {
            paths.push_back(file.text());
        }
        return paths;
    };
    EXPECT_TRUE(restored().empty());
    EXPECT_FALSE(config.HasGroup("Recent"));

    const std::vector<std::wstring> files{folder.wide("a.pc3"), folder.wide("b.pc3"),
                                          folder.wide("c.pc3")};
    for (const std::wstring& file : files) {
        writeBytes(file, "");
    }
    // wxFileConfig lists its entries by name: "file10" before "file2".
    for (const auto& [entry, value] : {
             std::pair("file10", files[2]),
             {"file2", files[0]},
             {"file3", folder.wide("none.pc3")},
             {"file4", folder.wide("./a.pc3")},
             {"file5", L""},
             {"file6", folder.wide("")},
             {"file7", files[1]},
             {"file007", files[1]},
             {"file0", folder.wide("none.pc3")},
             {"filename", L"x"},
             {"file", L"y"},
             {"Deeper/entry", L"z"},
         }) {
        config.Write(wxString("/Recent/") + entry, wxString(value));
    }
    config.SetPath("/Recent/Deeper");
    // A correct list stays.
    for (const char* const when : {"first", "again"}) {
        EXPECT_EQ(restored(), files) << when;
        EXPECT_EQ(config.GetPath(), "/Recent/Deeper");
        config.SetPath("/Recent");
        EXPECT_EQ(config.GetNumberOfEntries(), 5u);
        for (const auto& [entry, value] : {std::pair("file", std::wstring(L"y")),
                                           {"file1", files[0]},
                                           {"file2", files[1]},
                                           {"file3", files[2]},
                                           {"filename", L"x"}}) {
            EXPECT_EQ(config.Read(entry), value) << when << ", " << entry;
        }
        config.SetPath("/Recent/Deeper");
    }
}

}  // namespace
