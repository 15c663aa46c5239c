// Wrappers of native windows, and the restoring of active and enabled windows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/timer.h>

#include <functional>
#include <memory>

#include "gui_windows.h"
#include "tests/support/gui.h"
#include "tests/support/native_windows.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Wrapper = std::unique_ptr<wxWindow>;

Wrapper wrap(HWND handle, bool addToTopLevelList = true) {
    return Wrapper(wut::getWxWrappedWindow(handle, addToTopLevelList));
}

bool isKnown(const wxWindow* window) {
    return wxTopLevelWindows.Find(const_cast<wxWindow*>(window)) != nullptr;
}

/// Shows a modal dialog, calls `meanwhile` once it runs, and ends it; true when it had `parent` as
/// its owner and was active itself.
bool showModalDialog(
    wxWindow* parent, const std::function<void()>& meanwhile = [] {}) {
    wxDialog dialog(parent, wxID_ANY, "A dialog of the toolkit", wxPoint(110, 120));
    auto* rows = new wxBoxSizer(wxVERTICAL);
    rows->Add(new wxStaticText(&dialog, wxID_ANY, "Its parent is the window behind it."),
              wxSizerFlags().Border(wxALL, 16));
    rows->Add(new wxButton(&dialog, wxID_OK), wxSizerFlags().Centre().Border(wxBOTTOM, 16));
    dialog.SetSizerAndFit(rows);

    bool owned = false;
    wxTimer timer;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
        owned = ::GetWindow(dialog.GetHWND(), GW_OWNER) == parent->GetHWND() &&
                ::GetActiveWindow() == dialog.GetHWND();
        meanwhile();
        dialog.EndModal(wxID_OK);
    });
    timer.StartOnce(300);
    EXPECT_EQ(dialog.ShowModal(), wxID_OK);
    return owned;
}

class NativeWindows : public testing::Test {
protected:
    NativeWindows() {
        settle();
        NativeWindow::changes().clear();
    }
    ~NativeWindows() override { EXPECT_EQ(wxTopLevelWindows.GetCount(), known_); }

    const std::size_t known_ = wxTopLevelWindows.GetCount();
};

// --- Wrappers ------------------------------------------------------------------------------------

using WindowWrapper = NativeWindows;

TEST_F(WindowWrapper, LeavesTheNativeWindowAsItIs) {
    NativeWindow native(L"Native");
    const auto procedure = ::GetWindowLongPtrW(native.handle(), GWLP_WNDPROC);
    const HMENU menu = ::CreateMenu();
    ASSERT_TRUE(::SetMenu(native.handle(), menu));
    for (const bool known : {true, false}) {
        Wrapper wrapper = wrap(native.handle(), known);
        EXPECT_EQ(wrapper->GetHWND(), native.handle());
        EXPECT_EQ(isKnown(wrapper.get()), known);
        EXPECT_TRUE(wrapper->IsShown());
        EXPECT_TRUE(wrapper->IsEnabled());
        settle();
        const wxWindow* gone = wrapper.get();
        wrapper.reset();
        EXPECT_FALSE(isKnown(gone));
    }
    wrap(native.handle()).release()->Destroy();
    EXPECT_TRUE(::IsWindowVisible(native.handle()));
    EXPECT_TRUE(native.enabled());
    EXPECT_EQ(::GetWindowLongPtrW(native.handle(), GWLP_WNDPROC), procedure);
    EXPECT_EQ(::GetMenu(native.handle()), menu);
    EXPECT_THAT(NativeWindow::changes(), IsEmpty());
}

TEST_F(WindowWrapper, HidesAndShowsTheNativeWindow) {
    NativeWindow native(L"Native");
    const Wrapper wrapper = wrap(native.handle());
    EXPECT_TRUE(wrapper->Hide());
    EXPECT_FALSE(::IsWindowVisible(native.handle()));
    EXPECT_FALSE(wrapper->IsShown());
    ::ShowWindow(native.handle(), SW_SHOWNOACTIVATE);
    EXPECT_TRUE(wrapper->IsShown());
}

TEST_F(WindowWrapper, TakesTheActiveWindowForNull) {
    EXPECT_EQ(wrap(nullptr)->GetHWND(), nullptr);
    EXPECT_FALSE(isKnown(wrap(nullptr).get()));

    NativeWindow native(L"Native");
    native.activate();
    ASSERT_TRUE(native.active());
    EXPECT_EQ(wrap(nullptr)->GetHWND(), native.handle());
}

