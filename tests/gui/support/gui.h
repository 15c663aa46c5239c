/// What tests of the GUI share: the running application, events, pictures.
#pragma once

#include <wx/image.h>
#include <wx/utils.h>

#include <string_view>

/// Dispatches events until none is left, idle events included.
void settle();

/// Dispatches events until `done()` says so; false when that takes too long.
template <class Condition>
[[nodiscard]] bool settleUntil(Condition done) {
    for (int tries = 0; tries < 500; ++tries) {
        settle();
        if (done()) {
            return true;
        }
        wxMilliSleep(10);
    }
    return false;
}

/// Writes `picture` for people to look at, as "<name>.png" in the folder that ./test has for this
/// system's pictures; unless pictures are wanted, does nothing. A failure to write fails the test.
void leavePicture(std::string_view name, const wxImage& picture);
