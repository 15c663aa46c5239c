#include <gmock/gmock.h>

#include <tuple>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "tests/print/bridge_support.h"
#include "tests/support/configurations.h"
#include "tests/support/files.h"
#include "tests/support/trees.h"

namespace {

class BridgeDocumentsTest : public BridgeTest {
protected:
    /// A document for this printer and driver, read from a file.
    std::unique_ptr<CPlotCfg3> readBack(const std::string& body, bool& printerChanged) const {
        writeBytes(folder_.path("a.pc3"), fileAround(body, PiaKind::Pc3));
        return readBack(printerChanged);
    }

    std::unique_ptr<CPlotCfg3> readBack(bool& printerChanged) const {
        const wxLogNull quiet;
        return std::unique_ptr<CPlotCfg3>(
            CPlotCfg3::read(folder_.wide("a.pc3").c_str(), printerChanged));
    }

    static std::string bodyFor(std::string_view printer, std::string_view driver) {
        std::string body = edited(fullConfiguration, "\\\\server\\plotter", printer);
        return edited(body, "Driver name", driver);
    }

    TemporaryFolder folder_;
};

TEST_F(BridgeDocumentsTest, ANewConfigurationDescribesItsPrinter) {
    auto& printer = addFull(L"Fake");
    printer.port = L"file:";
    const auto config = create(L"Fake");
    ASSERT_NE(config, nullptr);
    const std::string body = bodyOfDocument(*config);
    for (const char* item :
         {"\n win_device_name=\"Fake\n", "\n config_description=\"Second floor\n",
          "\n win_driver_name=\"Fake Driver\n", "\n localized_model_name=\"System\n",
          "\n canonical_family_name=\"System\n", "\n plot_to_file=TRUE\n", "\n  name=\"A4\n",
          "\n  name=\"Default\n", "\n  collating_name=\"Regular\n", "\n lines_overwrite=TRUE\n",
          "\n  name=\"600x1200_None\n"}) {
        EXPECT_THAT(body, testing::HasSubstr(item));
    }
    EXPECT_EQ(config->meta.dmDriverVersion, 0x0102);
    int version = 0;
    EXPECT_TRUE(config->custom->get(version, L"dmSpecVersion"));
    EXPECT_EQ(version, DM_SPECVERSION);
}

TEST_F(BridgeDocumentsTest, TextsOfTheSystemComeIntoOneLine) {
    auto& printer = addFull(L"Fake");
    printer.comment = L"Second floor\r\nask\tthe porter\n\x0085";
    printer.driver = L"Fake\nDriver";
    std::wstring(L"A\n4").copy(printer.devMode.dmFormName, CCHFORMNAME - 1);
    printer.papers = {{9, L"A\n4", {2100, 2970}}, {1, L"Letter\r", {2159, 2794}}};
    const auto config = create(L"Fake");
    ASSERT_NE(config, nullptr);
    ASSERT_TRUE(config->write(folder_.wide("a.pc3").c_str()));
    bool printerChanged = true;
    const auto read = readBack(printerChanged);
    ASSERT_NE(read, nullptr);
    EXPECT_FALSE(printerChanged);
    EXPECT_EQ(read->meta.configDescription, L"Second floor ask the porter  ");
    EXPECT_EQ(read->meta.winDriverName, L"Fake Driver");
    EXPECT_EQ(read->media.size.name, L"A 4");
    // The driver is still told its own names.
    for (const auto& [shown, own] :
         {std::pair(L"A 4", L"A\n4"), std::pair(L"letter ", L"Letter\r")}) {
        read->media.size.setName(shown);
        wut::PrintData data(L"Fake");
        PiaReport report;
        EXPECT_TRUE(read->toPrintData(data, &report));
        EXPECT_EQ(report.warningCount(), 0U);
        EXPECT_EQ(wut::WindowsPrintNativeData::GetNativeData(data)->formName, own);
    }
}

TEST_F(BridgeDocumentsTest, PaperListsOfDifferentNumberEndWithTheShorter) {
    auto& printer = addFull(L"Fake");
    printer.devMode.dmFields &= ~static_cast<DWORD>(DM_FORMNAME);
    const auto config = create(L"Fake");
    ASSERT_NE(config, nullptr);
    for (const WORD shorter : {WORD{DC_PAPERS}, WORD{DC_PAPERNAMES}}) {
        wut::onPrinterSettingsChanged(OdString());
        printer.counts = {{shorter, WORD{1}}};
        config->media.size.setName(L"Letter");
        wut::PrintData data(L"Fake");
        EXPECT_TRUE(config->toPrintData(data));
        short paper = 0;
        EXPECT_TRUE(data.getDmPaperSize(paper));
        EXPECT_EQ(paper, DMPAPER_A4);
        data.setDmPaperSize(DMPAPER_LETTER, nullptr);
        bool changed = false;
        EXPECT_FALSE(config->fromPrintData(data, L"Fake", false, changed));
        printer.devMode.dmPaperSize = DMPAPER_LETTER;
        EXPECT_EQ(create(L"Fake"), nullptr);
        printer.devMode.dmPaperSize = DMPAPER_A4;
    }
}

TEST_F(BridgeDocumentsTest, WhatCannotBeAskedMakesNoConfiguration) {
    EXPECT_EQ(create(L"Fake"), nullptr);
    auto& printer = spooler_.add(L"Fake");
    for (bool* fault : {&printer.propertiesFail, &printer.fillFails}) {
        *fault = true;
        EXPECT_EQ(create(L"Fake"), nullptr);
        *fault = false;
    }
    printer.devMode.dmPaperSize = DMPAPER_B5;
    EXPECT_EQ(create(L"Fake"), nullptr);
    printer.devMode.dmPaperSize = 300;
    const auto config = create(L"Fake");
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(config->media.size.name, L"User300");
}

TEST_F(BridgeDocumentsTest, ALostPrinterGivesWayToTheNextOfItsDriver) {
    spooler_.add(L"Other").driver = L"Another";
    spooler_.add(L"Broken").driver.clear();
    auto& first = spooler_.add(L"First");
    spooler_.add(L"Second").driver = L"driver NAME";
    first.driver = L"DRIVER name";
    first.shared = true;
    spooler_.find(L"Other")->shared = true;
    // Stored for a printer and a driver, read for a printer. "Other" has another driver by now.
    const std::tuple<const char*, const char*, const wchar_t*, bool> cases[] = {
        {"second", "Driver name", L"second", false},
        {"Gone", "Driver name", L"First", true},
        {"Other", "Driver name", L"First", true},
        {"Gone", "Unknown driver", L"Gone", false}};
    for (const auto& [printer, driver, expected, moved] : cases) {
        bool printerChanged = !moved;
        const auto config = readBack(bodyFor(printer, driver), printerChanged);
        ASSERT_NE(config, nullptr);
        EXPECT_EQ(config->meta.winDeviceName, expected);
        EXPECT_EQ(printerChanged, moved) << printer;
    }
    // A printer that both lists have is asked once.
    bool printerChanged = false;
    spooler_.calls.clear();
    readBack(bodyFor("Gone", "Unknown driver"), printerChanged);
    EXPECT_EQ(spooler_.calls["open"], 1 + 4);
    // Nobody is asked about a driver that is not named.
    spooler_.calls.clear();
    readBack(edited(bodyFor("Gone", "x"), " win_driver_name=\"x\n", ""), printerChanged);
    EXPECT_EQ(spooler_.calls["open"], 1);
}

TEST_F(BridgeDocumentsTest, TheDefaultPrinterTakesThePlaceOfWhatAsksForIt) {
    const std::string body =
        edited(fullConfiguration, "default_system_cfg=FALSE", "default_system_cfg=TRUE");
    bool printerChanged = true;
    spooler_.add(L"First");
    EXPECT_EQ(readBack(body, printerChanged), nullptr);
    spooler_.add(L"Default").comment = L"mine";
    spooler_.defaultName = L"Default";
    const auto config = readBack(body, printerChanged);
    ASSERT_NE(config, nullptr);
    EXPECT_FALSE(printerChanged);
    EXPECT_EQ(config->meta.winDeviceName, L"Default");
    EXPECT_EQ(config->meta.configDescription, L"mine");
    EXPECT_FALSE(config->media.customPapers);
}

TEST_F(BridgeDocumentsTest, TheDefaultsComeBack) {
    auto& printer = addFull(L"Fake");
    const auto config = create(L"Fake");
    ASSERT_NE(config, nullptr);
    const std::string fresh = bodyOfDocument(*config);
    config->media.numberOfCopies = 12;
    config->media.size.setName(L"Letter");
    config->custom->setBin(L"00", L"RawPrivateDeviceData", false);
    EXPECT_TRUE(config->setToDefault());
    EXPECT_EQ(bodyOfDocument(*config), fresh);
    config->media.numberOfCopies = 12;
    const std::string changed = bodyOfDocument(*config);
    printer.propertiesFail = true;
    EXPECT_FALSE(config->setToDefault());
    spooler_.remove(L"Fake");
    EXPECT_FALSE(config->setToDefault());
    EXPECT_EQ(bodyOfDocument(*config), changed);
}

}  // namespace
