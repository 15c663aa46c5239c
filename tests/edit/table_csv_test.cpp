#include <gmock/gmock.h>

#include <regex>
#include <string>

#include "edit/csv.h"
#include "tests/command/support.h"

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

TEST(Csv, NoTextIsAFormulaAnywhereAndEachComesBack) {
    const char* const texts[] = {"=1+1", "a;=1", "a,-1",  "\t=1",     "a\n@x", "'=1",   "''",
                                 "\"=1", "",     "plain", "a'=b;'+c", "x;\"=", "\r\n=", "-;-;-"};
    const std::regex formula("(^|[,;\t\n|])\"*[=+@-]");
    for (const std::string text : texts) {
        const std::string safe = platen::csv::defused(text);
        EXPECT_EQ(platen::csv::restored(safe), text);
        EXPECT_FALSE(std::regex_search(safe, formula)) << text;
        std::string bytes;
        platen::csv::addRow({safe, text}, bytes);
        platen::csv::Reader reader(bytes);
        std::vector<std::string> cells;
        ASSERT_TRUE(reader.next(cells)) << reader.fault();
        EXPECT_EQ(cells, (std::vector{safe, text}));
        EXPECT_FALSE(reader.next(cells));
    }
}

class CommandCsvTest : public CommandTest {
protected:
    void SetUp() override { prepare({"create", "ctb", "-o", "@a.ctb"}); }

    std::string setting(const std::string& style, const std::string& key) const {
        return run({"get", "@a.ctb", "plot_style/" + style + '/' + key}).out;
    }
};

TEST_F(CommandCsvTest, FilesOfSpreadsheetsAreTaken) {
    const std::pair<const char*, const char*> cases[] = {
        {"number,lineweight\n3,0.35\n", "10\n"},
        {"\xEF\xBB\xBFnumber;lineweight;color\r\n\r\n3;0,5;#ff0000\r\n", "13\n"},
        {"lineweight\tname\n\"0,7 mm\"\tcolor_3", "17\n"},
        {"number,lineweight,\n3,\"1.06mm\",\n", "21\n"},
        {"number,lineweight\nlineweight 5,0.77\n3,0.77\n", "5\n"},
    };
    for (const auto& [csv, weight] : cases) {
        write("a.csv", csv);
        expectRun({"convert", "@a.csv", "-o", "@a.ctb"}, 0, IsEmpty());
        EXPECT_EQ(setting("2", "lineweight"), weight) << csv;
    }
    EXPECT_EQ(setting("2", "color"), "-1006698496\n");
    EXPECT_EQ(setting("1", "lineweight"), "0\n");
}

TEST_F(CommandCsvTest, FaultsSayWhereAndWriteNothing) {
    const std::string old = read("a.ctb");
    const std::pair<std::string, const char*> cases[] = {
        {"number,lineweight\n1,0.35\n7,0.36\n", "row 3, column 2 (lineweight): lineweight cannot"},
        {"number,screening\n\n1,101\n", "row 3, column 2 (screening)"},
        {"number,screening\n256,1\n", "row 2, column 1 (number): a colour table"},
        {"number,screening\n0,1\n", "row 2, column 1 (number)"},
        {"number,screening\n1,1\n1,2\n",
         "row 3, column 1 (number): the same style stands in row 2"},
        {"number,colour\n1,1\n", "row 1, column 2: there is no column \"colour\""},
        {"number,number\n1,1\n", "row 1, column 1: the column \"number\" stands there twice"},
        {"number\n1,x\n", "row 2, column 2: the column has no name"},
        {"screening\n1\n", "no column \"number\" or \"name\""},
        {"", "no row with the names"},
        {"name,screening\nNobody,1\n", "row 2, column 1 (name): a colour table"},
        {"number,localized_name\n1,Color 2\n", "row 2, column 2 (localized_name): another style"},
        {"number,name\n1,Color_2\n", "row 2: another style"},
        {"number,name\n1, \n", "row 2, column 2 (name)"},
        {"number,description\n1,\xE4\n", "row 2, column 2: the text is not UTF-8"},
        {"number,description\n1,\"open\n", "row 2, column 2: the quote"},
        {"number,description\n1,a\"b\n", "row 2, column 2: a quote stands"},
        {"number,description\n1,\"a\"b\n", "row 2, column 2: something stands"},
        {"number,description\n1," + std::string(1, '\0') + "\n", "row 2, column 2: the cell holds"},
        {"number,description\n1," + std::string(1000000, 'x'), "row 2, column 2: the cell is too"},
        {std::string(1000000, ','), "row 1, column 1001: the row has too many columns"},
        {"number,lineweight\nlineweight 27,1\n", "row 2, column 1 (number)"},
        {"number,lineweight\nlineweight 1,201\n", "row 2, column 2 (lineweight)"},
        {"number,scale_factor\ntable,big\n", "row 2, column 2 (scale_factor)"},
        {"number,apply_factor\ntable,maybe\n", "row 2, column 2 (apply_factor)"},
        {"number,colors\n1,5\n", "row 2, column 2 (colors)"},
    };
    for (const auto& [csv, message] : cases) {
        write("a.csv", csv);
        SCOPED_TRACE(message);
        expectRefused({"convert", "@a.csv", "-o", "@a.ctb"}, message);
        EXPECT_EQ(read("a.ctb"), old);
    }
}

TEST_F(CommandCsvTest, BasesAreTheOldFileOrNamedOrFresh) {
    prepare({"style", "set", "@a.ctb", "5", "screening=50", "--in-place"});
    write("a.csv", "number,lineweight\n3,0.35\n");
    prepare({"convert", "@a.csv", "-o", "@b.ctb", "--base", "@a.ctb"});
    prepare({"convert", "@a.csv", "-o", "@c.ctb"});
    EXPECT_EQ(run({"get", "@b.ctb", "plot_style/4/screen", "plot_style/2/lineweight"}).out,
              "50\n10\n");
    EXPECT_EQ(run({"get", "@c.ctb", "plot_style/4/screen"}).out, "100\n");
    prepare({"convert", "@a.ctb", "-o", "@d.csv"});
    expectRefused({"convert", "@d.csv", "-o", "@d.stb", "--base", "@a.ctb"}, "another kind");
    expectRefused({"convert", "@d.csv", "-o", "@d.json"}, "ctb or stb");
    write("named.csv", "name,screening\nNormal,20\nWall thin,40\n");
    prepare({"convert", "@named.csv", "-o", "@n.stb"});
    EXPECT_EQ(run({"get", "@n.stb", "plot_style/0/screen", "plot_style/1/name"}).out,
              "20\nWall_thin\n");
    expectRefused({"convert", "@n.stb", "-o", "@n.ctb"}, "named table");
}

}  // namespace
