#include "tools/platen/files/source.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include <platen/utcore.h>

namespace cli::files {
namespace {

/// Editors begin UTF-8 texts with a mark that would become part of the first name.
std::string_view withoutMark(std::string_view text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.starts_with(mark) ? text.substr(mark.size()) : text;
}

/// Body text has no mark of its own: it is what carries no mark of the other forms.
bool mayBeBodyText(std::string_view bytes) {
    constexpr std::string_view header = "PIAFILEVERSION_";
    const std::string_view text = withoutMark(bytes);
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return !bytes.starts_with(header) && (first == std::string_view::npos || text[first] != '{');
}

bool readBytes(const std::string& file, std::uint64_t limit, ut::ByteBuffer& bytes,
               const Console& console) {
    bool tooLarge = false;
    const ut::SystemError error = ut::readFile(ut::decodePath(file), limit, bytes, tooLarge);
    if (!error && !tooLarge) {
        return true;
    }
    PiaReport report;
    report.fail({.code = tooLarge ? PiaCode::FileTooLarge : PiaCode::FileUnreadable,
                 .found = ut::decodePath(error.message())});
    fail(console, file, report);
    return false;
}

}  // namespace

PiaReadOptions readingUpTo(std::uint64_t bodyBytes) {
    constexpr PiaLimits usual;
    constexpr std::uint64_t bytesPerItem = usual.bodyBytes / usual.items;
    PiaReadOptions options;
    options.limits.bodyBytes = bodyBytes;
    options.limits.items =
        std::max(usual.items, static_cast<std::size_t>(bodyBytes / bytesPerItem));
    return options;
}

bool readSource(const std::string& file, Source& source, const Console& console,
                const PiaReadOptions& options) {
    if (!readBytes(file, options.limits.bodyBytes, source.bytes, console)) {
        return false;
    }
    const ut::ByteBuffer& bytes = source.bytes;
    if (source.input.openBytes(bytes.view(), options)) {
        source.form =
            source.input.container().version == 2 ? SourceForm::Compressed : SourceForm::Json;
        return true;
    }
    if (mayBeBodyText(bytes.view())) {
        source.form = SourceForm::BodyText;
        if (source.input.openBody(withoutMark(bytes.view()), options)) {
            return true;
        }
        fail(console, file,
             "neither a compressed plotter file nor JSON, and no body text either: " +
                 source.input.report().failure().value_or(PiaFinding{}).describe());
        return false;
    }
    fail(console, file, source.input.report());
    return false;
}

}  // namespace cli::files
