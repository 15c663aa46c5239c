#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platen/utcore.h>
#include "audit/joined.h"

namespace platen {
namespace {

constexpr std::wstring_view pmpFolder = L"pmp";
constexpr std::wstring_view pmpKey = L"meta/user_defined_model_pathname";

/// A PMP and who uses it.
struct Pmp {
    const AuditData* data = nullptr;
    bool isNamed = false;
    std::set<std::wstring_view> chosenPapers{};
};

/// Whether programs find the file by its name alone.
bool isBeside(const std::wstring& file, const AuditData& config) {
    const std::wstring folder = lowerCase(ut::folderOf(file));
    const std::wstring own = lowerCase(ut::folderOf(config.fullPath));
    return folder == own || folder == ut::joinPath(own, pmpFolder);
}

/// Whether the name says that the file is where it is.
bool isAsNamed(const AuditData& config, const std::wstring& file) {
    const std::wstring& name = config.pmpName;
    if (ut::fileNameOf(name).size() == name.size()) {
        return true;
    }
    std::wstring path = name;
    for (wchar_t& character : path) {
        // Documents are made on Windows, wherever they are read.
        character = character == L'\\' ? L'/' : character;
    }
    if (!isAbsolutePath(path, true)) {
        path = ut::joinPath(ut::folderOf(config.fullPath), path);
    }
    return lowerCase(fullPathOf(path)) == lowerCase(file) ||
           lowerCase(fullPathOf(name)) == lowerCase(file);
}

std::vector<std::wstring> naming(const AuditData& config, const std::wstring& file) {
    const std::wstring name = isBeside(file, config) ? std::wstring(ut::fileNameOf(file)) : file;
    return {L"platen", L"set", argumentOf(config.file), std::wstring(pmpKey) + L'=' + name,
            L"--in-place=.bak"};
}

class PmpJoiner {
public:
    PmpJoiner(const AuditedFiles& files, const AuditSettings& settings, AuditResult& result)
        : files_(files), settings_(settings), result_(result) {
        for (const auto& data : files) {
            if (data->kind == FileKind::Pmp) {
                pmps_.push_back({.data = data.get()});
                byPath_.emplace(lowerCase(data->fullPath), pmps_.size() - 1);
                byName_.emplace(lowerCase(ut::fileNameOf(data->fullPath)), pmps_.size() - 1);
            }
        }
    }

    void run() {
        for (const auto& data : files_) {
            if (data->kind == FileKind::Pc3) {
                visit(*data);
            }
        }
        for (const Pmp& pmp : pmps_) {
            reportUnused(pmp);
        }
    }

private:
    void visit(const AuditData& config) {
        std::vector<AuditDetail> paths = config.paths;
        std::vector<std::wstring> command;
        if (!config.pmpName.empty()) {
            Pmp* pmp = pmpOf(config);
            if (pmp != nullptr) {
                pmp->isNamed = true;
                pmp->chosenPapers.insert(config.chosenPaper);
            }
            const std::wstring place =
                !config.pmpPath.empty() || pmp == nullptr ? config.pmpPath : pmp->data->fullPath;
            if (reportPlace(config, place) && isAbsolutePath(config.pmpName, true)) {
                paths.insert(paths.begin(), {.text = "meta/user_defined_model_pathname " +
                                                     nameInQuotes(config.pmpName)});
                if (isBeside(place, config)) {
                    command = naming(config, place);
                }
            }
        }
        if (!paths.empty()) {
            AuditFinding finding =
                findingAbout(config, AuditCode::AbsolutePath,
                             "it names " + countInWords(paths.size(), "path", "paths") +
                                 " that another machine need not have");
            for (AuditDetail& path : paths) {
                addDetail(finding, std::move(path), settings_.mostDetails);
            }
            finding.command = std::move(command);
            result_.findings.push_back(std::move(finding));
        }
    }

    /// The PMP that a configuration means, if it is among the audited files: where programs find
    /// it or, where they do not, one of its name.
    Pmp* pmpOf(const AuditData& config) {
        if (!config.pmpPath.empty()) {
            const auto found = byPath_.find(lowerCase(config.pmpPath));
            return found == byPath_.end() ? nullptr : &pmps_[found->second];
        }
        const auto found = byName_.find(lowerCase(ut::fileNameOf(config.pmpName)));
        return found == byName_.end() ? nullptr : &pmps_[found->second];
    }

    /// True when the PMP is where the configuration says.
    bool reportPlace(const AuditData& config, const std::wstring& place) {
        if (place.empty()) {
            result_.findings.push_back(
                findingAbout(config, AuditCode::PmpMissing,
                             "it names the PMP " + nameInQuotes(config.pmpName) +
                                 ", which is in none of the folders where programs look"));
            return false;
        }
        const bool programsFind = !config.pmpPath.empty() || isBeside(place, config);
        if (programsFind && isAsNamed(config, place)) {
            return true;
        }
        AuditFinding finding =
            findingAbout(config, AuditCode::PmpElsewhere,
                         "it names the PMP " + nameInQuotes(config.pmpName) +
                             (programsFind ? ", and programs take " + nameInQuotes(place)
                                           : ", which programs do not find; there is one of that "
                                             "name at " +
                                                 nameInQuotes(place)));
        finding.command = naming(config, place);
        result_.findings.push_back(std::move(finding));
        return false;
    }

    void reportUnused(const Pmp& pmp) {
        if (!pmp.isNamed) {
            result_.findings.push_back(findingAbout(*pmp.data, AuditCode::PmpUnused,
                                                    "no configuration in these folders names it"));
            return;
        }
        AuditFinding finding = findingAbout(*pmp.data, AuditCode::PaperUnused, "");
        std::size_t count = 0;
        for (const AuditedPaper& paper : pmp.data->papers) {
            if (!pmp.chosenPapers.contains(paper.name)) {
                ++count;
                addDetail(finding, {.text = nameInQuotes(paper.nameForPeople)},
                          settings_.mostDetails);
            }
        }
        if (count != 0) {
            finding.message = "no configuration in these folders chooses " + std::to_string(count) +
                              " of its custom papers";
            result_.findings.push_back(std::move(finding));
        }
    }

    const AuditedFiles& files_;
    const AuditSettings& settings_;
    AuditResult& result_;
    std::vector<Pmp> pmps_;
    std::map<std::wstring, std::size_t> byPath_;
    /// The first of each name.
    std::map<std::wstring, std::size_t> byName_;
};

}  // namespace

void joinPmps(const AuditedFiles& files, const AuditSettings& settings, AuditResult& result) {
    PmpJoiner(files, settings, result).run();
}

}  // namespace platen
