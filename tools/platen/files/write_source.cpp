#include "tools/platen/files/write_source.h"

#include <platen/inspect.h>
#include "tools/platen/files/output.h"

namespace cli::files {
namespace {

/// A file whose header names no kind gets the kind of what it holds.
PiaKind headerKind(PiaInput& input) {
    if (input.container().kind) {
        return *input.container().kind;
    }
    switch (platen::recognise(input).kind) {
        case platen::FileKind::Ctb:
            return PiaKind::Ctb;
        case platen::FileKind::Stb:
            return PiaKind::Stb;
        default:
            return PiaKind::Pc3;
    }
}

}  // namespace

ExitCode writeSource(Source& source, bool changed, const std::string& file,
                     const Console& console) {
    if (!changed) {
        return writeBytes(source.bytes.view(), file, console);
    }
    const PiaBlock& root = *source.input.root();
    switch (source.form) {
        case SourceForm::Json:
            return writeJson(root, file, console);
        case SourceForm::BodyText:
            return writeBodyText(root, file, console);
        case SourceForm::Compressed:
            break;
    }
    return writeCompressed(root, headerKind(source.input), file, console);
}

}  // namespace cli::files
