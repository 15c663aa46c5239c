#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include <platen/edit_files.h>
#include <platen/house_bundle.h>
#include <platen/utcore_host.h>
#include "edit/refusal.h"
#include "house/digest.h"
#include "house/portable_names.h"
#include "house/zip.h"
#include "platform/utcore/file_name.h"
#include "platform/utcore/folder.h"

namespace platen {
namespace {

std::string shown(std::wstring_view text) { return ut::printable(quoted(text)); }

/// Files by their places, as the system tells these apart.
struct PlaceOrder {
    bool operator()(const std::wstring& left, const std::wstring& right) const {
        static const bool caseCounts = !ut::isSamePath(L"a", L"A");
        return caseCounts ? left < right : house::folded(left) < house::folded(right);
    }
};

std::wstring placeOf(const std::wstring& file) { return ut::FileName(file).getFullPath(); }

bool isNamedAsPlotterFile(const std::wstring& file) {
    constexpr std::array<std::wstring_view, 4> extensions{L"pc3", L"pmp", L"ctb", L"stb"};
    return std::ranges::any_of(
        extensions, [&](std::wstring_view extension) { return ut::hasExtension(file, extension); });
}

}  // namespace

struct BundleWriter::Own {
    static constexpr std::size_t noNumber = ~std::size_t{0};
    Settings settings;
    house::ZipWriter zip;
    house::PortablePaths paths;
    BundleManifest manifest;
    /// The numbers of those in the manifest, by their places; `noNumber` for what is not there.
    std::map<std::wstring, std::size_t, PlaceOrder> places;
    /// Where the PMP of a configuration lies, by the number of the configuration.
    std::map<std::size_t, std::wstring> parameters;

    Added leaveOut(const std::wstring& place, std::string reason, bool isStranger) {
        manifest.leftOut.push_back({place, std::move(reason), isStranger});
        return {std::nullopt, manifest.leftOut.back(), {}};
    }
    void describe(SourceFile& source, const std::wstring& place, BundledFile& file, Added& added);
    Added take(const std::wstring& place, std::wstring_view wanted, ut::ByteBuffer bytes);
};

/// What the file is and names.
void BundleWriter::Own::describe(SourceFile& source, const std::wstring& place, BundledFile& file,
                                 Added& added) {
    Content content = readContent(source.input(), place, settings.reading);
    file.kind = content.kind;
    const CMetaNode* meta = content.config       ? &content.config->meta
                            : content.parameters ? content.parameters.get()
                                                 : nullptr;
    if (content.rejected) {
        added.warnings.push_back(
            "the document in it is damaged, and is kept as it is: " +
            source.input().report().failure().value_or(PiaFinding{}).describe());
    }
    if (meta == nullptr) {
        return;
    }
    file.printer = meta->winDeviceName;
    file.parameters = meta->userDefinedModelPathname;
    if (content.kind != FileKind::Pc3 || file.parameters.empty()) {
        return;
    }
    if (content.pmpPath.empty()) {
        added.warnings.push_back("the PMP that it names is not found: " + shown(file.parameters));
    } else {
        parameters.emplace(manifest.files.size(), placeOf(content.pmpPath));
    }
}

BundleWriter::Added BundleWriter::Own::take(const std::wstring& place, std::wstring_view wanted,
                                            ut::ByteBuffer bytes) {
    Added added;
    BundledFile file;
    file.place = place;
    file.bytes = bytes.size();
    file.sha256 = house::sha256(bytes.view());
    file.modified = ut::timeOf(place).value_or(0);
    const bool isNamed = isNamedAsPlotterFile(place);
    const bool isMarked = bytes.view().starts_with("PIAFILEVERSION_");
    SourceFile source;
    const bool isRead =
        source.readBytes(std::move(bytes), settings.reading,
                         isNamed ? SourceFile::Accept::EveryForm : SourceFile::Accept::OnlyFiles);
    if (isRead) {
        describe(source, place, file, added);
    }
    if (!isNamed && !isMarked && file.kind.value_or(FileKind::Pia) == FileKind::Pia) {
        return leaveOut(place, "it is no plotter file", true);
    }
    if (!isRead) {
        added.warnings.push_back(
            "it is damaged, and is kept as it is: " +
            source.input().report().failure().value_or(PiaFinding{}).describe());
    }
    file.path = paths.take(wanted);
    if (file.path != wanted) {
        added.warnings.push_back("it is called " + shown(file.path) +
                                 " in the bundle, since not every system takes its own name");
    }
    if (!zip.add(ut::encodeUtf8(file.path), source.bytes(), file.modified)) {
        parameters.erase(manifest.files.size());
        return leaveOut(place, "the archive is too large", false);
    }
    places.emplace(place, manifest.files.size());
    added.file = manifest.files.emplace_back(std::move(file));
    return added;
}

BundleWriter::BundleWriter(Settings settings) : own_(std::make_unique<Own>()) {
    own_->settings = std::move(settings);
    own_->manifest.madeBy = own_->settings.madeBy;
    own_->manifest.date = own_->settings.date;
    own_->manifest.folders = own_->settings.folders;
    static_cast<void>(own_->paths.takeExactly(ut::decodePath(manifestName)));
}

BundleWriter::~BundleWriter() = default;

BundleWriter::Added BundleWriter::add(const std::wstring& file, std::wstring_view wanted) {
    const std::wstring place = placeOf(file);
    if (const auto known = own_->places.find(place); known != own_->places.end()) {
        return {own_->manifest.files[known->second], std::nullopt, {}};
    }
    if (ut::hasExtension(place, L"bak")) {
        return own_->leaveOut(place, "it is a copy that was kept", true);
    }
    ut::ByteBuffer bytes;
    bool tooLarge = false;
    const ut::SystemError error =
        ut::readFile(place, own_->settings.reading.limits.bodyBytes, bytes, tooLarge);
    if (error || tooLarge) {
        const bool isStranger = tooLarge && !isNamedAsPlotterFile(place);
        return own_->leaveOut(place,
                              tooLarge ? "it is larger than a plotter file may be"
                                       : "it cannot be read: " + error.message(),
                              isStranger);
    }
    return own_->take(place, wanted, std::move(bytes));
}

BundleWriter::Added BundleWriter::leaveOut(const std::wstring& file, std::string reason) {
    return own_->leaveOut(placeOf(file), std::move(reason), true);
}

std::vector<BundleWriter::Added> BundleWriter::addMissingParameters() {
    std::vector<Added> all;
    for (const auto& [number, place] : own_->parameters) {
        if (own_->places.contains(place)) {
            continue;
        }
        Added added = add(place, L"PMP/" + std::wstring(ut::fileNameOf(place)));
        if (added.leftOut) {
            // It is asked for once.
            own_->places.emplace(place, Own::noNumber);
        }
        all.push_back(std::move(added));
    }
    return all;
}

BundleManifest BundleWriter::finish(std::string& archive) {
    std::int64_t newest = 0;
    for (std::size_t index = 0; index < own_->manifest.files.size(); ++index) {
        BundledFile& file = own_->manifest.files[index];
        newest = std::max(newest, file.modified);
        const auto parameters = own_->parameters.find(index);
        const auto place = parameters == own_->parameters.end()
                               ? own_->places.end()
                               : own_->places.find(parameters->second);
        if (place != own_->places.end() && place->second != Own::noNumber) {
            file.parametersPath = own_->manifest.files[place->second].path;
        }
    }
    if (!own_->zip.add(manifestName, manifestJson(own_->manifest, true), newest) ||
        !own_->zip.finish(archive)) {
        archive.clear();
    }
    return std::move(own_->manifest);
}

}  // namespace platen
