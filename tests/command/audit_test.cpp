#include <nlohmann/json.hpp>

#include <platen/audit.h>
#include "tests/command/support.h"
#include "tests/support/configurations.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

/// Two folders: "a" has a table that deviates from the standard, and configurations whose PMP is
/// elsewhere or named by its full path.
class CommandAuditTest : public CommandTest {
protected:
    void SetUp() override {
        for (const char* const folder : {"a", "b", "standard"}) {
            std::filesystem::create_directories(path(folder));
        }
        prepare({"create", "ctb", "-o", "@standard/pens.ctb"});
        prepare({"set", "@standard/pens.ctb", "plot_style/4/screen=50", "-o", "@a/pens.ctb"});
        prepare({"create", "pc3", "--device", "print as pdf", "-o", "@a/full.pc3"});
        prepare({"paper", "add", "@a/full.pc3", "--name", "Roll", "--size", "914x5000"});
        prepare({"set", "@a/full.pc3", "meta/user_defined_model_pathname=X:\\Old\\full.pmp",
                 "media/size/name=" + paperName(), "-o", "@a/elsewhere.pc3"});
    }

    nlohmann::json audit(const Arguments& arguments, int code) const {
        const CommandResult result = run(joined({"audit", "--json"}, arguments));
        EXPECT_EQ(result.code, code) << result.err;
        return nlohmann::json::parse(result.out);
    }

private:
    /// What configurations call the one custom paper of the PMP.
    std::string paperName() const {
        std::string name = run({"get", "@a/full.pmp", "udm/media/size/0/name"}).out;
        name.pop_back();
        return name;
    }
};

