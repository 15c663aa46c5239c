#include "tools/platen/files/paper_file.h"

#include <cstddef>
#include <vector>

#include <platen/utcore.h>
#include "tools/platen/files/losses.h"
#include "tools/platen/files/output.h"

namespace cli::files {
namespace {

using platen::EditFault;
using platen::SavedPapers;

std::string countInWords(std::size_t papers) {
    return std::to_string(papers) + (papers == 1 ? " custom paper" : " custom papers");
}

/// The path of a document in the folder of `file`, or below it, as `file` was given.
std::string shownBeside(const std::string& file, const std::wstring& path) {
    const std::wstring given = ut::decodePath(file);
    const std::wstring full = ut::fullPath(given);
    const std::wstring folder = ut::joinPath(ut::folderOf(full), L"");
    return ut::encodePath(path.starts_with(folder)
                              ? ut::joinPath(ut::folderOf(given), path.substr(folder.size()))
                              : path);
}

/// What writing over the old file cost.
ExitCode warnOfRewriting(const SavedPapers::Document& document, const std::string& file,
                         const Console& console) {
    const ExitCode worst = warnOfLosses(document.lost, file, console);
    return !document.wasJson
               ? worst
               : warn(console, file,
                      "it was a version-3 file (JSON) and is a compressed version-2 file now");
}

ExitCode tellOfParameters(const std::string& file, const SavedPapers& saved,
                          const Console& console) {
    if (saved.ownParameters) {
        tell(saved.ownParameters->result, shownBeside(file, saved.ownParameters->path), console);
    }
    if (!saved.parameters) {
        return ExitCode::Ok;
    }
    const SavedPapers::Document& document = *saved.parameters;
    const std::string path = shownBeside(file, document.path);
    ExitCode worst = tell(document.result, path, console);
    if (worst == ExitCode::Error) {
        return worst;
    }
    if (saved.ownParameters) {
        worst = warn(console, path, "the plot model parameters went here instead");
    }
    console.out << "wrote " << printable(path) << ", " << countInWords(document.papers) << '\n';
    worst = worse(worst, warnOfRewriting(document, path, console));
    if (!saved.normalised.empty()) {
        std::string names;
        for (const std::wstring& name : saved.normalised) {
            names += (names.empty() ? "\"" : ", \"") + ut::encodeUtf8(name) + '"';
        }
        worst = warn(console, path,
                     "entries got the usual name, type, group and orientation: " + names);
    }
    return worst;
}

ExitCode tellOfConfiguration(const std::string& file, const SavedPapers& saved,
                             const platen::PaperFile& papers, const Console& console) {
    const ExitCode written = tell(saved.configuration->result, file, console);
    if (written == ExitCode::Error) {
        return written;
    }
    console.out << "wrote " << printable(file);
    if (saved.namesOtherParameters) {
        const std::wstring& name = papers.config().meta.userDefinedModelPathname;
        console.out << ", which names " << printable(ut::encodeUtf8(name));
    } else if (papers.config().media.customPapers) {
        console.out << ", " << countInWords(saved.configuration->papers);
    }
    console.out << '\n';
    return worse(written, warnOfRewriting(*saved.configuration, file, console));
}

/// The reason, unless what was written has told it already.
ExitCode tellOfRefusal(const std::string& file, const SavedPapers& saved, const Console& console) {
    const platen::EditRefusal& refusal = *saved.done;
    if (refusal.fault == EditFault::FileOfOthers) {
        const std::string path = shownBeside(file, refusal.wanted);
        return fail(console, path,
                    refusal.reason + "; move it away, or attach it with platen set " + file +
                        " meta/user_defined_model_pathname=" + path +
                        " --in-place; nothing was written");
    }
    const bool told = (saved.parameters && !saved.parameters->result) ||
                      (saved.configuration && !saved.namesOtherParameters);
    return told ? ExitCode::Error : fail(console, file, refusal.reason);
}

}  // namespace

ExitCode openPapers(const std::string& file, platen::PaperFile& papers,
                    platen::PaperFile::Purpose purpose, const Console& console) {
    PiaReport report;
    const platen::EditResult opened = papers.open(ut::decodePath(file), purpose, report);
    if (opened) {
        return warn(console, file, report);
    }
    switch (opened->fault) {
        case EditFault::FileUnreadable:
            return fail(console, file, report);
        case EditFault::StandsForDefaultPrinter:
            return fail(console, file,
                        opened->reason + "; make one for a device (meta/default_system_cfg=FALSE)");
        case EditFault::ParametersMissing:
            warn(console, file, report);
            return fail(console, file,
                        opened->reason +
                            "; put the file beside the configuration, or give them up with "
                            "platen set " +
                            file + " meta/user_defined_model_pathname= --in-place");
        default:
            return fail(console, file, opened->reason);
    }
}

ExitCode savePapers(const std::string& file, platen::PaperFile& papers, const Console& console) {
    const SavedPapers saved = papers.save();
    ExitCode worst = tellOfParameters(file, saved, console);
    if (saved.configuration) {
        worst = worse(worst, tellOfConfiguration(file, saved, papers, console));
    }
    if (!saved.done) {
        return tellOfRefusal(file, saved, console);
    }
    if (!saved.parameters && !saved.configuration) {
        console.out << "nothing changed\n";
    }
    return worst;
}

}  // namespace cli::files
