/// The PIA container under all plotter files: the item tree, its reader and its writer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <platen/pia_items.h>
#include <platen/pia_paths.h>
#include <platen/pia_report.h>
#include <platen/pia_text_forms.h>
#include <platen/pia_tree.h>
#include <platen/platen_api.h>

class PiaEntryTaker;

namespace ut {
class ByteBuffer;
}

/// The file kind in the header. Plot configurations and plot model parameters share `Pc3`.
enum class PiaKind : int { Ctb = 0, Stb = 1, Pc3 = 2 };

/// What a reader refuses, so that memory and time stay bounded.
struct PiaLimits {
    /// Size of the file and of the uncompressed body, in bytes.
    std::uint64_t bodyBytes = std::uint64_t{256} << 20U;
    /// Blocks inside blocks; the root is depth 0.
    std::size_t depth = 128;
    /// Items in the whole tree.
    std::size_t items = std::size_t{4} << 20U;
};

struct PiaReadOptions {
    /// What is refused.
    PiaLimits limits;
    /// Verified parts that do not hold fail the read; the others are warnings.
    ///@{
    bool verifyHeaderText = false;
    bool verifyLengths = false;
    bool verifyChecksum = false;
    ///@}
};

/// How the text of a body is encoded: where neither is needed, for ASCII, it counts as UTF-8.
enum class PiaEncoding { Utf8, Ansi };

/// What the container of a file says and whether it holds.
struct PLATEN_API PiaContainer {
    /// 2: line text, compressed; 3: JSON.
    int version = 0;
    /// The kind in the header of a version-2 file; empty when the header text is not a known one.
    std::optional<PiaKind> kind;
    /// Of the uncompressed body; in version 3 of the file.
    std::uint64_t bodyBytes = 0;
    /// Bytes of the zlib stream; 0 in version 3.
    std::uint64_t compressedBytes = 0;
    /// The one in the header, and the one that the file should have; both 0 in version 3.
    ///@{
    std::uint32_t storedChecksum = 0;
    std::uint32_t actualChecksum = 0;
    ///@}
    /// Of the body that was read.
    PiaEncoding encoding = PiaEncoding::Utf8;

    bool checksumHolds() const { return storedChecksum == actualChecksum; }  ///< True in version 3.
};

/// Serves the body lines of a version-2 file.
class PLATEN_API PiaFileIn {
public:
    PiaFileIn();
    ~PiaFileIn();
    PiaFileIn(PiaFileIn&&) noexcept;
    PiaFileIn& operator=(PiaFileIn&&) noexcept;

    /// Reads and inflates the file. 0 on success; -2 when the file system fails or the file is
    /// refused; otherwise zlib's error code.
    ///@{
    [[nodiscard]] int open(const wchar_t* path);
    [[nodiscard]] int open(const wchar_t* path, const PiaReadOptions& options);
    ///@}
    /// The same with the file's bytes, which are borrowed for the call only.
    [[nodiscard]] int openBytes(std::string_view bytes, const PiaReadOptions& options);

    /// The next line without its line feed, or null at the end. At most 511 bytes are taken at a
    /// time: the rest of a longer line is the next line. The text is valid until the next call.
    const wchar_t* readLine();

    /// What is known of the file that was opened last.
    const PiaContainer& container() const;
    /// Why the last `open` failed, and what it tolerated.
    const PiaReport& report() const;
    /// The uncompressed body as it stands.
    std::string_view body() const;

private:
    friend class PiaInput;
    struct State;
    std::unique_ptr<State> state_;
};

/// Writes a tree as a version-2 file.
class PLATEN_API PiaFileOut {
public:
    /// What the header of the file names; `Ctb` until then.
    ///@{
    void setKind(int kind) { kind_ = kind; }
    void setKind(PiaKind kind) { kind_ = static_cast<int>(kind); }
    ///@}

    /// Writes the whole file or leaves `path` as it was. What a reader would not read back as it
    /// stands in the tree is a warning of the report; a line break in a name or value fails the
    /// write.
    [[nodiscard]] bool write(const PiaBlock* root, const wchar_t* path);
    /// The same for a document, which `fill` writes into the sink that it is given, without a tree
    /// between. False when `fill` is.
    [[nodiscard]] bool write(const std::function<bool(PiaSink&)>& fill, const wchar_t* path);
    /// The bytes that `write` would put into the file.
    [[nodiscard]] bool encode(const PiaBlock& root, ut::ByteBuffer& file);

    /// 0 after success, -2 for the file system (or a refused tree), otherwise zlib's error code.
    int status() const { return status_; }
    /// Why the last write failed, and what a reader would not read back.
    const PiaReport& report() const { return report_; }

private:
    /// Starts afresh; `fill` appends the body.
    bool encodeParts(const std::function<bool(std::string&)>& fill, std::string& header,
                     ut::ByteBuffer& stream);
    bool writeParts(const std::function<bool(std::string&)>& fill, const wchar_t* path);
    bool refuse(const wchar_t* expected);

    int kind_ = static_cast<int>(PiaKind::Ctb);
    int status_ = 0;
    PiaReport report_;
};

/// Reads a plotter file of either version into a tree.
class PLATEN_API PiaInput {
public:
    PiaInput();
    ~PiaInput();
    PiaInput(PiaInput&&) noexcept;
    PiaInput& operator=(PiaInput&&) noexcept;

    /// Chooses the reader by the sixteenth byte ("2": line text, otherwise JSON) and parses. False
    /// leaves no tree; `report` says why. The header's text, lengths and checksum are not verified
    /// unless the options ask for it.
    ///@{
    [[nodiscard]] bool open(const wchar_t* path);
    [[nodiscard]] bool open(const wchar_t* path, const PiaReadOptions& options);
    ///@}
    /// The same with a file's bytes, which are borrowed for the call only.
    [[nodiscard]] bool openBytes(std::string_view file, const PiaReadOptions& options = {});
    /// Parses body text, as it stands inside a version-2 file.
    [[nodiscard]] bool openBody(std::string_view body, const PiaReadOptions& options = {});

    /// The tree, owned by this object; null before a successful `open`.
    ///@{
    PiaBlock* root();
    const PiaBlock* root() const;
    ///@}
    /// What is known of the file that was opened last.
    const PiaContainer& container() const { return container_; }
    /// Why the last `open` failed, and what it tolerated.
    const PiaReport& report() const { return report_; }
    /// Where documents note why they reject the tree.
    PiaReport& report() { return report_; }
    /// The uncompressed body of a version-2 file, or the text of a version-3 file; empty after a
    /// failed `open`.
    std::string_view body() const;

private:
    friend class PiaEntryTaker;
    class Impl;
    class Pia2InputImpl;
    class Pia3InputImpl;

    void reset();
    /// Drops the partly built tree unless `done`, and returns it.
    bool keepIf(bool done);

    std::unique_ptr<Impl> impl_;
    /// Is handed the entries of its list while a file is read; usually none.
    PiaEntryTaker* entries_ = nullptr;
    PiaContainer container_;
    PiaReport report_;
};
