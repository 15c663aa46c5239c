#include "tests/machine/machine.h"

#include <windows.h>
// Needs windows.h.
#include <winspool.h>

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace {

std::wstring registryText(HKEY root, const wchar_t* key, const wchar_t* name) {
    wchar_t text[256] = L"";
    DWORD size = sizeof(text) - sizeof(wchar_t);
    RegGetValueW(root, key, name, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
}

std::wstring localeText(LCTYPE type) {
    wchar_t text[80] = L"";
    GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, static_cast<int>(std::size(text)));
    return text;
}

std::wstring defaultPrinter() {
    wchar_t name[1024] = L"";
    DWORD size = static_cast<DWORD>(std::size(name));
    return GetDefaultPrinterW(name, &size) != FALSE ? name : L"none";
}

std::wstring orNone(const wchar_t* text) { return text == nullptr ? L"none" : text; }

/// Calls take(information) for each printer.
template <class Take>
void eachPrinter(Take take) {
    constexpr DWORD flags = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
    DWORD size = 0, count = 0;
    EnumPrintersW(flags, nullptr, 2, nullptr, 0, &size, &count);
    std::vector<std::byte> buffer(size);
    if (size != 0 && EnumPrintersW(flags, nullptr, 2, reinterpret_cast<BYTE*>(buffer.data()), size,
                                   &size, &count) != FALSE) {
        const auto* printers = reinterpret_cast<const PRINTER_INFO_2W*>(buffer.data());
        for (DWORD index = 0; index < count; ++index) {
            take(printers[index]);
        }
    }
}

/// The printer's device mode as it is for new documents.
std::vector<std::byte> deviceMode(const wchar_t* name) {
    HANDLE printer = nullptr;
    if (OpenPrinterW(const_cast<wchar_t*>(name), &printer, nullptr) == FALSE) {
        return {};
    }
    const LONG size =
        DocumentPropertiesW(nullptr, printer, const_cast<wchar_t*>(name), nullptr, nullptr, 0);
    std::vector<std::byte> bytes(size > 0 ? static_cast<std::size_t>(size) : 0);
    if (bytes.empty() || DocumentPropertiesW(nullptr, printer, const_cast<wchar_t*>(name),
                                             reinterpret_cast<DEVMODEW*>(bytes.data()), nullptr,
                                             DM_OUT_BUFFER) != IDOK) {
        bytes.clear();
    }
    ClosePrinter(printer);
    return bytes;
}

std::wstring digest(const std::vector<std::byte>& bytes) {
    std::uint64_t sum = 14695981039346656037U;  // FNV-1a
    for (const std::byte byte : bytes) {
        sum = (sum ^ static_cast<std::uint64_t>(byte)) * 1099511628211U;
    }
    return std::to_wstring(sum);
}

/// The version of the driver, which the system packs into 64 bits.
std::wstring driverVersion(const wchar_t* name) {
    HANDLE printer = nullptr;
    std::wstring version = L"unknown";
    if (OpenPrinterW(const_cast<wchar_t*>(name), &printer, nullptr) == FALSE) {
        return version;
    }
    DWORD size = 0;
    GetPrinterDriverW(printer, nullptr, 6, nullptr, 0, &size);
    std::vector<std::byte> buffer(size);
    if (size != 0 && GetPrinterDriverW(printer, nullptr, 6, reinterpret_cast<BYTE*>(buffer.data()),
                                       size, &size) != FALSE) {
        const auto* driver = reinterpret_cast<const DRIVER_INFO_6W*>(buffer.data());
        version.clear();
        for (const unsigned shift : {48U, 32U, 16U, 0U}) {
            version += (version.empty() ? L"" : L".") +
                       std::to_wstring(driver->dwlDriverVersion >> shift & 0xFFFFU);
        }
        version += L", model " + std::to_wstring(driver->cVersion);
    }
    ClosePrinter(printer);
    return version;
}

}  // namespace

