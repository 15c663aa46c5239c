#include <gmock/gmock.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/dcclient.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/panel.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <platen/gui_look.h>
#include "tests/gui/support/gui.h"

namespace {

using testing::ElementsAre;

class Broadcast : public testing::Test {
protected:
    void SetUp() override { wxTheApp->SetTopWindow(last_); }
    void TearDown() override {
        wxTheApp->SetTopWindow(nullptr);
        delete first_;
        delete second_;
        delete last_;
    }

    /// Records when the window is told, and does what it is asked to do then.
    void listen(wxWindow* window, const std::string& name, std::function<void()> action = {}) {
        window->Bind(wxEVT_COLOR_THEME_CHANGED, [=, this](wxColorThemeChangedEvent& event) {
            EXPECT_EQ(event.GetEventObject(), window);
            EXPECT_EQ(event.GetId(), 0);
            told_.push_back(name);
            if (action) {
                // The window may go, and this function with it.
                const auto kept = action;
                kept();
            }
        });
    }

    wxPanel* panel(wxWindow* parent, const std::string& name, std::function<void()> action = {}) {
        auto* made = new wxPanel(parent);
        listen(made, name, std::move(action));
        return made;
    }

    const std::vector<std::string>& broadcast() {
        told_.clear();
        wxColorThemeChangedEvent::BroadcastColorThemeChanged();
        return told_;
    }

    std::vector<std::string> told_;
    wxFrame* first_ = new wxFrame(nullptr, wxID_ANY, "first");
    wxFrame* second_ = new wxFrame(nullptr, wxID_ANY, "second");
    /// The application's top window owns no other, so that all systems have one order.
    wxFrame* last_ = new wxFrame(nullptr, wxID_ANY, "last");
};

TEST_F(Broadcast, ReachesEveryWindowDepthFirst) {
    listen(first_, "first");
    wxPanel* a = panel(first_, "a");
    wxPanel* a1 = panel(a, "a1");
    listen(new wxButton(a1, wxID_ANY, "button"), "a1 button");
    panel(a, "a2");
    panel(first_, "b");
    listen(second_, "second");
    panel(second_, "c");
    wxDialog dialog(first_, wxID_ANY, "dialog");
    listen(&dialog, "dialog");
    panel(panel(&dialog, "d"), "d1");
    EXPECT_THAT(broadcast(), ElementsAre("first", "a", "a1", "a1 button", "a2", "b", "second", "c",
                                         "dialog", "d", "d1"));
}

TEST_F(Broadcast, GoesOnWhenWindowsGo) {
    wxPanel* sibling = nullptr;
    wxPanel* itself = nullptr;
    wxPanel* parent = panel(first_, "a");
    panel(parent, "a1", [&] { delete sibling; });
    sibling = panel(parent, "a2");
    itself = panel(parent, "a3", [&] { delete itself; });
    panel(itself, "a3 child");
    panel(parent, "a4", [&] { delete parent; });
    panel(parent, "a5");
    // Top-level windows: another one, the top window, its own.
    panel(first_, "b", [this] { delete std::exchange(second_, nullptr); });
    panel(first_, "c", [this] { delete std::exchange(first_, nullptr); });
    panel(first_, "d");
    listen(second_, "second");
    listen(last_, "last");
    panel(last_, "e",
          [this] { wxTheApp->SetTopWindow(nullptr), delete std::exchange(last_, nullptr); });
    panel(last_, "f");
    EXPECT_THAT(broadcast(), ElementsAre("a", "a1", "a3", "a4", "b", "c", "last", "e"));
}

TEST_F(Broadcast, MayBeMadeWithinABroadcast) {
    int depth = 0;
    wxPanel* fleeting = nullptr;
    panel(first_, "a", [&] {
        if (++depth == 1) {
            wxColorThemeChangedEvent::BroadcastColorThemeChanged();
            told_.push_back("a is done");
            // Windows made meanwhile are left out.
            panel(new wxDialog(first_, wxID_ANY, "new"), "new");
        }
    });
    fleeting = panel(first_, "b");
    panel(second_, "c", [&] { delete std::exchange(fleeting, nullptr); });
    EXPECT_THAT(broadcast(), ElementsAre("a", "a", "b", "c", "a is done", "c"));
}

TEST_F(Broadcast, DrawsTopLevelWindowsAnew) {
    int painted = 0;
    first_->Bind(wxEVT_PAINT, [&](wxPaintEvent&) {
        const wxPaintDC dc(first_);
        ++painted;
    });
    first_->Show();
    ASSERT_TRUE(settleUntil([&] { return painted > 0; }));
    // What the system still has to say about a new window comes within this time.
    wxMilliSleep(200);
    settle();
    painted = 0;
    broadcast();
    EXPECT_TRUE(settleUntil([&] { return painted > 0; }));
}

TEST(ThemeChangedEvent, IsMadeByNameAndCopied) {
    const std::unique_ptr<wxObject> made(wxCreateDynamicObject("wxColorThemeChangedEvent"));
    const auto& event = dynamic_cast<const wxColorThemeChangedEvent&>(*made);
    EXPECT_FALSE(event.ShouldPropagate());
    const std::unique_ptr<wxEvent> copy(event.Clone());
    EXPECT_TRUE(copy->IsKindOf(wxCLASSINFO(wxColorThemeChangedEvent)));
    EXPECT_EQ(copy->GetEventType(), wxEVT_COLOR_THEME_CHANGED);
}

}  // namespace
