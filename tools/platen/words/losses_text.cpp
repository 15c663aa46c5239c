#include "tools/platen/words/losses_text.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <string_view>
#include <utility>

#include <platen/utcore.h>
#include "tools/platen/words/words.h"

namespace cli::words {

std::string changeInWords(const platen::MovedDocument::Change& change) {
    constexpr std::array<std::pair<std::wstring_view, const char*>, 5> names{
        {{L"win_device_name", "printer"},
         {L"friendly_net_name", "friendly name"},
         {L"short_net_name", "short name"},
         {L"win_driver_name", "driver"},
         {L"user_defined_model_pathname", "PMP"}}};
    const auto found =
        std::ranges::find(names, change.key, [](const auto& name) { return name.first; });
    return (found == names.end() ? text(change.key) : found->second) +
           (' ' + quoted(change.before)) + " -> " + quoted(change.after);
}

std::string restoredInWords(const platen::RestoredFile& restored, bool dryRun) {
    using State = platen::RestoredFile::State;
    if (restored.state == State::AlreadyThere) {
        return "there already";
    }
    const bool isNew = restored.state == State::Written;
    if (dryRun) {
        return isNew ? "would be written" : "would be replaced";
    }
    return isNew ? "written" : "replaced, old file in " + printable(ut::encodePath(restored.copy));
}

ExitCode printLosses(const platen::MovedDocument& moved, const std::string& file, std::ostream& out,
                     const Console& console) {
    using Kind = platen::MoveLoss::Kind;
    ExitCode code = ExitCode::Ok;
    for (const platen::MoveLoss& loss : moved.losses) {
        if (loss.kind == Kind::Misfit || loss.kind == Kind::ParametersMissing) {
            code = warn(console, file, loss.text);
        } else {
            out << (platen::staysInFile(loss.kind) ? "  at risk: " : "  lost: ") << loss.text
                << '\n';
        }
    }
    return code;
}

}  // namespace cli::words
