/// Where the state of keys comes from.
#pragma once

#include <functional>

namespace ut {

enum class Key { Space, Shift, Control, ControlOrCommand, Alt, AltGr, Escape };

using KeyState = std::function<bool(Key)>;

/// Puts `state` in place of the keyboard, or brings the keyboard back when it is empty. Returns
/// what was there.
KeyState setKeyState(KeyState state);

/// The keyboard's AltGr.
bool isAltGrPressed();

}  // namespace ut
