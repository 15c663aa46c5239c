#include <system_error>

#include "utcore.h"

namespace ut {

std::string SystemError::message() const {
    if (code == 0) {
        return {};
    }
    const std::error_code error(static_cast<int>(code), std::generic_category());
    return std::string(action) + ": " + error.message();
}

}  // namespace ut
