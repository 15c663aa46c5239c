/// A spooler in memory, for tests: printers with settings and papers, counted calls, and the faults
/// that drivers have.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "print/spooler.h"

namespace test_support {

struct FakePaper {
    unsigned short id;
    /// At most 64 characters; exactly 64 leave no room for a terminator.
    std::wstring name;
    /// Tenths of a millimetre.
    POINT size;
};

struct FakePrinter {
    std::wstring name;
    std::wstring port = L"LPT1:";
    std::wstring comment;
    std::wstring driver = L"Fake Driver";
    bool local = true;
    /// Seen by the pass over connections as well.
    bool shared = false;
    std::vector<FakePaper> papers = {{9, L"A4", {2100, 2970}}, {1, L"Letter", {2159, 2794}}};
    /// The driver's default device mode: public part, then its private bytes.
    DEVMODEW devMode = {};
    std::vector<unsigned char> privateBytes = {1, 2, 3, 4, 5, 6, 7, 8};

    /// What the driver does to the settings it is to merge.
    std::function<void(DEVMODEW&)> correct;
    /// Called at the beginning of each question for a capability, which counts or fills.
    std::function<void(WORD capability, bool counts)> whenAsked;

    /// Faults. A count that the driver reports in place of its number of papers, by capability; it
    /// fills in what there is room for all the same.
    std::map<WORD, int> counts;
    /// `documentProperties` fails for every call, or for those that are not about the size.
    bool propertiesFail = false;
    bool fillFails = false;
    /// The device mode that is filled in claims this many private bytes more than it was said to
    /// need.
    WORD growsBy = 0;
    /// What is said to be needed in place of the true size.
    std::optional<LONG> size;
};

class FakeSpooler : public wut::Spooler {
public:
    /// In the order of enumeration. A printer stays where it is while others are added.
    std::vector<std::unique_ptr<FakePrinter>> printers;
    std::wstring defaultName;
    /// Called at the beginning of each listing, for printers that come in between.
    std::function<void()> whenListing;
    /// How often each function was called: "open", "close", "documentProperties", ...
    std::map<std::string, int> calls;
    /// Handles that are open now, by the printers they were opened for.
    std::map<HANDLE, std::wstring> handles;
    /// Modes of `documentProperties` calls, in order.
    std::vector<DWORD> modes;
    /// The escape that every device takes, and those that were asked for, in order.
    DWORD escapeTaken = 0;
    std::vector<DWORD> escapesAsked;

    /// A printer whose device mode is that of an ordinary driver: A4, portrait, one copy.
    FakePrinter& add(const std::wstring& name);
    /// Null when it is not there.
    FakePrinter* find(const wchar_t* name);
    void remove(const std::wstring& name);

    HANDLE open(const wchar_t* printer) override;
    void close(HANDLE printer) override;
    LONG documentProperties(HANDLE printer, const wchar_t* name, std::span<std::byte> out,
                            const DEVMODEW* in, DWORD mode) override;
    int deviceCapabilities(const wchar_t* printer, const wchar_t* port, WORD capability,
                           std::span<std::byte> out, const DEVMODEW* devMode) override;
    bool enumerate(DWORD flags, DWORD level, std::span<std::byte> out, DWORD& needed,
                   DWORD& count) override;
    bool info(HANDLE printer, DWORD level, std::span<std::byte> out, DWORD& needed) override;
    bool driver(HANDLE printer, DWORD level, std::span<std::byte> out, DWORD& needed) override;
    bool defaultPrinter(std::span<wchar_t> out, DWORD& length) override;
    bool setDefaultPrinter(const wchar_t* name) override;
    bool printDialog(PRINTDLGW& dialog) override;
    int escape(HDC device, int number, std::span<const std::byte> in) override;

private:
    /// Null when the handle is closed or its printer is gone.
    FakePrinter* of(HANDLE printer);

    std::size_t handlesGiven_ = 0;
};

}  // namespace test_support
