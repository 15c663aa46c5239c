#include <platen/edit_files.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

#include <platen/inspect.h>
#include <platen/pia_text_forms.h>
#include <platen/utcore_replace.h>

namespace platen {
namespace {

/// Puts the bytes of the file into `bytes`.
bool encode(const PiaBlock& root, FileForm form, PiaKind kind, ut::ByteBuffer& bytes,
            PiaReport& report) {
    if (form == FileForm::Compressed) {
        PiaFileOut writer;
        writer.setKind(kind);
        const bool done = writer.encode(root, bytes);
        report = writer.report();
        return done;
    }
    std::string text;
    if (!(form == FileForm::Json ? piaWriteJson(root, text, report)
                                 : piaWriteBody(root, text, report))) {
        return false;
    }
    bytes.reserve(text.size());
    std::copy(text.begin(), text.end(), bytes.data());
    bytes.setSize(text.size());
    return true;
}

bool readAgain(PiaInput& again, FileForm form, std::string_view bytes) {
    switch (form) {
        case FileForm::Json:
            return again.openBytes(bytes) && again.container().version == 3;
        case FileForm::BodyText:
            return again.openBody(bytes);
        case FileForm::Compressed:
            break;
    }
    return again.openBytes(bytes);
}

WriteResult failedAt(WriteResult::Stage stage, PiaReport report) {
    WriteResult result;
    result.failedAt = stage;
    result.report = std::move(report);
    return result;
}

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

}  // namespace

WriteResult encodeFile(const PiaBlock& root, FileForm form, PiaKind kind, ut::ByteBuffer& bytes) {
    WriteResult result;
    if (!encode(root, form, kind, bytes, result.report)) {
        result.failedAt = WriteResult::Stage::Encoding;
        return result;
    }
    PiaInput again;
    if (!readAgain(again, form, bytes.view())) {
        // What the writer warned of tells why.
        PiaReport report = result.report;
        report.fail(again.report().failure().value_or(PiaFinding{}));
        return failedAt(WriteResult::Stage::ReadingBack, std::move(report));
    }
    // JSON has an order of its own, and its writer knows exactly what it loses. In body text
    // accented letters may happen to be UTF-8 when they are read back.
    result.differs = form != FileForm::Json && result.report.warningCount() == 0 &&
                     piaBodyText(root) != piaBodyText(*again.root());
    return result;
}

WriteResult writeFile(const PiaBlock& root, FileForm form, PiaKind kind, const std::wstring& path,
                      const FileMark& mark) {
    ut::ByteBuffer bytes;
    WriteResult result = encodeFile(root, form, kind, bytes);
    if (!result) {
        return result;
    }
    WriteResult stored = writeFileBytes(bytes.view(), path, mark);
    return stored ? std::move(result) : std::move(stored);
}

WriteResult writeFileBytes(std::string_view bytes, const std::wstring& path, const FileMark& mark) {
    const std::string_view pieces[] = {bytes};
    bool changed = false;
    const ut::SystemError error = ut::replaceFile(
        path, pieces, [&] { return !mark.differsNow(path); }, changed);
    if (!error && !changed) {
        return {};
    }
    PiaReport report;
    if (changed) {
        report.fail({.code = PiaCode::FileChanged});
    } else {
        report.fail({.code = PiaCode::FileUnwritable, .found = ut::decodePath(error.message())});
    }
    return failedAt(WriteResult::Stage::Storing, std::move(report));
}

PiaReadOptions readingUpTo(std::uint64_t bodyBytes) {
    constexpr PiaLimits usual;
    constexpr std::uint64_t bytesPerItem = usual.bodyBytes / usual.items;
    PiaReadOptions options;
    options.limits.bodyBytes = bodyBytes;
    options.limits.items =
        std::max(usual.items, static_cast<std::size_t>(bodyBytes / bytesPerItem));
    return options;
}

bool SourceFile::read(const std::wstring& path, const PiaReadOptions& options, Accept accept) {
    bool tooLarge = false;
    ut::ByteBuffer bytes;
    const ut::SystemError error = ut::readFile(path, options.limits.bodyBytes, bytes, tooLarge);
    if (!error && !tooLarge) {
        const bool done = readBytes(std::move(bytes), options, accept);
        mark_ = FileMark(path, bytes_.view());
        return done;
    }
    *this = SourceFile();
    return input_.report().fail({.code = tooLarge ? PiaCode::FileTooLarge : PiaCode::FileUnreadable,
                                 .found = ut::decodePath(error.message())});
}

bool SourceFile::readBytes(ut::ByteBuffer bytes, const PiaReadOptions& options, Accept accept) {
    bytes_ = std::move(bytes);
    mark_ = {};
    if (input_.openBytes(bytes_.view(), options)) {
        form_ = input_.container().version == 2 ? FileForm::Compressed : FileForm::Json;
        return true;
    }
    if (accept == Accept::OnlyFiles || !mayBeBodyText(bytes_.view())) {
        form_ = FileForm::Compressed;
        return false;
    }
    form_ = FileForm::BodyText;
    return input_.openBody(withoutMark(bytes_.view()), options);
}

PiaKind SourceFile::headerKind() {
    if (input_.container().kind) {
        return *input_.container().kind;
    }
    switch (recognise(input_).kind) {
        case FileKind::Ctb:
            return PiaKind::Ctb;
        case FileKind::Stb:
            return PiaKind::Stb;
        default:
            return PiaKind::Pc3;
    }
}

WriteResult SourceFile::write(const std::wstring& path) { return write(path, *input_.root()); }

WriteResult SourceFile::write(const std::wstring& path, const PiaBlock& root) {
    // Only this form has a header.
    const PiaKind kind = form_ == FileForm::Compressed ? headerKind() : PiaKind::Pc3;
    return writeFile(root, form_, kind, path, mark_);
}

}  // namespace platen
