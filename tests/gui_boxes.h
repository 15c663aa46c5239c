/// Message boxes that open during a test.
#pragma once

#include <gtest/gtest.h>
#include <wx/modalhook.h>
#include <wx/msgdlg.h>

#include <ostream>
#include <string>
#include <vector>

/// Answers every modal dialog at once while it lives, and keeps what message boxes said.
class BoxCatcher : public wxModalDialogHook {
public:
    struct Box {
        std::wstring text;
        std::wstring caption;
        long style;
        wxWindow* parent;

        bool operator==(const Box&) const = default;
        friend void PrintTo(const Box& box, std::ostream* stream) {
            *stream << testing::PrintToString(box.caption) << ": "
                    << testing::PrintToString(box.text) << ", " << box.style << ", " << box.parent;
        }
    };

    /// `answer` is the identifier of a button.
    explicit BoxCatcher(int answer = wxID_OK) : answer_(answer) { Register(); }
    BoxCatcher(const BoxCatcher&) = delete;
    BoxCatcher& operator=(const BoxCatcher&) = delete;
    ~BoxCatcher() override { Unregister(); }

    std::vector<Box> boxes;
    /// What else was to be shown.
    std::vector<wxDialog*> others;

protected:
    int Enter(wxDialog* dialog) override {
        if (const auto* box = dynamic_cast<wxMessageDialog*>(dialog)) {
            boxes.push_back({box->GetMessage().ToStdWstring(), box->GetCaption().ToStdWstring(),
                             box->GetMessageDialogStyle(), box->GetParent()});
        } else {
            others.push_back(dialog);
        }
        return answer_;
    }

private:
    int answer_;
};
