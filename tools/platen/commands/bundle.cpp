#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <platen/house.h>
#include <platen/inspect.h>
#include <platen/utcore.h>
#include <platen/utcore_host.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/commands/list.h"
#include "tools/platen/files/batch.h"
#include "tools/platen/files/file_walk.h"
#include "tools/platen/files/output.h"
#include "tools/platen/files/source.h"
#include "tools/platen/words/words.h"

namespace cli::commands {
namespace {

constexpr const char* help =
    R"(Everything that an office needs to plot goes into one zip archive: each configuration
(PC3) with the PMP that it names, wherever that lies, and all tables (CTB, STB). A manifest in it
(manifest.json, schema platen.bundle/1) says what each file was called, where it lay, which printer
and which PMP it names, and has its SHA-256. Any zip program opens the archive; platen restore
brings it back, here or on another machine.

Files that are no plotter files, copies (".bak") and links are left out, and named. A damaged
plotter file is kept byte by byte, with a warning. The same folder gives the same archive on the same
day.

Examples:
  platen bundle plotters                            plotters-2026-03-31.zip, named after the day
  platen bundle plotters -o backup                  the same in the folder backup
  platen bundle plotters "plot styles" -o office.zip
  platen bundle plotters --dry-run                  what would be in it
  platen restore office.zip --list                  what is in it)";

struct BundleOptions {
    std::vector<std::string> folders;
    std::string out;
    bool dryRun = false;
    bool replace = false;
    bool json = false;
    std::uint64_t maxBody = files::usualMaxBody;
};

std::string today() {
    const std::time_t now = std::time(nullptr);
    std::array<char, 16> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d", std::localtime(&now));
    return text.data();
}

/// The full path of a folder without a separator at its end.
std::wstring placeOf(const std::string& folder) {
    std::wstring place = ut::FileName(ut::decodePath(folder)).getFullPath();
    const std::wstring name(ut::fileNameOf(place));
    return name.empty() ? std::wstring(ut::folderOf(place)) : place;
}

/// Numbers of things in words: "1 PMP", "3 PMPs".
std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::string contentInWords(const platen::BundleManifest& manifest) {
    using platen::FileKind;
    std::map<std::optional<FileKind>, std::size_t> counts;
    for (const platen::BundledFile& file : manifest.files) {
        ++counts[file.kind];
    }
    const std::size_t others = counts[FileKind::Pia];
    const std::size_t damaged = counts[std::nullopt];
    return counted(manifest.files.size(), "file") + " (" +
           counted(counts[FileKind::Pc3], "configuration") + ", " +
           counted(counts[FileKind::Pmp], "PMP") + ", " +
           counted(counts[FileKind::Ctb] + counts[FileKind::Stb], "table") +
           (others == 0 ? "" : ", " + counted(others, "other")) +
           (damaged == 0 ? "" : ", " + std::to_string(damaged) + " damaged") + ")";
}

class Bundling {
public:
    Bundling(const BundleOptions& options, const Console& console)
        : options_(options), console_(console) {}

    ExitCode run() {
        platen::BundleWriter::Settings settings{.date = ut::decodePath(today()),
                                                .madeBy = ut::decodePath("Platen " PLATEN_VERSION),
                                                .reading = platen::readingUpTo(options_.maxBody)};
        for (const std::string& folder : options_.folders) {
            if (!ut::folderExists(ut::decodePath(folder))) {
                return fail(console_, folder, "there is no such folder");
            }
            settings.folders.push_back(placeOf(folder));
        }
        const std::string out = outOf(settings);
        if (!options_.replace && !options_.dryRun && ut::fileExists(ut::decodePath(out))) {
            return fail(console_, out,
                        "is there already; choose another name with -o, or add --replace");
        }
        const std::vector<std::wstring> folders = settings.folders;
        platen::BundleWriter writer(std::move(settings));
        ExitCode code = addFolders(writer, folders);
        if (code == ExitCode::Interrupted) {
            fail(console_, out, "nothing was written: interrupted");
            return code;
        }
        for (const platen::BundleWriter::Added& added : writer.addMissingParameters()) {
            const std::wstring& place = added.file ? added.file->place : added.leftOut->place;
            code = worse(code, tell(added, ut::encodePath(place), console_));
        }
        std::string archive;
        const platen::BundleManifest manifest = writer.finish(archive);
        return worse(code, store(out, manifest, archive));
    }

private:
    /// Named after the first folder and the day, unless it has a name.
    std::string outOf(const platen::BundleWriter::Settings& settings) const {
        const bool isFolder =
            !options_.out.empty() && ut::folderExists(ut::decodePath(options_.out));
        if (!options_.out.empty() && !isFolder) {
            return options_.out;
        }
        const std::wstring name(ut::fileNameOf(settings.folders.front()));
        return ut::encodePath(
            ut::joinPath(ut::decodePath(options_.out),
                         (name.empty() ? L"plotters" : name) + L'-' + settings.date + L".zip"));
    }

