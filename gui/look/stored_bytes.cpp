#include "gui/look/stored_bytes.h"

#include <wx/filesys.h>
#include <wx/stream.h>

#include <algorithm>
#include <memory>
#include <utility>

#include <platen/gui_look.h>

namespace wut {

namespace {

constexpr std::size_t limit = std::size_t{256} << 20;

struct Bytes {
    std::unique_ptr<unsigned char[]> data;
    std::size_t size = 0;
};

Bytes readLocation(const wxString& location) {
    wxFileSystem system;
    const std::unique_ptr<wxFSFile> file(system.OpenFile(location));
    wxInputStream* stream = file == nullptr ? nullptr : file->GetStream();
    const wxFileOffset length = stream == nullptr ? 0 : stream->GetLength();
    if (length <= 0 || static_cast<unsigned long long>(length) > limit) {
        return {};
    }
    const auto size = static_cast<std::size_t>(length);
    Bytes bytes{std::make_unique_for_overwrite<unsigned char[]>(size), size};
    if (!stream->ReadAll(bytes.data.get(), size)) {
        return {};
    }
    return bytes;
}

Bytes copyOf(std::span<const unsigned char> source) {
    Bytes bytes{std::make_unique_for_overwrite<unsigned char[]>(source.size()), source.size()};
    std::ranges::copy(source, bytes.data.get());
    return bytes;
}

}  // namespace

std::size_t getRawBitmap(unsigned char*& bytes, const wchar_t* name) {
    const wxString known(name);
    const std::span<const unsigned char> stored = programResource(known);
    Bytes found = stored.empty() ? readLocation(known) : copyOf(stored);
    bytes = found.data.release();
    return found.size;
}

}  // namespace wut
