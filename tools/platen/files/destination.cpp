#include "tools/platen/files/destination.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <system_error>

#include <platen/utcore.h>
#include "tools/platen/arguments/arguments.h"
#include "tools/platen/files/file_walk.h"
#include "tools/platen/files/output.h"

namespace cli::files {
namespace {

/// What is wrong with the options taken together; empty when nothing is.
std::string usageFault(const std::string& named, const Destination& destination) {
    if (destination.inPlace && named == standardStream) {
        return "standard input cannot be changed in place; write the result with -o OUT";
    }
    if (destination.inPlace == !destination.out.empty() && !destination.dryRun) {
        return "say where the result goes: either -o OUT or --in-place";
    }
    const bool leadsElsewhere = destination.backupSuffix.find_first_of("/\\") != std::string::npos;
    return leadsElsewhere ? "the suffix of --in-place only ends a name; leave slashes out" : "";
}

ExitCode write(platen::SourceFile& source, const PiaBlock& root, bool changed,
               const std::string& file, const Console& console) {
    if (!changed) {
        return writeBytes(source.bytes(), file, console);
    }
    return file == standardStream
               ? writeTree(root, source.form(), source.headerKind(), file, console)
               : tell(source.write(ut::decodePath(file), root), file, console);
}

}  // namespace

void addDestination(CLI::App* command, Destination& destination) {
    arguments::addOutput(command, destination.out);
    command->add_flag("--dry-run", destination.dryRun, "Say which files would change");
    // A flag whose value can only follow "=", so that it takes no argument for its own.
    const CLI::Option* inPlace =
        command->add_flag("--in-place", destination.backupSuffix,
                          "Change FILE itself; --in-place=SUFFIX keeps the old file under "
                          "its name and SUFFIX");
    command->parse_complete_callback([&destination, inPlace] {
        constexpr const char* flagWithoutValue = "true";
        destination.inPlace = inPlace->count() > 0;
        if (destination.backupSuffix == flagWithoutValue) {
            destination.backupSuffix.clear();
        }
    });
}

ExitCode changeFiles(const Selection& selection, const Destination& destination,
                     const Console& console, const FileWork& work) {
    const std::string& first = selection.named.front();
    if (const std::string fault = usageFault(first, destination); !fault.empty()) {
        return fail(console, first, fault);
    }
    const Selected selected = select(selection, console);
    if ((selected.isBatch || selected.files.size() > 1) && !destination.out.empty()) {
        return fail(console, first, "many files have no room in one OUT; add --in-place");
    }
    return forEachFile(selected, {.doing = "changing", .jobs = selection.jobs}, console, work);
}

ExitCode changeFiles(const std::string& named, const Selection& selection,
                     const Destination& destination, const Console& console, const FileWork& work) {
    Selection one = selection;
    one.named = {named};
    return changeFiles(one, destination, console, work);
}

ExitCode keepingCopy(const std::string& file, const Destination& destination,
                     std::string_view bytes, const Console& console,
                     const std::function<ExitCode()>& write) {
    if (destination.backupSuffix.empty()) {
        return write();
    }
    const std::string copy = file + destination.backupSuffix;
    const bool isNew = !ut::fileExists(ut::decodePath(copy));
    if (writeBytes(bytes, copy, console) != ExitCode::Ok) {
        return ExitCode::Error;
    }
    const ExitCode code = write();
    if (code == ExitCode::Error && isNew) {
        std::error_code ignored;
        std::filesystem::remove(pathOf(copy), ignored);
    }
    return code;
}

ExitCode storeChanged(const std::string& file, const Destination& destination,
                      platen::SourceFile& source, const PiaBlock& root, bool changed,
                      const Console& console) {
    if (destination.dryRun) {
        console.out << printable(file) << (changed ? ": would change\n" : ": stays as it is\n");
        return ExitCode::Ok;
    }
    if (!destination.inPlace) {
        return write(source, root, changed, destination.out, console);
    }
    return keepingCopy(file, destination, source.bytes(), console, [&] {
        return changed ? write(source, root, changed, file, console) : ExitCode::Ok;
    });
}

}  // namespace cli::files
