#include "tools/platen/console/console.h"

#include <algorithm>
#include <cstddef>

#include <platen/pia.h>
#include "tools/platen/console/remedies.h"

namespace cli::console {
namespace {

/// More warnings of one file than this help nobody who reads them one by one.
constexpr std::size_t warningsShown = 20;

void message(const Console& console, std::string_view file, std::string_view text) {
    console.err << "platen: ";
    if (!file.empty()) {
        console.err << printable(file) << ": ";
    }
    console.err << printable(text) << '\n';
}

std::string withRemedy(const PiaFinding& finding) {
    return finding.describe() + "; " + remedyOf(finding.code);
}

}  // namespace

void writeData(const Console& console, std::string_view text) {
    if (console.terminal) {
        console.out << printable(text, true);
    } else {
        console.out << text;
    }
}

ExitCode fail(const Console& console, std::string_view file, std::string_view reason) {
    message(console, file, reason);
    return ExitCode::Error;
}

ExitCode fail(const Console& console, std::string_view file, const PiaReport& report) {
    return fail(console, file, report.failure() ? withRemedy(*report.failure()) : "failed");
}

ExitCode warn(const Console& console, std::string_view file, std::string_view reason) {
    message(console, file, "warning: " + std::string(reason));
    return ExitCode::Warnings;
}

ExitCode warn(const Console& console, std::string_view file, const PiaReport& report) {
    const std::size_t shown = std::min(report.warnings().size(), warningsShown);
    for (std::size_t index = 0; index < shown; ++index) {
        warn(console, file, withRemedy(report.warnings()[index]));
    }
    if (report.warningCount() > shown) {
        warn(console, file, std::to_string(report.warningCount() - shown) + " more warnings");
    }
    return report.warningCount() == 0 ? ExitCode::Ok : ExitCode::Warnings;
}

}  // namespace cli::console
