#include <platen/gui_os.h>

namespace wut {

bool getKeyboardState(unsigned char* states) { return GetKeyboardState(states) != FALSE; }

bool setKeyboardState(unsigned char* states) { return SetKeyboardState(states) != FALSE; }

}  // namespace wut
