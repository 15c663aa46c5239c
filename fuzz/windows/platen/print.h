/// What `print/` needs of Windows and of the public header to ask the spooler, so that fuzzers with
/// sanitizers run it on other systems: the same sources, with types of the same names. Wide
/// characters and some integers are larger here. Print data, which wxWidgets keeps for Windows
/// alone, is left out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <memory>
#include <string>
#include <vector>

#include <platen/oda.h>
#include <platen/papers.h>

using WORD = unsigned short;
using DWORD = unsigned long;
using LONG = long;
using HANDLE = void*;
using HGLOBAL = void*;
using HDC = void*;
struct PRINTDLGW;

struct POINT {
    LONG x;
    LONG y;
};

struct DEVMODEW {
    wchar_t dmDeviceName[32];
    WORD dmSpecVersion, dmDriverVersion, dmSize, dmDriverExtra;
    DWORD dmFields;
    short dmOrientation, dmPaperSize, dmPaperLength, dmPaperWidth, dmScale, dmCopies,
        dmDefaultSource, dmPrintQuality, dmColor, dmDuplex, dmYResolution, dmTTOption, dmCollate;
    wchar_t dmFormName[32];
    WORD dmLogPixels;
    DWORD dmBitsPerPel, dmPelsWidth, dmPelsHeight, dmNup, dmDisplayFrequency, dmICMMethod,
        dmICMIntent, dmMediaType, dmDitherType, dmReserved1, dmReserved2, dmPanningWidth,
        dmPanningHeight;
};

struct PRINTER_INFO_2W {
    wchar_t *pServerName, *pPrinterName, *pComment;
};
struct PRINTER_INFO_4W {
    wchar_t *pPrinterName, *pServerName;
    DWORD Attributes;
};
struct PRINTER_INFO_5W {
    wchar_t *pPrinterName, *pPortName;
};
struct DRIVER_INFO_1W {
    wchar_t* pName;
};

inline constexpr DWORD PRINTER_ENUM_LOCAL = 2;
inline constexpr DWORD PRINTER_ENUM_CONNECTIONS = 4;
inline constexpr DWORD PRINTER_ENUM_SHARED = 0x20;
inline constexpr DWORD PRINTER_ENUM_NETWORK = 0x40;
inline constexpr DWORD DM_OUT_BUFFER = 2;
inline constexpr LONG IDOK = 1;
inline constexpr WORD DC_PAPERS = 2;
inline constexpr WORD DC_PAPERSIZE = 3;
inline constexpr WORD DC_PAPERNAMES = 16;
inline constexpr int QUERYESCSUPPORT = 8;
inline constexpr DWORD POSTSCRIPT_PASSTHROUGH = 4115;
inline constexpr DWORD POSTSCRIPT_IDENTIFY = 4117;
inline constexpr DWORD ERROR_SUCCESS = 0;

inline void SetLastError(DWORD) {}

// Global memory: the fuzzer's own blocks.
void* GlobalLock(HGLOBAL block);
int GlobalUnlock(HGLOBAL block);
HGLOBAL GlobalFree(HGLOBAL block);
std::size_t GlobalSize(HGLOBAL block);

namespace wut {

struct PrinterCloser {
    using pointer = HANDLE;
    void operator()(HANDLE printer) const noexcept;
};

class PrinterHandle {
public:
    PrinterHandle() = default;
    PrinterHandle(const OdString& name) { open(name); }
    PrinterHandle(const wchar_t* name) { open(name); }
    bool open(const OdString& name);
    HANDLE get() const { return handle_.get(); }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    std::unique_ptr<void, PrinterCloser> handle_;
};

void getSystemPrinters(OdArray<OdString>& names);
OdString getDefaultSystemPrinter(bool useFirstIfNone);
OdString getPrinterPorts(const PrinterHandle& printer);
OdString getPrinterComment(const PrinterHandle& printer);

class ChangeDefaultPrinter {
public:
    explicit ChangeDefaultPrinter(const OdString& printer);
    ~ChangeDefaultPrinter();
    static bool setDefaultPrinter(const OdString& name);
    const OdString& oldDefaultPrinter() const { return old_; }

private:
    OdString old_;
};

DEVMODEW* getDevMode(const wchar_t* printerName);
std::size_t getDevModeBytes(const PrinterHandle& printer, const wchar_t* printerName);
void freeDevMode(DEVMODEW* devMode) noexcept;
struct DevModeFreer {
    void operator()(DEVMODEW* devMode) const noexcept { freeDevMode(devMode); }
};
using DevModePtr = std::unique_ptr<DEVMODEW, DevModeFreer>;
void dumpDevMode(const DEVMODEW& devMode, OdString& out);

struct GlobalUnlocker {
    HGLOBAL block = nullptr;
    void operator()(void*) const noexcept { GlobalUnlock(block); }
};

/// Never made here.
class PrintData {};
class DEVMODE_RAII {
public:
    explicit DEVMODE_RAII(PrintData&) {}
    DEVMODEW* get() { return nullptr; }
};

class PaperSizeGetter {
public:
    PaperSizeGetter(const wchar_t* printerName, const wchar_t* port, const PrintData* printData);
    PaperSizeGetter(const PaperSizeGetter&) = delete;
    PaperSizeGetter& operator=(const PaperSizeGetter&) = delete;
    ~PaperSizeGetter();
    bool get(OdArray<unsigned short>* ids, OdArray<OdString>* names, OdArray<POINT>* dims) const;

private:
    const DEVMODEW* devMode() const;
    const wchar_t* printer_;
    const wchar_t* port_;
    std::unique_ptr<DEVMODE_RAII> current_;
    DevModePtr default_;
};

void onPrinterSettingsChanged(const OdString& printerName);

}  // namespace wut
