#include "audit/record.h"

#include <algorithm>
#include <utility>

#include <platen/utcore.h>
#include <platen/utcore_host.h>
#include "inspect/compare_words.h"

namespace platen {

AuditFinding findingAbout(const AuditData& data, AuditCode code, std::string message) {
    AuditFinding finding;
    finding.code = code;
    finding.files.push_back(data.file);
    finding.folder = data.folder;
    finding.message = std::move(message);
    return finding;
}

void addDetail(AuditFinding& finding, AuditDetail detail, std::size_t most) {
    if (finding.details.size() < most) {
        finding.details.push_back(std::move(detail));
    } else {
        ++finding.omitted;
    }
}

std::string nameInQuotes(std::wstring_view name) { return '"' + printableUtf8(name) + '"'; }

std::string countInWords(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

std::wstring lowerCase(std::wstring_view text) {
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ut::toLower);
    return lower;
}

std::wstring fullPathOf(const std::wstring& file) { return ut::FileName(file).getFullPath(); }

bool isAbsolutePath(std::wstring_view path, bool withRoot) {
    const auto isSlash = [&](std::size_t at) {
        return at < path.size() && (path[at] == L'/' || path[at] == L'\\');
    };
    const wchar_t letter = path.empty() ? L'\0' : ut::toLower(path[0]);
    const bool drive =
        letter >= L'a' && letter <= L'z' && path.size() > 2 && path[1] == L':' && isSlash(2);
    const bool server = isSlash(0) && isSlash(1) && path[0] == path[1] && path.size() > 2;
    return drive || server || (withRoot && path.size() > 1 && isSlash(0));
}

std::wstring argumentOf(const std::wstring& file) {
    // An option, a list of files, a list of the parser.
    constexpr std::wstring_view special = L"-@[";
    const bool isSpecial = !file.empty() && special.find(file.front()) != std::wstring_view::npos;
    return isSpecial ? L"./" + file : file;
}

}  // namespace platen
