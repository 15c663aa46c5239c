#include <gmock/gmock.h>

#include <functional>
#include <tuple>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "tests/print/bridge_support.h"
#include "tests/support/configurations.h"
#include "tests/support/documents.h"

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;

namespace {

constexpr const wchar_t* name = L"Fake";

class BridgeFailureTest : public BridgeTest {
protected:
    BridgeFailureTest() : printer_(addFull(name)), config_(create(name)) {}

    static PiaCode codeOf(const PiaReport& report) {
        EXPECT_TRUE(report.failure());
        return report.failure().value_or(PiaFinding{}).code;
    }

    static void setPrivateData(CPlotCfg3& config, const wchar_t* digits) {
        config.custom->setBin(digits, L"RawPrivateDeviceData", false);
    }

    /// Gives a custom property another name.
    static void without(CPlotCfg3& config, const char* property) {
        config = *configOf(edited(bodyOfDocument(config), property, "absent"));
    }

    test_support::FakePrinter& printer_;
    std::unique_ptr<CPlotCfg3> config_;
};

TEST_F(BridgeFailureTest, PrintDataStayAsTheyWereWhenNothingCanBeApplied) {
    const std::tuple<const char*, std::function<void(CPlotCfg3&)>, PiaCode> cases[] = {
        {"no custom block", [](CPlotCfg3& c) { c.custom.reset(); }, PiaCode::KeyMissing},
        {"no printer", [](CPlotCfg3& c) { c.meta.winDeviceName.clear(); }, PiaCode::KeyMissing},
        {"printer gone", [](CPlotCfg3& c) { c.meta.winDeviceName = L"Gone"; },
         PiaCode::PrinterMissing},
        {"empty custom block", [](CPlotCfg3& c) { c.custom.emplace(); }, PiaCode::KeyMissing},
        {"negative size", [](CPlotCfg3& c) { c.custom->set(-1, L"dmSize", false); },
         PiaCode::ValueInvalid},
        {"a digit less", [](CPlotCfg3& c) { setPrivateData(c, L"010203040506070"); },
         PiaCode::ValueInvalid},
        {"a byte more", [](CPlotCfg3& c) { setPrivateData(c, L"010203040506070809"); },
         PiaCode::ValueInvalid},
        {"no private data",
         [](CPlotCfg3& c) {
             c.custom.emplace().set(8, L"dmDriverExtra", true);
             c.custom->set(static_cast<int>(sizeof(DEVMODEW)), L"dmSize", true);
         },
         PiaCode::KeyMissing},
    };
    for (const auto& [what, spoil, code] : cases) {
        CPlotCfg3 config(*config_);
        config.media.numberOfCopies = 9;
        config.media.dmOrientation = 2;
        spoil(config);
        wut::PrintData data(name);
        const std::vector<std::byte> before = deviceModeOf(data);
        PiaReport report;
        EXPECT_FALSE(config.toPrintData(data, &report)) << what;
        EXPECT_EQ(codeOf(report), code) << what;
        EXPECT_FALSE(report.failure()->path.empty()) << what;
        EXPECT_EQ(differences(before, deviceModeOf(data)), std::set<std::string>()) << what;
        EXPECT_FALSE(config.toPrintData(data)) << what;
    }
    wut::unRegisterPrintFactory();
    wut::PrintData foreign(name);
    EXPECT_TRUE(foreign.ResolveConflicts());
    EXPECT_EQ(foreign.createPrinterDC(), nullptr);
    PiaReport report;
    EXPECT_FALSE(config_->toPrintData(foreign, &report));
    EXPECT_EQ(codeOf(report), PiaCode::PrintDataUnusable);
}

TEST_F(BridgeFailureTest, ANewDriverGetsTheSettingsAndNotTheOldOnesBytes) {
    config_->media.numberOfCopies = 3;
    printer_.privateBytes.assign(20, 0x55);
    printer_.driver = L"Newer Driver";
    wut::PrintData data(name);
    spooler_.modes.clear();
    PiaReport report;
    ASSERT_TRUE(config_->toPrintData(data, &report));
    EXPECT_THAT(warningsOf(report),
                AllOf(HasSubstr("private-data-left-out custom/RawPrivateDeviceData"),
                      HasSubstr("driver-differs meta/win_driver_name")));
    EXPECT_EQ(report.warningCount(), 2U);
    EXPECT_THAT(spooler_.modes, Contains(static_cast<DWORD>(DM_IN_BUFFER | DM_OUT_BUFFER)));
    EXPECT_EQ(data.GetNoCopies(), 3);
    const std::vector<std::byte> mode = deviceModeOf(data);
    EXPECT_EQ(mode.size(), sizeof(DEVMODEW) + 20);
    EXPECT_EQ(mode.back(), std::byte{0x55});
    // A driver that says no size is asked to merge as well.
    printer_.propertiesFail = true;
    EXPECT_TRUE(config_->toPrintData(data, &report));
    EXPECT_THAT(warningsOf(report), HasSubstr("private-data-left-out custom/RawPrivateDeviceData"));
    // Without a device mode there is nothing to merge: the settings are there, the driver is not.
    wut::PrintData empty;
    EXPECT_FALSE(config_->toPrintData(empty, &report));
    EXPECT_EQ(codeOf(report), PiaCode::SettingsRefused);
    EXPECT_EQ(empty.GetPrinterName().ToStdWstring(), name);
}

TEST_F(BridgeFailureTest, AVersion3FileAppliesNoPrivateData) {
    PiaReport report;
    PiaTree tree;
    std::string json;
    PiaInput input;
    ASSERT_TRUE(config_->writeToBlock(tree.root()) && piaWriteJson(tree.root(), json, report) &&
                input.openBytes(json));
    bool printerChanged = true;
    const auto config = CPlotCfg3::fromInput(input, printerChanged);
    ASSERT_NE(config, nullptr);
    wut::PrintData data(name);
    ASSERT_GT(data.GetPrivDataLen(), 0);
    EXPECT_TRUE(config->toPrintData(data, &report));
    EXPECT_EQ(data.GetPrivDataLen(), 0);
    EXPECT_THAT(warningsOf(report), HasSubstr("private-data-left-out custom/RawPrivateDeviceData"));
    // Sizes do not matter then.
    config->custom->set(-1, L"dmSize", false);
    EXPECT_TRUE(config->toPrintData(data));
    EXPECT_EQ(wut::WindowsPrintNativeData::GetNativeData(data)->size, 0);
}

TEST_F(BridgeFailureTest, APaperIsSetAsFarAsTheDriverTakesIt) {
    const std::tuple<DWORD, const wchar_t*, const wchar_t*, short, const char*> cases[] = {
        {DM_FORMNAME | DM_PAPERSIZE, L"letter", L"Letter", 1, nullptr},
        {DM_PAPERSIZE, L"Letter", L"kept", 1, nullptr},
        {DM_FORMNAME, L"Letter", L"Letter", 9, "setting-left-out media/size/name"},
        {DM_COPIES, L"User300", L"kept", 9, "setting-left-out media/size/name"},
        {DM_PAPERSIZE, L"USER300", L"kept", 300, nullptr},
        {DM_PAPERSIZE, L"Foolscap", L"kept", 9, "paper-left-out media/size/name"},
        {DM_PAPERSIZE, L"", L"kept", 9, nullptr},
    };
    for (const auto& [fields, paper, formName, id, warning] : cases) {
        // What it is given of a setting that it does not have, a driver throws out.
        printer_.correct = [only = fields](DEVMODEW& mode) { mode.dmFields = only; };
        CPlotCfg3 config(*config_);
        bool changed = false;
        wut::PrintData defaults(name);
        defaults.setDmPaperSize(9, nullptr);
        ASSERT_TRUE(config.fromPrintData(defaults, name, false, changed));
        config.media.size.setName(paper);
        wut::PrintData data(name);
        data.setDmPaperSize(9, nullptr);
        auto* native = wut::WindowsPrintNativeData::GetNativeData(data);
        native->formName = L"kept";
        PiaReport report;
        EXPECT_TRUE(config.toPrintData(data, &report));
        short set = 0;
        EXPECT_TRUE(data.getDmPaperSize(set));
        EXPECT_EQ(set, id);
        EXPECT_EQ(native->formName, formName);
        EXPECT_EQ(report.warningCount(), warning == nullptr ? 0U : 1U);
        if (warning != nullptr) {
            EXPECT_THAT(warningsOf(report), HasSubstr(warning));
        }
    }
    for (const std::int32_t copies : {0, -1, 32768, 2147483647}) {
        config_->media.numberOfCopies = copies;
        wut::PrintData data(name);
        PiaReport report;
        EXPECT_TRUE(config_->toPrintData(data, &report));
        EXPECT_EQ(data.GetNoCopies(), 1);
        EXPECT_THAT(warningsOf(report), HasSubstr("setting-left-out media/number_of_copies"));
    }
}

TEST_F(BridgeFailureTest, AFailedRefreshKeepsWhatItTookUpToTheFault) {
    const struct {
        const char* what;
        std::function<void(CPlotCfg3&, wut::PrintData&)> spoil;
        PiaCode code;
        /// What it has taken: private data from 1 on, copies from 2 on, colour from 3 on.
        int steps;
    } cases[] = {
        {"other printer", [](auto& c, auto&) { c.meta.winDeviceName = L"Other"; },
         PiaCode::ValueInvalid, 0},
        {"no custom block", [](auto& c, auto&) { c.custom.reset(); }, PiaCode::KeyMissing, 0},
        {"no length", [](auto& c, auto&) { without(c, "dmDriverExtra"); }, PiaCode::KeyMissing, 0},
        {"no private data", [](auto& c, auto&) { without(c, "RawPrivateDeviceData"); },
         PiaCode::KeyMissing, 0},
        {"printer gone", [&](auto&, auto&) { spooler_.remove(name); }, PiaCode::PrinterMissing, 1},
        {"paper unknown", [](auto&, auto& d) { d.setDmPaperSize(70, nullptr); },
         PiaCode::PaperLeftOut, 1},
        {"no media type", [](auto& c, auto&) { without(c, "dmMediaType"); }, PiaCode::KeyMissing,
         2},
        {"no source", [](auto& c, auto&) { without(c, "dmDefaultSource"); }, PiaCode::KeyMissing,
         2},
        {"no size", [](auto& c, auto&) { without(c, "dmSize"); }, PiaCode::KeyMissing, 3},
        {"no TrueType option", [](auto& c, auto&) { without(c, "dmTTOption"); },
         PiaCode::KeyMissing, 3},
    };
    for (const auto& [what, spoil, code, steps] : cases) {
        if (spooler_.find(name) == nullptr) {
            addFull(name);
            wut::onPrinterSettingsChanged(OdString());
        }
        CPlotCfg3 config(*config_);
        wut::PrintData data(name);
        char bytes[8] = {'\x7F'};
        data.SetPrivData(bytes, sizeof(bytes));
        data.SetNoCopies(5);
        data.SetColour(false);
        spoil(config, data);
        bool changed = true;
        PiaReport report;
        EXPECT_FALSE(config.fromPrintData(data, name, false, changed, &report)) << what;
        EXPECT_EQ(codeOf(report), code) << what;
        std::wstring digits;
        EXPECT_EQ(config.custom && config.custom->getBin(digits, L"RawPrivateDeviceData") &&
                      digits.starts_with(L"7F"),
                  steps > 0)
            << what;
        EXPECT_EQ(config.media.numberOfCopies == 5, steps > 1) << what;
        EXPECT_EQ(config.resColorMem.dmColor == 1, steps > 2) << what;
        EXPECT_EQ(changed, steps > 0) << what;
    }
}

}  // namespace
