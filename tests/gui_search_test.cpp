// The search field, with what the toolkit's own field does on this system.
#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>
#include <wx/validate.h>

#include <functional>
#include <memory>

#include "gui_windows.h"
#include "tests/support/gui.h"

namespace {

/// A window with a labelled field that is empty.
class SearchField : public testing::Test {
protected:
    SearchField() {
        auto* rows = new wxFlexGridSizer(2, wxSize(12, 12));
        rows->AddGrowableCol(1);
        addRow(*rows, "Search field under test:", *field_);
        addRow(*rows, "One that is empty:", *empty_);
        auto* margin = new wxBoxSizer(wxVERTICAL);
        margin->Add(rows, wxSizerFlags(1).Expand().Border(wxALL, 16));
        panel_->SetSizer(margin);
        frame_.SetClientSize(460, 120);
        frame_.Show();
        frame_.Raise();
        settle();
    }

    void addRow(wxSizer& rows, const char* label, wut::QuorSearchCtrl& field) {
        rows.Add(new wxStaticText(panel_, wxID_ANY, label), wxSizerFlags().CentreVertical());
        rows.Add(&field, wxSizerFlags(1).Expand());
    }

    /// Drawing comes a little after what it shows.
    void leavePictureWhenDrawn(const char* name) {
        int rounds = 0;
        if (picturesWanted() && settleUntil([&] { return ++rounds == 30; })) {
            leavePicture(name, screenshot(frame_));
        }
    }

    wxFrame frame_{nullptr, wxID_ANY, "Search", wxPoint(60, 60)};
    wxPanel* panel_ = new wxPanel(&frame_);
    wut::QuorSearchCtrl* field_ = new wut::QuorSearchCtrl(panel_, wxID_ANY);
    wut::QuorSearchCtrl* empty_ = new wut::QuorSearchCtrl(panel_, wxID_ANY);
};

TEST_F(SearchField, ShowsTheCancelButtonWhileItHoldsText) {
    EXPECT_FALSE(field_->IsCancelButtonVisible());
    int events = 0;
    int eventsAbove = 0;
    field_->Bind(wxEVT_TEXT, [&](wxCommandEvent& event) {
        ++events;
        event.Skip();
    });
    frame_.Bind(wxEVT_TEXT, [&](wxCommandEvent&) { ++eventsAbove; });

    const struct {
        const char* what;
        std::function<void()> change;
        const char* value;
        int events;
    } steps[] = {
        {"set", [&] { field_->SetValue("pen"); }, "pen", 1},
        {"appended", [&] { field_->AppendText("s"); }, "pens", 1},
        {"removed a part", [&] { field_->Remove(1, 4); }, "p", 1},
        {"removed the rest", [&] { field_->Remove(0, 1); }, "", 1},
        {"written", [&] { field_->WriteText(" "); }, " ", 1},
        {"cleared", [&] { field_->Clear(); }, "", 1},
        {"set again", [&] { field_->SetValue(wxString(L"\x00e9\x4e00")); }, "\xc3\xa9\xe4\xb8\x80",
         1},
        {"set to nothing", [&] { field_->SetValue(""); }, "", 1},
    };
    for (const auto& step : steps) {
        events = eventsAbove = 0;
        step.change();
        settle();
        EXPECT_EQ(field_->GetValue(), wxString::FromUTF8(step.value)) << step.what;
        EXPECT_EQ(field_->IsCancelButtonVisible(), *step.value != '\0') << step.what;
        EXPECT_EQ(events, step.events) << step.what;
        EXPECT_EQ(eventsAbove, step.events) << step.what;
        EXPECT_FALSE(empty_->IsCancelButtonVisible()) << step.what;
    }
}

TEST_F(SearchField, FollowsTheKeyboardAndTheMouse) {
    wxUIActionSimulator user;
    leavePictureWhenDrawn("search_field_empty");
    field_->SetFocus();
    settle();
    user.Text("plot");
    ASSERT_TRUE(settleUntil([&] { return field_->GetValue() == "plot"; })) << field_->GetValue();
    EXPECT_TRUE(field_->IsCancelButtonVisible());
    leavePictureWhenDrawn("search_field_typed");

    for (const char* left : {"plo", "pl", "p", ""}) {
        EXPECT_TRUE(field_->IsCancelButtonVisible());
        user.Char(WXK_BACK);
        ASSERT_TRUE(settleUntil([&] { return field_->GetValue() == left; })) << field_->GetValue();
    }
    EXPECT_FALSE(field_->IsCancelButtonVisible());

    field_->SetValue("pens");
    settle();
    const wxRect place = field_->GetScreenRect();
    user.MouseMove(place.GetRight() - place.height / 2, place.y + place.height / 2);
    settle();
    user.MouseClick();
    EXPECT_TRUE(settleUntil([&] { return field_->GetValue().empty(); }));
    EXPECT_FALSE(field_->IsCancelButtonVisible());
}

TEST_F(SearchField, LooksAtItsOwnTextOnly) {
    wxTextCtrl other(panel_, wxID_ANY, "other");
    wxCommandEvent event(wxEVT_TEXT, other.GetId());
    event.SetEventObject(&other);
    event.SetString("other");
    EXPECT_FALSE(field_->ProcessWindowEvent(event));
    EXPECT_FALSE(field_->IsCancelButtonVisible());
}

class GreedyValidator : public wxValidator {
public:
    explicit GreedyValidator(int& seen) : seen_(seen) {
        Bind(wxEVT_TEXT, &GreedyValidator::take, this);
        Bind(wxEVT_SEARCH, &GreedyValidator::take, this);
    }
    wxObject* Clone() const override { return new GreedyValidator(seen_); }
    bool TransferToWindow() override { return true; }
    bool TransferFromWindow() override { return true; }

private:
    void take(wxCommandEvent&) { ++seen_; }

    int& seen_;
};

TEST_F(SearchField, LeavesOtherEventsToItsValidator) {
    int seen = 0;
    int handled = 0;
    field_->SetValidator(GreedyValidator(seen));
    field_->Bind(wxEVT_TEXT, [&](wxCommandEvent&) { ++handled; });
    field_->Bind(wxEVT_SEARCH, [&](wxCommandEvent&) { ++handled; });
    field_->SetValue("pen");
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(handled, 1);

    wxCommandEvent search(wxEVT_SEARCH, field_->GetId());
    search.SetEventObject(field_);
    EXPECT_TRUE(field_->ProcessWindowEvent(search));
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(handled, 1);
}

TEST_F(SearchField, IsMadeByTheNameOfItsClass) {
    std::unique_ptr<wxObject> object(wxCreateDynamicObject("QuorSearchCtrl"));
    auto* made = wxDynamicCast(object.get(), wut::QuorSearchCtrl);
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->IsKindOf(wxCLASSINFO(wxSearchCtrl)));
    ASSERT_TRUE(made->Create(panel_, 7001, "text"));
    EXPECT_EQ(made->GetId(), 7001);
    EXPECT_EQ(made->GetValue(), "text");
    made->SetValue("");
    EXPECT_FALSE(made->IsCancelButtonVisible());
    made->SetValue("more");
    EXPECT_TRUE(made->IsCancelButtonVisible());
}

}  // namespace
