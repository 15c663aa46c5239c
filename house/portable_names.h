/// Names of files that every system takes, and takes for the same file.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace platen::house {

/// Why files in a bundle cannot be called so: an English phrase; empty when they can. A path has
/// slashes between names that Windows takes, too: no drive, no device, no stream, nothing that a
/// system leaves out or reads in a way of its own.
std::string pathFault(std::wstring_view path);

/// The same path in letters whose case makes no difference.
std::wstring folded(std::wstring_view path);

/// Paths of one bundle.
class PortablePaths {
public:
    /// A path like `wanted` that every system takes, and that nothing has yet, nor differs from
    /// another in case alone.
    std::wstring take(std::wstring_view wanted);
    /// Takes exactly this path. Returns why it cannot, as `pathFault`.
    std::string takeExactly(std::wstring_view path);

private:
    bool isBelowFile(const std::wstring& path) const;
    bool isFree(const std::wstring& path) const;
    void keep(const std::wstring& path);

    std::set<std::wstring> files_;
    std::set<std::wstring> folders_;
};

}  // namespace platen::house
