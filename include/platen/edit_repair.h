/// Saving what can be saved of a damaged plotter file.
///
///     const platen::RepairResult result = platen::repair(bytes);
///     if (result) {
///         write(result.bytes);  // reads back, and a check finds no error
///     }
///     for (const platen::Assumption& assumption : result.assumptions) {
///         std::cout << platen::describe(assumption) << '\n';
///     }
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platen/edit_files.h>
#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/platen_api.h>

namespace platen {

/// Everything that a repair may take for granted. Each has a word that stays the same from release
/// to release, and a sentence.
enum class RepairCode {
    // The container.
    LineFeedsTranslated,
    ByteCorrected,
    HeaderText,
    HeaderMissing,
    KindByContent,
    KindByFlag,
    StreamMoved,
    StreamHeader,
    StreamTruncated,
    StreamCorrupt,
    StreamUnverified,
    BodyLength,
    CompressedLength,
    Checksum,
    BytesAfterStream,
    // Lines of the body.
    BytesDropped,
    BlankLine,
    LastLineTorn,
    LineInvalid,
    LinesJoined,
    LineTooLong,
    LineFull,
    NameSpaces,
    TextDropped,
    BinaryEnded,
    ClosingBraceAtEnd,
    ClosingBraceMissing,
    ClosingBraceSurplus,
    OpeningBraceMissing,
    BlockHeadMissing,
    TooDeep,
    TooManyItems,
    DuplicateEqual,
    DuplicateDropped,
    EntryRenumbered,
    // JSON bodies.
    JsonCut,
    // Documents.
    KeyDefault,
    ValueDefault,
    KeyMisspelt,
    TypeWrong,
    ItemDropped,
    ValueDropped,
    StyleDefault,
    ColourStyle,
    ColourIndexOff,
    PmpOther,
    PmpDetached,
    CharacterReplaced,
};

/// The stable word of a code, such as "stream-truncated".
PLATEN_API const char* repairCodeWord(RepairCode code);
/// What was taken for granted: one English sentence without its full stop.
PLATEN_API const char* repairCodeMessage(RepairCode code);
/// True when nothing is lost by it and nothing is guessed: what is written says what the file said.
PLATEN_API bool isSafe(RepairCode code);

/// Something that a repair took for granted. Unknown parts are empty.
struct Assumption {
    RepairCode code{};
    /// Byte of the file, for what is in the container.
    std::optional<std::uint64_t> offset{};
    /// Line of the body as it came, from 1.
    std::optional<std::uint64_t> line{};
    /// Names from the root, joined by "/".
    std::wstring path{};
    /// What stood there.
    std::wstring found{};
    /// What stands there now.
    std::wstring taken{};
};

/// Something of the file that is not in the repaired one.
struct Loss {
    /// What is counted.
    enum class Unit { Bytes, Lines, Items };

    /// How much is lost.
    ///@{
    Unit unit = Unit::Lines;
    std::uint64_t count = 1;
    ///@}
    /// As for `Assumption`; that of the first of several lines.
    ///@{
    std::optional<std::uint64_t> offset{};
    std::optional<std::uint64_t> line{};
    std::wstring path{};
    ///@}
    /// The text that is lost, or how it begins.
    std::wstring text{};
};

/// Everything known in one line, UTF-8, without control characters.
///@{
PLATEN_API std::string describe(const Assumption& assumption);
PLATEN_API std::string describe(const Loss& loss);
///@}

struct RepairSettings {
    PiaLimits limits{};
    /// Where the bytes are from: a configuration's PMP is looked for there, and the extension tells
    /// what a file was of which too little is left. May be empty.
    std::wstring file{};
    /// Take only what is safe (`isSafe`), and leave the rest as it is.
    bool safeOnly = false;
    /// More assumptions and losses than this, each, are only counted.
    std::size_t most = 1000;
};

/// What came of a repair. True when there is a file to be written.
struct RepairResult {
    /// How far it came.
    enum class Outcome {
        /// Nothing was to be done; `bytes` are those that came.
        Unchanged,
        Repaired,
        /// Nothing usable is left, and `bytes` is empty; `reason` says why.
        Unusable,
    };

    Outcome outcome = Outcome::Unusable;
    /// The file as it is to be written.
    std::string bytes{};
    /// That of `bytes`.
    FileForm form = FileForm::Compressed;
    /// What the file is; empty when that could not be told.
    std::optional<FileKind> kind{};
    /// From the container to the document, each part in the order of the file.
    std::vector<Assumption> assumptions{};
    /// What of the file is not in `bytes`.
    std::vector<Loss> losses{};
    /// Further ones, which were only counted.
    ///@{
    std::size_t omittedAssumptions = 0;
    std::size_t omittedLosses = 0;
    ///@}
    /// What a check finds in `bytes`: no error, but for `safeOnly`, which may leave some.
    CheckResult check{};
    /// One English sentence without its full stop, UTF-8.
    std::string reason{};

    explicit operator bool() const { return outcome != Outcome::Unusable; }
};

/// Repairs a file of any form and kind. Values of the outcome come from the file, or from the
/// defaults of its document, which are listed. Bare body text is recognised as such.
PLATEN_API RepairResult repair(std::string_view bytes, const RepairSettings& settings = {});

/// One JSON object without a line feed, UTF-8, schema "platen.repair/1". `file` is named in it.
PLATEN_API std::string repairJson(const std::string& file, const RepairResult& result);

}  // namespace platen
