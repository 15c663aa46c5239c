// Position files, folders and lists of files.
#include <gtest/gtest.h>
#include <wx/fileconf.h>

#include <filesystem>
#include <string>
#include <vector>

#include <platen/gui_os.h>
#include <platen/utcore.h>
#include "tests/support/files.h"

using namespace std::string_literals;

namespace {

constexpr double unset = -99;

/// What a file gives in its own order, c to b, and whether it was read.
struct Positions {
    std::vector<double> values;
    bool read;

    bool operator==(const Positions&) const = default;
};

Positions positionsOf(const std::wstring& path) {
    double a = unset, b = unset, c = unset, d = unset, e = unset, f = unset;
    const bool read = wut::readPositionFile(OdString(path), a, b, c, d, e, f);
    return {{c, f, e, d, a, b}, read};
}

TEST(PositionFile, HoldsSixLinesWithANumberEach) {
    const std::string longLine(2046, ' ');
    const struct {
        const char* what;
        std::string bytes;
        std::vector<double> values;
        bool read;
    } cases[] = {
        {"no last end", "1\n2\n3\n4\n5\n6", {1, 2, 3, 4, 5, 6}, true},
        {"more lines", "1\n2\n3\n4\n5\n6\nseven\n", {1, 2, 3, 4, 5, 6}, true},
        {"endings", "1\r\n2\r3\n4\r\n5\r6\r", {1, 2, 3, 4, 5, 6}, true},
        {"numbers", " 1.5\t\n-2e3\n+.25\n1e-3\n 007 \n-0.5", {1.5, -2000, .25, .001, 7, -.5}, true},
        {"five lines", "1\n2\n3\n4\n5\n", {1, 2, 3, 4, 5}, false},
        {"nothing", "", {}, false},
        {"a comma", "1\n1,5\n3\n4\n5\n6\n", {1}, false},
        {"an empty line", "1\n2\n\n4\n5\n6\n7\n", {1, 2}, false},
        {"two numbers", "1\n2\n3 4\n", {1, 2}, false},
        {"a unit", "1mm\n", {}, false},
        {"too large", "1\n1e999\n", {1}, false},
        {"no number", "1\nnan\n", {1}, false},
        {"a null character", "1\n2\0\n3\n"s, {1}, false},
        {"other bytes", "1\n\xFF\xB2\n", {1}, false},
        {"a long line", "1\n" + longLine.substr(1) + "2\n3\n4\n5\n6\n", {1, 2, 3, 4, 5, 6}, true},
        {"cut in a number", "1\n" + longLine + "23\n4\n5\n6\n7\n8\n", {1}, false},
    };
    const TemporaryFolder folder;
    const std::wstring path = folder.wide("") + L"\x00E9\x4F4D.txt";
    for (const auto& entry : cases) {
        const std::string_view bytes = entry.bytes;
        ASSERT_FALSE(ut::replaceFile(path, {&bytes, 1}));
        std::vector<double> expected = entry.values;
        // What was not read keeps its value.
        expected.resize(6, unset);
        EXPECT_EQ(positionsOf(path), (Positions{expected, entry.read})) << entry.what;
    }
    const Positions none{std::vector<double>(6, unset), false};
    EXPECT_EQ(positionsOf(folder.wide("none")), none);
    EXPECT_EQ(positionsOf(folder.wide("")), none);
}

TEST(Folders, OfThePlacesBar) {
    const int identifiers[] = {0, 17, 5, 6, 18, 8, 17};
    for (int index = 0; index < 7; ++index) {
        EXPECT_EQ(wut::placesBarFolderCSIDLByIndex(index), identifiers[index]) << index;
    }
    EXPECT_EQ(wut::placesBarFolderCSIDLByIndex(-1), 17);
}

TEST(Folders, AreIdenticalByTheirFullPaths) {
    const std::wstring here = std::filesystem::current_path().wstring();
    EXPECT_TRUE(wut::areIdenticalFolders(L"b/../c/", OdString(here + L"/c")));
    EXPECT_FALSE(wut::areIdenticalFolders(L"b", L"c"));
}

class RecentFiles : public testing::Test {
protected:
    std::wstring path(const char* name) const { return folder_.wide(name); }

    void write(const char* entry, const std::wstring& value) {
        config_.Write("/Recent/" + wxString(entry), wxString(value));
    }

    std::vector<std::wstring> restored() {
        const OdArray<OdString> files =
            wut::restoreCorrectFileListFromWxFileConfigGroup(config_, L"/Recent");
        std::vector<std::wstring> paths;
        for (const OdString& file : files) {
            paths.push_back(file.text());
        }
        return paths;
    }

    /// Everything that the group holds, with the paths' last components.
    std::string group() {
        std::string entries;
        wxString entry;
        long cookie = 0;
        config_.SetPath("/Recent");
        for (bool more = config_.GetFirstEntry(entry, cookie); more;
             more = config_.GetNextEntry(entry, cookie)) {
            const wxString name = config_.Read(entry).AfterLast('/').AfterLast('\\');
            entries += (entry + "=" + name + " ").utf8_string();
        }
        config_.SetPath("/");
        return entries;
    }

    TemporaryFolder folder_;
    wxFileConfig config_{wxString(), wxString(), wxString(), wxString(), 0};
};

TEST_F(RecentFiles, LoseWhatIsGoneOrRepeated) {
    for (const char* const name : {"a.pc3", "b.pc3", "c.pc3"}) {
        writeBytes(folder_.path(name), "");
    }
    // wxFileConfig lists its entries by name: "file10" before "file2".
    write("file10", path("c.pc3"));
    write("file2", path("a.pc3"));
    write("file3", path("none.pc3"));
    write("file4", path("./a.pc3"));
    write("file5", L"");
    write("file6", path(""));
    write("file7", path("b.pc3"));
    write("file007", path("b.pc3"));
    write("file0", path("none.pc3"));
    write("filename", L"x");
    write("file", L"y");
    write("Deeper/entry", L"z");
    config_.SetPath("/Recent/Deeper");
    EXPECT_EQ(restored(), (std::vector{path("a.pc3"), path("b.pc3"), path("c.pc3")}));
    EXPECT_EQ(config_.GetPath(), "/Recent/Deeper");
    EXPECT_EQ(group(), "file=y file1=a.pc3 file2=b.pc3 file3=c.pc3 filename=x ");
    // A correct list stays.
    EXPECT_EQ(restored().size(), 3u);
    EXPECT_EQ(group(), "file=y file1=a.pc3 file2=b.pc3 file3=c.pc3 filename=x ");
}

TEST_F(RecentFiles, OfNoGroupAreNone) {
    EXPECT_TRUE(restored().empty());
    EXPECT_FALSE(config_.HasGroup("Recent"));
}

}  // namespace
