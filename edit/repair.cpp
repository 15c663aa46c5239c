#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include <platen/edit_repair.h>
#include <platen/inspect.h>
#include <platen/utcore.h>
#include "edit/repair_body.h"
#include "edit/repair_container.h"
#include "edit/repair_documents.h"
#include "edit/repair_json.h"
#include "edit/repair_lines.h"
#include "edit/repair_notes.h"
#include "edit/repair_tree.h"
#include "pia/body_lines.h"

namespace platen {
namespace {

std::wstring letters(PiaKind kind) {
    const std::string_view text = headerLetters(kind);
    return {text.begin(), text.end()};
}

/// A line that whoever wrote it may have cut without saying so.
bool hasFullLine(std::string_view body) {
    for (std::size_t begin = 0; begin < body.size();) {
        const std::size_t end = std::min(body.find('\n', begin), body.size());
        const std::string_view line = body.substr(begin, end - begin);
        if (line.size() == PiaBodyLines::readSize && line.find('=') != std::string_view::npos) {
            return true;
        }
        begin = end + 1;
    }
    return false;
}

bool hasBlock(const PiaBlock& root, std::wstring_view name) {
    return root.findItem(name, PiaItemType::Block) != nullptr;
}

class Repair {
public:
    Repair(std::string_view bytes, const RepairSettings& settings)
        : bytes_(bytes),
          settings_(settings),
          reading_{.limits = settings.limits},
          notes_(settings.most) {}

    RepairResult run() {
        const char* reason = "";
        std::optional<RecoveredBody> body = recoverBody(bytes_, settings_.limits, notes_, reason);
        if (!body) {
            return settings_.safeOnly ? unchanged() : unusable(reason);
        }
        if (settings_.safeOnly && !notes_.allSafe()) {
            return unchanged();
        }
        body_ = std::move(*body);
        // Body text alone is no plotter file yet, and a kind that is not known is a guess.
        if (settings_.safeOnly && (body_.form == FileForm::BodyText ||
                                   (body_.form == FileForm::Compressed && !body_.kind))) {
            return unchanged();
        }
        result_.form = body_.form;
        isNew_ = !notes_.empty();
        notes_.moveTo(result_);
        if (!readTree()) {
            return settings_.safeOnly ? finish() : unusable("none of its text can be read");
        }
        if (!settings_.safeOnly) {
            if (const char* fault = mendDocument()) {
                return unusable(fault);
            }
        }
        return finish();
    }

private:
    using Outcome = RepairResult::Outcome;

    PiaBlock& root() { return *input_.root(); }
    const SalvagedBody* source() const { return salvaged_ ? &*salvaged_ : nullptr; }

    bool open(std::string_view text) {
        return body_.form == FileForm::Json ? input_.openBytes(text, reading_)
                                            : input_.openBody(text, reading_);
    }

    /// Reads the text, which is salvaged first when it is damaged.
    bool readTree() {
        if (body_.form == FileForm::Json) {
            return readJson();
        }
        const bool isRead = open(body_.text);
        const bool isSound = isRead && input_.report().warningCount() == 0 &&
                             documentState(input_).fault.empty() &&
                             !repair_lines::TextEncoding(body_.text).hasFaults() &&
                             (settings_.safeOnly || !hasFullLine(body_.text));
        if (isSound && !body_.torn) {
            return true;
        }
        salvaged_ = salvageBody(body_.text, body_.torn, settings_.limits, notes_);
        if (!open(salvaged_->text)) {
            return false;
        }
        if (!salvaged_->duplicates.empty()) {
            TreeRepair(source(), notes_).resolveDuplicates(root());
            treeChanged_ = true;
        }
        if (settings_.safeOnly && !notes_.allSafe()) {
            // What was read is not what the file says.
            notes_ = RepairNotes(settings_.most);
            salvaged_.reset();
            treeChanged_ = false;
            return open(body_.text);
        }
        isNew_ = isNew_ || !notes_.empty();
        notes_.moveTo(result_);
        return true;
    }

