#include <gmock/gmock.h>

#include <functional>
#include <set>

#include <platen/audit.h>
#include "tests/support/documents.h"
#include "tests/support/files.h"

using platen::AuditCode;
using platen::AuditSettings;
using testing::HasSubstr;

namespace {

std::string bytesOf(const CPlotCfg3& config) {
    return fileAround(bodyOfDocument(config), PiaKind::Pc3);
}

/// A configuration of a printer, which `change` may change.
std::string config(const std::function<void(CPlotCfg3&)>& change = [](CPlotCfg3&) {}) {
    const Config document = configOf(bareConfiguration);
    document->meta.winDeviceName = L"Plotter";
    change(*document);
    return bytesOf(*document);
}

std::string naming(const std::wstring& pmp, const std::wstring& paper = L"") {
    return config([&](CPlotCfg3& document) {
        document.meta.userDefinedModelPathname = pmp;
        document.media.size.name = paper;
    });
}

CustomPaperSize paper(const std::wstring& name, double width, double margin = 0) {
    CustomPaperSize size;
    size.globalName = L"Global " + name;
    size.localName = name;
    size.width = width;
    size.height = 2000;
    size.left = margin;
    return size;
}

std::string pmp(const std::vector<CustomPaperSize>& papers) {
    const std::unique_ptr<PlotModelParam> document(PlotModelParam::create(CMetaNode()));
    for (const CustomPaperSize& size : papers) {
        size.writeToPmp(document->udm);
    }
    return fileAround(bodyOfDocument(*document), PiaKind::Pc3);
}

std::string table(
    bool colours, const std::function<void(CPlotStyleTable&)>& change = [](CPlotStyleTable&) {}) {
    const std::unique_ptr<CPlotStyleTable> document(CPlotStyleTable::create(colours, L""));
    change(*document);
    return fileAround(bodyOfDocument(*document), colours ? PiaKind::Ctb : PiaKind::Stb);
}

/// A driver with two private bytes, whatever `stated` says.
std::string withPrivateBytes(int stated) {
    return config([&](CPlotCfg3& document) {
        document.meta.winDriverName = L"Driver X";
        document.meta.dmDriverVersion = 7;
        document.media.size.name = L"A1";
        document.custom.emplace().setBin(L"00FF", L"RawPrivateDeviceData", true);
        document.custom->set(stated, L"dmDriverExtra", true);
    });
}

/// In a code page, as version-2 files of old programs are.
std::string inAnsi(const std::string& body) {
    PiaInput input;
    EXPECT_TRUE(input.openBody(body));
    ut::ByteBuffer file;
    PiaFileOut out;
    out.setKind(PiaKind::Pc3);
    EXPECT_TRUE(out.encode(*input.root(), file));
    return std::string(file.view());
}

struct File {
    std::string name;
    std::string bytes;
};

class AuditTest : public testing::Test {
protected:
    std::wstring wide(const std::string& name) const { return folder_.wide(name); }

    /// Audits files in the folders "a" and "b".
    platen::AuditResult audit(const std::vector<File>& files, AuditSettings settings = {}) {
        settings.folders = {wide("a"), wide("b")};
        if (!settings.printers) {
            settings.printers = {L"plotter"};
        }
        for (const auto& [name, bytes] : files) {
            std::filesystem::create_directories(folder_.path(name).parent_path());
            writeBytes(folder_.path(name), bytes);
        }
        platen::FolderAudit audit(std::move(settings));
        for (const auto& [name, bytes] : files) {
            if (name.starts_with("a/") || name.starts_with("b/")) {
                audit.add(audit.read(wide(name), name[0] == 'a' ? 0 : 1));
            }
        }
        return audit.finish();
    }

