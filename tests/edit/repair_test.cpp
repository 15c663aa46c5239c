#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <regex>

#include <platen/edit.h>
#include <platen/inspect.h>
#include "tests/inspect/found.h"
#include "tests/support/configurations.h"
#include "tests/support/documents.h"
#include "tests/support/files.h"
#include "tests/support/json_seen.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Outcome = platen::RepairResult::Outcome;

/// The words of the assumptions in order, each once.
std::string codesOf(const platen::RepairResult& result) {
    std::vector<std::string> words;
    for (const platen::Assumption& assumption : result.assumptions) {
        const std::string word = platen::repairCodeWord(assumption.code);
        if (std::ranges::find(words, word) == words.end()) {
            words.push_back(word);
        }
    }
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

/// "3 lines, 1 item": what was lost, added up.
std::string lossesOf(const platen::RepairResult& result) {
    std::uint64_t counts[3]{};
    for (const platen::Loss& loss : result.losses) {
        counts[static_cast<std::size_t>(loss.unit)] += loss.count;
    }
    std::string text;
    for (std::size_t unit = 0; unit < 3; ++unit) {
        if (counts[unit] != 0) {
            text += (text.empty() ? "" : ", ") + std::to_string(counts[unit]) +
                    std::array{" bytes", " lines", " items"}[unit];
        }
    }
    return text;
}

/// A table of colours whose styles can be told from each other.
std::string colourBody() {
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(true, L"Office"));
    for (std::size_t index = 0; index < table->size(); ++index) {
        table->style(index)->setScreen(static_cast<int>(index % 101));
        table->style(index)->setDesc(L"pen " + std::to_wstring(index * 7919));
    }
    return bodyOfDocument(*table);
}

/// A named table that says which style each colour has.
std::string indexedBody() {
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(false, L"Indexed"));
    table->addACI(std::vector<int>(CAciTable::count).data());
    return bodyOfDocument(*table);
}

std::string namedBody(const std::string& from = {}, const std::string& to = {}) {
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(false, L"Named"));
    table->addStyle(L"Walls", -1, nullptr);
    table->addStyle(L"Doors", -1, nullptr);
    const std::string body = bodyOfDocument(*table);
    return from.empty() ? body : edited(body, from, to);
}

/// The file with bytes put in the place of others.
std::string with(std::string file, std::size_t at, std::size_t count, const std::string& bytes) {
    return file.replace(at, count, bytes);
}

std::string flipped(std::string file, std::size_t at) {
    file[at] = static_cast<char>(file[at] ^ 0x10);
    return file;
}

/// As a transfer that takes the file for a text of lines.
std::string asText(const std::string& file) {
    std::string text;
    for (const char byte : file) {
        text += byte == '\n' ? "\r\n" : std::string(1, byte);
    }
    return text;
}

