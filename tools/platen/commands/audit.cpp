#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <ctime>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <platen/audit.h>
#include <platen/edit.h>
#include <platen/utcore.h>
#include <platen/utcore_host.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/file_walk.h"
#include "tools/platen/files/name_list.h"
#include "tools/platen/files/source.h"
#include "tools/platen/printers/installed_printers.h"
#include "tools/platen/printers/printer_names.h"
#include "tools/platen/words/audit_text.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Looks at the plotter files of folders as a whole, and changes nothing. The folders are
the search path in that order: of two files with one name programs take the one that comes first.

What is found, by its code, which stays the same from release to release:
  unreadable, damaged                a file that cannot be opened, or that lost something
  pmp-missing, pmp-elsewhere         the PMP of a configuration is gone, or not where it says
  printer-missing                    its printer is not there (see --printers)
  name-shadowed, name-repeated       an earlier folder hides a file: another one, or the same
  pmp-unused, paper-unused           PMPs that no configuration names, papers that none chooses
  table-unused, table-missing        tables that no drawing names, names without a table (--used)
  papers-alike                       custom papers of one size (to 0.05 mm) with several names
  standard-deviation, standard-missing     what differs from --standard, pen by pen
  pens-alike                         line weights that are equally many dots of the device (--dpi)
  private-settings, private-size     settings that only a driver reads, lost when it is replaced
  absolute-path, network-printer, name-not-ascii     what another machine need not have

Each finding says what to do about it and, where that is safe, the command that mends it and keeps
a copy. Drawings are not read: give the names of the tables that they use with --used. On Windows the
printers are asked; elsewhere --printers has their names. Both lists have one name a line.

Exit codes: 0 nothing found, 1 findings, 2 something could not be looked at.

Examples:
  platen audit plotters
  platen audit plotters --standard office-standard --html report.html
  platen audit plotters --standard iso.ctb --only standard-deviation
  platen audit site plotters --printers printers.txt --used tables.txt --ignore private-settings
  platen audit plotters --json > audit.json     one JSON object, schema platen.audit/1)";

struct AuditOptions {
    files::Selection selection;
    std::string standard;
    /// Files with a name a line; empty for none.
    std::string used;
    std::string printers;
    double dotsPerInch = platen::AuditSettings{}.dotsPerInch;
    std::vector<std::string> only;
    std::vector<std::string> ignored;
    bool json = false;
    std::string html;
    std::uint64_t maxBody = files::usualMaxBody;
};

std::vector<std::string> codeWords() {
    std::vector<std::string> words;
    std::ranges::transform(platen::auditCodes(), std::back_inserter(words), platen::auditCodeWord);
    return words;
}

std::vector<platen::AuditCode> codesOf(const std::vector<std::string>& words) {
    std::vector<platen::AuditCode> codes;
    std::ranges::copy_if(
        platen::auditCodes(), std::back_inserter(codes), [&](platen::AuditCode code) {
            return std::ranges::find(words, platen::auditCodeWord(code)) != words.end();
        });
    return codes;
}

/// "2024-05-31"; empty when the system does not say.
std::string today() {
    const std::time_t now = std::time(nullptr);
    std::array<char, 16> text{};
    const std::tm* day = std::localtime(&now);
    return day != nullptr && std::strftime(text.data(), text.size(), "%Y-%m-%d", day) != 0
               ? text.data()
               : "";
}

/// The files of the folders, each once, and the places of their folders.
struct Audited {
    files::Selected selected;
    std::vector<std::size_t> folders;
};

class Audit {
public:
    Audit(const AuditOptions& options, const Console& console)
        : options_(options), console_(console) {}

