#include "tests/command/support.h"
#include "tests/support/configurations.h"

using testing::_;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

/// Names are changed without asking printers, as all systems can.
class CommandMigrateTest : public CommandTest {
protected:
    /// A configuration for this printer, with items that no document knows.
    static std::string bodyFor(std::string_view printer) {
        std::string body = edited(fullConfiguration, "\\\\server\\plotter", printer);
        body = edited(body, "short_net_name=\"short", "short_net_name=\"" + std::string(printer));
        return body + "vendor{\n x=00012.50\n}\n";
    }

    void writeConfiguration(std::string_view name, std::string_view printer) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        writeFile(name, bodyFor(printer), PiaKind::Pc3);
    }

    void expectMigrated(const Arguments& arguments, int code,
                        const testing::Matcher<std::string>& out,
                        const testing::Matcher<std::string>& err) const {
        expectRun(joined({"migrate", "@tree", "--names-only"}, arguments), code, out, err);
    }

    std::string printerIn(std::string_view name) const {
        return run({"get", path(name), "meta/win_device_name"}).out;
    }
};

TEST_F(CommandMigrateTest, MovesWhatNamesThePrinterAndKeepsACopy) {
    writeConfiguration("tree/a.pc3", "Old plotter");
    writeConfiguration("tree/deep/er/b.PC3", "OLD PLOTTER");
    writeConfiguration("tree/deep/no extension", "Old plotter");
    writeConfiguration("tree/deep/other.pc3", "Another");
    const std::string old = read("tree/a.pc3");
    const std::string other = read("tree/deep/other.pc3");
    expectMigrated(
        {"--map", "Old plotter=New=plotter"}, 0,
        AllOf(HasSubstr("a.pc3: moved from \"Old plotter\" to \"New=plotter\", driver "
                        "\"Driver name\" kept, copy in "),
              HasSubstr("b.PC3: moved from \"OLD PLOTTER\""), HasSubstr("no extension: moved"),
              HasSubstr("other.pc3: stays with \"Another\"")),
        IsEmpty());
    // The friendly name was no printer's name. Nothing else differs.
    EXPECT_EQ(bodyOf(read("tree/a.pc3")), bodyFor("New=plotter"));
    EXPECT_EQ(bodyOf(read("tree/deep/er/b.PC3")), bodyFor("New=plotter"));
    EXPECT_EQ(bodyOf(read("tree/deep/no extension")), bodyFor("New=plotter"));
    EXPECT_EQ(read("tree/a.pc3.bak"), old);
    EXPECT_EQ(read("tree/deep/other.pc3"), other);
    EXPECT_FALSE(std::filesystem::exists(path("tree/deep/other.pc3.bak")));
}

TEST_F(CommandMigrateTest, CopiesAreNeitherMovedNorOverwritten) {
    writeConfiguration("tree/a.pc3", "A");
    const std::string first = read("tree/a.pc3");
    expectMigrated({"--dry-run", "--map", "A=B"}, 0,
                   AllOf(HasSubstr("would move from \"A\" to \"B\""), Not(HasSubstr(".bak"))),
                   IsEmpty());
    EXPECT_EQ(read("tree/a.pc3"), first);
    EXPECT_FALSE(std::filesystem::exists(path("tree/a.pc3.bak")));
    expectMigrated({"--map", "A=B"}, 0, _, IsEmpty());
    const std::string second = read("tree/a.pc3");
    expectMigrated({"--map", "B=C", "--map", "C=B", "--map", "a=D"}, 1, _, _);
    EXPECT_EQ(printerIn("tree/a.pc3"), "C\n");
    EXPECT_EQ(read("tree/a.pc3.bak"), first);
    EXPECT_EQ(read("tree/a.pc3.1.bak"), second);
}

TEST_F(CommandMigrateTest, ContentDecidesAndOthersAreLeftAlone) {
    writeConfiguration("tree/a.pc3", "A");
    std::filesystem::create_directory(path("tree/others"));
    prepare({"create", "ctb", "-o", "@tree/others/pens.ctb"});
    writeFile("tree/others/a.pmp", fullParameters, PiaKind::Pc3);
    write("tree/others/note.json", R"({"data":{"meta":{"win_device_name":"A"}}})");
    write("tree/others/text", "{ win_device_name=\"A");
    prepare({"create", "pc3", "--device", "Print As PDF", "-o", "@tree/others/pdf.pc3"});
    std::vector<std::string> before;
    const std::vector<std::string> names{"pens.ctb", "a.pmp", "note.json", "text", "pdf.pc3"};
    for (const std::string& name : names) {
        before.push_back(read("tree/others/" + name));
    }
    expectMigrated({"--map", "A=B"}, 0,
                   AllOf(HasSubstr("pdf.pc3: names no printer"), Not(HasSubstr("pens.ctb")),
                         Not(HasSubstr("note"))),
                   IsEmpty());
    for (std::size_t index = 0; index < names.size(); ++index) {
        EXPECT_EQ(read("tree/others/" + names[index]), before[index]) << names[index];
    }
    // A name promises a configuration, and so does a header that leads nowhere.
    write("tree/others/table.pc3", before[0]);
    write("tree/others/cut", before[1].substr(0, 80));
    expectMigrated({"--dry-run", "--map", "B=C"}, 3, _,
                   AllOf(HasSubstr("table.pc3: warning: left alone: in spite of its name it holds "
                                   "a colour-dependent plot style table"),
                         HasSubstr("cut: warning: left alone")));
}

