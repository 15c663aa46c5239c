#include <cerrno>
#include <system_error>

#include <platen/utcore.h>
#include <platen/utcore_host.h>

namespace ut {

std::string SystemError::message() const {
    if (code == 0) {
        return {};
    }
    const std::error_code error(static_cast<int>(code), std::generic_category());
    return std::string(action) + ": " + error.message();
}

unsigned long sysErrorCode() { return static_cast<unsigned long>(errno); }

}  // namespace ut
