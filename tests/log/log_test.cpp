#include <platen/log.h>
#include <platen/plotcfg.h>
#include <platen/plotstyle.h>
#include <platen/wx_layer.h>

#include <gtest/gtest.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/thread.h>

#include <ctime>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/log/translations.h"

namespace {

struct Record {
    wxLogLevel level;
    std::wstring text;
    std::string file;
    int line;
    std::string function;
    std::string component;
    wxThreadIdType thread;
    wxLongLong_t milliseconds;
};

class Collector : public wxLog {
public:
    std::vector<Record> records;

protected:
    void DoLogRecord(wxLogLevel level, const wxString& text, const wxLogRecordInfo& info) override {
        records.push_back({level, text.ToStdWstring(), info.filename, info.line, info.func,
                           info.component == nullptr ? "" : info.component, info.threadId,
                           info.timestampMS});
    }
};

class Log : public testing::Test {
protected:
    void SetUp() override {
        before_ = wxLog::SetActiveTarget(&collector_);
        wut::registerWxLayer();
    }
    void TearDown() override {
        wut::unregisterWxLayer();
        wxLog::SetLogLevel(wxLOG_Max);
        wxLog::SetActiveTarget(before_);
    }

    wxInitializer library_;
    Collector collector_;
    wxLog* before_ = nullptr;
};

TEST_F(Log, RecordsNameTheirPlace) {
    const std::time_t start = std::time(nullptr);
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
    ASSERT_EQ(collector_.records.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        const Record& record = collector_.records[i];
        EXPECT_EQ(record.level, static_cast<wxLogLevel>(expected[i].level));
        EXPECT_EQ(record.text, expected[i].text);
        EXPECT_EQ(record.file, "src/gui/wxutils/imp/wut_gui");
        EXPECT_EQ(record.line, expected[i].line);
        EXPECT_EQ(record.function, expected[i].function);
        EXPECT_EQ(record.component, wxLOG_COMPONENT);
        EXPECT_EQ(record.thread, wxThread::GetCurrentId());
        EXPECT_GE(record.milliseconds / 1000, start);
        EXPECT_LE(record.milliseconds / 1000, std::time(nullptr));
    }
}

TEST_F(Log, DisabledLevelsStaySilent) {
    wxLog::SetComponentLevel(wxLOG_COMPONENT, wxLOG_Warning);
    wut::logMessage(L"unheard");
    wut::logWarning(L"heard");
    wxLog::SetComponentLevel(wxLOG_COMPONENT, wxLOG_FatalError);
    wut::logError(L"unheard");
    wxLog::SetComponentLevel(wxLOG_COMPONENT, wxLOG_Max);
    ASSERT_EQ(collector_.records.size(), 1u);
    EXPECT_EQ(collector_.records.front().text, L"heard");
}

TEST_F(Log, RecordsCarryTheCallersThread) {
    wxThreadIdType caller{};
    std::thread thread([&] {
        caller = wxThread::GetCurrentId();
        wut::logWarning(L"from a thread");
    });
    thread.join();
    // Records of other threads wait until the main one takes them.
    wxLog::FlushActive();
    ASSERT_EQ(collector_.records.size(), 1u);
    EXPECT_EQ(collector_.records.front().thread, caller);
    EXPECT_NE(collector_.records.front().thread, wxThread::GetCurrentId());
}

TEST_F(Log, GoesNowhereWithoutTheLayer) {
    wut::unregisterWxLayer();
    wut::logError(L"unheard");
    EXPECT_TRUE(collector_.records.empty());
}

TEST_F(Translations, AreThoseOfTheLayer) {
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
