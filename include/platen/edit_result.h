/// Why a change was refused.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platen {

/// What kind of reason it is.
enum class EditFault {
    /// A file cannot be read; the report beside the result says why.
    FileUnreadable,
    /// A file cannot be written, or would not read back; what was written says why.
    FileUnwritable,
    /// The file is no document that keeps what is to be changed.
    WrongKind,
    /// The configuration stands for whichever printer is the default, and keeps no papers.
    StandsForDefaultPrinter,
    /// The PMP that the configuration names cannot be read, and its papers would be lost.
    ParametersMissing,
    /// A file that is not the document's own stands where a new one would go.
    FileOfOthers,
    /// Nothing has the name.
    NotFound,
    /// The same for the block that a new item would be in.
    BlockNotFound,
    /// The same for a new item that does not say its type.
    TypeMissing,
    /// More than one has it.
    Ambiguous,
    NameInvalid,
    NameTaken,
    /// An item keeps its type.
    TypeKept,
    ValueInvalid,
    SizeInvalid,
};

/// Why a change was refused, which then changed nothing.
struct EditRefusal {
    EditFault fault{};
    /// One English sentence without its full stop, UTF-8.
    std::string reason{};
    /// The name or path that the refusal is about.
    std::wstring wanted{};
    /// For names that are not there: those that are. For `Ambiguous`: the names that tell one from
    /// the other.
    std::vector<std::wstring> present{};
};

/// True when the change was made. Otherwise it points to the refusal.
class [[nodiscard]] EditResult {
public:
    /// The change was made.
    EditResult() = default;
    EditResult(EditRefusal refusal) : refusal_(std::move(refusal)) {}  ///< Not made.

    explicit operator bool() const { return !refusal_; }

    /// Why it was not made; only then.
    const EditRefusal& operator*() const { return *refusal_; }
    const EditRefusal* operator->() const { return &*refusal_; }

private:
    std::optional<EditRefusal> refusal_;
};

}  // namespace platen
