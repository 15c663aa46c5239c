#include <platen/log.h>
#include <platen/plotcfg.h>
#include <platen/plotstyle.h>
#include <platen/wx_layer.h>

#include <gtest/gtest.h>
#include <wx/init.h>

#include <memory>
#include <string>
#include <tuple>

#include "tests/support/german.h"
#include "tests/support/log_keeper.h"

namespace {

TEST(Log, RecordsNameTheirPlaceWhileTheLayerIsThere) {
    const wxInitializer wx;
    const LogKeeper log;
    wut::registerWxLayer();
    wut::logError(L"cannot read %ls: %d%%", L"Pl\u00E4ne \u0416.ctb", 7);
    wut::logWarning(L"%ls", std::wstring(5000, L'w').c_str());
    wut::logMessage(L"plain %s", L"text");
    const std::tuple<wxLogLevelValues, std::wstring, int, const char*> expected[] = {
        {wxLOG_Error, L"cannot read Pl\u00E4ne \u0416.ctb: 7%", 207, "wut::logError"},
        {wxLOG_Warning, std::wstring(5000, L'w'), 215, "wut::logWarning"},
        {wxLOG_Message, L"plain text", 223, "wut::logMessage"},
    };
    ASSERT_EQ(log.records.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        const auto& [level, message, line, function] = expected[i];
        const auto& [loggedLevel, text, info] = log.records[i];
        EXPECT_EQ(loggedLevel, static_cast<wxLogLevel>(level));
        EXPECT_EQ(text, message);
        EXPECT_STREQ(info.filename, "src/gui/wxutils/imp/wut_gui");
        EXPECT_EQ(info.line, line);
        EXPECT_STREQ(info.func, function);
        EXPECT_STREQ(info.component, wxLOG_COMPONENT);
    }
    wut::unregisterWxLayer();
    wut::logError(L"unheard");
    EXPECT_EQ(log.records.size(), std::size(expected));
}

TEST(Translations, AreThoseOfTheLayer) {
    const wxInitializer wx;
    const German german{{"Color", "Farbe"}};
    const auto firstStyle = [] {
        return std::wstring(std::unique_ptr<CPlotStyleTable>(CPlotStyleTable::create(true, nullptr))
                                ->style(0)
                                ->locName());
    };
    EXPECT_EQ(firstStyle(), L"Color 1");
    wut::registerWxLayer();
    EXPECT_EQ(firstStyle(), L"Farbe 1");
    wut::unregisterWxLayer();
    EXPECT_EQ(firstStyle(), L"Color 1");
}

}  // namespace
