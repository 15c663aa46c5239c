#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <platen/audit.h>
#include <platen/utcore.h>
#include "audit/html_style.h"
#include "audit/record.h"
#include "inspect/compare_words.h"
#include "platform/utcore/markup.h"
#include "plotstyle/palette.h"

namespace platen {
namespace {

constexpr std::string_view beginning =
    "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
    "<meta name=\"generator\" content=\"platen audit\">\n";

using Findings = std::span<const AuditFinding>;

const char* classOf(Severity severity) { return severity == Severity::Error ? "error" : "warning"; }

std::size_t countOf(Findings findings, Severity severity) {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [&](const AuditFinding& finding) { return finding.severity == severity; }));
}

std::string capitalised(std::string text) {
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') {
        text[0] = static_cast<char>(text[0] - 'a' + 'A');
    }
    return text;
}

/// Makes the page. Whatever is no literal of this file goes through `text`.
class Page {
public:
    Page(const AuditResult& result, Shell shell) : result_(result), shell_(shell) {}

    std::string make(std::string_view date) {
        html_ = beginning;
        html_ +=
            "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
            "'unsafe-inline'\">\n<meta name=\"viewport\" content=\"width=device-width, "
            "initial-scale=1\">\n<title>Audit of plotter files</title>\n<style>";
        html_ += auditStyle;
        html_ += "</style>\n</head>\n<body>\n<header>\n<h1>Audit of plotter files</h1>\n";
        addPlace(date);
        html_ += "</header>\n<main>\n";
        addTiles();
        addSummary();
        for (Findings rest = result_.findings; !rest.empty();) {
            rest = addFolder(rest);
        }
        addNotes();
        html_ += "</main>\n<footer>";
        text("Made by platen audit. Pens are compared at ");
        text(ut::formatRounded(result_.dotsPerInch, 2));
        html_ +=
            " dots per inch. Each code stays the same from release to release; commands keep "
            "a copy of every file that they change.</footer>\n</body>\n</html>\n";
        return std::move(html_);
    }

private:
    void text(std::string_view words) { html_ += ut::escapeMarkup(words); }
    void text(std::wstring_view words) { html_ += ut::escapeMarkup(words); }
    /// A name whose direction is its own affair.
    void name(std::wstring_view words, const char* look) {
        html_ += std::string("<bdi class=\"") + look + "\">";
        text(words);
        html_ += "</bdi>";
    }

    void addPlace(std::string_view date) {
        html_ += "<p class=\"where\">";
        for (std::size_t folder = 0; folder < result_.folders.size(); ++folder) {
            html_ += folder == 0 ? "" : ", ";
            name(result_.folders[folder], "name");
        }
        if (!date.empty()) {
            html_ += " <span class=\"soft\">on ";
            text(date);
            html_ += "</span>";
        }
        html_ += "</p>\n";
    }

    void addTile(const char* look, std::size_t number, std::string_view label) {
        html_ += std::string("<li class=\"") + look + "\"><strong>" + std::to_string(number) +
                 "</strong>";
        text(label);
        html_ += "</li>\n";
    }

    void addTiles() {
        const std::size_t errors = countOf(result_.findings, Severity::Error);
        const std::size_t warnings = countOf(result_.findings, Severity::Warning);
        html_ += "<ul class=\"tiles\">\n";
        addTile(errors == 0 ? "fine" : "error", errors, errors == 1 ? "error" : "errors");
        addTile(warnings == 0 ? "fine" : "warning", warnings,
                warnings == 1 ? "warning" : "warnings");
        addTile("", result_.fileCount(), result_.fileCount() == 1 ? "file" : "files");
        constexpr std::array<const char*, 5> labels{"CTB tables", "STB tables", "configurations",
                                                    "PMP files", "others"};
        for (std::size_t kind = 0; kind < result_.kinds.size(); ++kind) {
            if (result_.kinds[kind] != 0) {
                addTile("", result_.kinds[kind], labels[kind]);
            }
        }
        html_ += "</ul>\n";
        if (result_.findings.empty()) {
            html_ += "<p>Nothing was found.</p>\n";
        }
    }

    /// "f0-pmp-missing"
    static std::string anchorOf(const AuditFinding& finding) {
        return "f" + std::to_string(finding.folder) + '-' + auditCodeWord(finding.code);
    }

    /// The findings at the front with the code and folder of the first.
    static Findings groupOf(Findings findings) {
        const auto end =
            std::find_if(findings.begin(), findings.end(), [&](const AuditFinding& finding) {
                return finding.code != findings.front().code ||
                       finding.folder != findings.front().folder;
            });
        return findings.first(static_cast<std::size_t>(end - findings.begin()));
    }

    void addSummary() {
        if (result_.findings.empty()) {
            return;
        }
        const bool folders = result_.folders.size() > 1;
        html_ += "<h2>Summary</h2>\n<table>\n<thead><tr><th scope=\"col\">What</th>";
        html_ += folders ? "<th scope=\"col\">Folder</th>" : "";
        html_ +=
            "<th scope=\"col\">Severity</th><th scope=\"col\" class=\"number\">Findings</th>"
            "</tr></thead>\n<tbody>\n";
        for (Findings rest = result_.findings; !rest.empty();) {
            const Findings group = groupOf(rest);
            const AuditFinding& first = group.front();
            html_ += "<tr><td><a href=\"#" + anchorOf(first) + "\">";
            text(auditCodeTitle(first.code));
            html_ += "</a></td>";
            if (folders) {
                html_ += "<td>";
                text(folderOf(first));
                html_ += "</td>";
            }
            html_ += "<td>";
            addBadge(group);
            html_ += "</td><td class=\"number\">" + std::to_string(group.size()) + "</td></tr>\n";
            rest = rest.subspan(group.size());
        }
        html_ += "</tbody>\n</table>\n";
    }

