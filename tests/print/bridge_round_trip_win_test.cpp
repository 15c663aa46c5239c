#include <gmock/gmock.h>

#include <functional>
#include <utility>

#include <platen/pia_report.h>
#include <platen/utcore.h>
#include "print/page_bounds.h"
#include "tests/print/bridge_support.h"

using testing::IsEmpty;

namespace {

using Names = std::set<std::string>;

class BridgeRoundTripTest : public BridgeTest {
protected:
    BridgeRoundTripTest() {
        addFull(L"Fake Full");
        spooler_.add(L"Fake Plain");
        spooler_.add(L"Fake Bare").privateBytes.clear();
        auto& own = addFull(L"Fake Own Paper");
        own.papers.push_back({260, L"Roll", {9140, 30000}});
        own.devMode.dmPaperSize = 260;
        own.devMode.dmFields &= ~static_cast<DWORD>(DM_FORMNAME);
    }

    /// What a configuration makes of fresh print data of its printer.
    static std::vector<std::byte> applied(const CPlotCfg3& config) {
        wut::PrintData data(config.meta.winDeviceName.c_str());
        PiaReport report;
        EXPECT_TRUE(config.toPrintData(data, &report));
        EXPECT_EQ(report.warningCount(), 0U);
        return deviceModeOf(data);
    }
};

TEST_F(BridgeRoundTripTest, AFreshConfigurationIsThePrintersDefaults) {
    for (const auto& printer : spooler_.printers) {
        const auto config = create(printer->name.c_str());
        ASSERT_NE(config, nullptr) << ut::encodeUtf8(printer->name);
        wut::PrintData defaults(printer->name.c_str());
        EXPECT_THAT(differences(deviceModeOf(defaults), applied(*config)), IsEmpty())
            << ut::encodeUtf8(printer->name);
    }
}

TEST_F(BridgeRoundTripTest, ASettingOfTheDocumentReachesItsFieldAndNoOther) {
    const std::pair<std::function<void(CPlotCfg3&)>, Names> cases[] = {
        {[](CPlotCfg3& c) { c.media.dmOrientation = 2; }, {"dmOrientation"}},
        {[](CPlotCfg3& c) { c.media.numberOfCopies = 300; }, {"dmCopies"}},
        {[](CPlotCfg3& c) { c.resColorMem.dmColor = 1; }, {"dmColor"}},
        {[](CPlotCfg3& c) { c.media.destination->setCollating(false); }, {"dmCollate"}},
        {[](CPlotCfg3& c) { c.media.size.setName(L"LETTER"); }, {"dmPaperSize", "dmFormName"}},
        {[](CPlotCfg3& c) { c.media.size.setName(L"user300"); }, {"dmPaperSize"}},
        {[](CPlotCfg3& c) { c.media.size.dmScale = 50; }, {"dmScale"}},
        {[](CPlotCfg3& c) { c.media.size.dmScale = 100; }, {"dmFields"}},
        {[](CPlotCfg3& c) { c.resColorMem.icmMethod = 3; }, {"dmICMMethod"}},
        {[](CPlotCfg3& c) { c.resColorMem.icmIntent = 1; }, {"dmICMIntent"}},
        {[](CPlotCfg3& c) { c.resColorMem.resolution.set(300); },
         {"dmPrintQuality", "dmYResolution"}},
        {[](CPlotCfg3& c) { c.resColorMem.resolution.name = L"dmres_draft_x"; },
         {"dmPrintQuality"}},
        {[](CPlotCfg3& c) { c.custom->set(2, L"dmMediaType", false); }, {"dmMediaType"}},
        {[](CPlotCfg3& c) { c.custom->set(14, L"dmDefaultSource", false); }, {"dmDefaultSource"}},
        {[](CPlotCfg3& c) { c.custom->set(260, L"dmDefaultSource", false); }, {"dmDefaultSource"}},
        {[](CPlotCfg3& c) { c.custom->set(3, L"dmTTOption", false); }, {"dmTTOption"}},
        {[](CPlotCfg3& c) {
             c.custom->setBin(L"fF02030405060708", L"RawPrivateDeviceData", false);
         },
         {"private"}},
    };
    const auto config = create(L"Fake Full");
    ASSERT_NE(config, nullptr);
    const std::vector<std::byte> before = applied(*config);
    for (const auto& [change, fields] : cases) {
        CPlotCfg3 changed(*config);
        change(changed);
        EXPECT_EQ(differences(before, applied(changed)), fields);
    }
}

TEST_F(BridgeRoundTripTest, ASettingOfThePrintDataComesBackFromTheDocument) {
    const auto native = [](wut::PrintData& data) {
        return wut::WindowsPrintNativeData::GetNativeData(data);
    };
    char otherBytes[] = {8, 7, 6, 5, 4, 3, 2, '\xFF'};
    const std::pair<const char*, std::function<void(wut::PrintData&)>> cases[] = {
        {"orientation", [](auto& d) { d.SetOrientation(wxLANDSCAPE); }},
        {"copies", [](auto& d) { d.SetNoCopies(7); }},
        {"colour", [](auto& d) { d.SetColour(false); }},
        {"collate", [](auto& d) { d.SetCollate(false); }},
        {"duplex", [](auto& d) { d.setDmDuplex(DMDUP_HORIZONTAL); }},
        {"dots", [](auto& d) { d.setDmQuality(144); }},
        {"bin", [](auto& d) { d.setDmBin(DMBIN_CASSETTE); }},
        {"media", [](auto& d) { d.SetMedia(DMMEDIA_TRANSPARENCY); }},
        {"private", [&](auto& d) { d.SetPrivData(otherBytes, sizeof(otherBytes)); }},
        {"scale", [&](auto& d) { native(d)->scale = 25; }},
        {"y resolution", [&](auto& d) { native(d)->yResolution = 72; }},
        {"TrueType", [&](auto& d) { native(d)->ttOption = DMTT_BITMAP; }},
        {"method", [&](auto& d) { native(d)->icmMethod = DMICMMETHOD_DRIVER; }},
        {"intent", [&](auto& d) { native(d)->icmIntent = DMICM_SATURATE; }},
        {"dither", [&](auto& d) { native(d)->ditherType = DMDITHER_LINEART; }},
        {"no dither", [&](auto& d) { native(d)->ditherType = 0; }},
    };
    for (const auto& [what, change] : cases) {
        const auto config = create(L"Fake Full");
        ASSERT_NE(config, nullptr);
        // Bounds that are there are not measured anew, which would count as a change.
        print_bridge::setBounds(config->media, {600, 600}, {-100, -100, 4960, 7015});
        wut::PrintData data(L"Fake Full");
        bool changed = true;
        ASSERT_TRUE(config->fromPrintData(data, L"FAKE full", false, changed)) << what;
        EXPECT_FALSE(changed) << what;
        change(data);
        ASSERT_TRUE(config->fromPrintData(data, L"Fake Full", false, changed)) << what;
        EXPECT_TRUE(changed) << what;
        EXPECT_THAT(differences(deviceModeOf(data), applied(*config)), IsEmpty()) << what;
        ASSERT_TRUE(config->fromPrintData(data, L"Fake Full", false, changed)) << what;
        EXPECT_FALSE(changed) << what;
    }
}

}  // namespace
