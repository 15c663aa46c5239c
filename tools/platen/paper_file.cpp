#include "tools/platen/paper_file.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <platen/inspect.h>
#include <platen/utcore.h>
#include "tools/platen/files/losses.h"
#include "tools/platen/files/output.h"

namespace platen {
namespace {

constexpr int compressedVersion = 2;

template <class Document>
std::string bodyOf(const Document& document) {
    PiaTree tree;
    return document.writeToBlock(tree.root()) ? piaBodyText(tree.root()) : std::string();
}

template <class Document>
std::vector<std::wstring> lostFrom(const PiaBlock& file, const Document& document) {
    std::vector<std::wstring> paths;
    for (LostItem& item : lostItems(file, document, PiaReport())) {
        paths.push_back(std::move(item.path));
    }
    return paths;
}

std::string countInWords(std::size_t papers) {
    return std::to_string(papers) + (papers == 1 ? " custom paper" : " custom papers");
}

}  // namespace

ExitCode PaperFile::open(const std::string& file, Purpose purpose, const Console& console) {
    file_ = file;
    PiaInput input;
    if (!input.open(ut::decodePath(file).c_str())) {
        return fail(console, file, input.report());
    }
    const FileKind kind = recognise(input).kind;
    if (kind == FileKind::Pc3) {
        return openConfiguration(input, purpose, console);
    }
    if (kind == FileKind::Pmp) {
        return openParameters(input, console);
    }
    return fail(console, file,
                std::string("this is a ") + kindName(kind) +
                    "; plot configurations and plot model parameters have custom papers");
}

ExitCode PaperFile::openConfiguration(PiaInput& input, Purpose purpose, const Console& console) {
    bool printerChanged = false;
    const std::unique_ptr<CPlotCfg3> asItStands = CPlotCfg3::fromInput(input, printerChanged);
    if (!asItStands) {
        return fail(console, file_, input.report());
    }
    deviceKnown_ = asItStands->builtInDevice() != nullptr;
    if (!deviceKnown_ && asItStands->meta.defaultSystemCfg.value_or(false)) {
        return fail(console, file_,
                    "the configuration stands for the default printer, whichever that is, and "
                    "keeps no papers; make one for a device (meta/default_system_cfg=FALSE)");
    }
    configBefore_.version = input.container().version;
    configBefore_.lost = lostFrom(*input.root(), *asItStands);
    PiaReport report;
    config_.reset(CPlotCfg3::read(ut::decodePath(file_).c_str(), printerChanged, &report));
    if (!config_) {
        return fail(console, file_, report);
    }
    const ExitCode read = warn(console, file_, report);
    const std::wstring& pmpName = config_->meta.userDefinedModelPathname;
    if (purpose == Purpose::Edit && config_->pmp() == nullptr && !pmpName.empty()) {
        return fail(console, file_,
                    "its plot model parameters, " + ut::encodeUtf8(pmpName) +
                        ", cannot be read and would lose their papers; put the file beside the "
                        "configuration, or give them up with platen set " +
                        file_ + " meta/user_defined_model_pathname= --in-place");
    }
    configBefore_.body = bodyOf(*config_);
    rememberParameters();
    return read;
}

ExitCode PaperFile::openParameters(PiaInput& input, const Console& console) {
    isPmp_ = true;
    PiaReport report;
    std::unique_ptr<PlotModelParam> parameters(
        PlotModelParam::read(ut::decodePath(file_).c_str(), OdArray<OdString>(), &report));
    if (!parameters) {
        return fail(console, file_, report);
    }
    // Written under the name that it was given, as other files are.
    parameters->filePath = OdString(ut::decodePath(file_));
    pmpBefore_.version = input.container().version;
    const BuiltInPlotDevice* device =
        BuiltInPlotDevice::getByModelName(OdString(parameters->canonicalModelName));
    deviceKnown_ = device != nullptr;
    config_.reset(
        CPlotCfg3::create(deviceKnown_ ? device->name.c_str() : BuiltInPlotDevice::pdfName));
    config_->attachPMP(parameters.release());
    rememberParameters();
    return warn(console, file_, report);
}

void PaperFile::rememberParameters() {
    const PlotModelParam* pmp = config_->pmp();
    if (pmp == nullptr) {
        return;
    }
    PiaInput file;
    if (file.open(pmp->filePath.c_str())) {
        pmpBefore_.version = file.container().version;
        pmpBefore_.lost = lostFrom(*file.root(), *pmp);
    }
    pmpBefore_.body = bodyOf(*pmp);
    if (!pmp->udm.media) {
        return;
    }
    // The list is always written anew, and a paper does not know all that its entry holds.
    std::vector<CustomPaperSize> papers;
    config_->getCustomPaperSizes(papers);
    CPlotCfg3 rewritten(*config_);
    rewritten.setCustomPaperSizes(papers);
    const auto& before = pmp->udm.media->size.papers;
    const auto& after = rewritten.pmp()->udm.media->size.papers;
    for (std::size_t index = 0; index < std::min(before.size(), after.size()); ++index) {
        const auto& old = before[index];
        const auto& fresh = after[index];
        if (old.capsType != fresh.capsType || old.name != fresh.name ||
            old.mediaGroup != fresh.mediaGroup || old.landscapeMode != fresh.landscapeMode) {
            normalised_.push_back(old.localizedName);
        }
    }
}

void PaperFile::largestPaper(double& width, double& height) const {
    const PlotModelParam* pmp = config_->pmp();
    width = pmp != nullptr ? pmp->mod.media.sizeMaxX : 0;
    height = pmp != nullptr ? pmp->mod.media.sizeMaxY : 0;
    if (deviceKnown_) {
        const double largest = CPlotCfg3::isBuiltInPDF(config_.get())
                                   ? CPlotCfg3::MAX_PDF_PAPER_DIM
                                   : CPlotCfg3::MAX_IMG_PAPER_DIM;
        width = width > 0 ? width : largest;
        height = height > 0 ? height : largest;
    }
}

ExitCode PaperFile::save(const Console& console) {
    PlotModelParam* pmp = config_->pmp();
    bool renamed = false;
    ExitCode worst = ExitCode::Ok;
    const bool pmpChanged = pmp != nullptr && bodyOf(*pmp) != pmpBefore_.body;
    const bool configChanged = !isPmp_ && bodyOf(*config_) != configBefore_.body;
    if (pmpChanged) {
        worst = savePmp(renamed, console);
    }
    if (worst == ExitCode::Error || (!configChanged && !renamed)) {
        if (!pmpChanged) {
            console.out << "nothing changed\n";
        }
        return worst;
    }
    PiaTree tree;
    if (!config_->writeToBlock(tree.root())) {
        return fail(console, file_, "the configuration cannot be written");
    }
    const ExitCode written = cli::files::writeCompressed(tree.root(), PiaKind::Pc3, file_, console);
    if (written == ExitCode::Error) {
        return !renamed ? written
                        : fail(console, file_,
                               "it does not name the plot model parameters that were written");
    }
    console.out << "wrote " << cli::printable(file_);
    if (renamed) {
        console.out << ", which names "
                    << cli::printable(ut::encodeUtf8(config_->meta.userDefinedModelPathname));
    } else if (config_->media.customPapers) {
        console.out << ", " << countInWords(config_->media.customPapers->papers.size());
    }
    console.out << '\n';
    return worse(worse(worst, written), warnOfRewriting(configBefore_, file_, console));
}

/// The PMP goes into its own file or, when there is none or it cannot be written, beside the
/// configuration, which then has to name it there (`renamed`). Files of others are left alone.
ExitCode PaperFile::savePmp(bool& renamed, const Console& console) {
    PlotModelParam& pmp = *config_->pmp();
    PiaTree tree;
    if (!pmp.writeToBlock(tree.root())) {
        return fail(console, file_, "the plot model parameters cannot be written");
    }
    std::string path = ut::encodePath(pmp.filePath.text());
    ExitCode written = ExitCode::Error;
    if (!path.empty()) {
        written = cli::files::writeCompressed(tree.root(), PiaKind::Pc3, path, console);
    }
    if (written == ExitCode::Error) {
        const std::wstring place = config_->placeForPmp(ut::decodePath(file_));
        if (isPmp_ || (!path.empty() && ut::fullPath(place) == ut::fullPath(pmp.filePath.text()))) {
            return written;
        }
        const bool moved = !path.empty();
        path = ut::encodePath(place);
        if (ut::fileExists(place)) {
            return fail(console, path,
                        "a file of this name is there and is not the one that the configuration "
                        "names; move it away, or attach it with platen set " +
                            file_ + " meta/user_defined_model_pathname=" + path +
                            " --in-place; nothing was written");
        }
        written = cli::files::writeCompressed(tree.root(), PiaKind::Pc3, path, console);
        if (written == ExitCode::Error) {
            return written;
        }
        if (moved) {
            written = warn(console, path, "the plot model parameters went here instead");
        }
        pmp.filePath = OdString(place);
        pmp.userDefinedModelPathname = place;
        config_->meta.userDefinedModelPathname = place;
        renamed = true;
    }
    console.out << "wrote " << cli::printable(path) << ", "
                << countInWords(pmp.udm.media ? pmp.udm.media->size.papers.size() : 0) << '\n';
    ExitCode worst = worse(written, warnOfRewriting(pmpBefore_, path, console));
    if (!normalised_.empty()) {
        std::string names;
        for (const std::wstring& name : normalised_) {
            names += (names.empty() ? "\"" : ", \"") + ut::encodeUtf8(name) + '"';
        }
        worst = warn(console, path,
                     "entries got the usual name, type, group and orientation: " + names);
    }
    return worst;
}

ExitCode PaperFile::warnOfRewriting(const Document& before, const std::string& path,
                                    const Console& console) const {
    ExitCode worst = cli::files::warnOfLosses(before.lost, path, console);
    if (before.version != 0 && before.version != compressedVersion) {
        worst = warn(console, path,
                     "it was a version-3 file (JSON) and is a compressed version-2 file now");
    }
    return worst;
}

}  // namespace platen
