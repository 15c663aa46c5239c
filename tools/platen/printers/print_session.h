/// What print data need in this process (Windows).
#pragma once

#include <wx/init.h>
#include <wx/log.h>

#include <platen/print.h>

namespace cli::printers {

/// Print data can be used while it lives: they need wxWidgets' list of papers and our factory. What
/// wxWidgets logs is left out, since the commands say it in their own words.
class PrintSession {
public:
    PrintSession() {
        if (started_.IsOk() &&
            dynamic_cast<wut::PrintFactory*>(wxPrintFactory::GetFactory()) == nullptr) {
            wut::registerPrintFactory();
            registered_ = true;
        }
    }
    PrintSession(const PrintSession&) = delete;
    PrintSession& operator=(const PrintSession&) = delete;
    ~PrintSession() {
        if (registered_) {
            wut::unRegisterPrintFactory();
        }
    }

    bool isOk() const { return started_.IsOk(); }

private:
    wxInitializer started_;
    wxLogNull quiet_;
    bool registered_ = false;
};

}  // namespace cli::printers