    bool readJson() {
        const std::string text = salvageJson(body_.text, reading_, notes_);
        const bool isWhole = notes_.empty();
        if (settings_.safeOnly && !isWhole) {
            notes_ = RepairNotes(settings_.most);
            return false;
        }
        // The cut text is written anew, in the layout of the writer.
        treeChanged_ = !isWhole;
        isNew_ = isNew_ || !isWhole;
        notes_.moveTo(result_);
        return open(text);
    }

    /// What the header is to say, by the file's name or by what is in the file.
    PiaKind kindOfContent() {
        if (!hasBlock(root(), L"plot_style")) {
            return PiaKind::Pc3;
        }
        const bool hasColours = hasBlock(root(), L"aci_table");
        return ut::hasExtension(settings_.file, L"ctb") ||
                       (hasColours && !ut::hasExtension(settings_.file, L"stb") &&
                        static_cast<const PiaBlock*>(
                            root().findItem(L"plot_style", PiaItemType::Block))
                                ->items.size() >= CAciTable::count)
                   ? PiaKind::Ctb
                   : PiaKind::Stb;
    }

    /// Null, or why nothing is usable.
    const char* mendDocument() {
        TreeRepair repair(source(), notes_);
        for (const wchar_t* name : {L"plot_style", L"meta"}) {
            repair.mendNameOf(root(), name, {});
        }
        if (!body_.kind) {
            body_.kind = kindOfContent();
            if (body_.form == FileForm::Compressed) {
                notes_.assume({.code = RepairCode::KindByContent, .taken = letters(*body_.kind)});
            }
        }
        const char* fault = mendByKind(repair);
        dropUnreadable(repair);
        const bool changed = !notes_.empty();
        treeChanged_ = treeChanged_ || changed;
        isNew_ = isNew_ || changed;
        notes_.moveTo(result_);
        if (fault == nullptr && isNew_ && root().items.empty()) {
            return "no item of it can be read";
        }
        if (fault == nullptr && body_.form == FileForm::BodyText &&
            recognise(input_).kind == FileKind::Pia) {
            return "it holds no document";
        }
        return fault;
    }

    const char* mendByKind(TreeRepair& repair) {
        const bool isTable = hasBlock(root(), L"plot_style") ||
                             (body_.kind != PiaKind::Pc3 && !hasBlock(root(), L"meta"));
        if (isTable) {
            return root().items.empty() || mendTable(root(), *body_.kind, repair) ||
                           !isPartOfTable()
                       ? nullptr
                       : "no style of the table can be read";
        }
        const bool isPmp = hasBlock(root(), L"mod") || hasBlock(root(), L"udm");
        const bool isConfiguration = hasBlock(root(), L"media") || hasBlock(root(), L"io") ||
                                     hasBlock(root(), L"res_color_mem");
        if (!hasBlock(root(), L"meta")) {
            return isPmp || isConfiguration ? "the block that names the device is gone" : nullptr;
        }
        if (isPmp || (!isConfiguration && ut::hasExtension(settings_.file, L"pmp"))) {
            mendParameters(root(), repair);
        } else if (isConfiguration || ut::hasExtension(settings_.file, L"pc3")) {
            mendConfiguration(root(), repair);
            mendPmpName(root(), settings_.file, repair);
        }
        return nullptr;
    }

    bool isPartOfTable() {
        return hasBlock(root(), L"plot_style") || hasBlock(root(), L"aci_table") ||
               hasBlock(root(), L"custom_lineweight_table") ||
               root().findItem(L"aci_table_available", PiaItemType::Bool) != nullptr;
    }

    /// Takes out optional numbers that do not convert, for which documents have the usual ones.
    void dropUnreadable(TreeRepair& repair) {
        input_.report().clear();
        const Content content = readContent(input_, {}, reading_);
        std::vector<LostItem> lost;
        if (content.config) {
            lost = lostItems(root(), *content.config, input_.report());
        } else if (content.parameters) {
            lost = lostItems(root(), *content.parameters, input_.report());
        }
        for (const LostItem& item : lost) {
            if (item.reason == LostItem::Reason::Unreadable) {
                const PiaPlace place = piaFindPlace(root(), item.path + L":num");
                if (place.items.size() == 1) {
                    repair.drop(*place.parent, place.items.front(), item.path,
                                RepairCode::ValueDropped);
                }
            }
        }
        input_.report().clear();
    }

