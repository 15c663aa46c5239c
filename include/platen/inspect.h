/// What plotter files are, and what can be known about them: recognising, checking, explaining, and
/// what a document leaves behind of its file. Nothing here changes a file.
///
///     const platen::CheckResult result = platen::check(L"plan.pc3");
///     for (const platen::Finding& finding : result.findings) {
///         std::cout << platen::describe(finding) << '\n';
///     }
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platen/pia.h>
#include <platen/platen_api.h>
#include <platen/plotcfg.h>
#include <platen/plotstyle.h>
#include <platen/pmp.h>

namespace platen {

// --- What a file is ---

/// What a file holds, by its content and never by its name.
enum class FileKind {
    /// Colour-dependent plot style table.
    Ctb,
    /// Named plot style table.
    Stb,
    /// Plot configuration.
    Pc3,
    /// Plot model parameters.
    Pmp,
    /// A sound container of something else.
    Pia,
};

/// "ctb", "stb", "pc3", "pmp" or "pia".
PLATEN_API const char* kindWord(FileKind kind);
/// "colour-dependent plot style table" ...
PLATEN_API const char* kindName(FileKind kind);
/// "CTB", "STB" or "PC3".
PLATEN_API const char* headerLetters(PiaKind kind);

/// The document in a file. A member is null when the file holds none of its kind or when it is
/// rejected.
struct Content {
    FileKind kind = FileKind::Pia;
    /// Set for "ctb" and "stb".
    std::unique_ptr<CPlotStyleTable> table;
    /// Holds the PMP that it names, when that can be read. Its meta node is as in the file.
    std::unique_ptr<CPlotCfg3> config;
    /// Set for "pmp".
    std::unique_ptr<PlotModelParam> parameters;
    /// Where the PMP that the configuration names was found; empty when it was not.
    std::wstring pmpPath;
    /// What came of looking for it and reading it.
    PiaReport pmpReport;
    /// The tree has the marks of a document that the library reads, but the library refused it;
    /// the input's report says why.
    bool rejected = false;
};

/// Looks at the tree of an open input and reads its table. Other documents are told by their
/// blocks.
PLATEN_API Content recognise(PiaInput& input);
/// The same, and reads configurations and parameters. `file` is where the input is from: a
/// configuration's PMP is looked for there, too, and read with the same options; for an empty one
/// no PMP is looked for. No printer is asked for anything but by the registered `PrinterSystem`.
PLATEN_API Content readContent(PiaInput& input, const std::wstring& file,
                               const PiaReadOptions& options = {});

/// True when each of the 255 colours has the style of its own place in the list.
PLATEN_API bool hasStylePerColour(const CPlotStyleTable& table);
/// The colours, 1 to 255 in order, whose entry of the colour index is `style`, one of the table's
/// own.
PLATEN_API std::vector<int> colorsOf(const CPlotStyleTable& table, const CPlotStyle& style);

// --- What is wrong with it ---

/// How bad a finding is.
enum class Severity {
    /// The file can be used, but a careful reader wants to know.
    Warning,
    /// The file cannot be used.
    Error,
};

struct Finding : PiaFinding {
    Severity severity = Severity::Warning;
    /// What to do about it, one English sentence without its full stop: that of the code, unless a
    /// program puts it into its own terms.
    const char* remedy = "";
};

/// "warning [checksum-mismatch] ..., byte 48; ...": everything known in one line, UTF-8, without
/// control characters.
PLATEN_API std::string describe(const Finding& finding);

/// What a check comes to: the worst of its findings.
enum class Verdict {
    /// Nothing was found.
    Sound,
    /// The file can be used.
    Warnings,
    /// The file cannot be used.
    Errors,
};

struct CheckResult {
    /// Empty when the file cannot be opened.
    std::optional<FileKind> kind;
    /// In the order in which they were found.
    std::vector<Finding> findings;
    /// Further ones, which were only counted.
    std::size_t omitted = 0;
    /// Counts the omitted ones, too.
    Verdict verdict = Verdict::Sound;
};

/// What a configuration has to suit.
struct InstalledPrinter {
    /// Empty when the spooler does not say.
    std::wstring driver;
    /// Bytes of its device mode, those of the driver included; 0 when the driver does not say.
    std::int64_t deviceModeBytes = 0;
    /// By the names that the driver gives them.
    std::vector<std::wstring> papers;
};

/// The printers that a configuration is held against. Documents need none.
class PLATEN_API InstalledPrinters {
public:
    InstalledPrinters() = default;
    InstalledPrinters(const InstalledPrinters&) = delete;
    InstalledPrinters& operator=(const InstalledPrinters&) = delete;
    virtual ~InstalledPrinters();

