#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <platen/utcore.h>
#include "audit/joined.h"

namespace platen {
namespace {

/// Millimetres, or pixels.
constexpr double sameLength = 0.05;

struct Paper {
    const AuditedPaper* paper;
    const AuditData* file;
};

/// The files that have a name, by the name.
using Names = std::map<std::wstring, std::set<const AuditData*>>;

Names namesOf(std::span<const Paper> papers) {
    Names names;
    for (const Paper& paper : papers) {
        names[paper.paper->nameForPeople].insert(paper.file);
    }
    return names;
}

/// True when each file has the names of every file with fewer: then names tell variants apart that
/// some files do not need.
bool areVariants(const Names& names) {
    std::vector<const std::set<const AuditData*>*> users;
    for (const auto& [name, files] : names) {
        users.push_back(&files);
    }
    std::sort(users.begin(), users.end(),
              [](const auto* one, const auto* other) { return one->size() < other->size(); });
    for (std::size_t place = 1; place < users.size(); ++place) {
        if (!std::includes(users[place]->begin(), users[place]->end(), users[place - 1]->begin(),
                           users[place - 1]->end())) {
            return false;
        }
    }
    return true;
}

/// True when a file has two names for papers that have equal margins, too.
bool hasTwoNamesForOne(std::span<const Paper> papers) {
    const auto rounded = [](double length) { return std::round(length / sameLength); };
    std::map<std::tuple<const AuditData*, double, double, double, double>, const std::wstring*>
        seen;
    for (const auto& [paper, file] : papers) {
        const auto [found, isNew] =
            seen.emplace(std::tuple(file, rounded(paper->left), rounded(paper->bottom),
                                    rounded(paper->right), rounded(paper->top)),
                         &paper->nameForPeople);
        if (!isNew && *found->second != paper->nameForPeople) {
            return true;
        }
    }
    return false;
}

std::string sizeInWords(const AuditedPaper& paper) {
    return ut::formatRounded(paper.width, 2) + " x " + ut::formatRounded(paper.height, 2) +
           (paper.pixels ? " pixels" : " mm");
}

void report(std::span<const Paper> papers, const AuditSettings& settings, AuditResult& result) {
    const Names names = namesOf(papers);
    if (names.size() < 2 || (areVariants(names) && !hasTwoNamesForOne(papers))) {
        return;
    }
    std::vector<const AuditData*> files;
    std::set<const AuditData*> known;
    for (const Paper& paper : papers) {
        if (known.insert(paper.file).second) {
            files.push_back(paper.file);
        }
    }
    AuditFinding finding = findingAbout(files, AuditCode::PapersAlike,
                                        "papers of " + sizeInWords(*papers.front().paper) +
                                            " have " + std::to_string(names.size()) + " names");
    for (const auto& [name, users] : names) {
        constexpr std::size_t filesShown = 5;
        std::string text = nameInQuotes(name) + " in ";
        std::size_t count = 0;
        for (const AuditData* file : files) {
            if (users.contains(file) && ++count <= filesShown) {
                text += (count == 1 ? "" : ", ") + nameInQuotes(file->file);
            }
        }
        if (count > filesShown) {
            text += " and " + countInWords(count - filesShown, "other file", "other files");
        }
        addDetail(finding, {.text = std::move(text)}, settings.mostDetails);
    }
    result.findings.push_back(std::move(finding));
}

bool isSize(const AuditedPaper& paper) {
    return std::isfinite(paper.width) && std::isfinite(paper.height) && paper.width > 0 &&
           paper.height > 0;
}

/// Calls `take` for each run of papers whose lengths are those of its first.
template <class Take>
void forEachRun(std::span<Paper> papers, double AuditedPaper::*length, Take take) {
    std::stable_sort(papers.begin(), papers.end(), [&](const Paper& one, const Paper& other) {
        return one.paper->*length < other.paper->*length;
    });
    for (std::size_t first = 0; first < papers.size();) {
        std::size_t last = first + 1;
        while (last < papers.size() &&
               papers[last].paper->*length - papers[first].paper->*length <= sameLength) {
            ++last;
        }
        take(papers.subspan(first, last - first));
        first = last;
    }
}

}  // namespace

void joinPapers(const AuditedFiles& files, const AuditSettings& settings, AuditResult& result) {
    for (const bool pixels : {false, true}) {
        std::vector<Paper> papers;
        for (const auto& data : files) {
            for (const AuditedPaper& paper : data->papers) {
                if (paper.pixels == pixels && isSize(paper)) {
                    papers.push_back({&paper, data.get()});
                }
            }
        }
        forEachRun(papers, &AuditedPaper::width, [&](std::span<Paper> run) {
            forEachRun(run, &AuditedPaper::height,
                       [&](std::span<Paper> alike) { report(alike, settings, result); });
        });
    }
}

}  // namespace platen
