/// Taking the files of a bundle to a folder, as documents of the new place: PMPs are named where
/// they land, printers by a map.
///
///     platen::Bundle bundle;
///     if (bundle.open(L"office.zip")) {
///         const platen::RestoreSettings settings{.folder = L"/srv/plotters"};
///         for (const platen::BundledFile& file : bundle.manifest().files) {
///             const platen::RestoredFile done = platen::restoreFile(bundle, file, settings);
///         }
///     }
#pragma once

#include <map>
#include <string>

#include <platen/house_bundle.h>
#include <platen/house_move.h>
#include <platen/platen_api.h>
#include <platen/utcore.h>

namespace platen {

struct RestoreSettings {
    /// Where the files go; paths in the bundle are relative to it.
    std::wstring folder{};
    /// Null: no printer changes.
    const MoveMap* printers = nullptr;
    /// Those of the new printers that could be asked, by their names in the map.
    const std::map<std::wstring, InstalledPrinter>* asked = nullptr;
    /// Files that are there and different are replaced, and kept under `copyNameFor`.
    bool replace = false;
    /// Nothing is written.
    bool dryRun = false;
    /// How files are read that are taken out.
    PiaReadOptions reading{};
};

/// One file as it belongs in the folder.
struct PlannedFile {
    /// A full path in the folder.
    std::wstring place{};
    /// With the names of the new place.
    ut::ByteBuffer bytes{};
    /// What its names became.
    MovedDocument moved{};
};

/// What a file becomes, without a look at the disk. Refused when it cannot be taken out, or not be
/// written with the new names.
PLATEN_API EditResult planFile(const Bundle& bundle, const BundledFile& file,
                               const RestoreSettings& settings, PlannedFile& planned);

struct RestoredFile {
    /// What became of the file.
    enum class State {
        Written,
        /// An equal file is there, and stays.
        AlreadyThere,
        /// Another one was there, and is kept as `copy`.
        Replaced,
        /// Another one is there, and stays.
        Different,
        /// Nothing was written; or what was written is not what it should be.
        Failed,
    };
    State state = State::Failed;
    /// A full path in the folder.
    std::wstring place{};
    /// Where the file is that was replaced.
    std::wstring copy{};
    /// What its names became.
    MovedDocument moved{};
    /// Of `Different` and `Failed`: an English sentence without its full stop, UTF-8, printable.
    std::string fault{};
};

/// Restores one file whole or not at all, and reads it back. Of a configuration the PMP has to be
/// found where it lands, so that configurations come once all others are there. No link in the
/// folder is followed. May be called by several threads for different files.
PLATEN_API RestoredFile restoreFile(const Bundle& bundle, const BundledFile& file,
                                    const RestoreSettings& settings);

/// "written", "already-there" ...
PLATEN_API const char* stateWord(RestoredFile::State state);

/// One JSON object without a line feed, UTF-8, schema "platen.restore/1".
PLATEN_API std::string restoreJson(const BundledFile& file, const RestoredFile& restored,
                                   bool dryRun);

}  // namespace platen