    ExitCode addFolders(platen::BundleWriter& writer, const std::vector<std::wstring>& folders) {
        ExitCode code = ExitCode::Ok;
        std::set<std::wstring> prefixes;
        for (std::size_t index = 0; index < folders.size(); ++index) {
            const std::string& folder = options_.folders[index];
            std::wstring prefix;
            if (folders.size() > 1) {
                const std::wstring name(ut::fileNameOf(folders[index]));
                prefix = name;
                for (int number = 2; !prefixes.insert(prefix).second; ++number) {
                    prefix = name + L'_' + std::to_wstring(number);
                }
                prefix += L'/';
            }
            code = worse(code, addFolder(writer, folder, prefix));
        }
        return code;
    }

    ExitCode addFolder(platen::BundleWriter& writer, const std::string& folder,
                       const std::wstring& prefix) {
        files::FileWalk walk = files::walkFiles(folder);
        files::Selected selected{.files = std::move(walk.files), .isBatch = true};
        for (const files::FileWalk::Fault& fault : walk.faults) {
            selected.code = fail(console_, fault.path, fault.reason);
        }
        for (const std::string& name : walk.passedOver) {
            tell(writer.leaveOut(ut::decodePath(name), "it is a link, or no file"), name, console_);
        }
        // The archive is written file by file.
        return files::forEachFile(
            selected, {.doing = "bundling", .oneThread = true}, console_,
            [&](const std::string& file, const Console& console) {
                std::string name = file.substr(
                    std::min(file.size(), file.find_first_not_of("/\\", folder.size())));
                std::ranges::replace(name, '\\', '/');
                return tell(writer.add(ut::decodePath(file), prefix + ut::decodePath(name)), file,
                            console);
            });
    }

    ExitCode tell(const platen::BundleWriter::Added& added, const std::string& file,
                  const Console& console) const {
        if (added.leftOut && !added.leftOut->isStranger) {
            return fail(console, file, "left out: " + added.leftOut->reason);
        }
        if (added.leftOut && !options_.json) {
            console.out << "left out: " << printable(file) << ": " << added.leftOut->reason << '\n';
        }
        if (added.file && options_.dryRun && !options_.json) {
            console.out << "would add " << printable(file) << " as "
                        << words::text(added.file->path) << '\n';
        }
        ExitCode code = ExitCode::Ok;
        for (const std::string& warning : added.warnings) {
            code = warn(console, file, warning);
        }
        return code;
    }

    /// Nothing is written that could not be restored.
    static std::string faultOf(const std::string& archive) {
        ut::ByteBuffer bytes;
        bytes.reserve(archive.size());
        std::ranges::copy(archive, bytes.data());
        bytes.setSize(archive.size());
        platen::Bundle bundle;
        if (archive.empty()) {
            return "the files are too large for one archive";
        }
        if (archive.size() > platen::BundleLimits{}.archiveBytes) {
            return "the archive is too large to be restored; bundle fewer folders at once";
        }
        if (const platen::EditResult done = bundle.openBytes(std::move(bytes)); !done) {
            return done->reason;
        }
        for (const platen::BundledFile& file : bundle.manifest().files) {
            ut::ByteBuffer content;
            if (const platen::EditResult done = bundle.extract(file, content); !done) {
                return words::quoted(file.path) + ": " + done->reason;
            }
        }
        return {};
    }

    ExitCode store(const std::string& out, const platen::BundleManifest& manifest,
                   const std::string& archive) const {
        if (manifest.files.empty()) {
            fail(console_, "", "nothing was written: there is no plotter file");
            return ExitCode::Difference;
        }
        if (const std::string fault = faultOf(archive); !fault.empty()) {
            return fail(console_, out, "nothing was written: " + fault);
        }
        ExitCode code = ExitCode::Ok;
        if (!options_.dryRun) {
            code = files::writeBytes(archive, out, console_);
        }
        if (code == ExitCode::Error || out == files::standardStream) {
            return code;
        }
        if (options_.json) {
            console_.out << platen::manifestJson(manifest) << '\n';
        } else {
            console_.out << (options_.dryRun ? "would write " : "wrote ") << printable(out) << ": "
                         << contentInWords(manifest) << ", " << archive.size() << " bytes\n";
        }
        return code;
    }

    const BundleOptions& options_;
    const Console& console_;
};

/// Makes a bundle of folders.
ExitCode run(const BundleOptions& options, const Console& console) {
    return Bundling(options, console).run();
}

}  // namespace

CommandEntry addBundle(CLI::App& program) {
    CLI::App* command = arguments::addCommand(
        program, "bundle", "Put an office's plotter files into one zip archive", help);
    const auto options = std::make_shared<BundleOptions>();
    arguments::takeText(command->add_option("DIR", options->folders,
                                            "Folders; the folders in them are searched, too"))
        ->required();
    arguments::addOutput(command, options->out)
        ->description("Archive, or a folder for it (the folder's name and the day)");
    command->add_flag("--dry-run", options->dryRun, "Say what would be in it");
    command->add_flag("--replace", options->replace, "Write over an archive of that name");
    command->add_flag("--json", options->json, "Print the manifest, one JSON object");
    arguments::addMaxBody(command, options->maxBody);
    return entryOf(command, options, run);
}

}  // namespace cli::commands
