// Wrappers of native windows, and the restoring of active and enabled windows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/dialog.h>
#include <wx/frame.h>

#include <memory>

#include <platen/gui_windows.h>
#include "tests/gui/screen.h"
#include "tests/gui/support/native_windows.h"

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

class NativeWindows : public testing::Test {
protected:
    NativeWindows() {
        settle();
        NativeWindow::changes().clear();
    }
    ~NativeWindows() override { EXPECT_EQ(wxTopLevelWindows.GetCount(), known_); }

    const std::size_t known_ = wxTopLevelWindows.GetCount();
};

using WindowWrapper = NativeWindows;

TEST_F(WindowWrapper, LeavesTheNativeWindowAsItIs) {
    NativeWindow native(L"Native");
    const auto procedure = ::GetWindowLongPtrW(native.handle(), GWLP_WNDPROC);
    const HMENU menu = ::CreateMenu();
    ASSERT_TRUE(::SetMenu(native.handle(), menu));
    for (const bool known : {true, false}) {
        const Wrapper wrapper = wrap(native.handle(), known);
        EXPECT_EQ(wrapper->GetHWND(), native.handle());
        EXPECT_EQ(isKnown(wrapper.get()), known);
        EXPECT_TRUE(wrapper->IsShown());
        settle();
    }
    wrap(native.handle()).release()->Destroy();
    EXPECT_TRUE(::IsWindowVisible(native.handle()));
    EXPECT_EQ(::GetWindowLongPtrW(native.handle(), GWLP_WNDPROC), procedure);
    EXPECT_EQ(::GetMenu(native.handle()), menu);
    EXPECT_THAT(NativeWindow::changes(), IsEmpty());
}

TEST_F(WindowWrapper, TakesTheActiveWindowForNullAndOutlivesIt) {
    EXPECT_EQ(wrap(nullptr)->GetHWND(), nullptr);
    NativeWindow native(L"Native");
    native.activate();
    const Wrapper wrapper = wrap(nullptr);
    ASSERT_EQ(wrapper->GetHWND(), native.handle());
    EXPECT_TRUE(wrapper->Hide());
    EXPECT_FALSE(wrapper->IsShown());
    ::ShowWindow(native.handle(), SW_SHOWNOACTIVATE);
    EXPECT_TRUE(wrapper->IsShown());
    native.destroy();
    settle();
    EXPECT_FALSE(wrapper->IsShown());

    const Wrapper late = wrap(native.handle());
    EXPECT_EQ(late->GetHWND(), nullptr);
    EXPECT_FALSE(isKnown(late.get()));
}

TEST_F(WindowWrapper, TakesItsDialogsAlong) {
    NativeWindow native(L"A native window");
    Wrapper wrapper = wrap(native.handle());
    auto* open = new wxDialog(wrapper.get(), wxID_ANY, "Open");
    open->Show();
    EXPECT_EQ(::GetWindow(open->GetHWND(), GW_OWNER), native.handle());
    leavePicture("dialog_over_native_window", displayed(*wrapper));
    (new wxDialog(wrapper.get(), wxID_ANY, "About to go"))->Destroy();
    wrapper.reset();
    EXPECT_EQ(wxTopLevelWindows.GetCount(), known_);
    settle();
    EXPECT_TRUE(::IsWindowVisible(native.handle()));
}

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
    below.enable(false);
    {
        const wut::WindowRestore restore(given.handle());
        top.enable(false);
        below.enable(true);
        given.activate();
        given.enable(false);
        NativeWindow::changes().clear();
    }
    EXPECT_THAT(NativeWindow::changes(),
                ElementsAre(Pair(given.handle(), true), Pair(below.handle(), false),
                            Pair(top.handle(), true)));
    EXPECT_TRUE(top.active());
}

TEST_F(RestoredWindows, MayBeTheGivenOneOrGone) {
    {
        const wut::WindowRestore restore(top.handle());
        top.enable(false);
        given.activate();
    }
    EXPECT_TRUE(top.enabled());
    EXPECT_TRUE(given.active());
    top.activate();
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
        below.enable(false);
        top.destroy();
    }
    EXPECT_FALSE(below.enabled());
}

TEST_F(RestoredWindows, ComeBackWithEveryCopy) {
    auto first = std::make_unique<wut::WindowRestore>(given.handle());
    auto second = std::make_unique<wut::WindowRestore>(*first);
    wut::WindowRestore third(nullptr);
    third = *second;
    for (auto* restore : {&first, &second}) {
        top.enable(false);
        given.activate();
        restore->reset();
        EXPECT_TRUE(top.enabled());
        EXPECT_TRUE(top.active());
        EXPECT_TRUE(isKnown(third.wxActiveWindow()));
        EXPECT_EQ(wxTopLevelWindows.GetCount(), known_ + 1);
    }
}

using Restore = NativeWindows;

TEST_F(Restore, TakesTheGivenWindowForTheActiveOne) {
    NativeWindow given(L"Not active");
    ASSERT_EQ(::GetActiveWindow(), nullptr);
    EXPECT_EQ(wut::WindowRestore(nullptr).wxActiveWindow(), nullptr);
    {
        const wut::WindowRestore restore(given.handle());
        ASSERT_NE(restore.wxActiveWindow(), nullptr);
        EXPECT_EQ(restore.wxActiveWindow()->GetHWND(), given.handle());
        given.enable(false);
    }
    EXPECT_TRUE(given.enabled());
    EXPECT_EQ(::GetActiveWindow(), nullptr);
}

TEST_F(Restore, ServesFramesOfTheToolkit) {
    wxFrame frame(nullptr, wxID_ANY, "Frame", wxPoint(50, 60), wxSize(300, 200));
    frame.Show();
    ::SetActiveWindow(frame.GetHWND());
    settle();
    {
        const wut::WindowRestore restore(nullptr);
        frame.Disable();
    }
    EXPECT_TRUE(frame.IsEnabled());
    EXPECT_TRUE(frame.IsShown());
    EXPECT_EQ(::GetActiveWindow(), frame.GetHWND());
    // The frame still hears of what happens to it.
    int sizes = 0;
    frame.Bind(wxEVT_SIZE, [&](wxSizeEvent&) { ++sizes; });
    frame.SetSize(310, 210);
    EXPECT_GE(sizes, 1);
}

}  // namespace
