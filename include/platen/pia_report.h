/// What is found while a plotter file is read or written, or its settings go to a printer: why it
/// failed, and what was tolerated.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <platen/platen_api.h>

class PiaBlock;

/// Everything that can be found. Each has a word that stays the same from release to release
/// (`piaCodeWord`), a sentence and a remedy.
enum class PiaCode {
    // The file and its container.
    FileUnreadable,
    FileTooLarge,
    FileTooShort,
    HeaderText,
    BodyLength,
    CompressedLength,
    Checksum,
    StreamTruncated,
    StreamCorrupt,
    BytesAfterStream,
    BodyTooLarge,
    // Body text.
    LineInvalid,
    NameEmpty,
    NameHasSpace,
    BraceBeforeEquals,
    ValueEmpty,
    Duplicate,
    BinUnterminated,
    TooDeep,
    TooManyItems,
    MissingClosingBrace,
    LineSplit,
    TextIgnored,
    NulInLine,
    LineDecodedLeniently,
    // JSON bodies.
    JsonMissing,
    JsonSyntax,
    JsonNoData,
    JsonNumberRange,
    JsonMemberSkipped,
    // Documents.
    KeyMissing,
    ValueInvalid,
    IndexInvalid,
    CountWrong,
    StyleUnknown,
    BlockDropped,
    EntryPartlyRead,
    NameAmbiguous,
    // Writing.
    LineBreakInValue,
    LineCut,
    NotReadBack,
    CharacterLost,
    FileUnwritable,
    FileChanged,
    // Printers.
    PrinterMissing,
    PrintDataUnusable,
    DriverDiffers,
    PrivateDataLeftOut,
    PaperLeftOut,
    SettingLeftOut,
    SettingsRefused,
    PrinterMoved,
    // What a document leaves behind of its file.
    ItemNotCarried,
    ValueNotRead,
    // What a document may hold although it makes no sense.
    StyleNameDuplicate,
    StyleLineWeightRange,
    StyleScreenRange,
    HeaderKind,
    ColourOrder,
    PaperWithoutSize,
    PaperNotDescribed,
    PaperNameDuplicate,
    PaperTooLarge,
    PaperMargins,
    PaperUnits,
    PaperUnknown,
    DefaultPaperUnknown,
    PmpMissing,
    PmpUnreadable,
    BinaryOddLength,
    BinaryNotHex,
    PrivateDataLength,
};

/// The stable word of a code, such as "checksum-mismatch". Codes that mean the same to a reader may
/// share one.
PLATEN_API const char* piaCodeWord(PiaCode code);
/// One English sentence without its full stop.
PLATEN_API const char* piaCodeMessage(PiaCode code);
/// What to do about it, as one English sentence without its full stop.
PLATEN_API const char* piaCodeRemedy(PiaCode code);

/// One finding: what, where, what was expected and what was there. Unknown parts are empty.
struct PLATEN_API PiaFinding {
    /// What was found.
    PiaCode code{};
    /// Byte offset in the file for findings in the container and in JSON bodies, in the
    /// uncompressed body for findings in body text.
    std::optional<std::uint64_t> offset{};
    /// Line of the body text, from 1.
    std::optional<std::uint64_t> line{};
    /// Names from the root, joined by "/".
    std::wstring path{};
    /// In words, or the text as it stands.
    ///@{
    std::wstring expected{};
    std::wstring found{};
    ///@}

    /// Everything known in one line, UTF-8, without control characters.
    std::string describe() const;
};

/// What happened while a file was read or written.
class PLATEN_API PiaReport {
public:
    /// At most this many warnings are kept; the rest is counted.
    static constexpr std::size_t maxWarnings = 1000;

    /// Why it failed; empty when it did not.
    const std::optional<PiaFinding>& failure() const { return failure_; }
    /// In the order in which they were found.
    const std::vector<PiaFinding>& warnings() const { return warnings_; }
    /// The number of warnings, kept or not.
    std::size_t warningCount() const { return warningCount_; }

    /// Notes what was tolerated; beyond `maxWarnings` it is only counted.
    void warn(PiaFinding finding);
    /// Notes why it failed, the first reason winning, and returns false.
    bool fail(PiaFinding finding);
    /// Forgets everything.
    void clear();
    /// Gives the findings that have a path alone the line that it leads to in the tree, or as near
    /// as it leads; see `piaLineOf`.
    void locate(const PiaBlock& root);

private:
    std::optional<PiaFinding> failure_;
    std::vector<PiaFinding> warnings_;
    std::size_t warningCount_ = 0;
};
