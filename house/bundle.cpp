#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include <platen/house_bundle.h>
#include "edit/refusal.h"
#include "house/digest.h"
#include "house/zip.h"

namespace platen {

struct Bundle::Own {
    ut::ByteBuffer bytes;
    house::ZipReader zip;
    BundleManifest manifest;
    std::vector<std::string> strangers;
    /// The entries of the archive by their names.
    std::map<std::string, const house::ZipEntry*, std::less<>> entries;
};

namespace {

EditResult refuseBundle(std::string reason) {
    return refuse(EditFault::ValueInvalid, std::move(reason));
}

/// Of a path that is printable.
std::string entryFault(std::wstring_view path, const std::string& fault) {
    return "the file " + ut::printable(quoted(path)) + " cannot be taken out: " + fault;
}

}  // namespace

Bundle::Bundle() : own_(std::make_unique<Own>()) {}
Bundle::~Bundle() = default;

EditResult Bundle::open(const std::wstring& path, const BundleLimits& limits) {
    ut::ByteBuffer bytes;
    bool tooLarge = false;
    const ut::SystemError error = ut::readFile(path, limits.archiveBytes, bytes, tooLarge);
    if (tooLarge) {
        return refuse(EditFault::FileUnreadable,
                      "the archive has more than " + std::to_string(limits.archiveBytes) +
                          " bytes, which is more than a bundle may have");
    }
    return error ? refuse(EditFault::FileUnreadable, error.message())
                 : openBytes(std::move(bytes), limits);
}

EditResult Bundle::openBytes(ut::ByteBuffer bytes, const BundleLimits& limits) {
    own_ = std::make_unique<Own>();
    own_->bytes = std::move(bytes);
    if (const std::string fault = own_->zip.open(own_->bytes.view(), limits.entries);
        !fault.empty()) {
        return refuseBundle("the archive cannot be used: " + fault);
    }
    std::set<std::string_view> twice;
    for (const house::ZipEntry& entry : own_->zip.entries()) {
        if (!own_->entries.emplace(entry.name, &entry).second) {
            twice.insert(entry.name);
        }
    }
    const auto found = own_->entries.find(manifestName);
    if (found == own_->entries.end()) {
        return refuseBundle(std::string("there is no ") + manifestName +
                            " in it, so that it is no bundle; unpack it with any zip program, and "
                            "move what comes out with platen migrate");
    }
    ut::ByteBuffer json;
    const house::ZipEntry& entry = *found->second;
    std::string fault = twice.contains(entry.name)           ? "there are two of it"
                        : entry.bytes > limits.manifestBytes ? "it is too large"
                                                             : own_->zip.extract(entry, json);
    if (!fault.empty()) {
        return refuseBundle(entryFault(ut::decodePath(manifestName), fault));
    }
    BundleManifest manifest;
    if (EditResult done = readManifest(json.view(), manifest); !done) {
        return done;
    }
    std::uint64_t total = 0;
    std::set<std::string> named{manifestName};
    for (const BundledFile& file : manifest.files) {
        const std::string name = ut::encodeUtf8(file.path);
        const auto place = own_->entries.find(name);
        total += std::min(file.bytes, limits.totalBytes + 1);
        fault = place == own_->entries.end()         ? "the archive does not have it"
                : twice.contains(name)               ? "the archive has it twice"
                : !place->second->fault.empty()      ? place->second->fault
                : place->second->bytes != file.bytes ? "its size is not that in the manifest"
                : file.bytes > limits.fileBytes      ? "it is larger than a plotter file may be"
                : total > limits.totalBytes          ? "all files together are too large"
                                                     : "";
        if (!fault.empty()) {
            return refuseBundle(entryFault(file.path, fault));
        }
        named.insert(name);
    }
    for (const auto& [name, unnamed] : own_->entries) {
        if (!named.contains(name)) {
            own_->strangers.push_back(name);
        }
    }
    own_->manifest = std::move(manifest);
    return {};
}

const BundleManifest& Bundle::manifest() const { return own_->manifest; }
const std::vector<std::string>& Bundle::strangers() const { return own_->strangers; }

EditResult Bundle::extract(const BundledFile& file, ut::ByteBuffer& bytes) const {
    const auto found = own_->entries.find(ut::encodeUtf8(file.path));
    std::string fault = found == own_->entries.end() ? "the archive does not have it"
                                                     : own_->zip.extract(*found->second, bytes);
    if (fault.empty() && house::sha256(bytes.view()) != file.sha256) {
        fault = "it is not what was put in: its digest differs from that in the manifest";
    }
    return fault.empty() ? EditResult() : refuseBundle("it cannot be taken out: " + fault);
}

}  // namespace platen
