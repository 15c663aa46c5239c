#include "gui/os/formatting.h"

namespace wut {

void hookFormatting(FormattingHook) {
    // This C library calls nobody: a formatting function returns its error.
}

}  // namespace wut
