#include <functional>

#include <platen/edit_file_mark.h>
#include <platen/pia.h>
#include <platen/utcore.h>

namespace platen {
namespace {

std::size_t hashOf(std::string_view bytes) { return std::hash<std::string_view>()(bytes); }

bool readWhole(const std::wstring& path, ut::ByteBuffer& bytes) {
    bool tooLarge = false;
    return !ut::readFile(path, PiaLimits{}.bodyBytes, bytes, tooLarge) && !tooLarge;
}

}  // namespace

FileMark::FileMark(const std::wstring& path, std::string_view bytes)
    : path_(ut::fullPath(path)), size_(bytes.size()), hash_(hashOf(bytes)) {}

FileMark FileMark::of(const std::wstring& path) {
    ut::ByteBuffer bytes;
    return readWhole(path, bytes) ? FileMark(path, bytes.view()) : FileMark();
}

bool FileMark::differsNow(const std::wstring& path) const {
    if (path_.empty() || ut::fullPath(path) != path_) {
        return false;
    }
    ut::ByteBuffer bytes;
    return !readWhole(path, bytes) || bytes.size() != size_ || hashOf(bytes.view()) != hash_;
}

}  // namespace platen
