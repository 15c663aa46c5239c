#include "tools/platen/files/output.h"

#include <span>

#include <platen/utcore.h>

namespace cli::files {
namespace {

ExitCode refuse(const std::string& file, std::string_view why, const PiaReport& report,
                const Console& console) {
    const std::string reason = report.failure() ? report.failure()->describe() : "unknown";
    return fail(console, file, std::string(why) + ": " + reason + "; nothing was written");
}

/// Keeps the result when it reads back. `written` has the warnings of the writer; a difference
/// that it did not foresee, such as accented letters whose bytes happen to be UTF-8, is one more.
ExitCode keep(std::string_view bytes, const PiaReport& written, bool readBack, bool same,
              const PiaInput& again, const std::string& file, const Console& console) {
    if (!readBack) {
        warn(console, file, written);
        return refuse(file, "the result could not be read back", again.report(), console);
    }
    const ExitCode stored = writeBytes(bytes, file, console);
    if (stored != ExitCode::Ok) {
        return stored;
    }
    if (!same && written.warningCount() == 0) {
        return warn(console, file, "the file reads back differently from what was to be written");
    }
    return warn(console, file, written);
}

bool sameItems(const PiaBlock& root, const PiaInput& again) {
    return again.root() != nullptr && piaBodyText(root) == piaBodyText(*again.root());
}

}  // namespace

ExitCode writeCompressed(const PiaBlock& root, PiaKind kind, const std::string& file,
                         const Console& console) {
    PiaFileOut writer;
    writer.setKind(kind);
    ut::ByteBuffer bytes;
    if (!writer.encode(root, bytes)) {
        return refuse(file, "the items cannot be written", writer.report(), console);
    }
    PiaInput again;
    const bool readBack = again.openBytes(bytes.view());
    return keep(bytes.view(), writer.report(), readBack, sameItems(root, again), again, file,
                console);
}

ExitCode writeJson(const PiaBlock& root, const std::string& file, const Console& console) {
    PiaReport report;
    std::string text;
    if (!piaWriteJson(root, text, report)) {
        return refuse(file, "the items cannot be written", report, console);
    }
    PiaInput again;
    const bool readBack = again.openBytes(text) && again.container().version == 3;
    // JSON has an order of its own, and its writer knows exactly what it loses.
    constexpr bool same = true;
    return keep(text, report, readBack, same, again, file, console);
}

ExitCode writeBodyText(const PiaBlock& root, const std::string& file, const Console& console) {
    PiaReport report;
    std::string body;
    if (!piaWriteBody(root, body, report)) {
        return refuse(file, "the items cannot be written", report, console);
    }
    PiaInput again;
    const bool readBack = again.openBody(body);
    return keep(body, report, readBack, sameItems(root, again), again, file, console);
}

ExitCode writeBytes(std::string_view bytes, const std::string& file, const Console& console) {
    const std::string_view pieces[] = {bytes};
    const ut::SystemError error = ut::replaceFile(ut::decodePath(file), pieces);
    if (!error) {
        return ExitCode::Ok;
    }
    PiaReport report;
    report.fail({.code = PiaCode::FileUnwritable, .found = ut::decodePath(error.message())});
    return fail(console, file, report);
}

}  // namespace cli::files
