// Keys and the mouse.
#include <gtest/gtest.h>
#include <wx/event.h>
#include <wx/frame.h>
#include <wx/uiaction.h>

#include <algorithm>
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

TEST(Keys, AndButtonsAreDownWhileTheyArePressed) {
    wxFrame frame(nullptr, wxID_ANY, "Keys", wxPoint(50, 60), wxSize(300, 200));
    // Alt alone would open the window's own menu, which waits for the user.
    frame.Bind(wxEVT_KEY_UP, [](wxKeyEvent&) {});
    frame.Show();
    frame.SetFocus();
    settle();
    wxUIActionSimulator user;
    for (const auto& [code, yes] : {
             std::pair(WXK_SPACE, std::vector<Question>{wut::isSpaceDown}),
             {WXK_SHIFT, {wut::isShiftDown}},
             {WXK_CONTROL, {wut::isControlDown, wut::isControlOrCommandDown}},
             {WXK_ALT, {wut::isAltDown}},
             {WXK_ESCAPE, {wut::isEscapeDown}},
         }) {
        SCOPED_TRACE(code);
        expectWhilePressed([&, key = code] { return user.KeyDown(key); }, yes,
                           [&, key = code] { return user.KeyUp(key); });
    }
    user.MouseMove(frame.ClientToScreen(wxPoint(100, 80)));
    settle();
    for (const auto& [code, yes] : {std::pair(wxMOUSE_BTN_LEFT, Question{wut::isLButtonDown}),
                                    {wxMOUSE_BTN_MIDDLE, wut::isMButtonDown},
                                    {wxMOUSE_BTN_RIGHT, wut::isRButtonDown}}) {
        SCOPED_TRACE(code);
        expectWhilePressed([&, button = code] { return user.MouseDown(button); }, {yes},
                           [&, button = code] { return user.MouseUp(button); });
    }
}

TEST(KeyEvents, OfCharactersAreTold) {
    // Ranges that are none, by their first and last codes.
    constexpr std::pair<int, int> others[] = {
        {127, 127}, {301, 323}, {340, 367}, {371, 385}, {393, WXK_SPECIAL20}};
    for (int code = 0; code <= WXK_SPECIAL20; ++code) {
        wxKeyEvent event(wxEVT_KEY_DOWN);
        event.m_keyCode = code;
        event.m_uniChar = L'u';
        const bool isOther = std::ranges::any_of(
            others, [&](const auto& range) { return code >= range.first && code <= range.second; });
        EXPECT_EQ(wut::isCharKeyDown(event), !isOther) << code;
        EXPECT_EQ(event.GetUnicodeKey(), code == 13 || code == 370 ? L'\r' : L'u') << code;
    }
}

}  // namespace
