#include "gui/look/held_log.h"

#include <string>

namespace wut {

HeldLog::HeldLog() : before_(wxLog::SetActiveTarget(this)) {}

HeldLog::~HeldLog() {
    wxLog::SetActiveTarget(before_);
    for (const Record& record : records_) {
        const wxLogLevel level = demoted_ ? wxLogLevel{wxLOG_Debug} : record.level;
        if (wxLog::IsLevelEnabled(level, record.info.component)) {
            wxLog::OnLog(level, record.text, record.info);
        }
    }
}

void HeldLog::DoLogRecord(wxLogLevel level, const wxString& text, const wxLogRecordInfo& info) {
    records_.push_back({level, text, info});
}

}  // namespace wut