    ExitCode run() {
        platen::AuditSettings settings;
        if (!checkUsage() || !readSettings(settings)) {
            return ExitCode::Error;
        }
        Audited audited = findFiles();
        for (const std::string& folder : options_.selection.named) {
            settings.folders.push_back(ut::decodePath(folder));
        }
        platen::FolderAudit audit(std::move(settings));
        const ExitCode worst = readFiles(audited, audit);
        if (worst == ExitCode::Interrupted) {
            return worst;
        }
        platen::AuditResult result = audit.finish();
        const bool isComplete =
            std::ranges::none_of(result.findings, [](const platen::AuditFinding& finding) {
                return finding.code == platen::AuditCode::Unreadable;
            });
        platen::keepCodes(result, codesOf(options_.only), codesOf(options_.ignored));
        const ExitCode reported = report(result);
        return worse(worse(worst, reported), isComplete ? ExitCode::Ok : ExitCode::Error);
    }

private:
    bool checkUsage() {
        for (const std::string& folder : options_.selection.named) {
            if (!ut::folderExists(ut::decodePath(folder))) {
                fail(console_, folder,
                     ut::fileExists(ut::decodePath(folder))
                         ? "this is a file; an audit is of folders, platen check is of files"
                         : "there is no such folder");
                return false;
            }
        }
        if (options_.used == files::standardStream && options_.printers == files::standardStream) {
            fail(console_, "", "standard input (-) can only be one of the lists");
            return false;
        }
        if (options_.json && options_.html == files::standardStream) {
            fail(console_, "", "JSON and a page cannot both go to standard output; name a file");
            return false;
        }
        return mayWritePage();
    }

    /// A page of an audit may take the place of an older one, and of nothing else.
    bool mayWritePage() {
        const std::string& page = options_.html;
        const std::string_view beginning = platen::auditHtmlBeginning();
        const bool isTaken = !page.empty() && page != files::standardStream &&
                             ut::fileExists(ut::decodePath(page)) &&
                             files::beginningOf(page, beginning.size()) != beginning;
        if (isTaken) {
            fail(console_, page, "the file is there and is no page of an audit; choose another");
        }
        return !isTaken;
    }

    bool readSettings(platen::AuditSettings& settings) {
        settings.reading = platen::readingUpTo(options_.maxBody);
        settings.dotsPerInch = options_.dotsPerInch;
        if (!options_.used.empty() &&
            !files::readNames(options_.used, settings.usedTables.emplace(), console_)) {
            return false;
        }
        if (!options_.printers.empty()) {
            return files::readNames(options_.printers, settings.printers.emplace(), console_) &&
                   readStandards(settings);
        }
        if (printers::printersFault().empty()) {
            settings.printers = printers::printerNames();
        }
        return readStandards(settings);
    }

    /// What cannot be read would look as if nothing deviated from it.
    bool readStandards(platen::AuditSettings& settings) {
        if (options_.standard.empty()) {
            return true;
        }
        settings.oneStandard = !ut::folderExists(ut::decodePath(options_.standard));
        const files::Selected selected =
            files::select({.named = {options_.standard}, .recursive = true}, console_);
        bool done = selected.code == ExitCode::Ok;
        for (const std::string& file : selected.files) {
            const std::wstring path = ut::decodePath(file);
            PiaInput input;
            if (!input.open(path.c_str(), settings.reading)) {
                done = fail(console_, file, input.report()) == ExitCode::Ok;
            }
            settings.standards.push_back(path);
        }
        return done;
    }

    /// Folders may be named twice, and stand in each other.
    Audited findFiles() {
        Audited audited;
        audited.selected.isBatch = true;
        std::set<std::wstring> known;
        const std::vector<std::string>& folders = options_.selection.named;
        for (std::size_t folder = 0; folder < folders.size(); ++folder) {
            files::Selected found =
                files::select({.named = {folders[folder]}, .recursive = true}, console_);
            audited.selected.code = worse(audited.selected.code, found.code);
            for (std::string& file : found.files) {
                if (known.insert(ut::FileName(ut::decodePath(file)).getFullPath()).second) {
                    audited.selected.files.push_back(std::move(file));
                    audited.folders.push_back(folder);
                }
            }
        }
        return audited;
    }

