#include <algorithm>
#include <utility>

#include <platen/edit_papers.h>
#include <platen/inspect.h>
#include <platen/pia_text_forms.h>
#include <platen/utcore.h>
#include <platen/utcore_replace.h>
#include "edit/refusal.h"
#include "plotcfg/named_pmp.h"
#include "plotcfg/save_pmp.h"

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

EditResult unreadable(const PiaReport& report) {
    return refuse(EditFault::FileUnreadable, report.failure().value_or(PiaFinding{}).describe());
}

std::size_t papersIn(const PlotModelParam& pmp) {
    return pmp.udm.media ? pmp.udm.media->size.papers.size() : 0;
}

}  // namespace

EditResult PaperFile::open(const std::wstring& path, Purpose purpose, PiaReport& report) {
    *this = PaperFile();
    path_ = path;
    PiaInput input;
    if (!input.open(path.c_str())) {
        report = input.report();
        return unreadable(report);
    }
    const FileKind kind = recognise(input).kind;
    isPmp_ = kind == FileKind::Pmp;
    EditResult done;
    if (isPmp_) {
        done = openParameters(input);
    } else if (kind == FileKind::Pc3) {
        done = openConfiguration(input, purpose);
    } else {
        done = refuse(EditFault::WrongKind,
                      std::string("this is a ") + kindName(kind) +
                          "; plot configurations and plot model parameters have custom papers");
    }
    if (const PiaBlock* root = input.root()) {
        input.report().locate(*root);
    }
    report = std::move(input.report());
    if (!done && done->fault == EditFault::FileUnreadable) {
        return unreadable(report);
    }
    if (done) {
        rememberParameters();
    }
    return done;
}

EditResult PaperFile::openConfiguration(PiaInput& input, Purpose purpose) {
    bool printerChanged = false;
    config_ = CPlotCfg3::fromInput(input, printerChanged);
    if (!config_) {
        return refuse(EditFault::FileUnreadable, {});
    }
    deviceKnown_ = config_->builtInDevice() != nullptr;
    if (!deviceKnown_ && config_->meta.defaultSystemCfg.value_or(false)) {
        return refuse(EditFault::StandsForDefaultPrinter,
                      "the configuration stands for the default printer, whichever that is, and "
                      "keeps no papers");
    }
    configBefore_.version = input.container().version;
    configBefore_.mark = FileMark::of(path_);
    configBefore_.lost = lostFrom(*input.root(), *config_);
    const std::wstring name = config_->meta.userDefinedModelPathname;
    const bool complete = plot_config::attachNamedPmp(*config_, path_, input.report());
    if (purpose == Purpose::Edit && !complete) {
        return refuse(EditFault::ParametersMissing,
                      "its plot model parameters, " + ut::encodeUtf8(name) +
                          ", cannot be read and would lose their papers",
                      name);
    }
    configBefore_.body = bodyOf(*config_);
    return {};
}

EditResult PaperFile::openParameters(PiaInput& input) {
    auto parameters = std::make_unique<PlotModelParam>();
    if (!parameters->init(input)) {
        return refuse(EditFault::FileUnreadable, {});
    }
    // Written under the name that it was given, as other files are.
    parameters->filePath = OdString(path_);
    parameters->userDefinedModelPathname = ut::fullPath(path_);
    const BuiltInPlotDevice* device =
        BuiltInPlotDevice::getByModelName(OdString(parameters->canonicalModelName));
    deviceKnown_ = device != nullptr;
    config_.reset(
        CPlotCfg3::create(deviceKnown_ ? device->name.c_str() : BuiltInPlotDevice::pdfName));
    config_->attachPMP(parameters.release());
    return {};
}

void PaperFile::rememberParameters() {
    const PlotModelParam* pmp = config_->pmp();
    if (pmp == nullptr) {
        return;
    }
    PiaInput file;
    if (file.open(pmp->filePath.c_str())) {
        pmpBefore_.version = file.container().version;
        pmpBefore_.mark = FileMark::of(pmp->filePath.text());
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

SavedPapers PaperFile::save() {
    SavedPapers saved;
    const PlotModelParam* pmp = config_->pmp();
    if (pmp != nullptr && bodyOf(*pmp) != pmpBefore_.body) {
        saved.done = saveParameters(saved);
    }
    if (!saved.done || isPmp_ || bodyOf(*config_) == configBefore_.body) {
        // One that was killed may have been about to write both.
        ut::removeAbandoned(path_);
        return saved;
    }
    PiaTree tree;
    if (!config_->writeToBlock(tree.root())) {
        saved.done =
            refuse(EditFault::FileUnwritable, "the configuration cannot be written", path_);
        return saved;
    }
    saved.configuration = written(configBefore_, path_, tree.root());
    if (!saved.configuration->result) {
        saved.done = refuse(EditFault::FileUnwritable,
                            saved.namesOtherParameters
                                ? "it does not name the plot model parameters that were written"
                                : "the configuration cannot be written",
                            path_);
        return saved;
    }
    saved.configuration->papers =
        config_->media.customPapers ? config_->media.customPapers->papers.size() : 0;
    configBefore_ = {bodyOf(*config_), compressedVersion, FileMark::of(path_), {}};
    return saved;
}

EditResult PaperFile::saveParameters(SavedPapers& saved) {
    PlotModelParam& pmp = *config_->pmp();
    const auto unwritable = [this] {
        return refuse(EditFault::FileUnwritable, "the plot model parameters cannot be written",
                      path_);
    };
    PiaTree tree;
    if (!pmp.writeToBlock(tree.root())) {
        return unwritable();
    }
    const std::wstring own = pmp.filePath.text();
    const std::wstring before = config_->meta.userDefinedModelPathname;
    const auto write = [&](const std::wstring& path) {
        saved.ownParameters = std::exchange(saved.parameters, std::nullopt);
        saved.parameters = written(pmpBefore_, path, tree.root());
        return static_cast<bool>(saved.parameters->result);
    };
    EditResult done;
    const auto mayGoTo = [&](const std::wstring& place) {
        if (!own.empty() && place == ut::fullPath(own)) {
            return false;
        }
        // What somebody else wrote meanwhile is not to be set aside by a file of another name.
        if (saved.parameters &&
            saved.parameters->result.report.failure()->code == PiaCode::FileChanged) {
            return false;
        }
        if (ut::fileExists(place)) {
            done = refuse(EditFault::FileOfOthers,
                          "a file of this name is there and is not the one that the "
                          "configuration names",
                          place);
        }
        return static_cast<bool>(done);
    };
    if (!(isPmp_ ? write(own) : plot_config::savePmp(*config_, path_, write, mayGoTo))) {
        return done ? unwritable() : done;
    }
    saved.parameters->papers = papersIn(pmp);
    saved.namesOtherParameters = !isPmp_ && config_->meta.userDefinedModelPathname != before;
    saved.normalised = std::exchange(normalised_, {});
    pmpBefore_ = {bodyOf(pmp), compressedVersion, FileMark::of(saved.parameters->path), {}};
    return {};
}

SavedPapers::Document PaperFile::written(const Before& before, const std::wstring& path,
                                         const PiaBlock& root) {
    SavedPapers::Document document;
    document.path = path;
    document.result = writeFile(root, FileForm::Compressed, PiaKind::Pc3, path, before.mark);
    if (document.result) {
        document.lost = before.lost;
        document.wasJson = before.version != 0 && before.version != compressedVersion;
    }
    return document;
}

}  // namespace platen
