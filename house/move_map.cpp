#include <algorithm>
#include <cstddef>
#include <utility>

#include <platen/house_move.h>
#include <platen/utcore.h>
#include "edit/refusal.h"

namespace platen {
namespace {

/// Why this cannot be a printer's name; empty when it can.
std::string nameFault(std::wstring_view name) {
    // The spooler's own limit. Longer names would be cut when a file is written, too.
    constexpr std::size_t longest = 220;
    if (name.empty()) {
        return "is empty";
    }
    if (ut::utf16Length(name) > longest) {
        return "is longer than the 220 characters that a printer's name may have";
    }
    const bool control =
        std::any_of(name.begin(), name.end(), [](wchar_t letter) { return letter < L' '; });
    return control ? "holds a control character" : "";
}

}  // namespace

EditResult MoveMap::add(const std::wstring& from, const std::wstring& to) {
    if (const std::string fault = nameFault(from); !fault.empty()) {
        return refuse(EditFault::NameInvalid, "the name before the equals sign " + fault, from);
    }
    if (const std::string fault = nameFault(to); !fault.empty()) {
        return refuse(EditFault::NameInvalid, "the name after the equals sign " + fault, to);
    }
    if (from == to) {
        return refuse(EditFault::NameInvalid, "both names are the same", from);
    }
    if (find(from) != nullptr) {
        return refuse(EditFault::NameTaken,
                      "the printer is to be replaced twice; leave one of the two out", from);
    }
    moves_.push_back({from, to});
    return {};
}

EditResult MoveMap::add(std::string_view argument) {
    const std::size_t sign = argument.find('=');
    if (sign == std::string_view::npos) {
        return refuse(EditFault::ValueInvalid,
                      "there is no equals sign in it; write --map \"OLD NAME=NEW NAME\"");
    }
    std::wstring from;
    std::wstring to;
    if (!ut::decodeUtf8(argument.substr(0, sign), from) ||
        !ut::decodeUtf8(argument.substr(sign + 1), to)) {
        return refuse(EditFault::NameInvalid, "the names must be UTF-8");
    }
    return add(from, to);
}

const PrinterMove* MoveMap::find(std::wstring_view printer) const {
    const auto move = std::find_if(moves_.begin(), moves_.end(), [&](const PrinterMove& candidate) {
        return ut::equalNoCase(candidate.from, printer);
    });
    return move == moves_.end() ? nullptr : &*move;
}

}  // namespace platen
