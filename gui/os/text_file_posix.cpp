#include "gui/os/text_file.h"

#include <platen/utcore.h>

namespace wut {

std::FILE* openTextFile(const std::wstring& path) {
    // "e": programs that are started meanwhile do not inherit it.
    return std::fopen(ut::encodePath(path).c_str(), "re");
}

}  // namespace wut
