#include "print/paper_cache.h"

#include <cstring>

#include "print/compare_names.h"

namespace wut {

namespace {

bool isBefore(const PaperQuery& left, const PaperQuery& right) {
    if (const int order = compareNames(left.printer, right.printer)) {
        return order < 0;
    }
    if (const int order = compareNames(left.port, right.port)) {
        return order < 0;
    }
    if (left.settings.size() != right.settings.size()) {
        return left.settings.size() < right.settings.size();
    }
    return std::memcmp(left.settings.data(), right.settings.data(), left.settings.size()) < 0;
}

}  // namespace

bool PaperCache::Before::operator()(const Key& left, const Key& right) const {
    return isBefore(left.query(), right.query());
}

bool PaperCache::Before::operator()(const Key& left, const PaperQuery& right) const {
    return isBefore(left.query(), right);
}

bool PaperCache::Before::operator()(const PaperQuery& left, const Key& right) const {
    return isBefore(left, right.query());
}

PaperCache& PaperCache::instance() {
    static PaperCache cache;
    return cache;
}

PaperLists& PaperCache::lists(const PaperQuery& query) {
    const auto found = entries_.find(query);
    if (found != entries_.end()) {
        return found->second;
    }
    return entries_[Key{query.printer, query.port, {query.settings.begin(), query.settings.end()}}];
}

void PaperCache::forget(const OdString& printer) {
    if (printer.isEmpty()) {
        entries_.clear();
        return;
    }
    std::erase_if(entries_, [&printer](const auto& entry) {
        return compareNames(entry.first.printer.c_str(), printer.c_str()) == 0;
    });
}

void onPrinterSettingsChanged(const OdString& printerName) {
    PaperCache::instance().forget(printerName);
}

}  // namespace wut
