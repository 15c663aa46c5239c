#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platen/pia.h>
#include <platen/pmp.h>
#include <platen/utcore.h>
#include <platen/utcore_host.h>
#include "platform/oda/od_error.h"
#include "pmp/pmp_keys.h"

namespace {

constexpr std::wstring_view pmpFolder = L"PMP";

/// Each folder and its sub-folder "PMP", in the order in which they are searched.
std::vector<std::wstring> candidatesOf(const OdArray<OdString>& folders) {
    std::vector<std::wstring> candidates;
    odReportingMemory([&] {
        for (const OdString& folder : folders) {
            if (!folder.isEmpty()) {
                candidates.push_back(folder.text());
            }
            candidates.push_back(ut::joinPath(folder.text(), pmpFolder));
        }
    });
    return candidates;
}

/// Whether a name says nothing about where it starts from. It may be one of another system.
bool isRelative(std::wstring_view name) {
    const bool rooted = name.starts_with(L'/') || name.starts_with(L'\\');
    const bool hasDrive = name.size() > 1 && name[1] == L':';
    return !rooted && !hasDrive;
}

std::wstring firstWith(std::wstring_view file, const std::vector<std::wstring>& folders) {
    for (const std::wstring& folder : folders) {
        std::wstring path = ut::joinPath(folder, file);
        if (ut::fileExists(path)) {
            return ut::fullPath(path);
        }
    }
    return {};
}

/// The file of that name beside the configuration, which is in the first folder; empty when there
/// is none.
std::wstring besideConfiguration(std::wstring_view name, const OdArray<OdString>& folders) {
    if (folders.isEmpty() || folders[0].isEmpty()) {
        return {};
    }
    OdArray<OdString> first;
    first.append(folders[0]);
    return firstWith(ut::fileNameOf(name), candidatesOf(first));
}

template <class Node>
void unshare(std::shared_ptr<Node>& node) {
    if (node) {
        node = std::make_shared<Node>(*node);
    }
}

}  // namespace

std::wstring PlotModelParam::find(std::wstring_view name, const OdArray<OdString>& folders,
                                  PiaReport* report) {
    if (ut::fileExists(name)) {
        std::wstring path = ut::fullPath(name);
        // Where the program happens to run says nothing about the configuration.
        std::wstring beside =
            isRelative(name) ? besideConfiguration(name, folders) : std::wstring();
        if (beside.empty() || ut::FileName(beside) == ut::FileName(path)) {
            return path;
        }
        if (report != nullptr) {
            report->warn({.code = PiaCode::NameAmbiguous,
                          .expected = beside + L" or " + path,
                          .found = std::wstring(name)});
        }
        return beside;
    }
    const std::vector<std::wstring> candidates = candidatesOf(folders);
    if (std::wstring path = firstWith(ut::fileNameOf(name), candidates); !path.empty()) {
        return path;
    }
    if (report != nullptr) {
        std::wstring searched;
        for (const std::wstring& candidate : candidates) {
            searched += (searched.empty() ? L" or in " : L", ") + candidate;
        }
        report->fail({.code = PiaCode::FileUnreadable,
                      .expected = L"a file of that name" + searched,
                      .found = std::wstring(name)});
    }
    return {};
}

PlotModelParam* PlotModelParam::read(const wchar_t* name, const OdArray<OdString>& folders,
                                     PiaReport* report) {
    PiaInput input;
    auto document = std::make_unique<PlotModelParam>();
    PiaReport search;
    const std::wstring path = find(name == nullptr ? L"" : name, folders, &search);
    const bool done = !path.empty() && input.open(path.c_str()) && document->init(input);
    if (report != nullptr) {
        *report = std::move(path.empty() ? search : input.report());
        if (!path.empty()) {
            node_keys::passWarnings(*report, search);
        }
    }
    if (!done) {
        return nullptr;
    }
    document->filePath = OdString(path);
    document->userDefinedModelPathname = path;
    return document.release();
}

bool PlotModelParam::init(PiaInput& input) {
    const PiaBlock* root = input.root();
    if (root == nullptr) {
        return input.report().fail({.code = PiaCode::FileUnreadable});
    }
    hidden.reset();
    return node_keys::read(*root, *this, {}, input.report());
}

PlotModelParam* PlotModelParam::create(const CMetaNode& meta) {
    auto document = std::make_unique<PlotModelParam>();
    static_cast<CMetaNode&>(*document) = meta;
    document->configDescription.clear();
    document->configAutospool.reset();
    return document.release();
}

std::unique_ptr<PlotModelParam> PlotModelParam::clone() const {
    auto copy = std::make_unique<PlotModelParam>(*this);
    unshare(copy->mod.media.size);
    unshare(copy->mod.media.description);
    unshare(copy->udm.media);
    unshare(copy->hidden);
    if (copy->hidden) {
        unshare(copy->hidden->media.size);
    }
    return copy;
}

bool PlotModelParam::writeToBlock(PiaBlock& root) const { return node_keys::write(*this, root); }

bool PlotModelParam::write(const wchar_t* path, PiaReport* report) {
    PiaReport unread;
    PiaReport& reasons = report != nullptr ? *report : unread;
    reasons.clear();
    if (path == nullptr) {
        return reasons.fail({.code = PiaCode::FileUnwritable, .expected = L"a path"});
    }
    PiaFileOut file;
    file.setKind(PiaKind::Pc3);
    const bool done =
        file.write([this](PiaSink& root) { return node_keys::write(*this, root); }, path);
    reasons = file.report();
    if (done) {
        filePath = OdString(path);
        userDefinedModelPathname = path;
    }
    return done;
}
