#include "tests/command/support.h"
#include "tests/support/configurations.h"

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

const std::string oddBody =
    "zeta=00012.50\nalpha=\"x\nAlpha=1e3\nunknown{\n more=\\RAW\\\n flag=TRUE\n again{\n }\n}\n"
    "x=\"  two spaces\nx=7\n";

class CommandSetTest : public CommandTest {
protected:
    /// The body after these changes to `oddBody`.
    std::string changed(const Arguments& changes) {
        writeFile("odd", oddBody, PiaKind::Pc3);
        expectRun(joined({"set", "@odd", "-o", "@changed"}, changes), 0, IsEmpty());
        return bodyOf(read("changed"));
    }
};

TEST_F(CommandSetTest, ChangesWhatIsNamedAndNothingElse) {
    EXPECT_EQ(changed({"zeta=-7.5e2"}), edited(oddBody, "00012.50", "-7.5e2"));
    EXPECT_EQ(changed({"alpha=a=b \xE2\x82\xAC "}), edited(oddBody, "\"x\n", "\"a=b \x80 \n"));
    EXPECT_EQ(changed({"alpha="}), edited(oddBody, "\"x\n", "\"\n"));
    EXPECT_EQ(changed({"unknown/flag=false"}), edited(oddBody, "TRUE", "FALSE"));
    EXPECT_EQ(changed({"unknown/more=00fF"}), edited(oddBody, "RAW", "00fF"));
    EXPECT_EQ(changed({"x:num=8", "x:str=[y]"}),
              edited(edited(oddBody, "x=7", "x=8"), "  two spaces", "[y]"));
    EXPECT_EQ(changed({"--delete", "unknown/again", "--delete", "Alpha"}),
              edited(edited(oddBody, " again{\n }\n", ""), "Alpha=1e3\n", ""));
    // Later changes build on earlier ones, deleting comes first.
    EXPECT_EQ(changed({"b:block", "b/c:block", "b/c/d:num=1.5", "b/e:bool=TRUE",
                       "b/f:bin=", "--delete", "zeta", "zeta:str=12", "alpha=y", "alpha=z"}),
              edited(edited(oddBody, "zeta=00012.50\n", ""), "\"x\n", "\"z\n") +
                  "b{\n c{\n  d=1.5\n }\n e=TRUE\n f=\\\\\n}\nzeta=\"12\n");
}

TEST_F(CommandSetTest, EveryFormStaysWhatItIs) {
    write("json", R"({"other":1,"data":{"a=b":"x","b":{"c":1,"t":"two\nlines"}}})");
    prepare({"set", "@json", "a=b=x=y", "b/c=2", "--in-place"});
    EXPECT_THAT(read("json"), StartsWith("{\n"));
    EXPECT_EQ(run({"get", "@json", "a=b", "b/c", "b/t"}).out, "x=y\n2\ntwo\nlines\n");
    write("text", "a=\"x\nb{\n c=1\n}\n");
    prepare({"set", "@text", "a=y", "b/c=2", "--in-place"});
    EXPECT_EQ(read("text"), "a=\"y\nb{\n c=2\n}\n");
}

TEST_F(CommandSetTest, WithoutAChangeTheBytesAreTheSame) {
    // Bytes that no writer of ours would write: another header text and something at the end.
    writeFile("a", oddBody, PiaKind::Pc3);
    std::string bytes = read("a") + "rest";
    bytes[30] = 'X';
    write("a", bytes);
    for (const Arguments& changes :
         {Arguments{}, {"zeta=00012.50"}, {"unknown/flag=true"}, {"unknown:block"}}) {
        EXPECT_NE(run(joined({"set", "@a", "-o", "@b"}, changes)).code, 2);
        EXPECT_EQ(read("b"), bytes) << testing::PrintToString(changes);
        EXPECT_NE(run(joined({"set", "@a", "--in-place"}, changes)).code, 2);
        EXPECT_EQ(read("a"), bytes) << testing::PrintToString(changes);
    }
}

