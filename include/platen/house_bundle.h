/// A folder of plotter files as one zip archive, which any zip program opens: every configuration
/// with its PMP and the tables, and a manifest that says what each file was.
///
///     platen::BundleWriter writer({.date = L"2026-03-31"});
///     writer.add(L"/srv/plotters/office.pc3", L"office.pc3");
///     std::string archive;
///     const platen::BundleManifest manifest = writer.finish(archive);
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <platen/edit_result.h>
#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/platen_api.h>
#include <platen/utcore.h>

namespace platen {

struct BundledFile {
    /// In the bundle, with slashes.
    std::wstring path{};
    /// Where it lay: a full path of the system that made the bundle.
    std::wstring place{};
    /// Empty for what cannot be read, and is kept byte by byte.
    std::optional<FileKind> kind{};
    /// The size of the file.
    std::uint64_t bytes = 0;
    /// 64 small hexadecimal digits.
    std::string sha256{};
    /// When it was last written, in seconds since 1970 in UTC.
    std::int64_t modified = 0;
    /// The printer and the PMP that it names; empty for none.
    std::wstring printer{};
    /// The PMP by the name that the configuration has for it; empty for none.
    std::wstring parameters{};
    /// Where that PMP is in the bundle; empty when it was not found.
    std::wstring parametersPath{};
};

/// What a bundle does not hold.
struct LeftOutFile {
    /// Its full path.
    std::wstring place{};
    /// An English phrase, UTF-8, printable.
    std::string reason{};
    /// It is no plotter file, or a copy that was kept of one. Otherwise it is missed: it could not
    /// be read.
    bool isStranger = true;
};

struct BundleManifest {
    /// The program: "Platen 0.1.0".
    std::wstring madeBy{};
    /// Of the snapshot: "2026-03-31".
    std::wstring date{};
    /// Full paths of the folders that were bundled.
    std::vector<std::wstring> folders{};
    /// In the order of the archive.
    std::vector<BundledFile> files{};
    /// In the order in which it was noted.
    std::vector<LeftOutFile> leftOut{};
};

/// One JSON object, UTF-8, schema "platen.bundle/1": without a line feed or, in the archive, in
/// lines for people.
PLATEN_API std::string manifestJson(const BundleManifest& manifest, bool inLines = false);
/// Refused as `ValueInvalid` when the text is none. Whatever it says, paths are those of
/// `BundledFile` and fit each other: see `Bundle`.
PLATEN_API EditResult readManifest(std::string_view json, BundleManifest& manifest);

/// The manifest's name in the archive.
inline constexpr const char* manifestName = "manifest.json";

/// Makes a bundle in memory. The same files give the same bytes.
class PLATEN_API BundleWriter {
public:
    struct Settings {
        /// As in `BundleManifest`.
        ///@{
        std::wstring date{};
        std::wstring madeBy{};
        std::vector<std::wstring> folders{};
        ///@}
        /// How the files are read that are added.
        PiaReadOptions reading{};
    };
    /// Of what goes into the manifest.
    explicit BundleWriter(Settings settings);
    ~BundleWriter();
    BundleWriter(const BundleWriter&) = delete;
    BundleWriter& operator=(const BundleWriter&) = delete;

    /// What became of a file.
    struct Added {
        /// Empty when it was left out; then `leftOut` says why.
        std::optional<BundledFile> file{};
        /// Empty when the file was added.
        std::optional<LeftOutFile> leftOut{};
        /// English sentences without their full stops, UTF-8, printable.
        std::vector<std::string> warnings{};
    };
    /// Adds a file under a path like `wanted`, in letters that every system takes. A file comes
    /// once, however often it is added.
    Added add(const std::wstring& file, std::wstring_view wanted);
    /// Notes what is not looked at, such as a link.
    Added leaveOut(const std::wstring& file, std::string reason);
    /// Adds the PMPs that configurations name and that were not added, in the folder "PMP".
    std::vector<Added> addMissingParameters();

    /// Adds the manifest, and gives the archive; empty when it would be larger than the format
    /// allows. Nothing can be added then.
    BundleManifest finish(std::string& archive);

private:
    struct Own;
    std::unique_ptr<Own> own_;
};

/// What is accepted of a bundle, so that memory and space stay bounded.
struct BundleLimits {
    /// Of the archive, which is held in memory.
    std::uint64_t archiveBytes = std::uint64_t{512} << 20U;
    /// How many there may be in the archive.
    std::size_t entries = 20'000;
    /// Of the manifest.
    std::uint64_t manifestBytes = std::uint64_t{16} << 20U;
    /// Of one file, as for any plotter file.
    std::uint64_t fileBytes = PiaLimits{}.bodyBytes;
    /// Of all files.
    std::uint64_t totalBytes = std::uint64_t{2} << 30U;
};

/// A bundle, read as what anybody may have sent: it is refused whole unless every path of its
/// manifest is one that all systems take, inside the folder where it is restored, and belongs to
/// exactly one entry of the size that the manifest states, which is neither a link nor encrypted
/// nor lies in another. Entries that the manifest does not name are left where they are.
class PLATEN_API Bundle {
public:
    Bundle();
    ~Bundle();
    Bundle(const Bundle&) = delete;
    Bundle& operator=(const Bundle&) = delete;

    /// Reads the directory and the manifest. Refused as `FileUnreadable` or `ValueInvalid`.
    EditResult open(const std::wstring& path, const BundleLimits& limits = {});
    /// The same with the archive's bytes.
    EditResult openBytes(ut::ByteBuffer bytes, const BundleLimits& limits = {});

    /// What `open` has read; empty before.
    const BundleManifest& manifest() const;
    /// Names of entries that the manifest does not name, as UTF-8 as far as they are.
    const std::vector<std::string>& strangers() const;

    /// The bytes of one of the manifest's files, which have the digest that it states. May be
    /// called by several threads.
    EditResult extract(const BundledFile& file, ut::ByteBuffer& bytes) const;

private:
    struct Own;
    std::unique_ptr<Own> own_;
};

}  // namespace platen
