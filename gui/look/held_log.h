/// Log records that wait until it is known what they are worth.
#pragma once

#include <wx/log.h>

#include <vector>

namespace wut {

/// Takes the place of the active log target while it lives, and keeps what is logged.
class HeldLog : public wxLog {
public:
    /// (The target that is replaced shows first what it still has to show.)
    HeldLog();
    HeldLog(const HeldLog&) = delete;
    HeldLog& operator=(const HeldLog&) = delete;
    /// Gives the records to the target that was there before.
    ~HeldLog() override;

    /// From now on the user is not to see the records: they are passed on as debug messages.
    void demote() { demoted_ = true; }

protected:
    void DoLogRecord(wxLogLevel level, const wxString& text, const wxLogRecordInfo& info) override;

private:
    struct Record {
        wxLogLevel level;
        wxString text;
        wxLogRecordInfo info;
    };

    wxLog* before_;
    std::vector<Record> records_;
    bool demoted_ = false;
};

}  // namespace wut
