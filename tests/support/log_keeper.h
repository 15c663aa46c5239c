/// What is logged during a test.
#pragma once

#include <wx/log.h>

#include <string>
#include <vector>

/// Takes all that is logged while it lives.
class LogKeeper : public wxLog {
public:
    LogKeeper() : before_(wxLog::SetActiveTarget(this)) {}
    ~LogKeeper() override { wxLog::SetActiveTarget(before_); }

    struct Record {
        wxLogLevel level;
        std::wstring text;
        wxLogRecordInfo info;
    };
    std::vector<Record> records;

protected:
    void DoLogRecord(wxLogLevel level, const wxString& text, const wxLogRecordInfo& info) override {
        records.push_back({level, text.ToStdWstring(), info});
    }

private:
    wxLog* before_;
};
