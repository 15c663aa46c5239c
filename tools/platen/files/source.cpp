#include "tools/platen/files/source.h"

#include <platen/utcore.h>
#include "tools/platen/files/output.h"

namespace cli::files {

bool readSource(const std::string& file, platen::SourceFile& source, const Console& console,
                const PiaReadOptions& options) {
    if (source.read(ut::decodePath(file), options)) {
        return true;
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
    return changed ? tell(source.write(ut::decodePath(file)), file, console)
                   : writeBytes(source.bytes(), file, console);
}

}  // namespace cli::files
