/// Moving documents to other printers and to other places, with a list of what a move costs.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <platen/edit_files.h>
#include <platen/edit_result.h>
#include <platen/inspect.h>
#include <platen/platen_api.h>

namespace platen {

struct PrinterMove {
    /// Names of printers: the one before and the one that takes its place.
    ///@{
    std::wstring from{};
    std::wstring to{};
    ///@}
};

/// Which printer takes the place of which. Every document moves once at most, however the names
/// chain.
class PLATEN_API MoveMap {
public:
    /// Refused (`NameInvalid`, `NameTaken`) for what no spooler can name, and for a second move
    /// from a printer.
    EditResult add(const std::wstring& from, const std::wstring& to);
    /// The same from "OLD=NEW", UTF-8; the first equals sign separates.
    EditResult add(std::string_view argument);

    /// The move from a printer, whose name is compared without regard to case, or null.
    const PrinterMove* find(std::wstring_view printer) const;
    /// In the order in which they were added.
    const std::vector<PrinterMove>& moves() const { return moves_; }

private:
    std::vector<PrinterMove> moves_;
};

/// What a move costs.
struct MoveLoss {
    /// What is lost.
    enum class Kind {
        /// Settings that only the old driver reads. They stay in the file.
        DriverSettings,
        /// What the new printer was asked for and will not take. It stays in the file.
        Misfit,
        /// The driver has another name, which the way back brings only when it can ask the printer.
        Driver,
        /// The printer was spelled in another way than in the map.
        PrinterSpelling,
        /// Two printers become one.
        PrintersJoined,
        /// The PMP was not named by the path where it lay.
        ParametersName,
        /// The PMP lay outside the folder that is moved.
        ParametersOutside,
        /// The PMP was not found; the name stays.
        ParametersMissing,
    };
    Kind kind = Kind::Misfit;
    /// One English sentence without its full stop, UTF-8, printable.
    std::string text{};
};

/// "driver-settings" ...
PLATEN_API const char* lossWord(MoveLoss::Kind kind);
/// What stays in the file is a matter of the new place; the rest is what a move back by the swapped
/// map does not bring back.
PLATEN_API bool staysInFile(MoveLoss::Kind kind);

/// Where a document goes.
struct DocumentMove {
    /// Null: no printer changes.
    const MoveMap* printers = nullptr;
    /// Those of the new printers that could be asked, by their names in the map.
    const std::map<std::wstring, InstalledPrinter>* asked = nullptr;
    /// The full path of the PMP that a configuration names, and of the PMP itself, in its new
    /// place; empty: the name stays.
    std::wstring parameters{};
    /// Where that PMP lay.
    std::wstring parametersBefore{};
    /// A move back puts it there again.
    bool parametersComeBack = true;
    /// The name of that file alone leads there, too: documents that name no more keep that.
    bool bareNameIsEnough = false;
};

/// What became of a document.
struct MovedDocument {
    struct Change {
        /// The item in the block "meta".
        std::wstring key{};
        /// Its text.
        ///@{
        std::wstring before{};
        std::wstring after{};
        ///@}
    };
    /// Only of what is different now.
    std::vector<Change> changes{};
    /// What the move costs.
    std::vector<MoveLoss> losses{};
    /// The move from its printer, when there is one.
    const PrinterMove* printer = nullptr;
};

/// Re-writes the names of printer, driver and PMP in the tree of a file, and nothing else: a
/// configuration, a PMP, anything with a block "meta". Refused (`ValueInvalid`) when the form of
/// the file has no such characters; the tree is not to be written then.
PLATEN_API EditResult moveDocument(SourceFile& source, const DocumentMove& move,
                                   MovedDocument& moved);

/// A name beside `file` that ends in ".bak" and that nothing has.
PLATEN_API std::wstring copyNameFor(const std::wstring& file);

}  // namespace platen
