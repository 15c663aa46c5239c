#include <cstddef>
#include <limits>
#include <span>

#include "print/paper_cache.h"
#include "print/spooler.h"

namespace wut {

namespace {

/// A driver's paper name: not terminated when it takes all of this.
struct PaperName {
    wchar_t text[64];
};

/// Paper numbers have 16 bits, so a driver that counts more is wrong.
constexpr int mostPapers = std::numeric_limits<unsigned short>::max();

/// Asks the driver for a list of as many records as it counts; empty when it cannot say.
template <class Record>
OdArray<Record> ask(const wchar_t* printer, const wchar_t* port, WORD capability,
                    const DEVMODEW& settings) {
    OdArray<Record> records;
    const int count = spooler().deviceCapabilities(printer, port, capability, {}, &settings);
    if (count <= 0 || count > mostPapers) {
        return records;
    }
    records.resize(static_cast<std::size_t>(count));
    const std::span memory(records.asArrayPtr(), records.size());
    // The first count holds: what a driver returns when it fills is no count with all of them.
    if (spooler().deviceCapabilities(printer, port, capability, std::as_writable_bytes(memory),
                                     &settings) < 1) {
        records.clear();
    }
    return records;
}

OdArray<OdString> askNames(const wchar_t* printer, const wchar_t* port, const DEVMODEW& settings) {
    const OdArray<PaperName> slots = ask<PaperName>(printer, port, DC_PAPERNAMES, settings);
    OdArray<OdString> names;
    for (const PaperName& slot : slots) {
        names.append(OdString(std::wstring(slot.text, wcsnlen(slot.text, std::size(slot.text)))));
    }
    return names;
}

}  // namespace

PaperSizeGetter::PaperSizeGetter(const wchar_t* printerName, const wchar_t* port,
                                 const PrintData* printData)
    : printer_(printerName != nullptr ? printerName : L""), port_(port != nullptr ? port : L"") {
    if (printData != nullptr) {
        // Only updatePrintData would change the print data, and it is not called here.
        current_ = std::make_unique<DEVMODE_RAII>(const_cast<PrintData&>(*printData));
    } else {
        default_.reset(getDevMode(printer_));
    }
}

PaperSizeGetter::~PaperSizeGetter() = default;

const DEVMODEW* PaperSizeGetter::devMode() const {
    return current_ ? current_->get() : default_.get();
}

bool PaperSizeGetter::get(OdArray<unsigned short>* ids, OdArray<OdString>* names,
                          OdArray<POINT>* dims) const {
    bool complete = false;
    if (const DEVMODEW* settings = devMode()) {
        const std::size_t length = std::size_t(settings->dmSize) + settings->dmDriverExtra;
        PaperLists& known = PaperCache::instance().lists(
            {printer_, port_, {reinterpret_cast<const std::byte*>(settings), length}});
        complete = true;
        if (ids != nullptr) {
            if (known.ids.isEmpty()) {
                known.ids = ask<unsigned short>(printer_, port_, DC_PAPERS, *settings);
            }
            *ids = known.ids;
            complete = !ids->isEmpty();
        }
        if (names != nullptr) {
            if (known.names.isEmpty()) {
                known.names = askNames(printer_, port_, *settings);
            }
            *names = known.names;
            complete = complete && !names->isEmpty();
        }
        if (dims != nullptr) {
            if (known.dims.isEmpty()) {
                known.dims = ask<POINT>(printer_, port_, DC_PAPERSIZE, *settings);
            }
            *dims = known.dims;
            complete = complete && !dims->isEmpty();
        }
    }
    if (!complete) {
        if (ids != nullptr) {
            ids->clear();
        }
        if (names != nullptr) {
            names->clear();
        }
        if (dims != nullptr) {
            dims->clear();
        }
    }
    return complete;
}

}  // namespace wut
