#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <optional>
#include <utility>

#include <platen/house_move.h>
#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/utcore.h>
#include "edit/refusal.h"

namespace platen {
namespace {

using Kind = MoveLoss::Kind;

constexpr PiaKey printerKey = L"win_device_name";
constexpr PiaKey friendlyKey = L"friendly_net_name";
constexpr PiaKey shortKey = L"short_net_name";
constexpr PiaKey driverKey = L"win_driver_name";
constexpr PiaKey parametersKey = L"user_defined_model_pathname";
constexpr std::initializer_list<PiaKey> printerKeys{printerKey, friendlyKey, shortKey};

struct KindEntry {
    const char* word;
    bool staysInFile;
};

constexpr std::array<KindEntry, 8> kinds{{
    {"driver-settings", true},
    {"misfit", true},
    {"driver", false},
    {"printer-spelling", false},
    {"printers-joined", false},
    {"parameters-name", false},
    {"parameters-outside", false},
    {"parameters-missing", true},
}};

/// In quotes, printable.
std::string shown(std::wstring_view text) { return ut::printable(quoted(text)); }

/// Of the driver's own settings in the device mode.
int driverBytes(const CPlotCfg3& config) {
    int length = 0;
    std::wstring digits;
    if (config.custom && !config.custom->get(length, L"dmDriverExtra") &&
        config.custom->getBin(digits, L"RawPrivateDeviceData")) {
        length = static_cast<int>(digits.size() / 2);
    }
    return length;
}

/// The block "meta" of one document on its way.
class Mover {
public:
    Mover(PiaBlock& meta, const DocumentMove& move, MovedDocument& moved)
        : meta_(meta), move_(move), moved_(moved) {}

    void movePrinter(const CPlotCfg3* config) {
        if (move_.printers == nullptr) {
            return;
        }
        const std::wstring printer = valueOf(printerKey);
        moved_.printer = printer.empty() ? nullptr : move_.printers->find(printer);
        if (moved_.printer == nullptr) {
            noteStaying(printer);
            return;
        }
        noteWayBack(*moved_.printer);
        for (const PiaKey key : printerKeys) {
            if (ut::equalNoCase(valueOf(key), moved_.printer->from)) {
                change(key, moved_.printer->to);
            }
        }
        if (config != nullptr) {
            moveDriver(*config);
        }
    }

    void moveParameters(bool isParameters) {
        const std::wstring name = valueOf(parametersKey);
        // A PMP may still have the name of another one, which nobody looks at.
        const bool itsOwn =
            !isParameters ||
            ut::equalNoCase(ut::fileNameOf(name), ut::fileNameOf(move_.parametersBefore));
        const bool leadsThere = move_.bareNameIsEnough && name == ut::fileNameOf(move_.parameters);
        if (name.empty() || move_.parameters.empty() || !itsOwn || leadsThere) {
            return;
        }
        change(parametersKey, move_.parameters);
        if (!move_.parametersComeBack) {
            lose(Kind::ParametersOutside, "the PMP lay at " + shown(move_.parametersBefore) +
                                              ", outside the folder; a move back leaves it inside");
        } else if (name != move_.parametersBefore) {
            lose(Kind::ParametersName,
                 "the PMP was named " + shown(name) + "; a move back names it by its full path");
        }
    }

private:
    std::wstring valueOf(PiaKey key) const {
        const auto* item = static_cast<const PiaStr*>(meta_.findItem(key.text(), PiaItemType::Str));
        return item == nullptr ? std::wstring() : item->value.str();
    }

    void change(PiaKey key, const std::wstring& value) {
        const std::wstring before = valueOf(key);
        if (before != value) {
            moved_.changes.push_back({std::wstring(key.text()), before, value});
        }
    }

    void lose(Kind kind, std::string text) { moved_.losses.push_back({kind, std::move(text)}); }

    /// A printer that stays and is what another becomes.
    void noteStaying(const std::wstring& printer) {
        const std::vector<PrinterMove>& moves = move_.printers->moves();
        if (!printer.empty() && std::ranges::any_of(moves, [&](const PrinterMove& move) {
                return ut::equalNoCase(move.to, printer);
            })) {
            lose(Kind::PrintersJoined,
                 shown(printer) + " stays, and others become it; a move back takes it along");
        }
    }

