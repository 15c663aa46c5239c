/// Reading a plotter file in whatever form it has, and writing it back in that form.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <platen/edit_file_mark.h>
#include <platen/pia.h>
#include <platen/platen_api.h>
#include <platen/utcore.h>

namespace platen {

/// How the body of a file is stored.
enum class FileForm {
    /// Version 2: body text in a compressed container.
    Compressed,
    /// Version 3.
    Json,
    /// Body text without its container.
    BodyText,
};

/// How writing a file went.
struct PLATEN_API WriteResult {
    /// The steps of writing: making the bytes, reading them back, putting them into the file.
    enum class Stage { Encoding, ReadingBack, Storing };

    /// Where it failed; the file is as it was then. Empty when it was written.
    std::optional<Stage> failedAt;
    /// Why it failed, and what the writer warned of.
    PiaReport report;
    /// The file reads back differently from what was to be written, though no warning foresaw it.
    bool differs = false;

    explicit operator bool() const { return !failedAt; }
};

/// The bytes of a file with these items, which were read back. `kind` goes into the header of the
/// compressed form.
PLATEN_API WriteResult encodeFile(const PiaBlock& root, FileForm form, PiaKind kind,
                                  ut::ByteBuffer& bytes);
/// Writes them to `path` once they were read back, so that `path` is either the old file whole or
/// a new one that can be read. A file that is different from its mark is left alone.
PLATEN_API WriteResult writeFile(const PiaBlock& root, FileForm form, PiaKind kind,
                                 const std::wstring& path, const FileMark& mark = {});
/// Writes bytes that came out of a file that was read, with the same care for the mark.
PLATEN_API WriteResult writeFileBytes(std::string_view bytes, const std::wstring& path,
                                      const FileMark& mark = {});

/// How a file is read that may have a body of `bodyBytes`: the number of items that are accepted
/// grows with it, the depth does not.
PLATEN_API PiaReadOptions readingUpTo(std::uint64_t bodyBytes);

/// A plotter file that is to be changed.
class PLATEN_API SourceFile {
public:
    /// What is taken for a plotter file: bare body text has no mark of its own.
    enum class Accept { EveryForm, OnlyFiles };

    /// Reads a file. False when it cannot be read; the input's report says why.
    bool read(const std::wstring& path, const PiaReadOptions& options = {},
              Accept accept = Accept::EveryForm);
    /// The same with the file's bytes.
    bool readBytes(ut::ByteBuffer bytes, const PiaReadOptions& options = {},
                   Accept accept = Accept::EveryForm);

    /// The tree, and what was found while it was read.
    PiaInput& input() { return input_; }
    /// The same for reading.
    const PiaInput& input() const { return input_; }
    /// After a failed read: whether the bytes could only have been body text.
    FileForm form() const { return form_; }
    /// The file as it stands.
    std::string_view bytes() const { return bytes_.view(); }
    /// What its header names or, without a name, what it holds.
    PiaKind headerKind();

    /// Writes the tree in the form that it came in. The file that was read is left alone when it
    /// has changed since.
    WriteResult write(const std::wstring& path);
    /// Writes another tree in place of the file's own, in the same form and with the same care.
    WriteResult write(const std::wstring& path, const PiaBlock& root);

private:
    PiaInput input_;
    FileForm form_ = FileForm::Compressed;
    ut::ByteBuffer bytes_;
    FileMark mark_;
};

}  // namespace platen