TEST_F(CommandAuditTest, CommandsMendWhatWasFoundAndKeepCopies) {
    const Arguments standard{"@a", "--standard", "@standard"};
    const nlohmann::json before = audit(standard, 1);
    EXPECT_EQ(before["schema"], "platen.audit/1");
    EXPECT_EQ(before["summary"].dump(),
              R"({"absolute-path":1,"pmp-elsewhere":1,"standard-deviation":1})");
    EXPECT_EQ(before["files"]["pc3"], 2);
    EXPECT_THAT(before.dump(), HasSubstr(R"([{"colors":[5],"text":"Color 5: screening)"));
    for (const nlohmann::json& finding : before["findings"]) {
        const auto command = finding["command"].get<Arguments>();
        ASSERT_EQ(command.front(), "platen");
        prepare({command.begin() + 1, command.end()});
        EXPECT_TRUE(std::filesystem::exists(finding["files"][0].get<std::string>() + ".bak"));
    }
    const nlohmann::json after = audit(standard, 0);
    EXPECT_EQ(after["findings"], nlohmann::json::array());
    EXPECT_EQ(run({"diff", "@a/pens.ctb", "@standard/pens.ctb"}).code, 0);
    EXPECT_EQ(run({"diff", "@a/pens.ctb.bak", "@standard/pens.ctb"}).code, 1);
}

TEST_F(CommandAuditTest, FindingsAreGroupedByTheirCodes) {
    expectRun(
        {"audit", "@a", "--standard", "@standard/pens.ctb"}, 1,
        AllOf(HasSubstr("warning [standard-deviation] Deviation from the standard\n"),
              HasSubstr("\n      Color 5: screening 50 % -> 100 %\n      mend: platen apply "),
              HasSubstr("3 findings in 4 files (1 CTB table, 2 plot configurations, 1 PMP)"),
              HasSubstr("--used FILE")));
    expectRun({"audit", "@a", "--only", "pmp-elsewhere,pens-alike", "--ignore", "pmp-elsewhere"}, 0,
              "nothing found in 4 files (1 CTB table, 2 plot configurations, 1 PMP)\n");
    expectRefused({"audit", "@a", "--only", "pmp-elswhere"}, "did you mean \"pmp-elsewhere\"?");
    expectRefused({"audit", "@a/pens.ctb"}, "this is a file");
    expectRefused({"audit", "@none"}, "no such folder");
    expectRefused({"audit", "@a", "--standard", "@none"}, "none");
    expectRefused({"audit", "@a", "--used", "-", "--printers", "-"}, "only be one");
    expectRun({"audit", "@b"}, 1, HasSubstr("nothing found in 0 files"),
              HasSubstr("no plotter file"));
    // One bad file is a finding, and the others are audited all the same; folders may overlap.
    write("a/bad.ctb", read("a/pens.ctb").substr(0, 99));
    const nlohmann::json bad = audit({"@a", "@a/", "--only", "damaged"}, 1);
    EXPECT_EQ(bad["findings"].size(), 1U);
    EXPECT_EQ(bad["files"]["unreadable"], 1);
    EXPECT_EQ(bad["files"]["ctb"], 1);
}

TEST_F(CommandAuditTest, ListsComeAsOtherProgramsWriteThem) {
    prepare({"set", "@a/full.pc3", "meta/canonical_model_name=", "--delete", "custom",
             "meta/win_device_name:str=B\u00FCro", "-o", "@a/printer.pc3"});
    const std::pair<std::string, const char*> cases[] = {
        {"other\r\nB\xC3\xBCro\r\n", "{}"},
        {"\xEF\xBB\xBF b\xC3\xBCro \n", "{}"},
        {std::string("\xFF\xFE"
                     "B\0\xFC\0r\0o\0\r\0\n\0",
                     14),
         "{}"},
        {"B\xFCro", "{}"},
        {"Buero\n", R"({"printer-missing":1})"},
    };
    for (const auto& [list, summary] : cases) {
        write("printers", list);
        const bool found = summary != std::string_view("{}");
        EXPECT_EQ(audit({"@a", "--only", "printer-missing", "--printers", "@printers"},
                        found ? 1 : 0)["summary"]
                      .dump(),
                  summary);
    }
    EXPECT_EQ(run({"audit", "@a", "--used", "-", "--only", "table-missing,table-unused"}, false,
                  "C:\\Pens\\PENS.ctb\n")
                  .code,
              0);
}

TEST_F(CommandAuditTest, APageReplacesAPageAndNothingElse) {
    write("mine.html", "<!DOCTYPE html>\n<p>mine");
    expectRefused({"audit", "@a", "--html", "@mine.html"}, "no page of an audit");
    EXPECT_EQ(read("mine.html"), "<!DOCTYPE html>\n<p>mine");
    for (int time = 0; time < 2; ++time) {
        expectRun({"audit", "@a", "--html", "@page.html"}, 1,
                  AllOf(HasSubstr("wrote "), HasSubstr("2 findings in 4 files"),
                        Not(HasSubstr("[absolute-path]"))));
    }
    const std::string page = read("page.html");
    EXPECT_TRUE(page.starts_with(platen::auditHtmlBeginning()));
    EXPECT_THAT(page, AllOf(HasSubstr(">absolute-path</code>"), HasSubstr("</html>\n")));
    expectRefused({"audit", "@a", "--html", "@nowhere/page.html"}, "nowhere");
}

TEST_F(CommandAuditTest, AFileBecomesAsAnother) {
    expectRun({"apply", "@standard/pens.ctb", "@a/pens.ctb", "--dry-run"}, 0,
              HasSubstr("1 change would be made"));
    EXPECT_EQ(run({"diff", "@a/pens.ctb", "@standard/pens.ctb"}).code, 1);
    expectRefused({"apply", "@standard/pens.ctb", "@a/full.pc3", "--in-place"}, "cannot become");
    write("list", "no table");
    expectRefused({"apply", "@list", "@a/pens.ctb", "--in-place"}, "nor a plotter file");
    // Of a folder only the files of the kind.
    const std::string configuration = read("a/full.pc3");
    expectRun({"apply", "@standard/pens.ctb", "-r", "@a", "--in-place=.old"}, 0,
              HasSubstr("1 change made"));
    EXPECT_EQ(run({"diff", "@a/pens.ctb", "@standard/pens.ctb"}).code, 0);
    EXPECT_EQ(run({"diff", "@a/pens.ctb.old", "@standard/pens.ctb"}).code, 1);
    EXPECT_EQ(read("a/full.pc3"), configuration);
}

}  // namespace
