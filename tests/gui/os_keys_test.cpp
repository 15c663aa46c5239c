// Keys and the mouse.
#include <gtest/gtest.h>
#include <wx/event.h>
#include <wx/frame.h>
#include <wx/uiaction.h>

#include <functional>
#include <utility>
#include <vector>

#include <platen/gui_os.h>
#include "platform/utcore/key_state.h"
#include "tests/gui/support/gui.h"

namespace {

using Question = bool (*)();

constexpr Question questions[] = {
    wut::isSpaceDown,   wut::isShiftDown,   wut::isControlDown, wut::isControlOrCommandDown,
    wut::isAltDown,     wut::isAltGrDown,   wut::isEscapeDown,  wut::isLButtonDown,
    wut::isMButtonDown, wut::isRButtonDown,
};

/// All to which the answer is yes.
std::vector<Question> answeredWithYes() {
    std::vector<Question> yes;
    for (const Question question : questions) {
        if (question()) {
            yes.push_back(question);
        }
    }
    return yes;
}

TEST(Keys, AreAskedForOneByOne) {
    for (int key = 0; key < 7; ++key) {
        ut::setKeyState([&](ut::Key asked) { return asked == static_cast<ut::Key>(key); });
        EXPECT_EQ(answeredWithYes(), std::vector{questions[key]}) << key;
    }
    ut::setKeyState(nullptr);
    EXPECT_TRUE(answeredWithYes().empty());
}

/// The answers to all questions while something is pressed and once it is released. It is pressed
/// again and again, as a keyboard does: a system that tells a window of its focus may take all keys
/// for released then.
void expectWhilePressed(const std::function<bool()>& press, const std::vector<Question>& yes,
                        const std::function<bool()>& release) {
    EXPECT_TRUE(settleUntil([&] { return press() && answeredWithYes() == yes; }));
    ASSERT_TRUE(release());
    EXPECT_TRUE(settleUntil([] { return answeredWithYes().empty(); }));
}

TEST(Keys, AreDownWhileTheyArePressed) {
    const std::pair<int, std::vector<Question>> keys[] = {
        {WXK_SPACE, {wut::isSpaceDown}},
        {WXK_SHIFT, {wut::isShiftDown}},
        {WXK_CONTROL, {wut::isControlDown, wut::isControlOrCommandDown}},
        {WXK_ALT, {wut::isAltDown}},
        {WXK_ESCAPE, {wut::isEscapeDown}},
    };
    wxFrame frame(nullptr, wxID_ANY, "Keys");
    // Alt alone would open the window's own menu, which waits for the user.
    frame.Bind(wxEVT_KEY_UP, [](wxKeyEvent&) {});
    frame.Show();
    frame.SetFocus();
    settle();
    wxUIActionSimulator user;
    for (const auto& [key, yes] : keys) {
        SCOPED_TRACE(key);
        expectWhilePressed([&, code = key] { return user.KeyDown(code); }, yes,
                           [&, code = key] { return user.KeyUp(code); });
    }
}

TEST(MouseButtons, AreDownWhileTheyArePressed) {
    const std::pair<int, Question> buttons[] = {
        {wxMOUSE_BTN_LEFT, wut::isLButtonDown},
        {wxMOUSE_BTN_MIDDLE, wut::isMButtonDown},
        {wxMOUSE_BTN_RIGHT, wut::isRButtonDown},
    };
    wxFrame frame(nullptr, wxID_ANY, "Mouse", wxPoint(50, 60), wxSize(300, 200));
    frame.Show();
    settle();
    wxUIActionSimulator user;
    user.MouseMove(frame.ClientToScreen(wxPoint(100, 80)));
    settle();
    for (const auto& [button, yes] : buttons) {
        SCOPED_TRACE(button);
        expectWhilePressed([&, code = button] { return user.MouseDown(code); }, {yes},
                           [&, code = button] { return user.MouseUp(code); });
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
}

}  // namespace
