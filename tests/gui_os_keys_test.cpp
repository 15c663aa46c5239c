// Keys and the mouse.
#include <gtest/gtest.h>
#include <wx/event.h>
#include <wx/frame.h>
#include <wx/uiaction.h>

#include <optional>

#include "gui_os.h"
#include "platform/utcore/key_state.h"
#include "tests/support/gui.h"

namespace {

struct Question {
    bool (*isDown)();
    ut::Key key;
};

constexpr Question questions[] = {
    {wut::isSpaceDown, ut::Key::Space},
    {wut::isShiftDown, ut::Key::Shift},
    {wut::isControlDown, ut::Key::Control},
    {wut::isControlOrCommandDown, ut::Key::ControlOrCommand},
    {wut::isAltDown, ut::Key::Alt},
    {wut::isAltGrDown, ut::Key::AltGr},
    {wut::isEscapeDown, ut::Key::Escape},
};

TEST(Keys, AreAskedForOneByOne) {
    for (const Question& pressed : questions) {
        ut::setKeyState([&](ut::Key key) { return key == pressed.key; });
        for (const Question& question : questions) {
            EXPECT_EQ(question.isDown(), question.key == pressed.key);
        }
    }
    ut::setKeyState(nullptr);
    for (const Question& question : questions) {
        EXPECT_FALSE(question.isDown());
    }
}

TEST(Keys, AreDownWhileTheyArePressed) {
    const struct {
        int code;
        ut::Key key;
        std::optional<ut::Key> also;
    } cases[] = {
        {WXK_SPACE, ut::Key::Space, {}},
        {WXK_SHIFT, ut::Key::Shift, {}},
        {WXK_CONTROL, ut::Key::Control, ut::Key::ControlOrCommand},
        {WXK_ALT, ut::Key::Alt, {}},
        {WXK_ESCAPE, ut::Key::Escape, {}},
    };
    wxFrame frame(nullptr, wxID_ANY, "Keys");
    frame.Show();
    frame.SetFocus();
    settle();
    wxUIActionSimulator simulator;
    for (const auto& entry : cases) {
        SCOPED_TRACE(entry.code);
        const auto areAsExpected = [&](bool pressed) {
            return settleUntil([&] {
                for (const Question& question : questions) {
                    const bool expected =
                        pressed && (question.key == entry.key || question.key == entry.also);
                    if (question.isDown() != expected) {
                        return false;
                    }
                }
                return true;
            });
        };
        ASSERT_TRUE(simulator.KeyDown(entry.code));
        EXPECT_TRUE(areAsExpected(true));
        ASSERT_TRUE(simulator.KeyUp(entry.code));
        EXPECT_TRUE(areAsExpected(false));
    }
}

TEST(MouseButtons, AreDownWhileTheyArePressed) {
    const struct {
        int button;
        bool (*isDown)();
    } buttons[] = {
        {wxMOUSE_BTN_LEFT, wut::isLButtonDown},
        {wxMOUSE_BTN_MIDDLE, wut::isMButtonDown},
        {wxMOUSE_BTN_RIGHT, wut::isRButtonDown},
    };
    wxFrame frame(nullptr, wxID_ANY, "Mouse", wxPoint(50, 60), wxSize(300, 200));
    frame.Show();
    settle();
    wxUIActionSimulator simulator;
    simulator.MouseMove(frame.ClientToScreen(wxPoint(100, 80)));
    settle();
    for (const auto& pressed : buttons) {
        SCOPED_TRACE(pressed.button);
        const auto areAsExpected = [&](bool down) {
            return settleUntil([&] {
                for (const auto& button : buttons) {
                    if (button.isDown() != (down && button.button == pressed.button)) {
                        return false;
                    }
                }
                return true;
            });
        };
        simulator.MouseDown(pressed.button);
        EXPECT_TRUE(areAsExpected(true));
        simulator.MouseUp(pressed.button);
        EXPECT_TRUE(areAsExpected(false));
    }
}

TEST(KeyEvents, OfCharactersAreTold) {
    const struct {
        int first;
        int last;
        bool isCharacter;
    } ranges[] = {
        {0, 126, true},
        {127, 127, false},
        {128, 300, true},
        {301, 323, false},
        {324, 339, true},
        {340, 367, false},
        {368, 370, true},
        {371, 385, false},
        {386, 392, true},
        {393, 420, false},
        {WXK_SPECIAL1, WXK_SPECIAL20, false},
    };
    for (const auto& range : ranges) {
        for (int code = range.first; code <= range.last; ++code) {
            wxKeyEvent event(wxEVT_KEY_DOWN);
            event.m_keyCode = code;
            event.m_uniChar = L'u';
            EXPECT_EQ(wut::isCharKeyDown(event), range.isCharacter) << code;
            const bool isEnter = code == 13 || code == 370;
            EXPECT_EQ(event.GetUnicodeKey(), isEnter ? L'\r' : L'u') << code;
        }
    }
    // By the names of keys: what the ranges are about.
    for (const int code :
         {WXK_F1, WXK_F24, WXK_LEFT, WXK_DELETE, WXK_NUMPAD_DELETE, WXK_WINDOWS_MENU, WXK_SHIFT,
          WXK_PAGEDOWN, WXK_NUMPAD_F1, WXK_NUMPAD_HOME}) {
        wxKeyEvent event(wxEVT_KEY_DOWN);
        event.m_keyCode = code;
        EXPECT_FALSE(wut::isCharKeyDown(event)) << code;
    }
}

}  // namespace