    std::wstring_view folderOf(const AuditFinding& finding) const {
        return finding.folder < result_.folders.size() ? result_.folders[finding.folder]
                                                       : std::wstring_view();
    }

    void addBadge(Findings group) {
        const Severity worst =
            countOf(group, Severity::Error) != 0 ? Severity::Error : Severity::Warning;
        html_ += std::string("<span class=\"badge ") + classOf(worst) + "\">" + classOf(worst) +
                 "</span>";
    }

    /// Returns what is left.
    Findings addFolder(Findings findings) {
        const std::size_t folder = findings.front().folder;
        html_ += "<section>\n";
        if (result_.folders.size() > 1) {
            html_ += "<h2>";
            name(folderOf(findings.front()), "name");
            html_ += "</h2>\n";
        } else {
            html_ += "<h2>Findings</h2>\n";
        }
        while (!findings.empty() && findings.front().folder == folder) {
            const Findings group = groupOf(findings);
            addGroup(group);
            findings = findings.subspan(group.size());
        }
        html_ += "</section>\n";
        return findings;
    }

    void addGroup(Findings group) {
        const AuditFinding& first = group.front();
        html_ += "<h3 id=\"" + anchorOf(first) + "\">";
        text(auditCodeTitle(first.code));
        html_ += " ";
        addBadge(group);
        html_ += " <code class=\"word\">" + std::string(auditCodeWord(first.code)) +
                 "</code></h3>\n<p class=\"remedy soft\">";
        text(capitalised(auditCodeRemedy(first.code)));
        html_ +=
            ".</p>\n<table class=\"findings\">\n<thead><tr><th scope=\"col\">File</th>"
            "<th scope=\"col\">Finding</th></tr></thead>\n<tbody>\n";
        for (const AuditFinding& finding : group) {
            html_ += "<tr><td>";
            addFiles(finding);
            html_ += "</td><td>";
            text(capitalised(finding.message));
            addDetails(finding);
            if (const std::string command = commandLine(finding.command, shell_);
                !command.empty()) {
                html_ += "<code class=\"mend\">";
                text(command);
                html_ += "</code>";
            }
            html_ += "</td></tr>\n";
        }
        html_ += "</tbody>\n</table>\n";
    }

    void addFiles(const AuditFinding& finding) {
        constexpr std::size_t shown = 8;
        if (finding.files.empty()) {
            html_ += "<span class=\"soft\">no file</span>";
            return;
        }
        for (std::size_t place = 0; place < std::min(shown, finding.files.size()); ++place) {
            const std::wstring& file = finding.files[place];
            html_ += place == 0 ? "" : "<div class=\"also\">";
            const std::wstring_view last = ut::fileNameOf(file);
            name(last, "name");
            html_ += " ";
            name(std::wstring_view(file).substr(0, file.size() - last.size()), "folder");
            html_ += place == 0 ? "" : "</div>";
        }
        if (finding.files.size() > shown) {
            html_ += "<div class=\"also\">and " + std::to_string(finding.files.size() - shown) +
                     " more</div>";
        }
    }

    void addDetails(const AuditFinding& finding) {
        constexpr std::size_t shownAtOnce = 12;
        if (finding.details.empty()) {
            return;
        }
        const bool isLong = finding.details.size() > shownAtOnce;
        if (isLong) {
            html_ += "<details><summary>" +
                     std::to_string(finding.details.size() + finding.omitted) + " lines</summary>";
        }
        html_ += "<ul class=\"lines\">\n";
        for (const AuditDetail& detail : finding.details) {
            html_ += "<li>";
            addSwatches(detail.colors);
            text(detail.text);
            html_ += "</li>\n";
        }
        if (finding.omitted != 0) {
            html_ += "<li class=\"soft\">and " + std::to_string(finding.omitted) + " more</li>\n";
        }
        html_ += isLong ? "</ul></details>" : "</ul>";
    }

    void addSwatches(const std::vector<int>& colors) {
        constexpr std::size_t shown = 12;
        constexpr std::string_view digits = "0123456789abcdef";
        if (colors.empty()) {
            return;
        }
        html_ += "<span class=\"swatches\" aria-hidden=\"true\">";
        for (std::size_t place = 0; place < std::min(shown, colors.size()); ++place) {
            const auto index = static_cast<std::size_t>(colors[place]) - 1;
            if (index < plot_style::palette.size()) {
                html_ += "<i style=\"background:#";
                for (int shift = 20; shift >= 0; shift -= 4) {
                    html_ += digits[plot_style::palette[index] >> shift & 15U];
                }
                html_ += "\"></i>";
            }
        }
        html_ += "</span>";
    }

    void addNotes() {
        if (result_.notes.empty()) {
            return;
        }
        html_ += "<section class=\"notes\">\n<strong>What was not looked at</strong>\n<ul>\n";
        for (const AuditNote& note : result_.notes) {
            html_ += "<li>";
            text(capitalised(note.text));
            html_ += ".</li>\n";
        }
        html_ += "</ul>\n</section>\n";
    }

    const AuditResult& result_;
    Shell shell_;
    std::string html_;
};

}  // namespace

std::string_view auditHtmlBeginning() { return beginning; }

std::string auditHtml(const AuditResult& result, Shell shell, std::string_view date) {
    return Page(result, shell).make(date);
}

}  // namespace platen
