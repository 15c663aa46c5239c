#include "tools/platen/printers/printer_map.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <platen/utcore.h>

namespace cli::printers {
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

std::string PrinterMap::add(const std::string& argument) {
    const std::size_t sign = argument.find('=');
    if (sign == std::string::npos) {
        return "there is no equals sign in it; write --map \"OLD NAME=NEW NAME\"";
    }
    PrinterMove move;
    if (!ut::decodeUtf8(argument.substr(0, sign), move.from) ||
        !ut::decodeUtf8(argument.substr(sign + 1), move.to)) {
        return "the names must be UTF-8";
    }
    if (const std::string fault = nameFault(move.from); !fault.empty()) {
        return "the name before the equals sign " + fault;
    }
    if (const std::string fault = nameFault(move.to); !fault.empty()) {
        return "the name after the equals sign " + fault;
    }
    if (move.from == move.to) {
        return "both names are the same";
    }
    if (find(move.from) != nullptr) {
        return "the printer is to be replaced twice; leave one of the two out";
    }
    moves_.push_back(std::move(move));
    return {};
}

PrinterMove* PrinterMap::find(const std::wstring& printer) {
    const auto move = std::find_if(moves_.begin(), moves_.end(), [&](const PrinterMove& candidate) {
        return ut::equalNoCase(candidate.from, printer);
    });
    return move == moves_.end() ? nullptr : &*move;
}

}  // namespace cli::printers