TEST_F(WindowWrapper, OutlivesTheNativeWindow) {
    NativeWindow native(L"Native");
    const Wrapper wrapper = wrap(native.handle());
    native.destroy();
    settle();
    EXPECT_FALSE(wrapper->IsShown());

    const Wrapper late = wrap(native.handle());
    EXPECT_EQ(late->GetHWND(), nullptr);
    EXPECT_FALSE(isKnown(late.get()));
}

TEST_F(WindowWrapper, StandsBesideAFrameOfTheSameWindow) {
    wxFrame frame(nullptr, wxID_ANY, "Frame", wxPoint(50, 60), wxSize(300, 200));
    frame.Show();
    settle();
    wrap(frame.GetHWND()).reset();
    EXPECT_TRUE(frame.IsShown());
    int sizes = 0;
    frame.Bind(wxEVT_SIZE, [&](wxSizeEvent&) { ++sizes; });
    frame.SetSize(310, 210);
    EXPECT_GE(sizes, 1);
}

TEST_F(WindowWrapper, IsTheParentOfAModalDialog) {
    NativeWindow native(L"A native window");
    native.activate();
    const Wrapper wrapper = wrap(native.handle());
    bool enabled = true;
    EXPECT_TRUE(showModalDialog(wrapper.get(), [&] {
        enabled = native.enabled();
        leavePicture("dialog_over_native_window", screenshot(*wrapper));
    }));
    EXPECT_FALSE(enabled);
    EXPECT_TRUE(native.enabled());
    EXPECT_TRUE(native.active());
}

TEST_F(WindowWrapper, StaysDisabledAfterADialogThatFoundItDisabled) {
    NativeWindow native(L"A native window");
    native.enable(false);
    const Wrapper wrapper = wrap(native.handle());
    EXPECT_TRUE(showModalDialog(wrapper.get()));
    EXPECT_FALSE(native.enabled());
}

TEST_F(WindowWrapper, TakesItsDialogsAlong) {
    NativeWindow native(L"A native window");
    Wrapper wrapper = wrap(native.handle());
    (new wxDialog(wrapper.get(), wxID_ANY, "Open"))->Show();
    (new wxDialog(wrapper.get(), wxID_ANY, "About to go"))->Destroy();
    wrapper.reset();
    EXPECT_EQ(wxTopLevelWindows.GetCount(), known_);
    settle();
    EXPECT_TRUE(::IsWindowVisible(native.handle()));
}

// --- Restoring -----------------------------------------------------------------------------------

/// `top` belongs to `below` and is active; `given` is another window.
class RestoredWindows : public NativeWindows {
protected:
    RestoredWindows() {
        top.activate();
        EXPECT_TRUE(top.active());
    }

    NativeWindow below{L"Below"};
    NativeWindow top{L"Top", below.handle()};
    NativeWindow given{L"Given"};
};

TEST_F(RestoredWindows, ComeBackInOrder) {
    {
        const wut::WindowRestore restore(given.handle());
        EXPECT_EQ(restore.wxActiveWindow()->GetHWND(), top.handle());
        EXPECT_TRUE(isKnown(restore.wxActiveWindow()));
        top.enable(false);
        below.enable(false);
        given.activate();
        given.enable(false);
        NativeWindow::changes().clear();
    }
    EXPECT_THAT(NativeWindow::changes(),
                ElementsAre(Pair(given.handle(), true), Pair(below.handle(), true),
                            Pair(top.handle(), true)));
    EXPECT_TRUE(top.active());
}

TEST_F(RestoredWindows, BecomeDisabledAgain) {
    given.enable(false);
    below.enable(false);
    {
        const wut::WindowRestore restore(given.handle());
        given.enable(true);
        below.enable(true);
        top.enable(false);
    }
    EXPECT_FALSE(given.enabled());
    EXPECT_FALSE(below.enabled());
    EXPECT_TRUE(top.enabled());
}

TEST_F(RestoredWindows, AreNotActivatedWhenActiveIsTheGivenOne) {
    {
        const wut::WindowRestore restore(top.handle());
        top.enable(false);
        below.enable(false);
        given.activate();
        NativeWindow::changes().clear();
    }
    EXPECT_THAT(NativeWindow::changes(),
                ElementsAre(Pair(top.handle(), true), Pair(below.handle(), true)));
    EXPECT_TRUE(given.active());
}

