#include <windows.h>

#include "platform/utcore/key_state.h"

namespace ut {

bool isAltGrPressed() {
    // The state of the key itself, which needs no messages to be handled.
    return GetAsyncKeyState(VK_RMENU) < 0;
}

}  // namespace ut
