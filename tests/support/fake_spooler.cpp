#include "tests/support/fake_spooler.h"

#include <wchar.h>

#include <algorithm>
#include <cstring>

namespace test_support {

namespace {

HANDLE handleOf(FakePrinter& printer) { return &printer; }

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
    ++openHandles;
    return handleOf(*found);
}

void FakeSpooler::close(HANDLE) {
    ++calls["close"];
    --openHandles;
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
        return static_cast<LONG>(filled.size());
    }
    DEVMODEW result = printer->devMode;
    if ((mode & DM_IN_BUFFER) != 0 && in != nullptr) {
        result = *in;
        result.dmSize = printer->devMode.dmSize;
        if (printer->correct) {
            printer->correct(result);
        }
    }
    result.dmDriverExtra = static_cast<WORD>(printer->privateBytes.size() + printer->growsBy);
    std::memcpy(filled.data(), &result, sizeof(result));
    std::ranges::copy(std::as_bytes(std::span(printer->privateBytes)),
                      filled.begin() + sizeof(result));
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
    const auto wrong = printer->counts.find(capability);
    if (wrong != printer->counts.end()) {
        return wrong->second;
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
    return filled.empty() ? -1 : static_cast<int>(printer->papers.size());
}

bool FakeSpooler::enumerate(DWORD, DWORD, std::span<std::byte>, DWORD&, DWORD&) { return false; }
bool FakeSpooler::info(HANDLE, DWORD, std::span<std::byte>, DWORD&) { return false; }
bool FakeSpooler::driver(HANDLE, DWORD, std::span<std::byte>, DWORD&) { return false; }
bool FakeSpooler::defaultPrinter(std::span<wchar_t>, DWORD&) { return false; }
bool FakeSpooler::setDefaultPrinter(const wchar_t*) { return false; }
bool FakeSpooler::printDialog(PRINTDLGW&) { return false; }
int FakeSpooler::escape(HDC, int, std::span<const std::byte>) { return 0; }

}  // namespace test_support