TEST(Repair, ContainersWhoseBodyIsWholeComeBackWhole) {
    const std::string body = colourBody();
    const std::string file = fileAround(body, PiaKind::Ctb);
    const std::size_t middle = file.size() / 2;
    struct {
        std::string damaged;
        std::string codes;
        std::string losses;
        bool safe;
    } const cases[] = {
        {flipped(file, 3), "header-text", "", true},
        {flipped(file, 15), "header-text", "", true},
        {flipped(file, 20), "header-text kind-by-content", "", false},
        {flipped(file, 49), "checksum", "", true},
        {flipped(file, 53), "checksum body-length", "", true},
        {flipped(file, 57), "checksum compressed-length", "", true},
        {file + "rest", "bytes-after-stream", "4 bytes", false},
        {flipped(file, 60), "byte-corrected", "", true},
        {flipped(file, middle), "byte-corrected", "", true},
        {flipped(file, file.size() - 1), "byte-corrected", "", true},
        {with(file, middle, 1, ""), "byte-corrected", "", true},
        {with(file, middle, 0, "x"), "byte-corrected", "", true},
        {with(file, 60, 2, "yy"), "stream-header checksum", "", false},
        {file.substr(0, file.size() - 4), "stream-truncated", "", false},
        {with(file, file.size() - 2, 2, "xx"), "stream-unverified", "", false},
        {file.substr(60), "header-missing kind-by-content", "", false},
        {with(file, 5, 1, ""), "header-text stream-moved", "", false},
        {with(file, 5, 0, "xyz"), "header-text stream-moved", "", false},
        {asText(file), "line-feeds-translated", "", true},
    };
    for (const auto& [damaged, codes, losses, safe] : cases) {
        SCOPED_TRACE(codes);
        const platen::RepairResult result = platen::repair(damaged, {.file = L"pens.ctb"});
        EXPECT_EQ(codesOf(result), codes);
        EXPECT_EQ(lossesOf(result), losses);
        EXPECT_TRUE(bodyOf(result.bytes) == body);
        EXPECT_EQ(result.check.verdict, platen::Verdict::Sound);
        EXPECT_EQ(result.kind, platen::FileKind::Ctb);
        // A check that fixes takes all of it or nothing.
        const platen::RepairResult fixed = platen::repair(damaged, {.safeOnly = true});
        EXPECT_EQ(fixed.outcome, safe ? Outcome::Repaired : Outcome::Unchanged);
        EXPECT_TRUE(fixed.bytes == (safe ? result.bytes : damaged));
    }
}

TEST(Repair, WhatWasInflatedBeforeAFaultIsKept) {
    const std::string body = colourBody();
    const std::string file = fileAround(body, PiaKind::Ctb);
    for (const auto& [damaged, code] :
         {std::pair{file.substr(0, file.size() * 2 / 3), "stream-truncated"},
          std::pair{with(file, file.size() / 2, 40, std::string(40, 'x')), "stream-corrupt"}}) {
        SCOPED_TRACE(code);
        const platen::RepairResult result = platen::repair(damaged);
        EXPECT_THAT(codesOf(result), HasSubstr(code));
        EXPECT_GT(result.losses.front().count, 500U);
        EXPECT_NE(result.check.verdict, platen::Verdict::Errors) << foundIn(result.check);
        PiaInput input;
        CPlotStyleTable table;
        ASSERT_TRUE(input.openBytes(result.bytes) && table.init(input));
        ASSERT_EQ(table.size(), 255U);
        for (std::size_t index = 0; index < 60; ++index) {
            EXPECT_EQ(table.style(index)->desc(), L"pen " + std::to_wstring(index * 7919));
        }
        EXPECT_NE(table.ACI()->at(254), nullptr);
    }
}

