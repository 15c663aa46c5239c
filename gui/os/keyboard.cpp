#include <wx/event.h>
#include <wx/mousestate.h>
#include <wx/utils.h>

#include <platen/gui_os.h>

namespace wut {

bool isSpaceDown() { return ut::KeyCodes::getInstance().isSpaceDown(); }
bool isShiftDown() { return ut::KeyCodes::getInstance().isShiftDown(); }
bool isControlDown() { return ut::KeyCodes::getInstance().isControlDown(); }
bool isControlOrCommandDown() { return ut::KeyCodes::getInstance().isControlOrCommandDown(); }
bool isAltDown() { return ut::KeyCodes::getInstance().isAltDown(); }
bool isAltGrDown() { return ut::KeyCodes::getInstance().isAltGrDown(); }
bool isEscapeDown() { return ut::KeyCodes::getInstance().isEscapeDown(); }

bool isLButtonDown() { return wxGetMouseState().LeftIsDown(); }
bool isMButtonDown() { return wxGetMouseState().MiddleIsDown(); }
bool isRButtonDown() { return wxGetMouseState().RightIsDown(); }

bool isCharKeyDown(wxKeyEvent& event) {
    // Ranges of wxKeyCode: mouse buttons to capitals lock, the arrow keys' surroundings and
    // function keys, the keypad behind Enter, and all that came later.
    static constexpr struct {
        int first;
        int last;
    } notCharacters[] = {{WXK_DELETE, WXK_DELETE}, {301, 323}, {340, 367}, {371, 385}};
    constexpr int firstOfTheRest = 393;

    const int code = event.GetKeyCode();
    if (code == WXK_RETURN || code == WXK_NUMPAD_ENTER) {
        event.m_uniChar = L'\r';
    }
    for (const auto& range : notCharacters) {
        if (code >= range.first && code <= range.last) {
            return false;
        }
    }
    return code < firstOfTheRest;
}

}  // namespace wut