TEST_F(CommandMigrateTest, OneBadFileStopsNoOther) {
    writeConfiguration("tree/1.pc3", "A");
    write("tree/2.pc3", "damaged");
    writeFile("tree/3.pc3", edited(bodyFor("A"), " toolkit_version=1\n", ""), PiaKind::Pc3);
    writeConfiguration("tree/4.pc3", "A");
    const std::string rejected = read("tree/3.pc3");
    expectMigrated({"--map", "A=B", "--map", "Office=C"}, 2, _,
                   AllOf(HasSubstr("2.pc3: "), HasSubstr("3.pc3: "), HasSubstr("toolkit_version"),
                         HasSubstr("no configuration names the printer \"Office\"")));
    EXPECT_EQ(printerIn("tree/1.pc3"), "B\n");
    EXPECT_EQ(printerIn("tree/4.pc3"), "B\n");
    EXPECT_EQ(read("tree/3.pc3"), rejected);
    EXPECT_EQ(read("tree/2.pc3"), "damaged");
}

TEST_F(CommandMigrateTest, EachFormKeepsItsOwn) {
    std::filesystem::create_directory(path("tree"));
    writeFile("a.pc3", bodyFor("A"), PiaKind::Pc3);
    // The spelling of numbers is lost, which is a warning.
    ASSERT_EQ(run({"convert", "@a.pc3", "-o", "@tree/b.pc3", "--to", "json"}).code, 3);
    // JSON takes every character, a compressed file those of its code page.
    expectMigrated({"--map", "A=\xE7\xBB\x98"}, 0, _, IsEmpty());
    EXPECT_THAT(read("tree/b.pc3"), testing::StartsWith("{\n"));
    EXPECT_EQ(printerIn("tree/b.pc3"), "\xE7\xBB\x98\n");
    std::filesystem::copy_file(path("a.pc3"), path("tree/a.pc3"));
    const std::string before = read("a.pc3");
    expectMigrated({"--map", "A=\xE7\xBB\x98"}, 2, _, HasSubstr("code page"));
    EXPECT_EQ(read("tree/a.pc3"), before);
}

TEST_F(CommandMigrateTest, WrongUsageChangesNothing) {
    writeConfiguration("tree/a.pc3", "A");
    const std::string before = read("tree/a.pc3");
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"--map", "A"}, "no equals sign"},
        {{"--map", "=B"}, "before the equals sign is empty"},
        {{"--map", "A="}, "after the equals sign is empty"},
        {{"--map", "A=A"}, "the same"},
        {{"--map", "A=B", "--map", "a=C"}, "twice"},
        {{"--map", "A=B\nC"}, "control character"},
        {{"--map", "A=" + std::string(221, 'x')}, "longer"},
        {{"--map", "A=\xFF"}, "UTF-8"},
        {{"--map", "A=B", "--map", "C"}, "no equals sign"},
    };
    for (const auto& [arguments, message] : cases) {
        expectRefused(joined({"migrate", "@tree", "--names-only"}, arguments), message);
    }
    EXPECT_EQ(read("tree/a.pc3"), before);
    expectRefused({"migrate", "@nowhere", "--map", "A=B", "--names-only"}, "nowhere");
    EXPECT_THAT(names(), testing::ElementsAre("tree"));
    prepare({"create", "ctb", "-o", "@pens.ctb"});
    write("list", path("tree/a.pc3") + '\n' + path("pens.ctb") + '\n');
    expectRun({"migrate", "@@list", "--map", "A=B", "--names-only"}, 3, HasSubstr("moved from"),
              HasSubstr("pens.ctb: warning: left alone"));
    EXPECT_EQ(run({"migrate", "-", "--map", "A=B", "--names-only"}, false, before).out,
              read("tree/a.pc3"));
}

}  // namespace
