#include "tools/platen/files/output.h"

#include <platen/utcore.h>
#include "tools/platen/files/selection.h"

namespace cli::files {

ExitCode tell(const platen::WriteResult& result, const std::string& file, const Console& console) {
    using Stage = platen::WriteResult::Stage;
    if (result) {
        return result.differs ? warn(console, file,
                                     "the file reads back differently from what was to be written")
                              : warn(console, file, result.report);
    }
    if (result.failedAt == Stage::Storing) {
        return fail(console, file, result.report);
    }
    const bool encoded = result.failedAt == Stage::ReadingBack;
    if (encoded) {
        warn(console, file, result.report);
    }
    return fail(
        console, file,
        std::string(encoded ? "the result could not be read back" : "the items cannot be written") +
            ": " + result.report.failure().value_or(PiaFinding{}).describe() +
            "; nothing was written");
}

Console besideData(const std::string& out, const Console& console) {
    std::ostream& said = out == standardStream ? console.err : console.out;
    return {said, console.err, console.in, console.terminal, console.watched};
}

ExitCode writeTree(const PiaBlock& root, platen::FileForm form, PiaKind kind,
                   const std::string& file, const Console& console) {
    if (file != standardStream) {
        return tell(platen::writeFile(root, form, kind, ut::decodePath(file)), file, console);
    }
    ut::ByteBuffer bytes;
    const platen::WriteResult result = platen::encodeFile(root, form, kind, bytes);
    if (result) {
        writeData(console, bytes.view());
    }
    return tell(result, "standard output", console);
}

ExitCode writeBytes(std::string_view bytes, const std::string& file, const Console& console) {
    if (file != standardStream) {
        return tell(platen::writeFileBytes(bytes, ut::decodePath(file)), file, console);
    }
    writeData(console, bytes);
    return ExitCode::Ok;
}

}  // namespace cli::files
