#include <algorithm>
#include <array>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <utility>

#include <platen/house_restore.h>
#include <platen/utcore_host.h>
#include "edit/refusal.h"
#include "platform/utcore/file_system.h"
#include "platform/utcore/folder.h"

namespace platen {
namespace {

using State = RestoredFile::State;

std::string shown(std::wstring_view text) { return ut::printable(quoted(text)); }

/// Where a path of a bundle lands; it was found safe.
std::wstring placeIn(const std::wstring& folder, std::wstring_view path) {
    return ut::joinPath(ut::FileName(folder).getFullPath(), ut::correctSlashes(path));
}

const BundledFile* fileAt(const BundleManifest& manifest, const std::wstring& path) {
    const auto found = std::ranges::find(manifest.files, path, &BundledFile::path);
    return path.empty() || found == manifest.files.end() ? nullptr : &*found;
}

/// `place` is what the path of the file is in a folder that was bundled: that is where a bundle of
/// the new folder leads back to. Both may be paths of another system.
bool comesBack(const BundleManifest& manifest, const BundledFile& file) {
    const auto withSlashes = [](std::wstring path) {
        std::ranges::replace(path, L'\\', L'/');
        return path;
    };
    return manifest.folders.size() == 1 &&
           withSlashes(file.place) == withSlashes(manifest.folders.front()) + L'/' + file.path;
}

std::wstring_view folderIn(std::wstring_view path) {
    const std::size_t slash = path.rfind(L'/');
    return path.substr(0, slash == std::wstring_view::npos ? 0 : slash + 1);
}

/// Beside the configuration and in the folder "PMP" there files are found by their names, in this
/// order.
bool leadsByName(const BundleManifest& manifest, const BundledFile& file,
                 const BundledFile& parameters) {
    const std::wstring beside(folderIn(file.path));
    const std::wstring_view folder = folderIn(parameters.path);
    return &file == &parameters || folder == beside ||
           (folder == beside + L"PMP/" &&
            fileAt(manifest, beside + parameters.path.substr(folder.size())) == nullptr);
}

DocumentMove moveOf(const Bundle& bundle, const BundledFile& file,
                    const RestoreSettings& settings) {
    DocumentMove move{.printers = settings.printers, .asked = settings.asked};
    const BundleManifest& manifest = bundle.manifest();
    const BundledFile* parameters =
        file.kind == FileKind::Pmp ? &file : fileAt(manifest, file.parametersPath);
    if (parameters != nullptr) {
        move.parameters = placeIn(settings.folder, parameters->path);
        move.parametersBefore = parameters->place;
        move.parametersComeBack = comesBack(manifest, *parameters);
        move.bareNameIsEnough = leadsByName(manifest, file, *parameters);
    }
    return move;
}

/// The bytes of a document with new names.
EditResult encodeMoved(SourceFile& source, ut::ByteBuffer& bytes) {
    const WriteResult done =
        encodeFile(*source.input().root(), source.form(), source.headerKind(), bytes);
    if (done && !done.differs) {
        return {};
    }
    return refuse(EditFault::ValueInvalid,
                  "it cannot be written with its new names: " +
                      (done ? std::string("it reads back differently; the path of the folder may "
                                          "be too long")
                            : done.report.failure().value_or(PiaFinding{}).describe()));
}

/// Makes the folders that are missing on the way to a file, below `folder` for paths of the bundle.
/// Returns why it cannot.
std::string makeWay(const std::wstring& folder, std::wstring_view path, bool dryRun) {
    std::vector<std::wstring> missing;
    std::wstring root = ut::FileName(folder).getFullPath();
    while (!root.empty() && !ut::folderExists(root)) {
        missing.push_back(root);
        std::wstring outer(ut::folderOf(root));
        if (outer == root) {
            break;
        }
        root = std::move(outer);
    }
    std::ranges::reverse(missing);
    for (std::size_t slash = path.find(L'/'); slash != std::wstring_view::npos;
         slash = path.find(L'/', slash + 1)) {
        missing.push_back(placeIn(folder, path.substr(0, slash)));
    }
    for (const std::wstring& name : missing) {
        ut::Standing standing = ut::standingAt(name);
        if (standing == ut::Standing::Nothing && !dryRun) {
            const ut::SystemError error = ut::makeFolder(name);
            // Another thread may have been faster.
            standing = ut::standingAt(name);
            if (standing == ut::Standing::Nothing) {
                return shown(name) + ": " + error.message();
            }
        }
        if (standing == ut::Standing::Link) {
            return shown(name) + " is a link, which is not followed";
        }
        if (standing != ut::Standing::Folder && standing != ut::Standing::Nothing) {
            return shown(name) + " is no folder";
        }
    }
    return {};
}

/// What was written is what was to be written, and a configuration finds its PMP.
std::string faultAfter(const std::wstring& place, std::string_view bytes, const BundledFile& file,
                       const RestoreSettings& settings, const std::wstring& parameters) {
    ut::ByteBuffer again;
    bool tooLarge = false;
    const ut::SystemError error = ut::readFile(place, bytes.size(), again, tooLarge);
    if (error || tooLarge || again.view() != bytes) {
        return "it was written and does not read back";
    }
    if (file.kind != FileKind::Pc3 || parameters.empty()) {
        return {};
    }
    SourceFile source;
    if (!source.readBytes(std::move(again), settings.reading)) {
        return "it was written and does not read back";
    }
    const Content content = readContent(source.input(), place, settings.reading);
    return content.rejected || ut::FileName(content.pmpPath) == ut::FileName(parameters)
               ? ""
               : "it was written, but its PMP is not found at " + shown(parameters);
}

/// Puts the file into its place, where `standing` is.
void store(const PlannedFile& planned, ut::Standing standing, RestoredFile& restored) {
    if (standing == ut::Standing::File) {
        ut::ByteBuffer old;
        bool tooLarge = false;
        const ut::SystemError error =
            ut::readFile(planned.place, BundleLimits{}.archiveBytes, old, tooLarge);
        restored.copy = copyNameFor(planned.place);
        if (error || tooLarge || !writeFileBytes(old.view(), restored.copy)) {
            restored.copy.clear();
            restored.fault = "not replaced, since no copy could be kept";
            return;
        }
    }
    const std::string_view pieces[] = {planned.bytes.view()};
    if (const ut::SystemError error = ut::replaceFile(planned.place, pieces)) {
        restored.fault = "it cannot be written: " + error.message();
        if (!restored.copy.empty()) {
            ut::systemFiles().remove(std::exchange(restored.copy, {}));
        }
        return;
    }
    restored.state = standing == ut::Standing::File ? State::Replaced : State::Written;
}

/// True when exactly these bytes are there.
bool isThere(const std::wstring& place, std::string_view bytes) {
    ut::ByteBuffer there;
    bool tooLarge = false;
    return !ut::readFile(place, bytes.size(), there, tooLarge) && !tooLarge &&
           there.view() == bytes;
}

RestoredFile restorePlanned(const PlannedFile& planned, const BundledFile& file,
                            const RestoreSettings& settings) {
    RestoredFile restored;
    restored.place = planned.place;
    restored.moved = planned.moved;
    restored.fault = makeWay(settings.folder, file.path, settings.dryRun);
    if (!restored.fault.empty()) {
        return restored;
    }
    const ut::Standing standing = ut::standingAt(planned.place);
    if (standing == ut::Standing::File && isThere(planned.place, planned.bytes.view())) {
        restored.state = State::AlreadyThere;
        return restored;
    }
    if (standing != ut::Standing::File && standing != ut::Standing::Nothing) {
        restored.fault = standing == ut::Standing::Link
                             ? "a link stands there, which is not followed"
                             : "something else stands there";
        return restored;
    }
    if (standing == ut::Standing::File && !settings.replace) {
        restored.state = State::Different;
        restored.fault = "another file of that name is there, and stays";
        return restored;
    }
    if (settings.dryRun) {
        restored.state = standing == ut::Standing::File ? State::Replaced : State::Written;
        return restored;
    }
    store(planned, standing, restored);
    return restored;
}

}  // namespace

EditResult planFile(const Bundle& bundle, const BundledFile& file, const RestoreSettings& settings,
                    PlannedFile& planned) {
    planned.place = placeIn(settings.folder, file.path);
    planned.moved = {};
    if (EditResult done = bundle.extract(file, planned.bytes); !done || !file.kind) {
        return done;
    }
    ut::ByteBuffer content;
    content.reserve(planned.bytes.size());
    std::ranges::copy(planned.bytes.view(), content.data());
    content.setSize(planned.bytes.size());
    SourceFile source;
    if (!source.readBytes(std::move(content), settings.reading)) {
        return refuse(EditFault::FileUnreadable,
                      "it is no plotter file, against the word of the manifest: " +
                          source.input().report().failure().value_or(PiaFinding{}).describe());
    }
    const DocumentMove move = moveOf(bundle, file, settings);
    if (EditResult done = moveDocument(source, move, planned.moved); !done) {
        return done;
    }
    if (file.kind == FileKind::Pc3 && !file.parameters.empty() && file.parametersPath.empty()) {
        planned.moved.losses.push_back({MoveLoss::Kind::ParametersMissing,
                                        "the PMP that it names was not found when the bundle "
                                        "was made: " +
                                            shown(file.parameters)});
    }
    return planned.moved.changes.empty() ? EditResult() : encodeMoved(source, planned.bytes);
}

RestoredFile restoreFile(const Bundle& bundle, const BundledFile& file,
                         const RestoreSettings& settings) {
    PlannedFile planned;
    if (const EditResult done = planFile(bundle, file, settings, planned); !done) {
        RestoredFile restored;
        restored.place = planned.place;
        restored.fault = done->reason;
        return restored;
    }
    RestoredFile restored = restorePlanned(planned, file, settings);
    const bool isNew = restored.state == State::Written || restored.state == State::Replaced;
    if (!isNew || settings.dryRun) {
        return restored;
    }
    if (planned.moved.changes.empty()) {
        ut::setTime(planned.place, file.modified);
    }
    restored.fault = faultAfter(planned.place, planned.bytes.view(), file, settings,
                                moveOf(bundle, file, settings).parameters);
    restored.state = restored.fault.empty() ? restored.state : State::Failed;
    return restored;
}

const char* stateWord(RestoredFile::State state) {
    constexpr std::array words{"written", "already-there", "replaced", "different", "failed"};
    return words[static_cast<std::size_t>(state)];
}

std::string restoreJson(const BundledFile& file, const RestoredFile& restored, bool dryRun) {
    using Json = nlohmann::ordered_json;
    const auto orNull = [](std::string text) {
        return text.empty() ? Json() : Json(std::move(text));
    };
    Json json;
    json["schema"] = "platen.restore/1";
    json["file"] = ut::encodePath(restored.place);
    json["path"] = ut::encodeUtf8(file.path);
    json["kind"] = file.kind ? kindWord(*file.kind) : "damaged";
    json["state"] = stateWord(restored.state);
    json["dry_run"] = dryRun;
    json["copy"] = orNull(ut::encodePath(restored.copy));
    json["changes"] = Json::array();
    for (const MovedDocument::Change& change : restored.moved.changes) {
        Json entry;
        entry["key"] = ut::encodeUtf8(change.key);
        entry["before"] = ut::encodeUtf8(change.before);
        entry["after"] = ut::encodeUtf8(change.after);
        json["changes"].push_back(std::move(entry));
    }
    json["losses"] = Json::array();
    for (const MoveLoss& loss : restored.moved.losses) {
        Json entry;
        entry["kind"] = lossWord(loss.kind);
        entry["stays_in_file"] = staysInFile(loss.kind);
        entry["text"] = loss.text;
        json["losses"].push_back(std::move(entry));
    }
    json["fault"] = orNull(restored.fault);
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace platen
