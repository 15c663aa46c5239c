#include "tests/support/fake_spooler.h"

#include <wchar.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <tuple>

namespace test_support {

namespace {

/// A text, the record that it belongs to, and where that points to it.
template <class Record>
using Text = std::tuple<std::size_t, wchar_t * Record::*, std::wstring_view>;

/// Fills memory as the spooler does: records, then the texts that they point to. False when there
/// is no room for all of it.
template <class Record>
bool fill(std::size_t count, const std::vector<Text<Record>>& texts, std::span<std::byte> out,
          DWORD& needed) {
    std::vector<Record> records(count);
    std::wstring all;
    for (const auto& [record, member, text] : texts) {
        const std::size_t at = count * sizeof(Record) + all.size() * sizeof(wchar_t);
        records[record].*member = reinterpret_cast<wchar_t*>(out.data() + at);
        all.append(text).push_back(L'\0');
    }
    const auto head = std::as_bytes(std::span(records));
    const auto tail = std::as_bytes(std::span(all));
    needed = static_cast<DWORD>(head.size() + tail.size());
    if (out.size() < needed) {
        return false;
    }
    std::ranges::copy(tail, std::ranges::copy(head, out.begin()).out);
    return true;
}

}  // namespace

FakePrinter& FakeSpooler::add(const std::wstring& name) {
    FakePrinter& printer = *printers.emplace_back(std::make_unique<FakePrinter>());
    printer.name = name;
    DEVMODEW& mode = printer.devMode;
    name.copy(mode.dmDeviceName, CCHDEVICENAME - 1);
    mode.dmSpecVersion = DM_SPECVERSION;
    mode.dmDriverVersion = 0x0102;
    mode.dmSize = sizeof(DEVMODEW);
    mode.dmFields = DM_ORIENTATION | DM_PAPERSIZE | DM_COPIES | DM_PRINTQUALITY | DM_COLOR;
    mode.dmOrientation = DMORIENT_PORTRAIT;
    mode.dmPaperSize = DMPAPER_A4;
    mode.dmCopies = 1;
    mode.dmPrintQuality = 600;
    mode.dmColor = DMCOLOR_COLOR;
    return printer;
}

FakePrinter* FakeSpooler::find(const wchar_t* name) {
    const auto found = std::ranges::find_if(printers, [name](const auto& printer) {
        return _wcsicmp(printer->name.c_str(), name) == 0;
    });
    return found == printers.end() ? nullptr : found->get();
}

void FakeSpooler::remove(const std::wstring& name) {
    std::erase_if(printers, [&name](const auto& printer) { return printer->name == name; });
}

HANDLE FakeSpooler::open(const wchar_t* printer) {
    ++calls["open"];
    FakePrinter* found = find(printer);
    if (found == nullptr) {
        return nullptr;
    }
    const HANDLE handle = reinterpret_cast<HANDLE>(++handlesGiven_);
    handles[handle] = found->name;
    return handle;
}

void FakeSpooler::close(HANDLE printer) {
    ++calls["close"];
    handles.erase(printer);
}

FakePrinter* FakeSpooler::of(HANDLE printer) {
    const auto found = handles.find(printer);
    return found == handles.end() ? nullptr : find(found->second.c_str());
}

LONG FakeSpooler::documentProperties(HANDLE, const wchar_t* name, std::span<std::byte> out,
                                     const DEVMODEW* in, DWORD mode) {
    ++calls["documentProperties"];
    modes.push_back(mode);
    FakePrinter* printer = find(name);
    if (printer == nullptr || printer->propertiesFail || (mode != 0 && printer->fillFails)) {
        return -1;
    }
    // A driver lays out its own structure, whatever it was given, with the settings it was given.
    std::vector<std::byte> filled(sizeof(DEVMODEW) + printer->privateBytes.size());
    if (mode == 0) {
        return printer->size.value_or(static_cast<LONG>(filled.size()));
    }
    DEVMODEW result = printer->devMode;
    std::ranges::copy(std::as_bytes(std::span(printer->privateBytes)),
                      filled.begin() + sizeof(result));
    if ((mode & DM_IN_BUFFER) != 0 && in != nullptr) {
        const auto* given = reinterpret_cast<const std::byte*>(in) + in->dmSize;
        std::copy_n(given, std::min<std::size_t>(in->dmDriverExtra, printer->privateBytes.size()),
                    filled.begin() + sizeof(result));
        result = *in;
        result.dmSize = printer->devMode.dmSize;
        if (printer->correct) {
            printer->correct(result);
        }
    }
    result.dmDriverExtra = static_cast<WORD>(printer->privateBytes.size() + printer->growsBy);
    std::memcpy(filled.data(), &result, sizeof(result));
    filled.resize(std::min(filled.size(), out.size()));
    std::ranges::copy(filled, out.begin());
    return IDOK;
}

int FakeSpooler::deviceCapabilities(const wchar_t* name, const wchar_t*, WORD capability,
                                    std::span<std::byte> out, const DEVMODEW*) {
    ++calls["deviceCapabilities"];
    FakePrinter* printer = find(name);
    if (printer == nullptr) {
        return -1;
    }
    if (printer->whenAsked) {
        printer->whenAsked(capability, out.empty());
    }
    std::vector<std::byte> filled;
    for (const FakePaper& paper : printer->papers) {
        wchar_t slot[64] = {};
        paper.name.copy(slot, 64);
        const auto bytes = capability == DC_PAPERS       ? std::as_bytes(std::span(&paper.id, 1))
                           : capability == DC_PAPERSIZE  ? std::as_bytes(std::span(&paper.size, 1))
                           : capability == DC_PAPERNAMES ? std::as_bytes(std::span(slot))
                                                         : std::span<const std::byte>();
        filled.insert(filled.end(), bytes.begin(), bytes.end());
    }
    if (!out.empty()) {
        filled.resize(std::min(filled.size(), out.size()));
        std::ranges::copy(filled, out.begin());
    }
    const auto wrong = printer->counts.find(capability);
    if (wrong != printer->counts.end()) {
        return wrong->second;
    }
    return filled.empty() ? -1 : static_cast<int>(printer->papers.size());
}

bool FakeSpooler::enumerate(DWORD flags, DWORD, std::span<std::byte> out, DWORD& needed,
                            DWORD& count) {
    ++calls["enumerate"];
    if (whenListing) {
        whenListing();
    }
    std::vector<Text<PRINTER_INFO_4W>> seen;
    for (const auto& printer : printers) {
        if ((flags & PRINTER_ENUM_LOCAL) != 0 ? printer->local : printer->shared) {
            seen.emplace_back(seen.size(), &PRINTER_INFO_4W::pPrinterName, printer->name);
        }
    }
    const bool filled = fill(seen.size(), seen, out, needed);
    count = filled ? static_cast<DWORD>(seen.size()) : 0;
    return filled;
}

bool FakeSpooler::info(HANDLE printer, DWORD level, std::span<std::byte> out, DWORD& needed) {
    ++calls["info"];
    const FakePrinter* asked = of(printer);
    if (asked == nullptr) {
        return false;
    }
    return level == 5 ? fill<PRINTER_INFO_5W>(1, {{0, &PRINTER_INFO_5W::pPortName, asked->port}},
                                              out, needed)
                      : fill<PRINTER_INFO_2W>(1, {{0, &PRINTER_INFO_2W::pComment, asked->comment}},
                                              out, needed);
}

bool FakeSpooler::driver(HANDLE printer, DWORD, std::span<std::byte> out, DWORD& needed) {
    ++calls["driver"];
    const FakePrinter* asked = of(printer);
    return asked != nullptr &&
           fill<DRIVER_INFO_1W>(1, {{0, &DRIVER_INFO_1W::pName, asked->driver}}, out, needed);
}

bool FakeSpooler::defaultPrinter(std::span<wchar_t> out, DWORD& length) {
    ++calls["defaultPrinter"];
    length = static_cast<DWORD>(defaultName.size() + 1);
    if (defaultName.empty() || out.size() < length) {
        return false;
    }
    defaultName.copy(out.data(), defaultName.size());
    out[defaultName.size()] = 0;
    return true;
}

bool FakeSpooler::setDefaultPrinter(const wchar_t* name) {
    ++calls["setDefaultPrinter"];
    if (find(name) == nullptr) {
        return false;
    }
    defaultName = name;
    return true;
}

bool FakeSpooler::printDialog(PRINTDLGW& dialog) {
    ++calls["printDialog"];
    const FakePrinter* printer = find(defaultName.c_str());
    if (printer == nullptr) {
        return false;
    }
    std::vector<std::byte> filled(sizeof(DEVMODEW) + printer->privateBytes.size());
    if (documentProperties(nullptr, printer->name.c_str(), filled, nullptr, DM_OUT_BUFFER) !=
        IDOK) {
        return false;
    }
    dialog.hDevMode = GlobalAlloc(GMEM_MOVEABLE, filled.size());
    std::ranges::copy(filled, static_cast<std::byte*>(GlobalLock(dialog.hDevMode)));
    GlobalUnlock(dialog.hDevMode);
    return true;
}

int FakeSpooler::escape(HDC, int, std::span<const std::byte> in) {
    DWORD number = 0;
    std::memcpy(&number, in.data(), std::min(in.size(), sizeof(number)));
    escapesAsked.push_back(number);
    return number == escapeTaken ? 1 : 0;
}

}  // namespace test_support
