#include "tools/platen/files/source.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <platen/utcore.h>
#include "tools/platen/files/output.h"
#include "tools/platen/files/selection.h"

namespace cli::files {

namespace {

bool read(const std::string& file, platen::SourceFile& source, const PiaReadOptions& options,
          const Console& console, bool& told) {
    if (file != standardStream) {
        return source.read(ut::decodePath(file), options);
    }
    std::string text;
    told = !readStandardInput(text, options.limits.bodyBytes, console);
    ut::ByteBuffer bytes;
    bytes.reserve(text.size());
    std::ranges::copy(text, bytes.data());
    bytes.setSize(text.size());
    return !told && source.readBytes(std::move(bytes), options);
}

}  // namespace

bool readStandardInput(std::string& bytes, std::uint64_t limit, const Console& console) {
    constexpr std::size_t pieceSize = std::size_t{1} << 16U;
    std::vector<char> piece(pieceSize);
    while (console.in) {
        console.in.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        bytes.append(piece.data(), static_cast<std::size_t>(console.in.gcount()));
        if (bytes.size() > limit) {
            PiaReport report;
            report.fail({.code = PiaCode::FileTooLarge});
            fail(console, "standard input", report);
            return false;
        }
    }
    return true;
}

bool readBytes(const std::string& file, std::string& bytes, std::uint64_t limit,
               const Console& console) {
    if (file == standardStream) {
        return readStandardInput(bytes, limit, console);
    }
    ut::ByteBuffer buffer;
    bool tooLarge = false;
    const ut::SystemError error = ut::readFile(ut::decodePath(file), limit, buffer, tooLarge);
    if (error || tooLarge) {
        PiaReport report;
        report.fail({.code = tooLarge ? PiaCode::FileTooLarge : PiaCode::FileUnreadable,
                     .found = ut::decodePath(error.message())});
        fail(console, file, report);
        return false;
    }
    bytes = buffer.view();
    return true;
}

bool readSource(const std::string& file, platen::SourceFile& source, const Console& console,
                const PiaReadOptions& options) {
    bool told = false;
    if (read(file, source, options, console, told)) {
        return true;
    }
    if (told) {
        return false;
    }
    const PiaReport& report = source.input().report();
    if (source.form() == platen::FileForm::BodyText) {
        fail(console, file,
             "neither a compressed plotter file nor JSON, and no body text either: " +
                 report.failure().value_or(PiaFinding{}).describe());
    } else {
        fail(console, file, report);
    }
    return false;
}

ExitCode writeSource(platen::SourceFile& source, bool changed, const std::string& file,
                     const Console& console) {
    if (!changed || file != standardStream) {
        return changed ? tell(source.write(ut::decodePath(file)), file, console)
                       : writeBytes(source.bytes(), file, console);
    }
    return writeTree(*source.input().root(), source.form(), source.headerKind(), file, console);
}

}  // namespace cli::files