TEST(Repair, DamagedLinesCostNoMoreThanThemselves) {
    const std::string& full = fullConfiguration;
    const std::string longText(520, 'x');
    const std::string fullLine = " config_description=\"" + std::string(490, 'x');
    struct {
        std::string damaged;
        std::string codes;
        std::string losses;
        std::string expected;
    } const cases[] = {
        {edited(full, "=\"LPT1", std::string("=\"LP\0T1", 7)), "bytes-dropped", "1 bytes", full},
        {edited(full, "io{\n", "io{\n   \n"), "blank-line", "", full},
        {edited(full, "io{\n", "io{\n nothing at all\n"), "line-invalid", "1 lines", full},
        {edited(full, "io{\n", "io{\n =5\n"), "line-invalid", "1 lines", full},
        {edited(full, "io{\n", "io{\n a{b=1\n =5\n"), "line-invalid", "1 lines",
         edited(full, "io{\n", "io{\n a{b=1\n")},
        {edited(full, "io{\n", "io{\n }x y=1\n"), "line-invalid", "1 lines", full},
        {edited(full, "io{\n", "io{\n x=\n"), "line-invalid", "1 lines", full},
        {edited(full, "dm_orientation=2\n", "dm_orientation=2"), "lines-joined", "", full},
        {edited(full, "allsysvalid=TRUE\n", "allsysvalid=TRUE"), "lines-joined", "", full},
        {edited(full, "io{\n", "io{"), "lines-joined", "", full},
        {edited(full, "plot_to_file=TRUE\n}\n", "plot_to_file=TRUE\n}"), "lines-joined", "", full},
        {edited(full, " dm_orien", " dm_ori en"), "name-spaces", "", full},
        {edited(full, "io{\n", "io{ rest\n"), "text-dropped", "5 bytes", full},
        {edited(full, "FFaB\\\n", "FFaB\n"), "binary-ended", "", full},
        {edited(full, "FFaB\\\n", "FFaB\\ rest\n"), "text-dropped", "5 bytes", full},
        {edited(full, "  }\n }\n destination{", "  }\n destination{"), "closing-brace-missing", "",
         full},
        {edited(full, "io{\n", " }\nio{\n"), "closing-brace-surplus", "", full},
        {edited(full, "}\nio{\n", "}\n}\nio{\n"), "closing-brace-surplus", "", full},
        {full.substr(0, full.size() - 2), "closing-brace-at-end", "", full},
        {edited(full, " destination{", " destination["), "opening-brace-missing", "", full},
        {edited(full, " destination{\n", ""), "block-head-missing", "4 lines",
         edited(full,
                " destination{\n  name=\"Default\n  collating_type=1\n  "
                "collating_name=\"Regular\n }\n",
                "")},
        {edited(full, "number_of_copies=3\n", "number_of_copies=3\n number_of_copies=3\n"),
         "duplicate-equal", "", full},
        {edited(full, "number_of_copies=3\n", "number_of_copies=3\n number_of_copies=4\n"),
         "duplicate-dropped", "1 items", full},
        {edited(full, "io{\n",
                full.substr(full.find("io{\n"), full.find("res_color_mem") - full.find("io{\n")) +
                    "io{\n"),
         "duplicate-equal", "", full},
        {edited(full, " 3{\n  name=\"Note", " 2{\n  name=\"Note"), "entry-renumbered", "", full},
        {edited(full, " config_description=\"described\n", " x=\"" + longText + "\n"),
         "line-too-long", "13 bytes",
         edited(full, " config_description=\"described\n",
                " x=\"" + longText.substr(0, 507) + "\n")},
        // Too long for another name, which the next item must not get.
        {full + "7=\"x" + longText.substr(0, 400) + "\n7=\"" + longText.substr(0, 400) + "\n8=1\n",
         "duplicate-dropped", "1 items", full + "7=\"x" + longText.substr(0, 400) + "\n8=1\n"},
        {edited(full, " config_description=\"described", fullLine), "line-full", "",
         edited(full, " config_description=\"described", fullLine)},
    };
    ASSERT_EQ(fullLine.size(), 511U);
    for (const auto& [damaged, codes, losses, expected] : cases) {
        SCOPED_TRACE(codes);
        const platen::RepairResult result = platen::repair(fileAround(damaged, PiaKind::Pc3));
        EXPECT_EQ(codesOf(result), codes);
        EXPECT_EQ(lossesOf(result), losses);
        EXPECT_EQ(bodyOf(result.bytes), expected);
        EXPECT_LT(result.check.verdict, platen::Verdict::Errors);
        // Body text alone is the same damage.
        const platen::RepairResult text = platen::repair(damaged);
        EXPECT_EQ(codesOf(text), codes);
        EXPECT_EQ(text.bytes, expected);
    }
}

TEST(Repair, AccentsOfABodySurviveAWrongByte) {
    const std::string utf8 = edited(fullConfiguration, "described", "B\xC3\xBCro \xC3\xA4\xC3\xB6");
    const std::string damaged = edited(utf8, "LPT1", "LP\xC3T1");
    EXPECT_EQ(bodyOf(platen::repair(fileAround(damaged, PiaKind::Pc3)).bytes), utf8);
}

