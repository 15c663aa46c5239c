/// Making refusals.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include <platen/edit_result.h>
#include <platen/utcore.h>

namespace platen {

inline EditResult refuse(EditFault fault, std::string reason, std::wstring wanted = {}) {
    return EditRefusal{fault, std::move(reason), std::move(wanted), {}};
}

/// The text in quotes, as UTF-8.
inline std::string quoted(std::wstring_view text) { return '"' + ut::encodeUtf8(text) + '"'; }

}  // namespace platen