std::vector<std::wstring> machineFacts() {
    constexpr const wchar_t* windows = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof(version);
    // The one that does not depend on what the program says it knows.
    const HMODULE system = GetModuleHandleW(L"ntdll.dll");
    const auto getVersion = reinterpret_cast<LONG(WINAPI*)(OSVERSIONINFOW*)>(
        reinterpret_cast<void*>(GetProcAddress(system, "RtlGetVersion")));
    getVersion(&version);
    DWORD revision = 0, size = sizeof(revision);
    RegGetValueW(HKEY_LOCAL_MACHINE, windows, L"UBR", RRF_RT_REG_DWORD, nullptr, &revision, &size);
    const auto wine = reinterpret_cast<const char* (*)()>(
        reinterpret_cast<void*>(GetProcAddress(system, "wine_get_version")));
    std::vector<std::wstring> facts;
    facts.push_back(L"Windows: " + registryText(HKEY_LOCAL_MACHINE, windows, L"ProductName") +
                    L", " + std::to_wstring(version.dwMajorVersion) + L"." +
                    std::to_wstring(version.dwMinorVersion) + L"." +
                    std::to_wstring(version.dwBuildNumber) + L"." + std::to_wstring(revision));
    if (wine != nullptr) {
        const std::string name = wine();
        facts.push_back(L"This is Wine " + std::wstring(name.begin(), name.end()));
    }
    facts.push_back(L"Language: " + localeText(LOCALE_SNAME) + L", code page " +
                    std::to_wstring(GetACP()));
    HDC screen = GetDC(nullptr);
    facts.push_back(L"Display: " + std::to_wstring(GetSystemMetrics(SM_CXSCREEN)) + L" x " +
                    std::to_wstring(GetSystemMetrics(SM_CYSCREEN)) + L", " +
                    std::to_wstring(GetDeviceCaps(screen, LOGPIXELSX)) + L" dpi, displays: " +
                    std::to_wstring(GetSystemMetrics(SM_CMONITORS)));
    ReleaseDC(nullptr, screen);
    facts.push_back(L"Default printer: " + defaultPrinter());
    eachPrinter([&](const PRINTER_INFO_2W& printer) {
        const std::vector<std::byte> mode = deviceMode(printer.pPrinterName);
        std::wstring bytes = L"no device mode";
        if (mode.size() >= sizeof(DEVMODEW)) {
            const auto* known = reinterpret_cast<const DEVMODEW*>(mode.data());
            bytes = L"device mode " + std::to_wstring(known->dmSize) + L" + " +
                    std::to_wstring(known->dmDriverExtra) + L" bytes";
        }
        const int papers = DeviceCapabilitiesW(printer.pPrinterName, printer.pPortName, DC_PAPERS,
                                               nullptr, nullptr);
        facts.push_back(L"Printer: " + orNone(printer.pPrinterName) + L"; driver " +
                        orNone(printer.pDriverName) + L" " + driverVersion(printer.pPrinterName) +
                        L"; port " + orNone(printer.pPortName) + L"; " + bytes + L"; papers " +
                        std::to_wstring(papers));
    });
    return facts;
}

std::vector<std::wstring> machineSettings() {
    std::vector<std::wstring> settings{L"default printer: " + defaultPrinter(),
                                       L"list separator: " + localeText(LOCALE_SLIST),
                                       L"decimal separator: " + localeText(LOCALE_SDECIMAL)};
    eachPrinter([&](const PRINTER_INFO_2W& printer) {
        settings.push_back(L"printer " + orNone(printer.pPrinterName) + L": attributes " +
                           std::to_wstring(printer.Attributes) + L", device mode " +
                           digest(deviceMode(printer.pPrinterName)));
    });
    for (const wchar_t* key : {L".platentest", L"platentest"}) {
        HKEY opened = nullptr;
        const bool there =
            RegOpenKeyExW(HKEY_CLASSES_ROOT, key, 0, KEY_READ, &opened) == ERROR_SUCCESS;
        if (there) {
            RegCloseKey(opened);
        }
        settings.push_back(L"kind of file " + std::wstring(key) + (there ? L": there" : L": none"));
    }
    return settings;
}