TEST(Repair, DocumentsGetWhatReadersAskFor) {
    const std::string& full = fullConfiguration;
    const std::string property = "custom{\n 0{\n  name=\"Odd\n  value=12abc\n }\n";
    struct {
        std::string body;
        std::string from;
        std::string to;
        std::string codes;
        /// What is in the place of `to`.
        std::string becomes;
    } const cases[] = {
        {full, " number_of_copies=3\n", "", "key-default", " number_of_copies=1\n"},
        {full, " number_of_copies=3", " number_of_copies=many", "value-default",
         " number_of_copies=1"},
        {full, " number_of_copies=3", " numbr_of_copies=3", "key-misspelt", " number_of_copies=3"},
        {full, " number_of_copies=3", " number_of_copies=\"3", "type-wrong", " number_of_copies=3"},
        {full, "pathname=\"LPT1", "pathname=LPT1", "type-wrong", "pathname=\"LPT1"},
        {full, "  dm_scale=50\n", "  dm_scale=half\n", "value-dropped", ""},
        {full, "  collating_type=1\n", "", "key-default", "  collating_type=0\n"},
        {full, "   width=36.000000\n", "", "key-default", "   width=0.000000\n"},
        {full, "meta{", "meto{", "key-misspelt", "meta{"},
        {full, property, "custom{\n 0{\n  value=12abc\n }\n", "item-dropped", "custom{\n"},
        {fullParameters, " calibration{\n", " calibratoin{\n", "key-misspelt", " calibration{\n"},
        {fullParameters, "  max_roll_height=100.000000\n", "  max_roll_height=x\n", "value-dropped",
         ""},
        {namedBody(), "  screen=100\n", "", "key-default", "  screen=100\n"},
        {namedBody(), "apply_factor=FALSE\n", "", "key-default", "apply_factor=FALSE\n"},
        {namedBody(), " 1{\n", " 7{\n", "entry-renumbered", " 1{\n"},
        {namedBody(), "  name=\"Walls\n", "", "key-default", "  name=\"Walls\n"},
        {colourBody(), " 4=\"Color_5\n", " 4=\"Nothing\n", "colour-style", " 4=\"Color_5\n"},
        {colourBody(), " 4=\"Color_5\n", "", "colour-style", " 4=\"Color_5\n"},
        {colourBody(), " 4=\"Color_5\n", " 3=\"Color_5\n", "entry-renumbered", " 4=\"Color_5\n"},
        {colourBody(), "available=TRUE", "available=FALSE", "value-default", "available=TRUE"},
        {indexedBody(), "  screen=100\n", "", "key-default", "  screen=100\n"},
        {colourBody(), " 26=2.110000\n", " 26=thick\n", "value-default", " 26=2.110000\n"},
        {colourBody(), " 26=2.110000\n", "", "key-default", " 26=2.110000\n"},
        {colourBody(), " 24=1.580000\n 25=2.000000\n 26=2.110000\n", " 25=2.000000\n 27=2.110000\n",
         "entry-renumbered key-default", " 24=1.580000\n 25=2.000000\n 26=2.110000\n"},
    };
    for (const auto& [body, from, to, codes, becomes] : cases) {
        SCOPED_TRACE(codes + ' ' + from);
        const std::size_t place = body.find(from);
        ASSERT_NE(place, std::string::npos);
        const auto replaced = [&, &from = from, &body = body](const std::string& text) {
            return std::string(body).replace(place, from.size(), text);
        };
        const PiaKind kind = body.find("plot_style{") == body.npos ? PiaKind::Pc3
                             : body.find("254{") == body.npos      ? PiaKind::Stb
                                                                   : PiaKind::Ctb;
        const platen::RepairResult result = platen::repair(fileAround(replaced(to), kind));
        EXPECT_EQ(codesOf(result), codes);
        EXPECT_EQ(bodyOf(result.bytes), replaced(becomes));
        ASSERT_FALSE(result.assumptions.empty());
        EXPECT_LT(result.check.verdict, platen::Verdict::Errors) << foundIn(result.check);
        EXPECT_EQ(platen::repair(fileAround(replaced(to), kind), {.safeOnly = true}).outcome,
                  Outcome::Unchanged);
    }
}

