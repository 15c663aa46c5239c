#include <platen/print.h>
#include "tests/command/support.h"
#include "tests/support/fake_spooler.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class CommandPrintersTest : public CommandTest {
protected:
    CommandPrintersTest() {
        wut::onPrinterSettingsChanged(OdString());
        spooler_.add(L"Office");
        spooler_.add(L"Plotter").driver = L"Plot Driver";
    }

    /// A printer in memory has no page that could be measured.
    void giveA4(const std::string& file) const {
        const std::string description = "media/size/media_description/";
        prepare({"set", file, "--in-place", description + "media_bounds/urx=210",
                 description + "media_bounds/ury=297", description + "printable_bounds_llx=5",
                 description + "printable_bounds_lly=5", description + "printable_bounds_urx=205",
                 description + "printable_bounds_ury=292"});
    }

    test_support::FakeSpooler spooler_;

private:
    wut::SpoolerForTest inPlace_{spooler_};
};

TEST_F(CommandPrintersTest, AConfigurationIsMadeForAPrinter) {
    prepare({"create", "pc3", "--printer", "Office", "-o", "@a.pc3"});
    EXPECT_EQ(
        run({"get", "@a.pc3", "meta/win_device_name", "meta/win_driver_name", "media/size/name"})
            .out,
        "Office\nFake Driver\nA4\n");
    giveA4("@a.pc3");
    EXPECT_EQ(run({"check", "--printers", "@a.pc3"}).code, 0);
    const std::string before = read("a.pc3");
    spooler_.find(L"Plotter")->propertiesFail = true;
    const struct {
        std::vector<std::string> arguments;
        const char* message;
    } cases[] = {
        {{"--printer", "Ofice"}, "did you mean \"Office\"?"},
        {{"--printer", "Plotter"}, "settings cannot be taken"},
        {{"--printer", "Office", "--device", "Print As PDF"}, "either --device"},
        {{"--printer", "Office", "--paper", "A4"}, "leave it out"},
        {{"--printer", "\xFF"}, "UTF-8"},
    };
    for (const auto& [arguments, message] : cases) {
        expectRefused(joined({"create", "pc3", "-o", "@a.pc3"}, arguments), message);
        EXPECT_EQ(read("a.pc3"), before);
    }
    EXPECT_EQ(spooler_.handles.size(), 0U);
}

TEST_F(CommandPrintersTest, CheckTellsWhatAPrinterWillNotTake) {
    prepare({"create", "pc3", "--printer", "Office", "-o", "@a.pc3"});
    giveA4("@a.pc3");
    prepare({"create", "pc3", "--device", "Print As PDF", "-o", "@pdf.pc3"});
    EXPECT_EQ(run({"check", "--printers", "@a.pc3", "@pdf.pc3"}).code, 0);
    const struct {
        std::vector<std::string> changes;
        int code;
        const char* word;
    } cases[] = {
        {{"media/size/name=Foolscap"}, 3, "[paper-left-out]"},
        {{"meta/win_device_name=Gone"}, 3, "[printer-moved]"},
        {{"meta/win_device_name=Plotter"}, 3, "[printer-moved]"},
        {{"meta/win_device_name=Gone", "meta/win_driver_name=Gone"}, 2, "[printer-missing]"},
        {{"meta/win_driver_name=Gone"}, 3, "[driver-differs]"},
        {{"meta/win_device_name="}, 3, "[printer-moved]"},
        {{"media/number_of_copies=0"}, 3, "[setting-left-out]"},
        {{"--delete", "custom"}, 2, "[key-missing]"},
    };
    for (const auto& [changes, code, word] : cases) {
        prepare(joined({"set", "@a.pc3", "-o", "@b.pc3"}, changes));
        expectRun({"check", "--printers", "@b.pc3"}, code, HasSubstr(word), testing::_);
        EXPECT_THAT(run({"check", "--json", "--printers", "@b.pc3"}).out,
                    HasSubstr(std::string(word).substr(1, std::string(word).size() - 2)));
        // Printers are asked only when that is wanted, and the file says what it says.
        EXPECT_THAT(run({"check", "@b.pc3"}).out, Not(HasSubstr(word)));
    }
    spooler_.find(L"Office")->privateBytes.push_back(0);
    expectRun(
        {"check", "--printers", "@a.pc3"}, 3,
        AllOf(HasSubstr("[private-data-left-out]"), HasSubstr("custom/RawPrivateDeviceData")));
    EXPECT_EQ(spooler_.handles.size(), 0U);
}

TEST_F(CommandPrintersTest, AMovedConfigurationSuitsItsNewPrinter) {
    std::filesystem::create_directory(path("tree"));
    prepare({"create", "pc3", "--printer", "Office", "-o", "@tree/a.pc3"});
    prepare({"create", "pc3", "--printer", "Office", "-o", "@tree/b.pc3"});
    prepare({"set", "@tree/b.pc3", "media/size/name=Foolscap", "--in-place"});
    const std::string before = read("tree/a.pc3");
    expectRun({"migrate", "@tree", "--map", "Office=Ploter"}, 2, IsEmpty(),
              AllOf(HasSubstr("did you mean \"Plotter\"?"), HasSubstr("--names-only")));
    EXPECT_EQ(read("tree/a.pc3"), before);
    spooler_.find(L"Plotter")->privateBytes.assign(4, 9);
    expectRun({"migrate", "@tree", "--map", "Office=Plotter"}, 3, Not(HasSubstr("kept")),
              AllOf(HasSubstr("the driver was \"Fake Driver\" and is now \"Plot Driver\""),
                    HasSubstr("224 bytes, the stored one 228"),
                    HasSubstr("b.pc3: warning: the printer has no paper \"Foolscap\"")));
    // Programs that plot stay with the new printer, and what was stored is still there.
    EXPECT_EQ(run({"get", "@tree/a.pc3", "meta/win_device_name", "meta/win_driver_name"}).out,
              "Plotter\nPlot Driver\n");
    EXPECT_THAT(run({"check", "--printers", "@tree/a.pc3"}).out,
                AllOf(HasSubstr("[private-data-left-out]"), Not(HasSubstr("[printer-moved]"))));
    EXPECT_THAT(run({"info", "@tree/a.pc3"}).out, HasSubstr("RawPrivateDeviceData"));
    EXPECT_EQ(read("tree/a.pc3.bak"), before);
    // Bytes of the same length are applied, whoever's they are.
    spooler_.add(L"Other").driver = L"Other Driver";
    prepare({"create", "pc3", "--printer", "Office", "-o", "@tree/b.pc3"});
    expectWarned({"migrate", "@tree", "--dry-run", "--map", "Office=Other"},
                 HasSubstr("will take the 8 bytes of the old one's own settings"));
    // A printer of the same driver and settings takes everything.
    spooler_.add(L"Office 2");
    prepare({"migrate", "@tree", "--map", "Office=Office 2"});
    giveA4("@tree/b.pc3");
    EXPECT_EQ(run({"check", "--printers", "@tree/b.pc3"}).code, 0);
}

}  // namespace
