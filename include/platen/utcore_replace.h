/// Replacing a file only if it is still what it was.
#pragma once

#include <functional>
#include <span>
#include <string_view>

#include <platen/platen_api.h>
#include <platen/utcore.h>

namespace ut {

/// `replaceFile` unless `mayReplace` says no, which sets `refused` and is no failure. It is asked
/// when the new content is on the device.
///
/// Replacements of one file, with a question or without, wait for each other up to ten seconds, so
/// that what the answer rests on still holds when the file is replaced. Each removes what one that
/// was killed has left. On network folders only Windows can do either.
[[nodiscard]] PLATEN_API SystemError replaceFile(std::wstring_view path,
                                                 std::span<const std::string_view> pieces,
                                                 const std::function<bool()>& mayReplace,
                                                 bool& refused);

/// Removes what a replacement of `path` that was killed has left, where `path` is not replaced but
/// could have been.
PLATEN_API void removeAbandoned(std::wstring_view path);

}  // namespace ut
