#include "print/spooler.h"

#include <commdlg.h>

namespace wut {

namespace {

DWORD sizeOf(std::span<std::byte> bytes) { return static_cast<DWORD>(bytes.size()); }

BYTE* bytesOf(std::span<std::byte> bytes) {
    return bytes.empty() ? nullptr : reinterpret_cast<BYTE*>(bytes.data());
}

/// Windows asks for names that it may write to, and does not.
wchar_t* nameOf(const wchar_t* name) { return const_cast<wchar_t*>(name); }

class SystemSpooler : public Spooler {
public:
    HANDLE open(const wchar_t* printer) override {
        HANDLE handle = nullptr;
        return OpenPrinterW(nameOf(printer), &handle, nullptr) ? handle : nullptr;
    }

    void close(HANDLE printer) override { ClosePrinter(printer); }

    LONG documentProperties(HANDLE printer, const wchar_t* name, std::span<std::byte> out,
                            const DEVMODEW* in, DWORD mode) override {
        return DocumentPropertiesW(nullptr, printer, nameOf(name),
                                   reinterpret_cast<DEVMODEW*>(bytesOf(out)),
                                   const_cast<DEVMODEW*>(in), mode);
    }

    int deviceCapabilities(const wchar_t* printer, const wchar_t* port, WORD capability,
                           std::span<std::byte> out, const DEVMODEW* devMode) override {
        return DeviceCapabilitiesW(printer, port, capability,
                                   reinterpret_cast<wchar_t*>(bytesOf(out)), devMode);
    }

    bool enumerate(DWORD flags, DWORD level, std::span<std::byte> out, DWORD& needed,
                   DWORD& count) override {
        return EnumPrintersW(flags, nullptr, level, bytesOf(out), sizeOf(out), &needed, &count);
    }

    bool info(HANDLE printer, DWORD level, std::span<std::byte> out, DWORD& needed) override {
        return GetPrinterW(printer, level, bytesOf(out), sizeOf(out), &needed);
    }

    bool driver(HANDLE printer, DWORD level, std::span<std::byte> out, DWORD& needed) override {
        return GetPrinterDriverW(printer, nullptr, level, bytesOf(out), sizeOf(out), &needed);
    }

    bool defaultPrinter(std::span<wchar_t> out, DWORD& length) override {
        length = static_cast<DWORD>(out.size());
        return GetDefaultPrinterW(out.empty() ? nullptr : out.data(), &length);
    }

    bool setDefaultPrinter(const wchar_t* name) override { return SetDefaultPrinterW(name); }

    bool printDialog(PRINTDLGW& dialog) override { return PrintDlgW(&dialog); }

    int escape(HDC device, int number, std::span<const std::byte> in) override {
        return ExtEscape(device, number, static_cast<int>(in.size()),
                         reinterpret_cast<const char*>(in.data()), 0, nullptr);
    }
};

}  // namespace

Spooler& systemSpooler() {
    static SystemSpooler system;
    return system;
}

}  // namespace wut