    ExitCode readFiles(const Audited& audited, platen::FolderAudit& audit) {
        const std::vector<std::string>& files = audited.selected.files;
        std::map<std::string_view, std::size_t> places;
        for (std::size_t place = 0; place < files.size(); ++place) {
            places.emplace(files[place], place);
        }
        // Each is written by one thread.
        std::vector<platen::AuditRecord> records(files.size());
        const ExitCode worst = files::forEachFile(
            audited.selected, {.doing = "auditing", .jobs = options_.selection.jobs}, console_,
            [&](const std::string& file, const Console&) {
                const std::size_t place = places.at(file);
                records[place] = audit.read(ut::decodePath(file), audited.folders[place]);
                return ExitCode::Ok;
            });
        for (platen::AuditRecord& record : records) {
            audit.add(std::move(record));
        }
        return worst;
    }

    ExitCode report(const platen::AuditResult& result) {
        if (options_.json) {
            console_.out << platen::auditJson(result) << '\n';
        } else if (options_.html.empty()) {
            words::printFindings(result, console_);
        }
        if (!options_.html.empty() && !writePage(result)) {
            return ExitCode::Error;
        }
        if (!options_.json && options_.html != files::standardStream) {
            words::printSummary(result, console_);
        }
        return result.findings.empty() ? ExitCode::Ok : ExitCode::Difference;
    }

    bool writePage(const platen::AuditResult& result) {
        const std::string page = platen::auditHtml(result, words::shellOfThisSystem(), today());
        if (options_.html == files::standardStream) {
            writeData(console_, page);
            return true;
        }
        const std::string_view pieces[] = {page};
        if (const ut::SystemError error = ut::replaceFile(ut::decodePath(options_.html), pieces)) {
            fail(console_, options_.html, error.message());
            return false;
        }
        if (!options_.json) {
            console_.out << "wrote " << printable(options_.html) << '\n';
        }
        return true;
    }

    const AuditOptions& options_;
    const Console& console_;
};

/// Says what is wrong with folders of plotter files as a whole.
ExitCode run(const AuditOptions& options, const Console& console) {
    return Audit(options, console).run();
}

void addCodes(CLI::App* command, const char* name, std::vector<std::string>& codes,
              const char* purpose) {
    command->add_option(name, codes, purpose)
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(arguments::oneOf(codeWords()).description(""))
        ->type_name("CODE,...");
}

}  // namespace

CommandEntry addAudit(CLI::App& program) {
    CLI::App* command = arguments::addCommand(
        program, "audit", "Say what is wrong with folders of plotter files as a whole", help);
    const auto options = std::make_shared<AuditOptions>();
    arguments::takeText(command->add_option("DIR", options->selection.named,
                                            "Folders, in the order of the search path"))
        ->required();
    arguments::takeText(command->add_option("--standard", options->standard,
                                            "What files are to agree with: a folder, each with the "
                                            "file of its name; a file, all of its kind"))
        ->type_name("DIR|FILE");
    arguments::takeText(command->add_option("--used", options->used,
                                            "Names of the tables that drawings use; -: from "
                                            "standard input"))
        ->type_name("FILE");
    arguments::takeText(command->add_option("--printers", options->printers,
                                            "Names of the printers that there are; -: from "
                                            "standard input"))
        ->type_name("FILE");
    command->add_option("--dpi", options->dotsPerInch, "Dots per inch of the device (600)")
        ->type_name("N")
        ->check(CLI::Range(1.0, 100000.0));
    addCodes(command, "--only", options->only, "Findings to report, all when left out");
    addCodes(command, "--ignore", options->ignored, "Findings to leave out");
    command->add_flag("--json", options->json, "Print one JSON object");
    arguments::takeText(
        command->add_option("--html", options->html, "Write one page to mail and to print"))
        ->type_name("FILE");
    files::addJobs(command, options->selection);
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands
