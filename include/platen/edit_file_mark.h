/// Noticing that somebody else has written a file since it was read.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <platen/platen_api.h>

namespace platen {

/// A file as it was read. Without a file nothing ever differs.
class PLATEN_API FileMark {
public:
    FileMark() = default;  ///< Without a file.
    /// Of the file at `path` when it held `bytes`.
    FileMark(const std::wstring& path, std::string_view bytes);
    /// Reads the file at `path`; like a mark without a file when it cannot be read.
    static FileMark of(const std::wstring& path);

    /// `path` is that file, and it is gone or holds other bytes now.
    bool differsNow(const std::wstring& path) const;

private:
    std::wstring path_;
    std::size_t size_ = 0;
    std::size_t hash_ = 0;
};

}  // namespace platen