    RepairResult finish() {
        if (!isNew_) {
            return unchanged();
        }
        if (!encode()) {
            return unusable("what is left cannot be written");
        }
        notes_.moveTo(result_);
        result_.check = checkOf(result_.bytes);
        result_.kind = result_.check.kind;
        result_.outcome = Outcome::Repaired;
        if (result_.check.verdict != Verdict::Errors) {
            return std::move(result_);
        }
        if (settings_.safeOnly) {
            return unchanged();
        }
        for (const Finding& finding : result_.check.findings) {
            if (finding.severity == Severity::Error) {
                reason_ = "what is left cannot be used: " + finding.PiaFinding::describe();
            }
        }
        return unusable(reason_.c_str());
    }

    /// Makes the bytes of the outcome: with the text as it came, unless its items were changed.
    bool encode() {
        if (treeChanged_) {
            ut::ByteBuffer bytes;
            const WriteResult written =
                encodeFile(root(), body_.form, body_.kind.value_or(PiaKind::Pc3), bytes);
            noteWriting(written.report);
            result_.bytes = bytes.view();
            return static_cast<bool>(written);
        }
        const std::string& text = salvaged_ ? salvaged_->text : body_.text;
        result_.bytes = body_.form == FileForm::Compressed
                            ? containerAround(text, body_.kind.value_or(PiaKind::Pc3))
                            : text;
        return !result_.bytes.empty();
    }

    void noteWriting(const PiaReport& report) {
        for (const PiaFinding& finding : report.warnings()) {
            if (finding.code == PiaCode::CharacterLost) {
                std::string ansi;
                static_cast<void>(ut::convertToAnsi(finding.found, ansi));
                notes_.assume({.code = RepairCode::CharacterReplaced,
                               .path = finding.path,
                               .found = finding.found,
                               .taken = ut::decodeAnsi(ansi)});
            } else if (finding.code == PiaCode::LineCut) {
                notes_.assume({.code = RepairCode::LineTooLong,
                               .path = finding.path,
                               .found = finding.found});
            }
        }
    }

    CheckResult checkOf(std::string_view bytes) const {
        const CheckSettings settings{.reading = reading_};
        PiaInput input;
        if (body_.form == FileForm::BodyText) {
            static_cast<void>(input.openBody(bytes, reading_));
        } else {
            static_cast<void>(input.openBytes(bytes, reading_));
        }
        return checkInput(input, settings_.file, settings);
    }

    RepairResult unchanged() {
        RepairResult same;
        same.form = body_.form;
        same.check = settings_.safeOnly ? checkBytes(bytes_, settings_.file, {.reading = reading_})
                                        : checkOf(bytes_);
        same.kind = same.check.kind;
        if (same.check.verdict == Verdict::Errors && !settings_.safeOnly) {
            return unusable("it cannot be used, and nothing in it can be mended");
        }
        same.outcome = Outcome::Unchanged;
        same.bytes = bytes_;
        return same;
    }

    RepairResult unusable(const char* reason) {
        notes_.moveTo(result_);
        result_.outcome = Outcome::Unusable;
        result_.bytes.clear();
        result_.reason = reason;
        return std::move(result_);
    }

    std::string_view bytes_;
    const RepairSettings& settings_;
    const PiaReadOptions reading_;
    RepairNotes notes_;
    RepairResult result_;
    RecoveredBody body_;
    PiaInput input_;
    std::optional<SalvagedBody> salvaged_;
    /// The items are others than those in the text.
    bool treeChanged_ = false;
    /// The outcome is another file than the one that came.
    bool isNew_ = false;
    std::string reason_;
};

}  // namespace

RepairResult repair(std::string_view bytes, const RepairSettings& settings) {
    return Repair(bytes, settings).run();
}

}  // namespace platen
