#include <platen/print.h>
#include "tests/command/json_lines.h"
#include "tests/support/fake_spooler.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

using Json = nlohmann::json;

/// Lists printers that are gone when they are asked.
class ForgetfulSpooler : public test_support::FakeSpooler {
public:
    std::wstring gone;

    HANDLE open(const wchar_t* printer) override {
        return printer == gone ? nullptr : FakeSpooler::open(printer);
    }
};

class CommandPrintingTest : public CommandTest {
protected:
    CommandPrintingTest() {
        wut::onPrinterSettingsChanged(OdString());
        test_support::FakePrinter& plotter = spooler_.add(L"Plotter");
        plotter.driver = L"Roll driver";
        plotter.comment = L"Second floor";
        plotter.shared = true;
        plotter.papers.push_back({300, std::wstring(64, L'x'), {9140, 50001}});
        spooler_.add(L"Office");
        spooler_.defaultName = L"Office";
    }

    std::vector<Json> jsonLines(std::vector<std::string> arguments) const {
        arguments.emplace_back("--json");
        return jsonLinesOf(run(arguments));
    }

    test_support::FakePrinter& plotter() { return *spooler_.find(L"Plotter"); }

    ForgetfulSpooler spooler_;

private:
    wut::SpoolerForTest inPlace_{spooler_};
};

TEST_F(CommandPrintingTest, EachPrinterIsListedOnce) {
    const std::vector<Json> lines = jsonLines({"printers"});
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], Json::parse(R"({"schema": "platen.printers/1", "name": "Plotter",
        "driver": "Roll driver", "port": "LPT1:", "comment": "Second floor", "default": false,
        "papers": 3})"));
    EXPECT_EQ(lines[1]["default"], true);
    EXPECT_THAT(run({"printers"}).out,
                AllOf(HasSubstr("\nPlotter           Roll driver  LPT1:  3       Second floor\n"),
                      HasSubstr("\nOffice   yes      Fake Driver  LPT1:  2\n")));
    EXPECT_EQ(spooler_.handles.size(), 0U);
}

TEST_F(CommandPrintingTest, APrinterThatVanishedIsAWarning) {
    spooler_.gone = L"Plotter";
    expectRun({"printers"}, 3, HasSubstr("\nOffice "), HasSubstr("Plotter"));
    spooler_.printers.clear();
    EXPECT_EQ(run({"printers"}).out, "no printer is installed\n");
    EXPECT_THAT(jsonLines({"printers"}), IsEmpty());
}

TEST_F(CommandPrintingTest, APrinterHasPapers) {
    const std::vector<Json> lines = jsonLines({"papers", "--printer", "plotter"});
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0]["id"], 9);
    EXPECT_EQ(lines[0]["global_name"], "A4");
    EXPECT_EQ(lines[2]["name"], std::string(64, 'x'));
    EXPECT_EQ(lines[2]["global_name"], "User300");
    EXPECT_EQ(lines[2]["height_mm"], 5000.1);
    EXPECT_TRUE(lines[2]["margins"].is_null());
    EXPECT_THAT(run({"papers", "--printer", "Plotter"}).out,
                AllOf(StartsWith("id   paper "), HasSubstr("\n1    Letter "),
                      HasSubstr("215.90 x 279.40")));
    spooler_.find(L"Office")->counts[DC_PAPERNAMES] = -1;
    EXPECT_EQ(run({"papers", "--printer", "Office"}).code, 2);
    expectRefused({"papers", "--printer", "Ploter"}, "did you mean \"Plotter\"");
}

TEST_F(CommandPrintingTest, ADeviceModeIsShownWithItsPrivateBytes) {
    plotter().devMode.dmCopies = 7;
    std::wstring(L"A form whose name fills its field").copy(plotter().devMode.dmFormName, 32);
    plotter().privateBytes = {0x00, 0xAB, 0x1F};
    EXPECT_THAT(run({"devmode", "Plotter"}).out,
                AllOf(StartsWith("dmDeviceName = Plotter\n"), HasSubstr("\ndmCopies = 7\n"),
                      testing::EndsWith("\nprivate data:\n00 AB 1F \n")));
    const Json mode = jsonLines({"devmode", "Plotter"}).at(0);
    EXPECT_EQ(mode["schema"], "platen.devmode/1");
    EXPECT_EQ(mode["dmCopies"], 7);
    EXPECT_EQ(mode["dmFormName"], "A form whose name fills its fiel");
    EXPECT_EQ(mode["dmDriverExtra"], 3);
    EXPECT_EQ(mode["private_data"], "00AB1F");
    plotter().fillFails = true;
    expectRefused({"devmode", "Plotter"}, "Plotter");
}

TEST_F(CommandPrintingTest, AConfigurationGivesItsPrinterADeviceMode) {
    prepare({"create", "pc3", "--printer", "Plotter", "-o", "@a.pc3"});
    prepare({"set", "@a.pc3", "media/number_of_copies=4", "--in-place"});
    EXPECT_THAT(run({"devmode", "@a.pc3"}).out,
                AllOf(StartsWith("dmDeviceName = Plotter\n"), HasSubstr("\ndmCopies = 4\n")));
    const Json mode = jsonLines({"devmode", "@a.pc3"}).at(0);
    EXPECT_EQ(mode["dmCopies"], 4);
    EXPECT_EQ(mode["source"], path("a.pc3"));

    prepare({"create", "pc3", "--device", "Print As PDF", "-o", "@pdf.PC3"});
    spooler_.remove(L"Plotter");
    for (const char* file : {"@a.pc3", "@pdf.PC3", "@missing.pc3"}) {
        expectRefused({"devmode", file}, file + 1);
    }
    EXPECT_THAT(run({"devmode", "@pdf.PC3"}).err, HasSubstr("built-in device"));
}

}  // namespace