TEST_F(RestoredWindows, MayBeGone) {
    {
        const wut::WindowRestore restore(given.handle());
        given.destroy();
        top.enable(false);
        below.activate();
    }
    EXPECT_TRUE(top.enabled());
    EXPECT_TRUE(top.active());
    {
        const wut::WindowRestore restore(nullptr);
        below.activate();
    }
    EXPECT_TRUE(top.active());
    {
        const wut::WindowRestore restore(nullptr);
        below.enable(false);
        top.destroy();
        NativeWindow::changes().clear();
    }
    EXPECT_THAT(NativeWindow::changes(), IsEmpty());
}

TEST_F(RestoredWindows, ComeBackWithEveryCopy) {
    auto first = std::make_unique<wut::WindowRestore>(given.handle());
    auto second = std::make_unique<wut::WindowRestore>(*first);
    wut::WindowRestore third(nullptr);
    third = *second;
    const wxWindow* wrapper = first->wxActiveWindow();
    for (auto* restore : {&first, &second}) {
        top.enable(false);
        given.activate();
        restore->reset();
        EXPECT_TRUE(top.enabled());
        EXPECT_TRUE(top.active());
        EXPECT_TRUE(isKnown(wrapper));
        EXPECT_EQ(wxTopLevelWindows.GetCount(), known_ + 1);
    }
}

TEST_F(RestoredWindows, ComeBackAfterAModalDialog) {
    bool enabledMeanwhile = true;
    bool belowMeanwhile = true;
    {
        const wut::WindowRestore restore(given.handle());
        // As the owner of the native windows would for a dialog of its own.
        below.enable(false);
        given.enable(false);
        EXPECT_TRUE(showModalDialog(restore.wxActiveWindow(), [&] {
            enabledMeanwhile = top.enabled();
            belowMeanwhile = below.enabled();
        }));
        given.activate();
    }
    EXPECT_FALSE(enabledMeanwhile);
    EXPECT_FALSE(belowMeanwhile);
    EXPECT_TRUE(top.enabled());
    EXPECT_TRUE(below.enabled());
    EXPECT_TRUE(given.enabled());
    EXPECT_TRUE(top.active());
}

using Restore = NativeWindows;

TEST_F(Restore, DoesNothingWithoutAnyWindow) {
    ASSERT_EQ(::GetActiveWindow(), nullptr);
    NativeWindow other(L"Not active");
    ASSERT_EQ(::GetActiveWindow(), nullptr);
    {
        const wut::WindowRestore restore(nullptr);
        EXPECT_EQ(restore.wxActiveWindow(), nullptr);
        EXPECT_EQ(wxTopLevelWindows.GetCount(), known_);
        other.enable(false);
    }
    EXPECT_FALSE(other.enabled());
    EXPECT_EQ(::GetActiveWindow(), nullptr);
}

TEST_F(Restore, TakesTheGivenWindowForTheActiveOne) {
    NativeWindow given(L"Not active");
    {
        const wut::WindowRestore restore(given.handle());
        ASSERT_NE(restore.wxActiveWindow(), nullptr);
        EXPECT_EQ(restore.wxActiveWindow()->GetHWND(), given.handle());
        given.enable(false);
    }
    EXPECT_TRUE(given.enabled());
    EXPECT_FALSE(given.active());

    given.destroy();
    const wut::WindowRestore restore(given.handle());
    ASSERT_NE(restore.wxActiveWindow(), nullptr);
    EXPECT_EQ(restore.wxActiveWindow()->GetHWND(), nullptr);
}

TEST_F(Restore, ServesFramesOfTheToolkit) {
    wxFrame frame(nullptr, wxID_ANY, "Frame", wxPoint(50, 60), wxSize(300, 200));
    wxFrame other(nullptr, wxID_ANY, "Other", wxPoint(400, 60), wxSize(300, 200));
    other.Show();
    frame.Show();
    ::SetActiveWindow(frame.GetHWND());
    settle();
    ASSERT_EQ(::GetActiveWindow(), frame.GetHWND());
    bool enabledMeanwhile = true;
    {
        const wut::WindowRestore restore(other.GetHWND());
        EXPECT_TRUE(showModalDialog(restore.wxActiveWindow(), [&] {
            enabledMeanwhile = ::IsWindowEnabled(frame.GetHWND()) != FALSE ||
                               ::IsWindowEnabled(other.GetHWND()) != FALSE;
        }));
        ::SetActiveWindow(other.GetHWND());
    }
    EXPECT_FALSE(enabledMeanwhile);
    for (const wxFrame* window : {&frame, &other}) {
        EXPECT_TRUE(window->IsEnabled());
        EXPECT_TRUE(::IsWindowEnabled(window->GetHWND()));
    }
    EXPECT_EQ(::GetActiveWindow(), frame.GetHWND());
}

}  // namespace
