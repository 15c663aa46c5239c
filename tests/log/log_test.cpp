#include <platen/log.h>
#include <platen/plotcfg.h>
#include <platen/plotstyle.h>
#include <platen/wx_layer.h>

#include <gtest/gtest.h>
#include <wx/init.h>

#include <memory>
#include <string>

#include "tests/support/german.h"
#include "tests/support/log_keeper.h"

namespace {

class Log : public testing::Test {
protected:
    Log() { wut::registerWxLayer(); }
    ~Log() override { wut::unregisterWxLayer(); }

    wxInitializer library_;
    LogKeeper log_;
};

TEST_F(Log, RecordsNameTheirPlace) {
    wut::logError(L"cannot read %ls: %d%%", L"Pl\u00E4ne \u0416.ctb", 7);
    wut::logWarning(L"%ls", std::wstring(5000, L'w').c_str());
    wut::logMessage(L"plain %s", L"text");
    const struct {
        wxLogLevelValues level;
        std::wstring text;
        int line;
        const char* function;
    } expected[] = {
        {wxLOG_Error, L"cannot read Pl\u00E4ne \u0416.ctb: 7%", 207, "wut::logError"},
        {wxLOG_Warning, std::wstring(5000, L'w'), 215, "wut::logWarning"},
        {wxLOG_Message, L"plain text", 223, "wut::logMessage"},
    };
    ASSERT_EQ(log_.records.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        const auto& [level, text, info] = log_.records[i];
        EXPECT_EQ(level, static_cast<wxLogLevel>(expected[i].level));
        EXPECT_EQ(text, expected[i].text);
        EXPECT_STREQ(info.filename, "src/gui/wxutils/imp/wut_gui");
        EXPECT_EQ(info.line, expected[i].line);
        EXPECT_STREQ(info.func, expected[i].function);
        EXPECT_STREQ(info.component, wxLOG_COMPONENT);
    }
}

TEST_F(Log, GoesNowhereWithoutTheLayer) {
    wut::unregisterWxLayer();
    wut::logError(L"unheard");
    EXPECT_TRUE(log_.records.empty());
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
