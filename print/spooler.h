/// The calls to the spooler and to drivers, in one place, so that tests can stand in for them.
#pragma once

#include <cstddef>
#include <span>

#include <platen/print.h>

namespace wut {

/// Each call is the Windows function that it names. Where that one takes memory without its size,
/// the size is passed here; Windows cannot be told it.
class Spooler {
public:
    virtual ~Spooler() = default;

    /// `OpenPrinterW`; null when it fails.
    virtual HANDLE open(const wchar_t* printer) = 0;
    /// `ClosePrinter`
    virtual void close(HANDLE printer) = 0;
    /// `DocumentPropertiesW`. `in` may be the memory of `out`.
    virtual LONG documentProperties(HANDLE printer, const wchar_t* name, std::span<std::byte> out,
                                    const DEVMODEW* in, DWORD mode) = 0;
    /// `DeviceCapabilitiesW`. Without output it counts.
    virtual int deviceCapabilities(const wchar_t* printer, const wchar_t* port, WORD capability,
                                   std::span<std::byte> out, const DEVMODEW* devMode) = 0;
    /// `EnumPrintersW`
    virtual bool enumerate(DWORD flags, DWORD level, std::span<std::byte> out, DWORD& needed,
                           DWORD& count) = 0;
    /// `GetPrinterW`
    virtual bool info(HANDLE printer, DWORD level, std::span<std::byte> out, DWORD& needed) = 0;
    /// `GetPrinterDriverW` for the environment of this program.
    virtual bool driver(HANDLE printer, DWORD level, std::span<std::byte> out, DWORD& needed) = 0;
    /// `GetDefaultPrinterW`. `length` counts the terminator.
    virtual bool defaultPrinter(std::span<wchar_t> out, DWORD& length) = 0;
    /// `SetDefaultPrinterW`
    virtual bool setDefaultPrinter(const wchar_t* name) = 0;
    /// `PrintDlgW`. The caller owns the memory that it returns.
    virtual bool printDialog(PRINTDLGW& dialog) = 0;
    /// `ExtEscape` without output.
    virtual int escape(HDC device, int number, std::span<const std::byte> in) = 0;
};

/// Windows' own.
Spooler& systemSpooler();

/// The one in use: Windows' own unless a test has put another in its place.
Spooler& spooler();

/// Puts another spooler in place while it lives, and the one before back at its end.
class SpoolerForTest {
public:
    explicit SpoolerForTest(Spooler& spooler);
    SpoolerForTest(const SpoolerForTest&) = delete;
    SpoolerForTest& operator=(const SpoolerForTest&) = delete;
    ~SpoolerForTest();

private:
    Spooler* before_;
};

}  // namespace wut