    void noteWayBack(const PrinterMove& move) {
        const auto sameTarget = [&](const PrinterMove& other) {
            return ut::equalNoCase(other.to, move.to);
        };
        std::wstring spelled;
        bool joined = std::ranges::count_if(move_.printers->moves(), sameTarget) > 1;
        for (const PiaKey key : printerKeys) {
            const std::wstring value = valueOf(key);
            if (ut::equalNoCase(value, move.from)) {
                spelled = value != move.from ? value : spelled;
            } else {
                joined = joined || ut::equalNoCase(value, move.to);
            }
        }
        if (joined) {
            lose(Kind::PrintersJoined, "several printers become " + shown(move.to) +
                                           "; a move back cannot tell them apart");
        }
        if (!spelled.empty()) {
            lose(Kind::PrinterSpelling, "the printer was spelled " + shown(spelled) +
                                            "; a move back spells it " + shown(move.from));
        }
    }

    void moveDriver(const CPlotCfg3& config) {
        const std::wstring old = valueOf(driverKey);
        const InstalledPrinter* printer = nullptr;
        if (move_.asked != nullptr) {
            const auto asked = move_.asked->find(moved_.printer->to);
            printer = asked == move_.asked->end() ? nullptr : &asked->second;
        }
        if (printer == nullptr) {
            if (const int bytes = driverBytes(config); bytes > 0) {
                lose(Kind::DriverSettings,
                     std::to_string(bytes) + " bytes of settings are known to the driver " +
                         shown(old) + " alone; they stay, and no other driver reads them");
            }
            return;
        }
        for (const std::string& reason : misfits(config, *printer)) {
            lose(Kind::Misfit, reason);
        }
        if (!printer->driver.empty() && printer->driver != old) {
            change(driverKey, printer->driver);
            lose(Kind::Driver, "the driver was " + shown(old) +
                                   "; a move back names it only where its printer can be asked");
        }
    }

    const PiaBlock& meta_;
    const DocumentMove& move_;
    MovedDocument& moved_;
};

/// Which of the new values a file of this form cannot hold.
const std::wstring* unspeakable(const MovedDocument& moved, FileForm form) {
    for (const MovedDocument::Change& change : moved.changes) {
        std::string unused;
        if (form != FileForm::Json && ut::convertToAnsi(change.after, unused) != 0) {
            return &change.after;
        }
    }
    return nullptr;
}

}  // namespace

const char* lossWord(MoveLoss::Kind kind) { return kinds[static_cast<std::size_t>(kind)].word; }
bool staysInFile(MoveLoss::Kind kind) { return kinds[static_cast<std::size_t>(kind)].staysInFile; }

EditResult moveDocument(SourceFile& source, const DocumentMove& move, MovedDocument& moved) {
    moved = {};
    auto* meta =
        static_cast<PiaBlock*>(source.input().root()->findItem(L"meta", PiaItemType::Block));
    if (meta == nullptr) {
        return {};
    }
    const FileKind kind = recognise(source.input()).kind;
    std::unique_ptr<CPlotCfg3> config;
    if (kind == FileKind::Pc3) {
        bool printerChanged = false;
        config = CPlotCfg3::fromInput(source.input(), printerChanged);
    }
    Mover mover(*meta, move, moved);
    mover.movePrinter(config.get());
    mover.moveParameters(kind == FileKind::Pmp);
    if (const std::wstring* value = unspeakable(moved, source.form()); value != nullptr) {
        return refuse(EditFault::ValueInvalid,
                      "nothing was written: the code page of the file has no such characters as " +
                          shown(*value),
                      *value);
    }
    for (const MovedDocument::Change& change : moved.changes) {
        auto* item = static_cast<PiaStr*>(meta->findItem(change.key, PiaItemType::Str));
        if (item != nullptr) {
            item->value = change.after;
        } else if (!meta->addString(change.key, change.after)) {
            return refuse(EditFault::NameTaken, "nothing was written: the driver cannot be named");
        }
    }
    return {};
}

std::wstring copyNameFor(const std::wstring& file) {
    std::wstring name = file + L".bak";
    for (int number = 1; ut::fileExists(name) || ut::folderExists(name); ++number) {
        name = file + L'.' + std::to_wstring(number) + L".bak";
    }
    return name;
}

}  // namespace platen
