#include <wx/utils.h>

#include <utility>

#include <platen/utcore_host.h>
#include "platform/utcore/key_state.h"

namespace ut {

namespace {

KeyState& replacement() {
    static KeyState state;
    return state;
}

bool isPressed(Key key) {
    switch (key) {
        case Key::Space:
            return wxGetKeyState(WXK_SPACE);
        case Key::Shift:
            return wxGetKeyState(WXK_SHIFT);
        case Key::Control:
            return wxGetKeyState(WXK_RAW_CONTROL);
        case Key::ControlOrCommand:
            return wxGetKeyState(WXK_CONTROL);
        case Key::Alt:
            return wxGetKeyState(WXK_ALT);
        case Key::AltGr:
            return isAltGrPressed();
        case Key::Escape:
            return wxGetKeyState(WXK_ESCAPE);
    }
    return false;
}

bool isDown(Key key) { return replacement() ? replacement()(key) : isPressed(key); }

}  // namespace

KeyState setKeyState(KeyState state) { return std::exchange(replacement(), std::move(state)); }

const KeyCodes& KeyCodes::getInstance() {
    static const KeyCodes instance;
    return instance;
}

bool KeyCodes::isSpaceDown() const { return isDown(Key::Space); }
bool KeyCodes::isShiftDown() const { return isDown(Key::Shift); }
bool KeyCodes::isControlDown() const { return isDown(Key::Control); }
bool KeyCodes::isControlOrCommandDown() const { return isDown(Key::ControlOrCommand); }
bool KeyCodes::isAltDown() const { return isDown(Key::Alt); }
bool KeyCodes::isAltGrDown() const { return isDown(Key::AltGr); }
bool KeyCodes::isEscapeDown() const { return isDown(Key::Escape); }

}  // namespace ut