TEST_F(CommandSetTest, TheOldFileCanBeKept) {
    writeFile("a", oddBody, PiaKind::Pc3);
    const std::string old = read("a");
    prepare({"set", "@a", "--in-place=.bak", "zeta=1"});
    EXPECT_EQ(read("a.bak"), old);
    EXPECT_EQ(run({"get", "@a", "zeta"}).out, "1\n");
    // The flag takes no argument for its suffix; an old copy is replaced, also when nothing
    // changes.
    const std::string second = read("a");
    prepare({"set", "--in-place=.bak", "@a", "zeta=1"});
    EXPECT_EQ(read("a.bak"), second);
    prepare({"set", "--in-place", "@a", "zeta=2"});
    EXPECT_EQ(read("a.bak"), second);
    EXPECT_THAT(names(), testing::UnorderedElementsAre("a", "a.bak"));
    // Without a copy there is no change either.
    std::filesystem::create_directory(path("a.folder"));
    const std::string third = read("a");
    EXPECT_EQ(run({"set", "@a", "zeta=3", "--in-place=.folder"}).code, 2);
    EXPECT_EQ(read("a"), third);
}

TEST_F(CommandSetTest, RefusalsSayWhyAndWriteNothing) {
    std::vector<std::pair<Arguments, const char*>> cases{
        {{"unknown/flag=1"}, "TRUE or FALSE"},
        {{"unknown/more=abc"}, "hexadecimal"},
        {{"unknown/more=0g"}, "hexadecimal"},
        {{"unknown=1"}, "block"},
        {{"alpha:block"}, "keeps its type; delete it in the same command"},
        {{"unknown:num=1"}, "the item is a block and keeps its type"},
        {{"--delete", "x"}, ":str :num"},
        {{"--delete", "unknown/mroe"}, "did you mean \"more\"?"},
        {{"unknwon/more=00"}, "a new block is PATH:block; did you mean \"unknown\"?"},
        {{"zetta=1"}, ":bin (hexadecimal) or :block; did you mean \"zeta\"?"},
        {{"unknown/a/b/c:num=1"}, "no \"a\" in \"unknown\""},
        {{"zeta/b:num=1"}, "no \"zeta\""},
        {{"new:block=1"}, "a block has no value"},
        {{":num=1"}, "needs a name"},
        {{"=1"}, "there is no"},
        {{"a b:num=1"}, "space"},
        {{"alpha=\xFF"}, "UTF-8"},
        {{"--delete", "\xFF"}, "UTF-8"},
        {{"zeta=1", "alpha:num=1"}, "nothing was written"},
    };
    for (const char* value : {"twelve", "1,5", "0x10", "inf", " 1", "", "1e999", ".", "1e"}) {
        cases.emplace_back(Arguments{"zeta=" + std::string(value)}, "is no number");
    }
    writeFile("a", oddBody, PiaKind::Pc3);
    const std::string before = read("a");
    for (const auto& [changes, message] : cases) {
        expectRefused(joined({"set", "@a", "--in-place=.bak"}, changes), message);
    }
    EXPECT_EQ(read("a"), before);
}

TEST_F(CommandSetTest, LossesAreWarnings) {
    writeFile("a.pc3", bareConfiguration, PiaKind::Pc3);
    writeFile("a.pmp", bareParameters, PiaKind::Pc3);
    prepare({"create", "stb", "-o", "@a.stb"});
    prepare({"set", "@a.pc3", "meta/toolkit_version=5", "--in-place"});
    const struct {
        const char* file;
        std::vector<std::string> changes;
        const char* message;
    } cases[] = {
        {"@a.pc3", {"meta/driver_pathname=\xE7\xBB\x98"}, "code page"},
        {"@a.pc3", {"--delete", "media/size/name"}, "media/size/name"},
        {"@a.pc3", {"meta/toolkit_version=99999999999"}, "meta/toolkit_version"},
        {"@a.pc3", {"--delete", "meta"}, "no longer has the marks of a plot configuration"},
        {"@a.pmp", {"--delete", "udm/calibration"}, "udm/calibration"},
        {"@a.stb", {"--delete", "plot_style/0/name"}, "plot_style/0/name"},
    };
    for (const auto& [file, changes, message] : cases) {
        expectWarned(joined({"set", file, "-o", "@out"}, changes), HasSubstr(message));
        EXPECT_EQ(run({"get", "@out"}).code, 0);
    }
    // A document that could not be read before may be mended step by step.
    prepare({"set", "@out", "description=x", "-o", "@again"});
}

}  // namespace
