#include "gui/os/text_file.h"

namespace wut {

std::FILE* openTextFile(const std::wstring& path) { return _wfopen(path.c_str(), L"r"); }

}  // namespace wut
