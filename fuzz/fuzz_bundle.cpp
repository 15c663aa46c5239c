// Archives and manifests that anybody may have sent, up to what would be written where.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <platen/house.h>
#include "fuzz/oracle.h"
#include "house/zip.h"

namespace {

constexpr std::uint64_t largestFile = std::uint64_t{1} << 20U;

/// A path below the folder that any system keeps there, by rules of its own.
void requireInside(const std::wstring& path) {
    std::wstring rest = path + L'/';
    for (std::size_t slash = rest.find(L'/'); slash != std::wstring::npos;
         slash = rest.find(L'/')) {
        const std::wstring name = rest.substr(0, slash);
        require(!name.empty() && name.find_first_not_of(L". ") != std::wstring::npos);
        require(name.back() != L'.' && name.back() != L' ');
        rest.erase(0, slash + 1);
    }
    require(path.find_first_of(L"\\:*?\"<>|") == std::wstring::npos);
    require(std::ranges::none_of(path, [](wchar_t letter) { return letter < L' '; }));
}

void readAsManifest(std::string_view text) {
    platen::BundleManifest manifest;
    if (!platen::readManifest(text, manifest)) {
        return;
    }
    for (const platen::BundledFile& file : manifest.files) {
        requireInside(file.path);
    }
    const std::string written = platen::manifestJson(manifest);
    platen::BundleManifest again;
    require(static_cast<bool>(platen::readManifest(written, again)));
    require(platen::manifestJson(again) == written);
}

void readAsZip(std::string_view bytes) {
    platen::house::ZipReader zip;
    constexpr std::size_t mostEntries = 100;
    if (!zip.open(bytes, mostEntries).empty()) {
        return;
    }
    for (const platen::house::ZipEntry& entry : zip.entries()) {
        ut::ByteBuffer content;
        if (entry.bytes <= largestFile && zip.extract(entry, content).empty()) {
            require(content.size() == entry.bytes);
        }
    }
}

void readAsBundle(std::string_view bytes) {
    ut::ByteBuffer copy;
    copy.reserve(bytes.size());
    std::ranges::copy(bytes, copy.data());
    copy.setSize(bytes.size());
    platen::Bundle bundle;
    const platen::BundleLimits limits{
        .entries = 100, .fileBytes = largestFile, .totalBytes = 4 * largestFile};
    if (!bundle.openBytes(std::move(copy), limits)) {
        return;
    }
    platen::MoveMap printers;
    require(static_cast<bool>(printers.add(L"Old", L"New")));
    const platen::RestoreSettings settings{
        .folder = L"/out", .printers = &printers, .reading = platen::readingUpTo(largestFile)};
    for (const platen::BundledFile& file : bundle.manifest().files) {
        requireInside(file.path);
        platen::PlannedFile planned;
        if (platen::planFile(bundle, file, settings, planned)) {
            require(!planned.moved.changes.empty() || planned.bytes.size() == file.bytes);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    readAsManifest(bytes);
    readAsZip(bytes);
    readAsBundle(bytes);
    return 0;
}
