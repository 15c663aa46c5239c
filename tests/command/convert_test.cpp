#include "tests/command/support.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using CommandConvertTest = CommandTest;

TEST_F(CommandConvertTest, EveryFormLeadsBackToTheSameFile) {
    prepare({"create", "ctb", "-o", "@a.ctb", "--description", "B\xC3\xBCro \xE2\x82\xAC 100"});
    prepare({"convert", "@a.ctb", "-o", "@a.json"});
    prepare({"convert", "@a.ctb", "-o", "@a.txt"});
    EXPECT_EQ(read("a.json").find('{'), 0U);
    EXPECT_NE(read("a.json")[15], '2');
    // JSON orders its members; everything else is byte for byte the same.
    prepare({"convert", "@a.json", "-o", "@json.ctb"});
    prepare({"convert", "@json.ctb", "-o", "@again.json"});
    EXPECT_EQ(read("again.json"), read("a.json"));
    prepare({"convert", "@a.txt", "-o", "@text.ctb"});
    EXPECT_EQ(read("text.ctb"), read("a.ctb"));
    prepare({"convert", "@a.json", "-o", "@json.txt"});
    prepare({"convert", "@json.txt", "-o", "@textjson.ctb"});
    EXPECT_EQ(read("textjson.ctb"), read("json.ctb"));
    prepare({"convert", "@a.txt", "-o", "@again.txt"});
    EXPECT_EQ(read("again.txt"), read("a.txt"));
}

TEST_F(CommandConvertTest, WhatTheCommandDoesNotKnowSurvives) {
    const std::string body =
        "zeta=00012.50\nalpha=\"x\nAlpha=1e3\nunknown{\n more=\\RAW\\\n}\nx=\"  two spaces\n";
    writeFile("a", body, PiaKind::Ctb);
    const std::pair<const char*, const char*> cases[] = {
        {"ctb", "CTB"}, {"stb", "STB"}, {"pc3", "PC3"}, {"pmp", "PC3"}};
    for (const auto& [kind, letters] : cases) {
        prepare({"convert", "@a", "-o", "@b", "--to", kind});
        EXPECT_EQ(read("b").substr(19, 3), letters);
        EXPECT_EQ(run({"get", "@b"}).out, body);
    }
    prepare({"convert", "@b", "-o", "@b", "--to", "text"});
    EXPECT_EQ(read("b"), body);
}

TEST_F(CommandConvertTest, ColoursAreGatheredIntoNamedStyles) {
    prepare({"create", "ctb", "-o", "@a.ctb", "--description", "Pens"});
    std::string body = run({"get", "@a.ctb"}).out;
    for (const char* style : {"\"Color_10\n", "\"Color_12\n"}) {
        const std::size_t at = body.find("screen=100", body.find("plot_style{"));
        const std::size_t here = body.find("screen=100", body.find(style, at));
        body.replace(here, 10, "screen=50");
    }
    writeFile("b.ctb", body, PiaKind::Ctb);
    expectRun({"convert", "@b.ctb", "-o", "@b.stb"}, 0,
              "Style_1: colours 1-9, 11, 13-255\nStyle_2: colours 10, 12\n");
    EXPECT_EQ(run({"get", "@b.stb", "plot_style/2/name", "plot_style/2/screen", "description"}).out,
              "Style_2\n50\nPens\n");
    EXPECT_EQ(run({"check", "@b.stb"}).code, 0);
    EXPECT_THAT(run({"convert", "@b.ctb", "-o", "@b.stb", "--prefix", "Wide Pen"}).out,
                HasSubstr("Wide_Pen_2: colours 10, 12\n"));
    // A named table becomes another named table without a second gathering.
    EXPECT_THAT(run({"convert", "@b.stb", "-o", "@c.stb"}).out, IsEmpty());
    EXPECT_EQ(read("c.stb"), read("b.stb"));
    // Nor does one that came under the other header.
    writeFile("d.ctb", run({"get", "@b.stb"}).out, PiaKind::Ctb);
    expectRun({"convert", "@d.ctb", "-o", "@d.stb"}, 0, IsEmpty());
    EXPECT_EQ(read("d.stb"), read("b.stb"));
}

TEST_F(CommandConvertTest, AnUnspokenColourIndexCounts) {
    std::string body = createdBody("ctb");
    const std::size_t index = body.find("aci_table{");
    body.erase(index, body.find("}\n", index) + 2 - index);
    writeFile("b.ctb", body, PiaKind::Ctb);
    expectRun({"convert", "@b.ctb", "-o", "@b.stb"}, 0, "Style_1: colours 1-255\n");
}

TEST_F(CommandConvertTest, AColourTableUnderAnotherHeaderComesBack) {
    prepare({"create", "ctb", "-o", "@a.ctb"});
    writeFile("a.stb", run({"get", "@a.ctb"}).out, PiaKind::Stb);
    prepare({"convert", "@a.stb", "-o", "@b.ctb"});
    EXPECT_EQ(read("b.ctb"), read("a.ctb"));
}

TEST_F(CommandConvertTest, ColoursOutOfPlaceAreAWarning) {
    writeFile("b.ctb", replaced(createdBody("ctb"), "Color_7\n", "Color_8\n"), PiaKind::Ctb);
    expectWarned({"convert", "@b.ctb", "-o", "@b.stb"}, HasSubstr("place"));
}

