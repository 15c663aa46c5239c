// The printers of the machine that this runs on, whatever they are: settings go to their drivers
// and come back, in memory. Nothing is printed but by MachinePrint, which runs only when it is
// asked for.
#include <gmock/gmock.h>
#include <wx/dcprint.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <platen/pia_report.h>
#include <platen/plotcfg.h>
#include "tests/print/device_modes.h"
#include "tests/spooler/support.h"
#include "tests/support/files.h"

namespace {

std::vector<std::wstring> installed() {
    OdArray<OdString> names;
    wut::getSystemPrinters(names);
    std::vector<std::wstring> printers;
    for (const OdString& name : names) {
        printers.push_back(name.text());
    }
    return printers;
}

class MachinePrinter : public SpoolerTest, public testing::WithParamInterface<std::wstring> {
protected:
    const wchar_t* name() const { return GetParam().c_str(); }
};

class MachinePrint : public MachinePrinter {};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(MachinePrinter);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(MachinePrint);

TEST(Machine, HasPrinters) {
    if (installed().empty()) {
        GTEST_SKIP() << "this machine has no printers";
    }
}

TEST_P(MachinePrinter, HasADriverAPortAndPapers) {
    const CPrnHelper printer(name());
    ASSERT_TRUE(printer.isValid());
    std::wstring driver, port;
    EXPECT_TRUE(printer.getPrinterDriver(driver) && printer.getPorts(port));
    EXPECT_FALSE(driver.empty() || port.empty());
    OdArray<unsigned short> ids;
    OdArray<OdString> names;
    OdArray<POINT> sizes;
    ASSERT_TRUE(wut::PaperSizeGetter(name(), port.c_str(), nullptr).get(&ids, &names, &sizes));
    ASSERT_GT(ids.size(), 0U);
    ASSERT_EQ(names.size(), ids.size());
    ASSERT_EQ(sizes.size(), ids.size());
    for (unsigned index = 0; index < ids.size(); ++index) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(names[index].text())));
        EXPECT_TRUE(sizes[index].x >= 0 && sizes[index].y >= 0);
    }
}

TEST_P(MachinePrinter, TakesSettingsIntoItsDeviceModeAndGivesThemBack) {
    const wut::DevModePtr expected(wut::getDevMode(name()));
    ASSERT_NE(expected, nullptr);
    wut::PrintData data(name());
    EXPECT_EQ(data.GetPrinterName().ToStdWstring(), GetParam());
    const bool turns = (expected->dmFields & DM_ORIENTATION) != 0;
    data.SetOrientation(wxLANDSCAPE);
    wut::DEVMODE_RAII mode(data);
    ASSERT_TRUE(mode);
    EXPECT_EQ(mode->dmDriverExtra, expected->dmDriverExtra);
    EXPECT_EQ(mode->dmDriverVersion, expected->dmDriverVersion);
    if (turns) {
        EXPECT_EQ(mode->dmOrientation, DMORIENT_LANDSCAPE);
        mode->dmOrientation = DMORIENT_PORTRAIT;
        mode.updatePrintData();
        EXPECT_EQ(data.GetOrientation(), wxPORTRAIT);
    }
}

TEST_P(MachinePrinter, AConfigurationOfItsDefaultsIsWrittenReadAndAppliedAsItWas) {
    const TemporaryFolder folder;
    const std::wstring file = folder.wide("printer.pc3");
    const std::unique_ptr<CPlotCfg3> made(CPlotCfg3::create(name()));
    ASSERT_TRUE(made && made->write(file.c_str()));
    bool moved = true;
    const std::unique_ptr<CPlotCfg3> config(CPlotCfg3::read(file.c_str(), moved));
    ASSERT_TRUE(config && !moved);
    wut::PrintData defaults(name());
    wut::PrintData data(name());
    PiaReport report;
    ASSERT_TRUE(config->toPrintData(data, &report));
    EXPECT_EQ(report.warningCount(), 0U);
    // A file has no place for how a device dithers; without that it is on.
    EXPECT_THAT(differences(deviceModeOf(defaults), deviceModeOf(data)),
                testing::IsSubsetOf({"dmDitherType", "dmFields"}));
    bool changed = true;
    EXPECT_TRUE(config->fromPrintData(data, name(), false, changed) &&
                config->fromPrintData(data, name(), false, changed));
    EXPECT_FALSE(changed) << "what the printer has said already";
}

TEST_P(MachinePrint, APageGoesToTheSpooler) {
    const std::unique_ptr<CPlotCfg3> config(CPlotCfg3::create(name()));
    wut::PrintData data(name());
    ASSERT_TRUE(config && config->toPrintData(data));
    const std::unique_ptr<wxPrinterDC> dc(data.createPrinterDC());
    ASSERT_TRUE(dc && dc->IsOk() && dc->StartDoc("Platen test page"));
    dc->StartPage();
    dc->DrawText("Platen test page", 300, 300);
    dc->EndPage();
    dc->EndDoc();
}

const auto byNumber = [](const auto& information) { return std::to_string(information.index); };
INSTANTIATE_TEST_SUITE_P(Own, MachinePrinter, testing::ValuesIn(installed()), byNumber);
INSTANTIATE_TEST_SUITE_P(Own, MachinePrint, testing::ValuesIn(installed()), byNumber);

}  // namespace