    /// Nothing when there is no such printer, or when it cannot be opened.
    virtual std::optional<InstalledPrinter> ask(const std::wstring& name) const = 0;
    /// Moves the configuration to a printer of its driver when its own is gone; true when it did.
    virtual bool moveByDriver(CPlotCfg3& config) const = 0;
    /// Applies the configuration to its printer as plotting does. A failure of the report says why
    /// that is impossible, warnings which settings do not arrive.
    virtual void apply(const CPlotCfg3& config, PiaReport& report) const = 0;
};

#ifdef _WIN32
/// The printers of this machine, for programs that have started wxWidgets and its print factory;
/// see print.h. In the full library only.
PLATEN_API const InstalledPrinters& installedPrinters();
#endif

struct CheckSettings {
    /// How the file is read, and the PMP that it names.
    PiaReadOptions reading{};
    /// More findings than this are only counted.
    std::size_t mostFindings = 1000;
    /// Asked about the printer of a configuration, if not null.
    const InstalledPrinters* printers = nullptr;
};

/// Reads a file and finds whatever is wrong: in its container and body, in its document, in what
/// writing it again would lose. A file that cannot be read is a finding, too. Findings about the
/// body of a version-2 file have their line.
PLATEN_API CheckResult check(const std::wstring& file, const CheckSettings& settings = {});
/// The same with a file's bytes. `file` is where they are from, as for `readContent`.
PLATEN_API CheckResult checkBytes(std::string_view bytes, const std::wstring& file = {},
                                  const CheckSettings& settings = {});
/// The same with an input that `open` was called for, whether it succeeded or not. Documents note
/// in its report why they reject the tree.
PLATEN_API CheckResult checkInput(PiaInput& input, const std::wstring& file = {},
                                  const CheckSettings& settings = {});

/// What of a configuration a printer will not take: English sentences without their full stops,
/// UTF-8; none when the printer suits.
PLATEN_API std::vector<std::string> misfits(const CPlotCfg3& config,
                                            const InstalledPrinter& printer);

// --- What it says, for programs ---

/// One JSON object without a line feed, UTF-8, schema "platen.info/1": the container and every key
/// of the document. `file` is named in it.
PLATEN_API std::string infoJson(const std::string& file, const PiaContainer& container,
                                const Content& content);
/// The same for the findings of a check, schema "platen.check/1".
PLATEN_API std::string checkJson(const std::string& file, const CheckResult& result);

// --- What becomes of it ---

/// An item of a file that its document leaves behind.
struct LostItem {
    /// Why it is left behind.
    enum class Reason {
        /// The document has no such key, or the key has another type.
        NotCarried,
        /// An optional number that does not convert; the document has its usual value.
        Unreadable,
    };
    Reason reason = Reason::NotCarried;
    /// Names from the root, joined by "/".
    std::wstring path;
    /// The text of an unreadable number.
    std::wstring found;
    /// See `PiaItem::line`: another item may have the same path.
    std::uint32_t line = 0;
};

/// At most this many are listed.
inline constexpr std::size_t mostLostItems = 1000;

/// What a document leaves behind of the tree that it was read from, in the order of the file. A
/// block is listed without its content, and not at all when `report`, the reader's, says that it
/// was dropped. Entries of lists are told by their place, custom properties by their name, since
/// their blocks may be named anyhow.
PLATEN_API std::vector<LostItem> lostItems(const PiaBlock& root, const CPlotCfg3& document,
                                           const PiaReport& report);
/// The same for plot model parameters.
PLATEN_API std::vector<LostItem> lostItems(const PiaBlock& root, const PlotModelParam& document,
                                           const PiaReport& report);

/// At most this many paths are listed.
inline constexpr std::size_t mostDroppedItems = 1000;

/// What a file loses when another document is written over it: the paths of the items of `before`
/// that `after` has not, by name and type. A block that is not there is listed without its content.
/// The properties of the top block "custom" are compared by their names and types, whatever their
/// numbers, and listed with their names.
PLATEN_API std::vector<std::wstring> droppedItems(const PiaBlock& before, const PiaBlock& after);

/// Whether a tree is a document.
struct DocumentState {
    /// What the tree has the marks of.
    FileKind kind = FileKind::Pia;
    /// Why the library refuses the document, UTF-8; empty when it takes it or there is none.
    std::string fault;
};

/// Reads the document in the tree. The input's report is left empty.
PLATEN_API DocumentState documentState(PiaInput& input);

/// What became unreadable on the way from `before` to `after`, UTF-8; empty when nothing did.
PLATEN_API std::string lostDocument(const DocumentState& before, const DocumentState& after);

}  // namespace platen