TEST_F(CommandConvertTest, RefusalsLeaveTheOldFile) {
    prepare({"create", "ctb", "-o", "@colours"});
    prepare({"create", "stb", "-o", "@named"});
    writeFile("damaged", replaced(run({"get", "@colours"}).out, "  screen=", "  scream="),
              PiaKind::Ctb);
    writeFile("configuration", "meta{\n}\nmedia{\n}\n", PiaKind::Pc3);
    writeFile("model", "meta{\n}\nmod{\n}\nudm{\n}\n", PiaKind::Pc3);
    write("lines.json", R"({"data":{"x":"two\nlines"}})");
    write("noise", "\x01\x02 no plotter file at all");
    const std::pair<const char*, const char*> cases[] = {
        {"@named", "ctb"},   {"@named", "pc3"},         {"@colours", "pmp"},
        {"@damaged", "stb"}, {"@configuration", "ctb"}, {"@configuration", "pmp"},
        {"@model", "pc3"},   {"@lines.json", "pc3"},    {"@lines.json", "text"},
        {"@noise", "json"},  {"@missing", "json"},
    };
    write("old", "old");
    const std::size_t files = names().size();
    for (const auto& [in, to] : cases) {
        expectRefused({"convert", in, "-o", "@old", "--to", to}, "platen: ");
        EXPECT_EQ(read("old"), "old") << in << " to " << to;
    }
    EXPECT_EQ(names().size(), files);
}

TEST_F(CommandConvertTest, AFileThatCannotBeWrittenIsAnError) {
    prepare({"create", "ctb", "-o", "@a"});
    std::filesystem::create_directory(path("folder"));
    for (const char* to : {"ctb", "stb", "json", "text"}) {
        expectRefused({"convert", "@a", "-o", "@folder", "--to", to}, "folder");
    }
    expectRefused({"create", "ctb", "-o", "@folder"}, "folder");
    EXPECT_THAT(names(), testing::UnorderedElementsAre("a", "folder"));
}

TEST_F(CommandConvertTest, LossesAreWarnings) {
    write("long.json", R"({"data":{"x":")" + std::string(600, 'x') + "\"}}");
    write("null.json", R"({"data":{"x":"y","z":null}})");
    writeFile("number", "x=00012.50\n", PiaKind::Pc3);
    for (const auto& [in, to] : {std::pair("@long.json", "text"),
                                 {"@long.json", "pc3"},
                                 {"@null.json", "pc3"},
                                 {"@number", "json"}}) {
        expectWarned({"convert", in, "-o", "@out", "--to", to}, HasSubstr("warning"));
    }
    EXPECT_EQ(run({"get", "@out"}).code, 0);
}

TEST_F(CommandConvertTest, TextFromAnEditorIsTaken) {
    write("a.txt", "\xEF\xBB\xBFx=\"caf\xC3\xA9\r\ny=12345678\r\n");
    prepare({"convert", "@a.txt", "-o", "@a", "--to", "pc3"});
    EXPECT_EQ(run({"get", "@a", "x", "y"}).out, "caf\xC3\xA9\n12345678\n");
    // The sixteenth byte is the mark of a compressed file, which this is not.
    write("b.txt", "description=\"ab2 pens\n");
    prepare({"convert", "@b.txt", "-o", "@b", "--to", "pc3"});
    EXPECT_EQ(run({"get", "@b", "description"}).out, "ab2 pens\n");
}

TEST_F(CommandConvertTest, DamagedTablesKeepTheirItems) {
    const std::string body = replaced(createdBody("ctb"), "  screen=", "  scream=");
    writeFile("damaged", body, PiaKind::Ctb);
    expectWarned({"convert", "@damaged", "-o", "@b", "--to", "text"},
                 HasSubstr("plot_style/0/screen"));
    EXPECT_EQ(read("b"), body);
}

TEST_F(CommandConvertTest, CreateMakesWhatItsFirstWordSays) {
    prepare({"create", "stb", "-o", "@odd.ctb", "--description", "N"});
    EXPECT_EQ(read("odd.ctb").substr(19, 3), "STB");
    EXPECT_EQ(run({"get", "@odd.ctb", "description", "plot_style/0/name"}).out, "N\nNormal\n");
    EXPECT_EQ(run({"create", "stb", "-o", "@x", "--description", "a\nb"}).code, 2);
    EXPECT_EQ(run({"create", "stb", "-o", "@x", "--description", "\xFF"}).code, 2);
    EXPECT_EQ(run({"create", "stb", "-o", "@y", "--description", std::string(600, 'x')}).code, 3);
    EXPECT_THAT(names(), testing::UnorderedElementsAre("odd.ctb", "y"));
}

TEST_F(CommandConvertTest, TheSummaryNamesWhatDiffers) {
    prepare({"create", "ctb", "-o", "@a", "--description", "Pens \x1B"});
    std::string body = run({"get", "@a"}).out;
    body = replaced(body, "  color=-1", "  color=-1023410171\n  mode_color=-1040122112");
    body = replaced(body, "  lineweight=0", "  lineweight=9");
    writeFile("a", body, PiaKind::Ctb);
    expectRun({"info", "@a"}, 0,
              AllOf(HasSubstr("colour-dependent"), HasSubstr("Pens \\x1B"),
                    HasSubstr("colour 1: colour index 5, mode colour: #00ff00, "
                              "line weight 9 (0.3 mm)\n  colours 2-255: standard settings\n")));
}

}  // namespace
