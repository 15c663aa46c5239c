/// What zlib needs at least: the least that any reader of a file does.
#pragma once

#include <zlib.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace bench {

/// Inflates with nothing around it: no growing, no checks.
class BareInflate {
public:
    /// Borrows the stream; `bodySize` is the length of what it holds.
    BareInflate(std::string_view stream, std::size_t bodySize)
        : stream_(stream), target_(bodySize, '\0') {}

    bool run() {
        auto length = static_cast<uLongf>(target_.size());
        return uncompress(reinterpret_cast<Bytef*>(target_.data()), &length,
                          reinterpret_cast<const Bytef*>(stream_.data()),
                          static_cast<uLong>(stream_.size())) == Z_OK;
    }
    const char* data() const { return target_.data(); }

private:
    std::string_view stream_;
    std::string target_;
};

}  // namespace bench
