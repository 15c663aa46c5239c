#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "print/spooler_data.h"

namespace wut {

namespace {

void appendPrinters(DWORD kind, OdArray<OdString>& names) {
    DWORD count = 0;
    const auto data = spoolerData([kind, &count](std::span<std::byte> out, DWORD& needed) {
        return spooler().enumerate(kind, 4, out, needed, count);
    });
    const auto* entries = reinterpret_cast<const PRINTER_INFO_4W*>(data.data());
    const std::size_t room = data.size() / sizeof(*entries);
    for (std::size_t i = 0; i < std::min<std::size_t>(count, room); ++i) {
        names.append(OdString(textIn(data, entries[i].pPrinterName)));
    }
}

/// A text of one of the `PRINTER_INFO` records.
template <class Info>
OdString printerText(const PrinterHandle& printer, DWORD level, wchar_t* Info::*member) {
    if (!printer) {
        return {};
    }
    const auto data = spoolerData([&printer, level](std::span<std::byte> out, DWORD& needed) {
        return spooler().info(printer.get(), level, out, needed);
    });
    if (data.size() < sizeof(Info)) {
        return {};
    }
    return OdString(textIn(data, reinterpret_cast<const Info*>(data.data())->*member));
}

}  // namespace

void PrinterCloser::operator()(HANDLE printer) const noexcept { spooler().close(printer); }

bool PrinterHandle::open(const OdString& name) {
    handle_.reset();
    handle_.reset(spooler().open(name.c_str()));
    return handle_ != nullptr;
}

void getSystemPrinters(OdArray<OdString>& names) {
    appendPrinters(PRINTER_ENUM_LOCAL, names);
    appendPrinters(PRINTER_ENUM_CONNECTIONS | PRINTER_ENUM_SHARED | PRINTER_ENUM_NETWORK, names);
}

OdString getDefaultSystemPrinter(bool useFirstIfNone) {
    // Longer names than this do not exist; the spooler's own limit is 220 characters.
    constexpr DWORD longestName = 4096;
    DWORD length = 0;
    spooler().defaultPrinter({}, length);
    std::vector<wchar_t> name(std::size_t(std::min(length, longestName)) + 1);
    if (spooler().defaultPrinter(name, length)) {
        name.back() = 0;
        if (name.front() != 0) {
            return OdString(name.data());
        }
    }
    if (useFirstIfNone) {
        OdArray<OdString> names;
        getSystemPrinters(names);
        if (!names.isEmpty()) {
            return names[0];
        }
    }
    return {};
}

OdString getPrinterPorts(const PrinterHandle& printer) {
    return printerText(printer, 5, &PRINTER_INFO_5W::pPortName);
}

OdString getPrinterComment(const PrinterHandle& printer) {
    return printerText(printer, 2, &PRINTER_INFO_2W::pComment);
}

ChangeDefaultPrinter::ChangeDefaultPrinter(const OdString& printer)
    : old_(getDefaultSystemPrinter(false)) {
    setDefaultPrinter(printer);
}

ChangeDefaultPrinter::~ChangeDefaultPrinter() {
    if (!old_.isEmpty()) {
        setDefaultPrinter(old_);
    }
}

bool ChangeDefaultPrinter::setDefaultPrinter(const OdString& name) {
    return spooler().setDefaultPrinter(name.c_str());
}

}  // namespace wut