TEST(Repair, AnAssumptionSaysWhereAndWhat) {
    const platen::RepairResult result = platen::repair(fileAround(
        edited(namedBody(" 1{\n", "junk\n 1{\n"), "  name=\"Doors\n", ""), PiaKind::Stb));
    std::vector<std::string> lines;
    for (const platen::Assumption& assumption : result.assumptions) {
        lines.push_back(platen::describe(assumption));
    }
    EXPECT_THAT(lines,
                ElementsAre("[line-invalid] the line is no item, no beginning and no end of a "
                            "block, and is left out, line 24, at plot_style, found \"junk\"",
                            "[key-default] a required key is missing, and its default is taken, "
                            "line 42, at plot_style/2/name, taken \"Doors\""));
    ASSERT_EQ(result.losses.size(), 1U);
    EXPECT_EQ(platen::describe(result.losses[0]), "lost 1 line, line 24, at plot_style: \"junk\"");
    EXPECT_THAT(keepJson(platen::repairJson("a", result)),
                HasSubstr("\"schema\":\"platen.repair/1\""));

    const std::string longName(500, 'x');
    const std::string twice = fullConfiguration + longName + "{\n}\n" + longName + "{\n}\n";
    const platen::RepairResult dropped = platen::repair(twice);
    ASSERT_EQ(codesOf(dropped), "duplicate-dropped");
    EXPECT_EQ(dropped.assumptions[0].found, std::wstring(500, L'x'));
    const std::string longValue(400, 'x');
    const struct {
        std::string body;
        std::wstring path;
        std::wstring found;
        std::wstring taken;
    } cases[] = {
        {edited(fullConfiguration, "io{\n", "io{\n x=\"" + longValue + longValue + "\n"), L"io",
         std::wstring(293, L'x'), L" x=\"" + std::wstring(507, L'x')},
        {fullConfiguration + "7=\"x" + longValue + "\n7=\"" + longValue + "\n", L"7",
         L"\"" + std::wstring(400, L'x'), L"\"" + std::wstring(401, L'x')},
        {namedBody(" 1{\n", " 7{\n"), L"plot_style/1", L"7", L"1"},
        {edited(fullConfiguration, "copies=3", "copies=many"), L"media/number_of_copies", L"many",
         L"1"},
    };
    for (const auto& [body, path, found, taken] : cases) {
        const platen::Assumption first = platen::repair(body).assumptions.at(0);
        EXPECT_EQ(ut::encodeUtf8(first.path), ut::encodeUtf8(path));
        EXPECT_EQ(ut::encodeUtf8(first.found), ut::encodeUtf8(found));
        EXPECT_EQ(ut::encodeUtf8(first.taken), ut::encodeUtf8(taken));
    }
    // What stands in a block that is left out goes with it, what stands behind it stays.
    const std::string box = "box{\n " + longName + "{\n }\n";
    const std::string lost = " " + longName + "{\n  c{\n   d=1\n  }\n  b=1\n }\n";
    const std::string whole = fullConfiguration + box + lost + " z=1\n}\n";
    const auto flat = [](const std::string& text) {
        return std::regex_replace(text, std::regex("\n +"), "\n");
    };
    for (const std::string& text : {whole, flat(whole)}) {
        EXPECT_EQ(flat(bodyOf(platen::repair(fileAround(text, PiaKind::Pc3)).bytes)),
                  flat(fullConfiguration + box + " z=1\n}\n"));
    }
}

TEST(Repair, JsonIsKeptUpToItsFault) {
    PiaInput input;
    ASSERT_TRUE(input.openBody(edited(fullConfiguration, "LPT1", "\"},{[:\\\"")));
    std::string json;
    PiaReport report;
    ASSERT_TRUE(piaWriteJson(*input.root(), json, report));
    const std::size_t cut = json.find("\"preference\"");
    const platen::RepairResult result = platen::repair(json.substr(0, cut));
    EXPECT_THAT(codesOf(result), HasSubstr("json-cut"));
    EXPECT_EQ(result.kind, platen::FileKind::Pc3);
    EXPECT_THAT(result.bytes,
                HasSubstr(json.substr(0, json.find_last_not_of(", \n", cut - 1) + 1)));
}

