// Where the toolkit's own search field does not show and hide its button by itself.
#include <gtest/gtest.h>
#include <wx/frame.h>

#include "gui_windows.h"

namespace {

TEST(SearchFieldButton, FollowsEventsOnly) {
    wxFrame frame(nullptr, wxID_ANY, "Search");
    auto* field = new wut::QuorSearchCtrl(&frame, wxID_ANY, "given");
    EXPECT_FALSE(field->IsCancelButtonVisible());
    field->ChangeValue("changed");
    EXPECT_FALSE(field->IsCancelButtonVisible());
    field->AppendText("!");
    EXPECT_TRUE(field->IsCancelButtonVisible());
    field->ChangeValue("");
    EXPECT_TRUE(field->IsCancelButtonVisible());
}

}  // namespace
