#include <algorithm>
#include <map>
#include <string>
#include <string_view>

#include <platen/utcore.h>
#include "audit/joined.h"

namespace platen {
namespace {

/// How programs see the name of a file: its path in its folder, whatever its case. PMPs in a folder
/// PMP are found as those beside it.
std::wstring nameIn(const AuditData& data, const AuditSettings& settings) {
    constexpr std::wstring_view pmpFolder = L"pmp/";
    std::wstring folder = data.folder < settings.folders.size()
                              ? fullPathOf(ut::joinPath(settings.folders[data.folder], L""))
                              : std::wstring();
    folder = ut::folderOf(ut::joinPath(folder, L""));
    std::wstring name = data.fullPath.starts_with(folder) && data.fullPath.size() > folder.size()
                            ? data.fullPath.substr(folder.size())
                            : std::wstring(ut::fileNameOf(data.fullPath));
    name = lowerCase(name);
    std::replace(name.begin(), name.end(), L'\\', L'/');
    name.erase(0, name.find_first_not_of(L'/'));
    const std::size_t last = name.rfind(L'/') + 1;
    if (data.kind == FileKind::Pmp && last >= pmpFolder.size() &&
        std::wstring_view(name).substr(0, last).ends_with(pmpFolder)) {
        const std::size_t begin = last - pmpFolder.size();
        if (begin == 0 || name[begin - 1] == L'/') {
            name.erase(begin, pmpFolder.size());
        }
    }
    return name;
}

bool haveOneContent(const AuditData& one, const AuditData& other) {
    return one.kind && one.kind == other.kind && one.contentBytes == other.contentBytes &&
           one.contentHash == other.contentHash;
}

}  // namespace

void joinNames(const AuditedFiles& files, const AuditSettings& settings, AuditResult& result) {
    std::map<std::wstring, const AuditData*> first;
    for (const auto& data : files) {
        const auto [found, isNew] = first.emplace(nameIn(*data, settings), data.get());
        if (isNew) {
            continue;
        }
        const AuditData& other = *found->second;
        const bool equal = haveOneContent(*data, other);
        const std::string which = data->folder == other.folder
                                      ? "one folder has two files of this name, as systems see it "
                                        "that ignore case: "
                                      : "the earlier folder has a file of this name: ";
        AuditFinding finding =
            findingAbout(*data, equal ? AuditCode::NameRepeated : AuditCode::NameShadowed,
                         which + nameInQuotes(other.file) +
                             (equal ? "; their contents are the same" : "; their contents differ"));
        finding.files.push_back(other.file);
        result.findings.push_back(std::move(finding));
    }
}

}  // namespace platen
