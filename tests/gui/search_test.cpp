// The search field, with what the toolkit's own field does on this system.
#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/valgen.h>

#include <functional>
#include <memory>
#include <utility>

#include <platen/gui_windows.h>
#include "tests/gui/screen.h"

namespace {

class SearchField : public testing::Test {
protected:
    SearchField() {
        frame_.Show();
        settle();
    }

    wxFrame frame_{nullptr, wxID_ANY, "Search", wxPoint(60, 60), wxSize(360, 140)};
    wxPanel* panel_ = new wxPanel(&frame_);
    wut::QuorSearchCtrl* field_ =
        new wut::QuorSearchCtrl(panel_, wxID_ANY, "", wxPoint(20, 20), wxSize(300, -1));
};

TEST_F(SearchField, ShowsTheCancelButtonWhileItHoldsText) {
    EXPECT_FALSE(field_->IsCancelButtonVisible());
    leavePicture("search_field_empty", displayed(frame_));
    int eventsAbove = 0;
    frame_.Bind(wxEVT_TEXT, [&](wxCommandEvent&) { ++eventsAbove; });
    const std::pair<std::function<void()>, wxString> steps[] = {
        {[&] { field_->SetValue(L"\x00e9\x4e00"); }, L"\x00e9\x4e00"},
        {[&] { field_->Clear(); }, ""},
        {[&] { field_->WriteText(" "); }, " "},
        {[&] { field_->Remove(0, 1); }, ""},
        {[&] { field_->AppendText("pen"); }, "pen"},
    };
    for (const auto& [change, value] : steps) {
        eventsAbove = 0;
        change();
        settle();
        EXPECT_EQ(field_->GetValue(), value);
        EXPECT_EQ(field_->IsCancelButtonVisible(), !value.empty()) << value;
        EXPECT_EQ(eventsAbove, 1) << value;
    }
    leavePicture("search_field_typed", displayed(frame_));
}

TEST_F(SearchField, LeavesOtherEventsToItsValidator) {
    wxString value;
    int validated = 0;
    int handled = 0;
    field_->SetValidator(wxGenericValidator(&value));
    for (const auto& type : {wxEVT_TEXT, wxEVT_SEARCH}) {
        field_->GetValidator()->Bind(type, [&](wxCommandEvent&) { ++validated; });
        field_->Bind(type, [&](wxCommandEvent&) { ++handled; });
    }
    field_->SetValue("pen");
    EXPECT_EQ(std::pair(validated, handled), std::pair(1, 1));

    wxCommandEvent search(wxEVT_SEARCH, field_->GetId());
    search.SetEventObject(field_);
    EXPECT_TRUE(field_->ProcessWindowEvent(search));
    EXPECT_EQ(std::pair(validated, handled), std::pair(2, 1));
}

TEST_F(SearchField, IsMadeByTheNameOfItsClass) {
    const std::unique_ptr<wxObject> object(wxCreateDynamicObject("QuorSearchCtrl"));
    auto& made = dynamic_cast<wut::QuorSearchCtrl&>(*object);
    EXPECT_TRUE(made.IsKindOf(wxCLASSINFO(wxSearchCtrl)));
    ASSERT_TRUE(made.Create(panel_, 7001, ""));
    // The text of another window's event is not its own.
    wxCommandEvent event(wxEVT_TEXT, field_->GetId());
    event.SetString("other");
    EXPECT_FALSE(made.ProcessWindowEvent(event));
    EXPECT_FALSE(made.IsCancelButtonVisible());
    made.SetValue("more");
    EXPECT_TRUE(made.IsCancelButtonVisible());
}

}  // namespace