    /// "pmp-missing a/x.pc3, b/y.pc3 [DETAIL]", each in a line; with "+" for one that a command
    /// mends. The folder of the test is left out everywhere.
    std::string found(const platen::AuditResult& result) const {
        std::string text;
        for (const platen::AuditFinding& finding : result.findings) {
            text += platen::auditCodeWord(finding.code);
            for (const std::wstring& file : finding.files) {
                text += (&file == &finding.files.front() ? " " : ", ") + ut::encodeUtf8(file);
            }
            for (const platen::AuditDetail& detail : finding.details) {
                text += " [" + detail.text + "]";
            }
            text += finding.command.empty() ? "\n" : " +\n";
        }
        const std::string root = ut::encodeUtf8(wide(""));
        for (std::size_t at = text.find(root); at != std::string::npos; at = text.find(root)) {
            text.erase(at, root.size());
        }
        return text;
    }

private:
    TemporaryFolder folder_;
};

TEST_F(AuditTest, EachCodeIsFoundAndNothingElse) {
    const std::string soundPmp = pmp({paper(L"Roll", 914)});
    const std::string sound = naming(L"x.pmp", L"Global Roll");
    const std::string ctb = table(true);
    const std::string thick = table(true, [](CPlotStyleTable& document) {
        document.style(0)->setLineWeight(10);
        document.style(2)->setLineWeight(10);
    });
    // 3.07, 3.54 and 4.25 dots; the other styles have the line weights of their objects.
    const std::string alike = table(true, [](CPlotStyleTable& document) {
        document.style(0)->setLineWeight(4);
        document.style(4)->setLineWeight(5);
        document.style(5)->setLineWeight(6);
        document.style(6)->setLineWeight(6);
        document.style(8)->setLineWeight(5);
        document.style(8)->setScreen(50);
    });
    const AuditSettings tables{.usedTables = {{L"C:\\Tables\\X.CTB", L"gone.stb", L"GONE.stb"}}};
    const AuditSettings noPrinter{.printers = std::vector<std::wstring>()};
    const AuditSettings byName{.standards = {wide("standard/X.ctb"), wide("standard/y.ctb")}};
    const AuditSettings one{.standards = {wide("standard/X.ctb")}, .oneStandard = true};
    const AuditSettings coarse{.dotsPerInch = 300};
    const std::wstring absolute = wide("a/x.pmp");
    const struct {
        std::vector<File> files;
        std::string found;
        AuditSettings settings{};
    } cases[] = {
        {{{"a/x.pc3", sound},
          {"a/PMP/x.pmp", soundPmp},
          {"a/x.ctb", thick},
          {"a/y.stb", table(false)}},
         ""},
        {{{"a/x.ctb", ctb.substr(0, 100)}}, "damaged a/x.ctb +\n"},
        {{{"a/x.ctb", edited(ctb, ctb.substr(48, 4), "\1\1\1\1")}}, "damaged a/x.ctb\n"},
        {{{"a/x.pc3", sound}}, "pmp-missing a/x.pc3\n"},
        // Found in the other folder of the search path, beside by its name alone, and not at all.
        {{{"a/x.pc3", sound}, {"b/x.pmp", soundPmp}}, ""},
        {{{"a/x.pc3", naming(L"C:\\Old\\x.pmp", L"Global Roll")}, {"a/x.pmp", soundPmp}},
         "pmp-elsewhere a/x.pc3 +\n"},
        {{{"a/x.pc3", naming(L"PMP\\x.pmp", L"Global Roll")}, {"a/PMP/x.pmp", soundPmp}}, ""},
        {{{"a/x.pc3", sound}, {"a/PMP Files/X.pmp", soundPmp}}, "pmp-elsewhere a/x.pc3 +\n"},
        {{{"a/x.pc3", sound}, {"a/y.pc3", sound}, {"a/x.pmp", soundPmp}},
         "printer-missing a/x.pc3, a/y.pc3\n",
         noPrinter},
        {{{"a/x.ctb", ctb}, {"b/X.CTB", thick}, {"b/sub/x.ctb", ctb}},
         "name-shadowed b/X.CTB, a/x.ctb\n"},
        {{{"a/x.pc3", sound}, {"a/x.pmp", soundPmp}, {"b/PMP/x.pmp", soundPmp}},
         "name-repeated b/PMP/x.pmp, a/x.pmp\npmp-unused b/PMP/x.pmp\n"},
        {{{"a/x.pmp", soundPmp}}, "pmp-unused a/x.pmp\n"},
        {{{"a/x.pc3", sound}, {"a/x.pmp", pmp({paper(L"Roll", 914), paper(L"Other", 500)})}},
         "paper-unused a/x.pmp [\"Other\"]\n"},
        {{{"a/sub/x.ctb", ctb}, {"a/y.ctb", ctb}}, "table-unused a/y.ctb\ntable-missing\n", tables},
        {{{"a/x.pc3", naming(L"x.pmp", L"Global A")},
          {"a/x.pmp", pmp({paper(L"A", 841)})},
          {"b/y.pc3", naming(L"y.pmp", L"Global B")},
          {"b/y.pmp", pmp({paper(L"B", 841.04)})},
          {"b/z.pc3", naming(L"z.pmp", L"Global C")},
          {"b/z.pmp", pmp({paper(L"C", 841.2)})}},
         "papers-alike a/x.pmp, b/y.pmp [\"A\" in \"a/x.pmp\"] [\"B\" in \"b/y.pmp\"]\n"},
        // Two names that tell margins apart, which another file does not need.
        {{{"a/x.pc3", naming(L"x.pmp", L"Global A")},
          {"a/y.pc3", naming(L"x.pmp", L"Global A full")},
          {"a/x.pmp", pmp({paper(L"A", 841, 5), paper(L"A full", 841)})},
          {"b/z.pc3", naming(L"y.pmp", L"Global A")},
          {"b/y.pmp", pmp({paper(L"A", 841)})}},
         ""},
        {{{"standard/X.ctb", ctb}, {"standard/y.ctb", ctb}, {"a/x.CTB", thick}},
         "standard-deviation a/x.CTB [Color 1, 3: lineweight 0.35 mm -> 0 mm] "
         "+\nstandard-missing\n",
         byName},
        {{{"standard/X.ctb", ctb},
          {"a/pens.ctb", thick},
          {"a/y.stb", table(false)},
          {"a/z.pc3", config()}},
         "standard-deviation a/pens.ctb [Color 1, 3: lineweight 0.35 mm -> 0 mm] +\n",
         one},
        {{{"a/x.ctb", alike}},
         "pens-alike a/x.ctb [color 5 with 0.15 mm, colors 6-7 with 0.18 mm: 4 dots]\n"},
        {{{"a/x.ctb", alike}},
         "pens-alike a/x.ctb [color 1 with 0.13 mm, color 5 with 0.15 mm, colors 6-7 with 0.18 mm: "
         "2 "
         "dots]\n",
         coarse},
        {{{"a/x.pc3", withPrivateBytes(2)}, {"b/y.pc3", withPrivateBytes(3)}},
         "private-settings a/x.pc3, b/y.pc3 [\"a/x.pc3\": 2 bytes; besides them paper \"A1\", "
         "portrait, 1 copy, monochrome] [\"b/y.pc3\": 2 bytes; besides them paper \"A1\", "
         "portrait, 1 copy, monochrome]\nprivate-size b/y.pc3\n"},
        {{{"a/x.pc3", naming(absolute, L"Global Roll")}, {"a/x.pmp", soundPmp}},
         "absolute-path a/x.pc3 [meta/user_defined_model_pathname \"a/x.pmp\"] +\n"},
        {{{"a/x.pc3", config([](CPlotCfg3& document) {
               document.io.pathname = L"\\\\server\\share";
               document.meta.driverPathname = L"d:/driver.hdi";
               document.meta.userDefinedModelBasename = L"base.pmp";
               document.custom.emplace().setStr(L"C:\\Templates", L"Template", true);
               document.custom->setStr(L"/PageSize", L"Option", true);
           })}},
         "absolute-path a/x.pc3 [meta/driver_pathname \"d:/driver.hdi\"] [io/pathname "
         "\"\\\\server\\share\"] [custom property \"Template\" \"C:\\Templates\"]\n"},
        {{{"a/x.pc3", config([](CPlotCfg3& document) {
               document.meta.winDeviceName = L"\\\\server\\Plotter";
           })}},
         "network-printer a/x.pc3\n",
         {.printers = {{L"\\\\SERVER\\plotter"}}}},
        {{{"a/x.pc3", inAnsi(edited(bodyOfDocument(*configOf(bareConfiguration)),
                                    "friendly_net_name=\"", "friendly_net_name=\"B\xC3\xBCro"))}},
         "name-not-ascii a/x.pc3 [\"B\xC3\xBCro\"]\n"},
    };
    for (const auto& [files, expected, settings] : cases) {
        SCOPED_TRACE(files.front().name + expected);
        const platen::AuditResult result = audit(files, settings);
        EXPECT_EQ(found(result), expected);
        for (const std::filesystem::path& folder :
             {std::filesystem::path(wide("a")), std::filesystem::path(wide("b")),
              std::filesystem::path(wide("standard"))}) {
            std::filesystem::remove_all(folder);
        }
    }
}

TEST_F(AuditTest, TextsOfFilesAreTextInAPage) {
    const auto page = [](const std::wstring& name) {
        const CustomPaperSize other = paper(name + L"2", 914);
        platen::FolderAudit audit({.folders = {name, L"b"}, .usedTables = {{name}}});
        const std::string configuration = config([&](CPlotCfg3& document) {
            document.meta.winDeviceName = L"\\\\" + name;
            document.meta.userDefinedModelPathname = L"C:\\" + name;
            document.meta.winDriverName = name;
            document.media.size.name = name;
            document.custom.emplace().setBin(L"00", L"RawPrivateDeviceData", true);
            document.custom->setStr(L"C:\\" + name, name.c_str(), true);
        });
        const std::string styles = table(false, [&](CPlotStyleTable& document) {
            for (const wchar_t* const end : {L"1", L"2"}) {
                EXPECT_TRUE(document.addStyle((name + end).c_str(), -1, nullptr));
                document.style(document.size() - 1)->setLineWeight(end[0] == L'1' ? 5 : 6);
            }
        });
        audit.add(audit.readBytes(configuration, name + L".pc3", 0));
        audit.add(audit.readBytes(pmp({paper(name, 914), other}), name + L".pmp", 0));
        audit.add(audit.readBytes(styles, name + L".stb", 1));
        audit.add(audit.readBytes("PIAFILEVERSION_2.0", name, 1));
        return platen::auditHtml(audit.finish(), platen::Shell::Posix, "2024-05-31");
    };
    const auto tagsOf = [](const std::string& html) {
        std::set<std::string> tags;
        for (std::size_t begin = html.find('<'); begin != std::string::npos;
             begin = html.find('<', begin + 1)) {
            tags.insert(html.substr(begin, html.find('>', begin) + 1 - begin));
        }
        return tags;
    };
    const std::set<std::string> plain = tagsOf(page(L"name"));
    EXPECT_GT(plain.size(), 60U);
    for (const wchar_t* const hostile :
         {L"<script>alert(1)</script>", L"\" onmouseover=\"alert(1)", L"' onmouseover='alert(1)",
          L"]]><!--", L"javascript:alert(1)", L"</style></title>", L"&lt;b&gt;",
          L"\x202E<img src=x>"}) {
        const std::string html = page(hostile);
        EXPECT_TRUE(std::ranges::includes(plain, tagsOf(html)));
        EXPECT_EQ(html.find("\" onmouse"), std::string::npos);
        EXPECT_EQ(html.find("\u202E"), std::string::npos);
    }
    EXPECT_TRUE(page(L"a").starts_with(platen::auditHtmlBeginning()));
    EXPECT_THAT(page(L"a"), HasSubstr("content=\"default-src 'none'; style-src 'unsafe-inline'\""));
}

TEST(AuditCommands, AreTypedAsTheShellTakesThem) {
    const struct {
        std::wstring argument;
        std::string posix;
        std::string windows;
    } cases[] = {
        {L"a/b-c_1.pc3", "a/b-c_1.pc3", "a/b-c_1.pc3"},
        {L"C:\\a\\b", "'C:\\a\\b'", "C:\\a\\b"},
        {L"", "''", "\"\""},
        {L"a b", "'a b'", "\"a b\""},
        {L"it's; rm *", "'it'\\''s; rm *'", "\"it's; rm *\""},
        {L"B\u00FCro&del", "'B\u00FCro&del'", "\"B\u00FCro&del\""},
        {L"$HOME`x`%PATH%", "'$HOME`x`%PATH%'", ""},
        {L"a\"b", "'a\"b'", ""},
        {L"a\u201Cb", "'a\u201Cb'", ""},
        {L"a b\\", "'a b\\'", ""},
        {L"a\nb", "", ""},
        {L"a\x1B[2J", "", ""},
        {L"a\u202Eb", "", ""},
    };
    for (const auto& [argument, posix, windows] : cases) {
        const std::string begin = "platen ";
        EXPECT_EQ(platen::commandLine({L"platen", argument}, platen::Shell::Posix),
                  posix.empty() ? "" : begin + posix);
        EXPECT_EQ(platen::commandLine({L"platen", argument}, platen::Shell::Windows),
                  windows.empty() ? "" : begin + windows);
    }
}

}  // namespace
