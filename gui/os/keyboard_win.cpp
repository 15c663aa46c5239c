#include <platen/gui_os.h>

namespace wut {

bool getKeyboardState(unsigned char* states) {
    return states != nullptr && GetKeyboardState(states) != FALSE;
}

bool setKeyboardState(unsigned char* states) {
    return states != nullptr && SetKeyboardState(states) != FALSE;
}

}  // namespace wut
