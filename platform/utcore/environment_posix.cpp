#include "platform/utcore/environment.h"

#include <cstdlib>

#include <platen/utcore.h>

namespace ut {

std::wstring environmentVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    // Values are paths as a rule, and a path need not be UTF-8.
    return value == nullptr ? std::wstring() : decodePath(value);
}

}  // namespace ut