TEST(Repair, NothingUsableIsSaid) {
    const std::string file = fileAround(fullConfiguration, PiaKind::Pc3);
    const std::string noDevice = fullConfiguration.substr(fullConfiguration.find("media{"));
    const std::string noStyle = namedBody().substr(0, namedBody().find("plot_style{"));
    for (const std::string& damaged :
         {std::string(), std::string("PIAFILEVERSION_2.0"), file.substr(0, 60), file.substr(0, 59),
          std::string(5000, 'x'), std::string(5000, '\0'), fileAround(noDevice, PiaKind::Pc3),
          fileAround(noStyle, PiaKind::Stb), std::string("{\"data\""),
          std::string("key=value\n no line\n")}) {
        const platen::RepairResult result = platen::repair(damaged);
        EXPECT_EQ(result.outcome, Outcome::Unusable) << damaged.substr(0, 40);
        EXPECT_EQ(result.bytes, "");
        EXPECT_NE(result.reason, "");
    }
}

TEST(Repair, SoundFilesStayAsTheyAre) {
    for (const std::string& file :
         {fileAround(colourBody(), PiaKind::Ctb), fileAround(namedBody(), PiaKind::Stb),
          fileAround(fullConfiguration, PiaKind::Pc3), fileAround(bareConfiguration, PiaKind::Pc3),
          fileAround(fullParameters, PiaKind::Pc3), fileAround(bareParameters, PiaKind::Pc3),
          fileAround("a=1\nb{\nc=\"x\n}\n", PiaKind::Pc3),
          fileAround("a=\"\x08\x0E\n", PiaKind::Pc3), fullConfiguration}) {
        const platen::RepairResult result = platen::repair(file);
        EXPECT_EQ(result.outcome, Outcome::Unchanged) << codesOf(result);
        EXPECT_EQ(result.bytes, file);
    }
}

TEST(Repair, AConfigurationFindsItsPmpAgainOrLetsGoOfIt) {
    const TemporaryFolder folder;
    const std::string named =
        edited(fullConfiguration, "C:\\Plotters\\PMP Files\\no such.pmp", "gone.pmp");
    const auto nameAfter = [&](const std::string& body, std::string& codes) {
        const platen::RepairResult result =
            platen::repair(fileAround(body, PiaKind::Pc3), {.file = folder.wide("plan.pc3")});
        codes = codesOf(result);
        PiaInput input;
        EXPECT_TRUE(input.openBytes(result.bytes));
        std::wstring name;
        const auto* meta =
            static_cast<const PiaBlock*>(input.root()->findItem(L"meta", PiaItemType::Block));
        EXPECT_TRUE(meta->getString(name, L"user_defined_model_pathname"));
        return name;
    };
    std::string codes;
    EXPECT_EQ(nameAfter(named, codes), L"");
    EXPECT_EQ(codes, "pmp-detached");
    // One of another driver is none of its own.
    writeBytes(folder.path("plan.pmp"), fileAround(bareParameters, PiaKind::Pc3));
    EXPECT_EQ(nameAfter(named, codes), L"");
    writeBytes(folder.path("plan.pmp"), fileAround(fullParameters, PiaKind::Pc3));
    EXPECT_EQ(nameAfter(named, codes), folder.wide("plan.pmp"));
    EXPECT_EQ(codes, "pmp-other");
    EXPECT_EQ(nameAfter(edited(named, "gone.pmp", ""), codes), folder.wide("plan.pmp"));
    EXPECT_EQ(nameAfter(edited(named, "gone.pmp", "plan.pmp"), codes), L"plan.pmp");
}

}  // namespace
