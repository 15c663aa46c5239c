#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include <platen/plotcfg.h>
#include <platen/print.h>
#include <platen/utcore.h>
#include "print/take.h"

namespace {

struct Quality {
    short dmCode;
    wxPrintQuality quality;
    std::wstring_view name;
};

constexpr Quality qualities[] = {
    {DMRES_HIGH, wxPRINT_QUALITY_HIGH, L"DMRES_HIGH"},
    {DMRES_MEDIUM, wxPRINT_QUALITY_MEDIUM, L"DMRES_MEDIUM"},
    {DMRES_LOW, wxPRINT_QUALITY_LOW, L"DMRES_LOW"},
    {DMRES_DRAFT, wxPRINT_QUALITY_DRAFT, L"DMRES_DRAFT"},
};

/// Without its fraction; what is beyond 32 bits becomes the nearest number that is not.
std::int32_t whole(double value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp(
        std::trunc(value), static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

/// What a new name keeps of the old one. The last word of a quality counts as a suffix, too, so
/// that DMRES_HIGH becomes DMRES_HIGH_HIGH and stays so: files that were written are named like
/// that.
std::wstring suffixOf(const std::wstring& name) {
    if (name.empty()) {
        return L"_None";
    }
    const std::size_t underscore = name.rfind(L'_');
    return underscore == std::wstring::npos ? L"" : name.substr(underscore);
}

}  // namespace

bool CResColorMemNode::CResolutionNode::set(const wut::PrintData& data, const wxDC* dc) {
    const short dmQuality = data.getDmQuality();
    const auto* const quality =
        std::find_if(std::begin(qualities), std::end(qualities),
                     [&](const Quality& entry) { return entry.dmCode == dmQuality; });
    const bool hasCode = quality != std::end(qualities);
    if (hasCode && dc == nullptr) {
        return false;
    }
    const double x = hasCode ? dc->GetPPI().x : dmQuality;
    const auto* native = wut::WindowsPrintNativeData::GetNativeData(data);
    const double y = native == nullptr ? 0 : native->yResolution;
    bool changed = false;
    for (double* field : {&physResolutionX, &addrResolutionX, &effectiveResolutionX}) {
        print_bridge::take(*field, x, changed);
    }
    for (double* field : {&physResolutionY, &addrResolutionY, &effectiveResolutionY}) {
        print_bridge::take(*field, y, changed);
    }
    const std::wstring base = hasCode ? std::wstring(quality->name)
                                      : std::to_wstring(whole(physResolutionX)) + L"x" +
                                            std::to_wstring(whole(physResolutionY));
    print_bridge::take(name, base + suffixOf(name), changed);
    return changed;
}

void CResColorMemNode::CResolutionNode::get(wut::PrintData& data) const {
    const std::wstring_view ownName = name;
    for (const Quality& quality : qualities) {
        if (ut::equalNoCase(ownName.substr(0, quality.name.size()), quality.name)) {
            data.SetQuality(quality.quality);
            return;
        }
    }
    if (physResolutionX != 0) {
        data.SetQuality(whole(physResolutionX));
    }
    auto* native = wut::WindowsPrintNativeData::GetNativeData(data);
    if (physResolutionY != 0 && native != nullptr) {
        native->yResolution = static_cast<std::int16_t>(whole(physResolutionY));
    }
}
