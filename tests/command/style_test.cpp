#include <gmock/gmock.h>

#include "tests/command/json_lines.h"
#include "tests/command/support.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class CommandStyleTest : public CommandTest {
protected:
    void SetUp() override {
        prepare({"create", "ctb", "-o", "@a.ctb"});
        prepare({"create", "stb", "-o", "@n.stb"});
    }
};

TEST_F(CommandStyleTest, PensAreSetInOneCommand) {
    expectRun({"style", "set", "@a.ctb", "1-9,250", "lineweight=0.35", "color=#ff8001",
               "--in-place=.old"},
              0, IsEmpty());
    EXPECT_THAT(names(), testing::Contains("a.ctb.old"));
    expectRun({"style", "list", "@a.ctb", "9-10"}, 0,
              "number  name      settings\n"
              "9       Color 9   color #ff8001, lineweight 0.35 mm\n"
              "10      Color 10  standard\n");
    EXPECT_EQ(jsonLinesOf(run({"style", "list", "@a.ctb", "=250", "--json"}))[0]["styles"].size(),
              10U);
    expectRun({"check", "@a.ctb"}, 0, HasSubstr("ok"));
    const std::string bytes = read("a.ctb");
    expectRun({"style", "set", "@a.ctb", "1", "screening=5", "--dry-run"}, 0,
              HasSubstr("a.ctb: would change\n"));
    expectRun({"style", "set", "@a.ctb", "1", "lineweight=0.35", "--dry-run"}, 0,
              HasSubstr("a.ctb: stays as it is\n"));
    expectRun({"style", "set", "@a.ctb", "1", "lineweight=0.35", "-o", "@same"}, 0, IsEmpty());
    EXPECT_EQ(read("same"), bytes);
    EXPECT_EQ(read("a.ctb"), bytes);
}

TEST_F(CommandStyleTest, NamedStylesComeAndGo) {
    prepare({"style", "add", "@n.stb", "Wall thick", "lineweight=0.7", "--in-place"});
    prepare({"style", "add", "@n.stb", "Wall thin", "--like", "Wall thick", "--in-place"});
    prepare({"style", "rename", "@n.stb", "3", "Old", "--in-place"});
    expectRun({"merge-pens", "@n.stb"}, 0,
              AllOf(HasSubstr("\"Wall thick\" stands for \"Old\"\n"), HasSubstr("would change")));
    prepare({"style", "copy", "@n.stb", "Normal", "Old", "--in-place"});
    expectRun({"merge-pens", "@n.stb", "--in-place"}, 0, IsEmpty());
    prepare({"style", "remove", "@n.stb", "ol*", "--in-place"});
    EXPECT_EQ(run({"style", "list", "@n.stb"}).out,
              "number  name        settings\n"
              "1       Normal      standard\n"
              "2       Wall thick  lineweight 0.7 mm\n");
}

TEST_F(CommandStyleTest, RefusalsSayWhatIsThere) {
    const std::string old = read("a.ctb");
    const std::pair<Arguments, const char*> cases[] = {
        {{"set", "@a.ctb", "1", "screning=5", "--in-place"}, "did you mean \"screening\"?"},
        {{"set", "@a.ctb", "1", "screening=101", "--in-place"}, "0 to 100"},
        {{"set", "@a.ctb", "1", "screening=5", "pen=x", "--in-place"}, "pen cannot be \"x\""},
        {{"set", "@a.ctb", "Colour 12", "pen=1", "--in-place"}, "did you mean \"Color 12\""},
        {{"set", "@a.ctb", "1", "pen=1"}, "either -o OUT or --in-place"},
        {{"add", "@a.ctb", "More", "--in-place"}, "one style for each of the 255"},
        {{"rename", "@a.ctb", "1-2", "More", "--in-place"}, "names 2 styles"},
        {{"rename", "@a.ctb", "1", "color 2", "--in-place"}, "already"},
        {{"remove", "@a.ctb", "1", "--in-place"}, "one style for each of the 255"},
    };
    for (const auto& [arguments, message] : cases) {
        expectRefused(joined({"style"}, arguments), message);
    }
    expectRefused({"merge-pens", "@a.ctb", "--in-place"}, "platen convert");
    EXPECT_EQ(run({"style", "list", "@a.ctb", "Colour*"}).code, 1);
    expectRefused({"lineweights", "@a.ctb", "set", "27=1", "--in-place"}, "from 0 to 26");
    expectRefused({"lineweights", "@a.ctb", "set", "1=201", "--in-place"}, "0 to 200 mm");
    expectRefused({"lineweights", "@a.ctb", "8=1", "--in-place"}, "write set");
    EXPECT_EQ(read("a.ctb"), old);
    prepare({"create", "pc3", "--device", "Print As PDF", "-o", "@p.pc3"});
    expectRefused({"style", "list", "@p.pc3"}, "no plot style table but a plot configuration");
}

TEST_F(CommandStyleTest, LineWeightsAreListedAndSet) {
    prepare({"style", "set", "@a.ctb", "7", "lineweight=0.25", "--in-place"});
    prepare({"lineweights", "@a.ctb", "set", "8=0.26", "9=0.012in", "--in-place"});
    EXPECT_THAT(run({"lineweights", "@a.ctb"}).out,
                AllOf(HasSubstr("8       0.26         0.0102  7\n"),
                      HasSubstr("9       0.3048       0.012\n")));
}

TEST_F(CommandStyleTest, TablesGoThroughOtherKinds) {
    prepare({"create", "ctb", "--preset", "screening", "-o", "@s.ctb"});
    expectRun({"merge-pens", "@s.ctb"}, 0, "equal: colours 1, 11-255\n");
    prepare({"convert", "@s.ctb", "-o", "@named.stb"});
    expectWarned({"convert", "@named.stb", "-o", "@back.ctb"},
                 HasSubstr("lost: the name \"Style 2\" of what is now colour 2"));
    EXPECT_EQ(run({"get", "@back.ctb"}).out, run({"get", "@s.ctb"}).out);
    // A folder of tables into one of CSV files.
    prepare({"convert", "-r", "@", "-o", "@csv", "--to", "csv"});
    EXPECT_THAT(read("csv/s.csv"), testing::StartsWith("number,name,localized_name,dither,"));
}

}  // namespace
