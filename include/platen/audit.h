/// What is wrong with a folder of plotter files as a whole, and what would be when a printer, a
/// driver or the machine is replaced. Nothing here changes a file.
///
///     platen::FolderAudit audit({.folders = {L"plotters"}});
///     for (const std::wstring& file : files) {
///         audit.add(audit.read(file, 0));
///     }
///     for (const platen::AuditFinding& finding : audit.finish().findings) {
///         std::cout << platen::describe(finding) << '\n';
///     }
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/platen_api.h>

namespace platen {

/// Everything that an audit can find. Each has a word that stays the same from release to release.
enum class AuditCode {
    Unreadable,         ///< File cannot be opened.
    Damaged,            ///< File is damaged.
    PmpMissing,         ///< PMP missing.
    PmpElsewhere,       ///< PMP in another folder than named.
    PrinterMissing,     ///< Printer missing.
    NameShadowed,       ///< File hidden by another one.
    NameRepeated,       ///< File that is there twice.
    PmpUnused,          ///< PMP that nobody names.
    PaperUnused,        ///< Custom papers that nobody chooses.
    TableUnused,        ///< Table that no drawing names.
    TableMissing,       ///< Table missing.
    PapersAlike,        ///< Papers of one size with several names.
    StandardDeviation,  ///< Deviation from the standard.
    StandardMissing,    ///< File of the standard missing.
    PensAlike,          ///< Pens that look alike on paper.
    PrivateSettings,    ///< Settings that only a driver knows.
    PrivateSize,        ///< Private settings of the wrong length.
    AbsolutePath,       ///< Path of this machine.
    NetworkPrinter,     ///< Printer of a server.
    NameNotAscii,       ///< Names that depend on the code page.
};

/// All codes, in the order in which findings are listed.
PLATEN_API std::span<const AuditCode> auditCodes();
/// The stable word of a code, such as "pmp-missing".
PLATEN_API const char* auditCodeWord(AuditCode code);
/// What is found in general, as a heading: "PMP missing".
PLATEN_API const char* auditCodeTitle(AuditCode code);
/// What to do about it, one or two English sentences without the last full stop.
PLATEN_API const char* auditCodeRemedy(AuditCode code);

/// A line that says more about a finding, UTF-8, without control characters.
struct AuditDetail {
    /// English.
    std::string text{};
    /// The colours (1 to 255) that the line is about.
    std::vector<int> colors{};
};

struct AuditFinding {
    AuditCode code{};
    Severity severity = Severity::Warning;
    /// As they were given: the one that the finding is about, then others that have to do with it.
    /// Empty when there is no such file.
    std::vector<std::wstring> files{};
    /// The folder of the first file, by its place; 0 without a file.
    std::size_t folder = 0;
    /// One English sentence without its full stop, UTF-8, without control characters.
    std::string message{};
    std::vector<AuditDetail> details{};
    /// Further lines, which were only counted.
    std::size_t omitted = 0;
    /// A command that mends it and keeps a copy of what it changes: the program's name and its
    /// arguments. Empty where somebody has to decide first.
    std::vector<std::wstring> command{};
};

/// "FILE: warning [pmp-missing] ...; REMEDY": everything but the details in one line, UTF-8,
/// without control characters.
PLATEN_API std::string describe(const AuditFinding& finding);

/// What could not be looked at for want of something.
struct AuditNote {
    /// What could not be looked at.
    enum class About { Printers, UsedTables };
    About about{};
    /// One English sentence without its full stop, UTF-8, without control characters.
    std::string text{};
};

struct AuditResult {
    /// By folder, then by code, then in the order of the files.
    std::vector<AuditFinding> findings;
    /// Empty when everything was looked at.
    std::vector<AuditNote> notes;
    /// What was audited.
    std::vector<std::wstring> folders;
    /// How many files of each kind, in the order of `FileKind`.
    std::array<std::size_t, 5> kinds{};
    /// How many could not be read.
    std::size_t unreadable = 0;
    /// As the settings had it.
    double dotsPerInch = 0;

