#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "log/translated.h"
#include "plotstyle/style_memory.h"

namespace {

bool isNullOrEmpty(const wchar_t* text) { return text == nullptr || *text == L'\0'; }

}  // namespace

CPlotStyleTable::CPlotStyleTable() = default;
CPlotStyleTable::~CPlotStyleTable() = default;

CPlotStyleTable::CPlotStyleTable(const CPlotStyleTable& other)
    : description_(other.description_),
      scaleFactor_(other.scaleFactor_),
      applyFactor_(other.applyFactor_),
      displayUnits_(other.displayUnits_),
      customLineweights_(other.customLineweights_),
      aciMayBeWritten_(other.aciMayBeWritten_),
      usesAci_(other.usesAci_),
      aciAvailable_(other.aciAvailable_) {
    styles_.reserve(other.styles_.size());
    for (const auto& style : other.styles_) {
        styles_.push_back(styleMemory().make(*style));
    }
    if (!other.aci_) {
        return;
    }
    std::unordered_map<const CPlotStyle*, CPlotStyle*> copies;
    copies.reserve(styles_.size());
    for (std::size_t index = 0; index < styles_.size(); ++index) {
        copies.emplace(other.styles_[index].get(), styles_[index].get());
    }
    aci_ = std::make_unique<CAciTable>();
    std::transform(other.aci_->styles_.begin(), other.aci_->styles_.end(), aci_->styles_.begin(),
                   [&](const CPlotStyle* style) {
                       const auto found = copies.find(style);
                       return found == copies.end() ? nullptr : found->second;
                   });
}

CPlotStyleTable::CPlotStyleTable(CPlotStyleTable&& other) noexcept { swap(other); }

CPlotStyleTable& CPlotStyleTable::operator=(const CPlotStyleTable& other) {
    CPlotStyleTable copy(other);
    swap(copy);
    return *this;
}

CPlotStyleTable& CPlotStyleTable::operator=(CPlotStyleTable&& other) noexcept {
    CPlotStyleTable taken(std::move(other));
    swap(taken);
    return *this;
}

plot_style::StyleMemory& CPlotStyleTable::styleMemory() {
    if (!styleMemory_) {
        styleMemory_ = std::make_unique<plot_style::StyleMemory>();
    }
    return *styleMemory_;
}

void CPlotStyleTable::swap(CPlotStyleTable& other) noexcept {
    std::swap(description_, other.description_);
    std::swap(scaleFactor_, other.scaleFactor_);
    std::swap(applyFactor_, other.applyFactor_);
    std::swap(displayUnits_, other.displayUnits_);
    std::swap(customLineweights_, other.customLineweights_);
    std::swap(aciMayBeWritten_, other.aciMayBeWritten_);
    std::swap(usesAci_, other.usesAci_);
    std::swap(aciAvailable_, other.aciAvailable_);
    std::swap(styleMemory_, other.styleMemory_);
    std::swap(styles_, other.styles_);
    std::swap(aci_, other.aci_);
}

CPlotStyleTable* CPlotStyleTable::create(bool colorDependent, const wchar_t* description) {
    auto table = std::make_unique<CPlotStyleTable>();
    if (description != nullptr) {
        table->description_ = description;
    }
    if (!colorDependent) {
        table->insertStyle(L"Normal", 0, CPlotStyle());
        return table.release();
    }
    table->aciAvailable_ = true;
    table->usesAci_ = true;
    table->aci_ = std::make_unique<CAciTable>();
    table->styles_.reserve(CAciTable::count);
    const std::wstring beginning = wut::translated(L"Color") + L' ';
    for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
        const std::wstring name = beginning + std::to_wstring(entry + 1);
        table->aci_->styles_[entry] = table->insertStyle(name.c_str(), entry, CPlotStyle());
    }
    return table.release();
}

CPlotStyle* CPlotStyleTable::style(std::size_t index) {
    return index < styles_.size() ? styles_[index].get() : nullptr;
}

const CPlotStyle* CPlotStyleTable::style(std::size_t index) const {
    return index < styles_.size() ? styles_[index].get() : nullptr;
}

CPlotStyle* CPlotStyleTable::find(const wchar_t* name) const {
    if (name == nullptr) {
        return nullptr;
    }
    const auto found = std::find_if(styles_.begin(), styles_.end(),
                                    [wanted = std::wstring_view(name)](const auto& style) {
                                        return ut::equalNoCase(style->name(), wanted);
                                    });
    return found == styles_.end() ? nullptr : found->get();
}

int CPlotStyleTable::findLocName(const wchar_t* name) const {
    return name == nullptr ? -1 : findLocName(name, styles_.size());
}

int CPlotStyleTable::findLocName(std::wstring_view name, std::size_t except) const {
    for (std::size_t index = 0; index < styles_.size(); ++index) {
        if (index != except && ut::equalNoCase(styles_[index]->locName(), name)) {
            return static_cast<int>(index);
        }
    }
    return -1;
}

bool CPlotStyleTable::renameStyle(int index, const wchar_t* name) {
    CPlotStyle* renamed = index < 0 ? nullptr : style(static_cast<std::size_t>(index));
    if (renamed == nullptr || isNullOrEmpty(name) ||
        findLocName(name, static_cast<std::size_t>(index)) >= 0) {
        return false;
    }
    renamed->updateName(name);
    return true;
}

bool CPlotStyleTable::addStyle(const wchar_t* name, int after, const CPlotStyle* model) {
    if (aciAvailable_ || (after >= 0 && static_cast<std::size_t>(after) >= styles_.size()) ||
        isNullOrEmpty(name) || findLocName(name) >= 0) {
        return false;
    }
    insertStyle(name, after < 0 ? styles_.size() : static_cast<std::size_t>(after) + 1,
                model == nullptr ? CPlotStyle() : *model);
    return true;
}

CPlotStyle* CPlotStyleTable::insertStyle(const wchar_t* name, std::size_t position,
                                         const CPlotStyle& model) {
    plot_style::StylePtr added = styleMemory().make(model);
    added->updateName(name);
    const auto place = styles_.begin() + static_cast<std::ptrdiff_t>(position);
    return styles_.insert(place, std::move(added))->get();
}

void CPlotStyleTable::deleteStyle(int index) {
    if (aciAvailable_ || index < 0 || static_cast<std::size_t>(index) >= styles_.size()) {
        return;
    }
    const auto doomed = styles_.begin() + index;
    if (aci_) {
        // Left by `initAci` on a table that is not colour-dependent.
        std::replace(aci_->styles_.begin(), aci_->styles_.end(), doomed->get(),
                     static_cast<CPlotStyle*>(nullptr));
    }
    styles_.erase(doomed);
}

void CPlotStyleTable::addACI(const int* indices) {
    if (usesAci_ || indices == nullptr ||
        std::any_of(indices, indices + CAciTable::count, [this](int index) {
            return index < 0 || static_cast<std::size_t>(index) >= styles_.size();
        })) {
        return;
    }
    aciAvailable_ = true;
    if (!aci_) {
        aci_ = std::make_unique<CAciTable>();
    }
    std::transform(indices, indices + CAciTable::count, aci_->styles_.begin(),
                   [this](int index) { return styles_[static_cast<std::size_t>(index)].get(); });
}

bool CPlotStyleTable::deleteACI() {
    if (usesAci_ || !aciAvailable_) {
        return false;
    }
    aciAvailable_ = false;
    aci_.reset();
    return true;
}
