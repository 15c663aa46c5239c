#include <gmock/gmock.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/msw/private.h>
#include <wx/panel.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <platen/gui_look.h>
#include "tests/gui/support/native_windows.h"

namespace {

using testing::ElementsAre;

/// What happened in which window, in order: "event" for wxWidgets' windows, "message" for all.
std::vector<std::string> told;
std::map<HWND, std::pair<std::string, std::function<void()>>> natives;

UINT themeMessage() { return ::RegisterWindowMessageW(L"Quor/WM_COLORTHEMECHANGED"); }

/// A wxWidgets window that tells what it gets.
template <class Window>
class Listening : public Window {
public:
    template <class... Arguments>
    explicit Listening(const std::string& name, Arguments... arguments)
        : Window(arguments...), name_(name) {
        this->Bind(wxEVT_COLOR_THEME_CHANGED, [this](wxColorThemeChangedEvent& event) {
            EXPECT_EQ(event.GetEventObject(), this);
            told.push_back("event " + name_);
        });
    }

    WXLRESULT MSWWindowProc(WXUINT message, WXWPARAM first, WXLPARAM second) override {
        if (message == themeMessage()) {
            told.push_back("message " + name_);
        }
        return Window::MSWWindowProc(message, first, second);
    }

private:
    std::string name_;
};

class NativeBroadcast : public testing::Test {
protected:
    void SetUp() override {
        wxTheApp->SetTopWindow(&frame_);
        told.clear();
        NativeWindow::listener() = [](HWND window, UINT message, WPARAM first, LPARAM second) {
            const auto known = natives.find(window);
            if (message == themeMessage() && known != natives.end()) {
                EXPECT_TRUE(first == 0 && second == 0);
                told.push_back("message " + known->second.first);
                if (const auto action = known->second.second) {
                    action();
                }
            }
        };
    }
    void TearDown() override {
        NativeWindow::listener() = nullptr;
        wxTheApp->SetTopWindow(nullptr);
        natives.clear();
    }

    static HWND native(const std::string& name, DWORD style, HWND parent,
                       std::function<void()> action = {}) {
        const HWND window =
            ::CreateWindowExW(style == WS_POPUP ? WS_EX_TOOLWINDOW : 0, nativeWindowClass(), L"",
                              style, 0, 0, 40, 40, parent, nullptr, wxGetInstance(), nullptr);
        EXPECT_NE(window, nullptr);
        natives[window] = {name, std::move(action)};
        return window;
    }

    /// A panel that lies in a native window of the frame, below the others there.
    wxPanel* panelIn(HWND parent, const std::string& name) {
        auto* panel = new Listening<wxPanel>(name, &frame_);
        ::SetParent(GetHwndOf(panel), parent);
        ::SetWindowPos(GetHwndOf(panel), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        return panel;
    }

    Listening<wxFrame> frame_{"frame", nullptr, wxID_ANY, "frame"};
    Listening<wxFrame> other_{"other", nullptr, wxID_ANY, "other"};
};

TEST_F(NativeBroadcast, GoesThroughNativeWindowsAndThoseThatTheTopWindowOwns) {
    // A hidden frame owns no dialogs.
    frame_.Show();
    const HWND outer = native("outer", WS_CHILD, GetHwndOf(&frame_));
    wxPanel* first = panelIn(outer, "first");
    const HWND inner = native("inner", WS_CHILD, GetHwndOf(first));
    wxPanel* second = panelIn(inner, "second");
    native("innermost", WS_CHILD, GetHwndOf(second));
    native("outer sibling", WS_CHILD, GetHwndOf(&frame_));
    new Listening<wxPanel>("third", &frame_);
    native("of other", WS_CHILD, GetHwndOf(&other_));
    const HWND tool = native("tool", WS_POPUP, GetHwndOf(&frame_));
    native("in tool", WS_CHILD, tool);
    const HWND foreign = native("foreign", WS_POPUP, GetHwndOf(&other_));
    // Known to wxWidgets, too, and therefore walked twice; the newest lies on top.
    Listening<wxDialog> dialog("dialog", &frame_, wxID_ANY, "dialog");
    new Listening<wxPanel>("panel", &dialog);
    wxColorThemeChangedEvent::BroadcastColorThemeChanged();
    EXPECT_THAT(told, ElementsAre("event frame", "message frame", "message outer", "event first",
                                  "message first", "message inner", "event second",
                                  "message second", "message innermost", "message outer sibling",
                                  "event third", "message third", "event other", "message other",
                                  "message of other", "event dialog", "message dialog",
                                  "event panel", "message panel", "message dialog", "event panel",
                                  "message panel", "message tool", "message in tool"));
    ::DestroyWindow(foreign);
    ::DestroyWindow(tool);
}

TEST_F(NativeBroadcast, GoesOnWhenNativeWindowsGo) {
    HWND parent = nullptr;
    HWND sibling = nullptr;
    HWND itself = nullptr;
    wxPanel* panel = nullptr;
    HWND secondTool = nullptr;
    parent = native("parent", WS_CHILD, GetHwndOf(&frame_));
    native("a", WS_CHILD, parent, [&] { ::DestroyWindow(sibling), delete panel; });
    sibling = native("b", WS_CHILD, parent);
    panel = panelIn(parent, "panel");
    itself = native("c", WS_CHILD, parent, [&] { ::DestroyWindow(itself); });
    native("d", WS_CHILD, parent, [&] { ::DestroyWindow(parent); });
    native("e", WS_CHILD, parent);
    native("last", WS_CHILD, GetHwndOf(&frame_));
    // The newest lies on top.
    secondTool = native("second tool", WS_POPUP, GetHwndOf(&frame_));
    const HWND tool =
        native("tool", WS_POPUP, GetHwndOf(&frame_), [&] { ::DestroyWindow(secondTool); });
    wxColorThemeChangedEvent::BroadcastColorThemeChanged();
    EXPECT_THAT(told, ElementsAre("event frame", "message frame", "message parent", "message a",
                                  "message c", "message d", "message last", "event other",
                                  "message other", "message tool"));
    ::DestroyWindow(tool);
}

}  // namespace