    /// Of all kinds, and those that could not be read.
    std::size_t fileCount() const;
};

struct AuditSettings {
    /// How the files are read.
    PiaReadOptions reading{};
    /// The folders that are audited. They are the search path, too: of two files with one name,
    /// programs take the one in the earlier folder.
    std::vector<std::wstring> folders{};
    /// The printers that there are; nothing when that is not known. Names are compared without
    /// regard to case, here and below.
    std::optional<std::vector<std::wstring>> printers{};
    /// The plot style tables that drawings name; nothing when that is not known. Folders in front
    /// of a name do not matter.
    std::optional<std::vector<std::wstring>> usedTables{};
    /// Files that others are to agree with: each file with the one of its name.
    std::vector<std::wstring> standards{};
    /// There is one standard, for all files of its kind, whatever their names.
    bool oneStandard = false;
    /// Dots per inch of the device by which pens look alike.
    double dotsPerInch = 600;
    /// More lines of a finding than this are only counted.
    std::size_t mostDetails = 100;
};

struct AuditData;
struct AuditStandards;

/// What an audit keeps of a file: no document, so that thousands of files take little memory.
class PLATEN_API AuditRecord {
public:
    AuditRecord();
    AuditRecord(AuditRecord&&) noexcept;
    AuditRecord& operator=(AuditRecord&&) noexcept;
    ~AuditRecord();

private:
    friend class FolderAudit;
    std::unique_ptr<AuditData> data_;
};

/// Audits files one after the other. A PMP is looked for where programs look (beside the
/// configuration, then where the setting "PlotCfgPath" says), then in the audited folders.
///
/// Custom papers are alike when their sides differ by at most 0.05 mm (pixels for images) and their
/// names for people differ, unless files keep both apart by their margins. Pens are alike when they
/// are equal but for line weights that become equally many dots, at least one; those that draw with
/// the line weights of objects are like none.
class PLATEN_API FolderAudit {
public:
    /// Looks at the standards, too: one that cannot be read is like none.
    explicit FolderAudit(AuditSettings settings);
    FolderAudit(const FolderAudit&) = delete;
    FolderAudit& operator=(const FolderAudit&) = delete;
    ~FolderAudit();

    /// Reads a file once; `folder` is the place of its folder. May be called from several threads
    /// at once.
    AuditRecord read(const std::wstring& file, std::size_t folder) const;
    /// The same with a file's bytes.
    AuditRecord readBytes(std::string_view bytes, const std::wstring& file,
                          std::size_t folder) const;
    /// Adds a file; those of earlier folders come first. Nothing happens for a record that holds
    /// nothing.
    void add(AuditRecord record);
    /// What was found in the files that were added.
    AuditResult finish() const;

private:
    AuditRecord look(PiaInput& input, bool isOpen, const std::wstring& file,
                     std::size_t folder) const;

    AuditSettings settings_;
    std::unique_ptr<const AuditStandards> standards_;
    std::vector<std::unique_ptr<const AuditData>> records_;
};

/// Keeps the findings with one of the codes `only` (all when there is none) and none of `ignored`,
/// and the notes that have to do with them.
PLATEN_API void keepCodes(AuditResult& result, std::span<const AuditCode> only,
                          std::span<const AuditCode> ignored);

// --- Reports ---

/// One JSON object without a line feed, UTF-8, schema "platen.audit/1".
PLATEN_API std::string auditJson(const AuditResult& result);

/// A shell that command lines are pasted into: one of POSIX, or those of Windows.
enum class Shell { Posix, Windows };
/// The command as it is typed, UTF-8. Empty when an argument has characters that cannot be typed
/// there, or that such a shell would act upon whatever stands around them.
PLATEN_API std::string commandLine(const std::vector<std::wstring>& command, Shell shell);

/// One page that needs no other file, no script and no network, for people to mail and to print:
/// HTML, UTF-8. Whatever comes from files is text in it. `shell` is what commands are for; `date`
/// stands on the page unless it is empty, UTF-8.
PLATEN_API std::string auditHtml(const AuditResult& result, Shell shell, std::string_view date);
/// How each such page begins, so that a program knows its own.
PLATEN_API std::string_view auditHtmlBeginning();

}  // namespace platen
