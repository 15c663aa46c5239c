// A spooler and drivers that say anything: sizes, counts, texts that lie elsewhere, device modes
// longer than their memory. The sources that ask them are those of Windows, see
// fuzz/windows/platen/print.h.
//
// Slow: one size in twelve that an answer claims is about 16 MB, the most that is taken, and all of
// it is filled.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/oracle.h"
#include "print/compare_names.h"
#include "print/dev_mode.h"
#include "print/hex_text.h"
#include "print/spooler_data.h"

namespace {

/// Answers from the bytes of the input, one after the other.
class HostileSpooler final : public wut::Spooler {
public:
    explicit HostileSpooler(std::string_view input) : rest_(input) {}
    ~HostileSpooler() override { require(open_.empty()); }

    unsigned byte() {
        const unsigned value = rest_.empty() ? 0 : static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(std::min<std::size_t>(rest_.size(), 1));
        return value;
    }
    bool ended() const { return rest_.empty(); }

    HANDLE open(const wchar_t* printer) override {
        require(printer != nullptr);
        if (byte() % 8 == 0) {
            return nullptr;
        }
        // Spoolers count their handles.
        HANDLE const handle = reinterpret_cast<HANDLE>(++given_);
        open_.insert(handle);
        return handle;
    }
    void close(HANDLE printer) override { require(open_.erase(printer) == 1); }

    LONG documentProperties(HANDLE, const wchar_t*, std::span<std::byte> out, const DEVMODEW*,
                            DWORD) override {
        if (out.empty()) {
            return size();
        }
        fill(out);
        auto& devMode = *reinterpret_cast<DEVMODEW*>(out.data());
        if (byte() % 4 != 0) {
            // Sizes of a driver that knows what it does, more or less.
            devMode.dmSize = static_cast<WORD>(sizeof(DEVMODEW) - byte() % 16 * 8);
            devMode.dmDriverExtra = static_cast<WORD>(byte() * (byte() % 8));
        }
        return byte() % 8 == 0 ? -1 : IDOK;
    }
    int deviceCapabilities(const wchar_t*, const wchar_t*, WORD, std::span<std::byte> out,
                           const DEVMODEW* devMode) override {
        require(devMode != nullptr);
        if (!out.empty()) {
            fill(out);
        }
        const unsigned count = byte();
        return count < 250 ? static_cast<int>(count % 40) : static_cast<int>(size());
    }
    bool enumerate(DWORD, DWORD level, std::span<std::byte> out, DWORD& needed,
                   DWORD& count) override {
        require(level == 4);
        count = byte() % 2 == 0 ? byte() % 4 : static_cast<DWORD>(size());
        return answer(out, needed, sizeof(PRINTER_INFO_4W), byte() % 4);
    }
    bool info(HANDLE printer, DWORD level, std::span<std::byte> out, DWORD& needed) override {
        require(open_.contains(printer) && (level == 2 || level == 5));
        return answer(out, needed, sizeof(PRINTER_INFO_2W), 1);
    }
    bool driver(HANDLE printer, DWORD level, std::span<std::byte> out, DWORD& needed) override {
        require(open_.contains(printer) && level == 1);
        return answer(out, needed, sizeof(DRIVER_INFO_1W), 1);
    }
    bool defaultPrinter(std::span<wchar_t> out, DWORD& length) override {
        length = static_cast<DWORD>(size());
        // It need not terminate what it gives.
        for (wchar_t& character : out) {
            character = static_cast<wchar_t>(byte() + L'\x20');
        }
        return byte() % 4 != 0;
    }
    bool setDefaultPrinter(const wchar_t* name) override { return name[0] != 0; }
    bool printDialog(PRINTDLGW&) override { return false; }
    int escape(HDC, int, std::span<const std::byte> in) override {
        require(in.size() == sizeof(DWORD));
        return static_cast<int>(byte()) - 128;
    }

private:
    LONG size() {
        const unsigned kind = byte();
        const auto small = static_cast<LONG>(byte() * 8);
        return kind < 200   ? small
               : kind < 220 ? 0xFFFF + small
               : kind < 240 ? (LONG{16} << 20U) + small - 100
                            : -small;
    }

    void fill(std::span<std::byte> out) {
        const std::size_t step = std::max<std::size_t>(rest_.size(), 1);
        for (std::size_t at = 0; at < out.size(); ++at) {
            out[at] = rest_.empty() ? std::byte{} : static_cast<std::byte>(rest_[at % step]);
        }
        rest_.remove_prefix(std::min<std::size_t>(rest_.size(), 4));
    }

    /// Records that begin with pointers, into the answer or elsewhere, and any bytes.
    bool answer(std::span<std::byte> out, DWORD& needed, std::size_t record, std::size_t records) {
        if (out.empty()) {
            needed = static_cast<DWORD>(size());
            return byte() % 16 == 0;
        }
        fill(out);
        static const wchar_t elsewhere[] = L"elsewhere";
        for (std::size_t at = 0; at < records * record / sizeof(void*); ++at) {
            const unsigned where = byte();
            const wchar_t* text = elsewhere;
            if (where < 200) {
                // Up to beyond the end, as far as a size says.
                text = reinterpret_cast<const wchar_t*>(out.data()) +
                       where % (out.size() / sizeof(wchar_t) + 1);
            } else if (where < 220) {
                text = nullptr;
            }
            if ((at + 1) * sizeof text <= out.size()) {
                std::memcpy(out.data() + at * sizeof text, &text, sizeof text);
            }
        }
        needed = byte() % 8 == 0 ? static_cast<DWORD>(size()) : static_cast<DWORD>(out.size());
        return byte() % 8 != 0;
    }

    std::string_view rest_;
    std::uintptr_t given_ = 0;
    std::set<HANDLE> open_;
};

/// A text that came with an answer is no other.
void isOurs(const OdString& text) { require(text != OdString(L"elsewhere")); }

void askAll(HostileSpooler& spooler) {
    const OdString name(L"Plotter");
    switch (spooler.byte() % 8) {
        case 0: {
            OdArray<OdString> names;
            wut::getSystemPrinters(names);
            for (const OdString& each : names) {
                isOurs(each);
            }
            break;
        }
        case 1:
            isOurs(wut::getPrinterPorts(name));
            isOurs(wut::getPrinterComment(name));
            break;
        case 2:
            require(wut::driverName(wut::PrinterHandle(name)) != L"elsewhere");
            break;
        case 3:
            (void)wut::getDefaultSystemPrinter(true);
            break;
        case 4: {
            const wut::ChangeDefaultPrinter change(name);
            break;
        }
        case 5: {
            const wut::PaperSizeGetter papers(L"Plotter", L"LPT1:", nullptr);
            OdArray<unsigned short> ids;
            OdArray<OdString> names;
            OdArray<POINT> sizes;
            const bool complete = papers.get(&ids, &names, &sizes);
            require(complete == (!ids.isEmpty() && !names.isEmpty() && !sizes.isEmpty()));
            for (const OdString& each : names) {
                require(each.text().size() <= 64);
            }
            wut::onPrinterSettingsChanged(OdString());
            break;
        }
        case 6: {
            const wut::DevModePtr devMode(wut::getDevMode(L"Plotter"));
            if (devMode) {
                OdString text;
                wut::dumpDevMode(*devMode, text);
                require(!text.isEmpty());
                const auto* bytes = reinterpret_cast<const std::byte*>(devMode.get());
                const std::span privateBytes(bytes + devMode->dmSize, devMode->dmDriverExtra);
                const std::vector<std::byte> back = wut::hexBytes(wut::hexText(privateBytes));
                require(std::ranges::equal(back, privateBytes));
            }
            break;
        }
        default: {
            // Global memory that others have made.
            std::vector<std::byte> block(spooler.byte() * 4);
            for (std::byte& each : block) {
                each = static_cast<std::byte>(spooler.byte());
            }
            const auto locked = wut::lockDevMode(block.empty() ? nullptr : &block);
            if (locked) {
                OdString text;
                wut::dumpDevMode(*locked, text);
            }
        }
    }
}

}  // namespace

void* GlobalLock(HGLOBAL block) { return static_cast<std::vector<std::byte>*>(block)->data(); }
int GlobalUnlock(HGLOBAL) { return 0; }
HGLOBAL GlobalFree(HGLOBAL) { return nullptr; }
std::size_t GlobalSize(HGLOBAL block) {
    return static_cast<std::vector<std::byte>*>(block)->size();
}

namespace wut {

Spooler& systemSpooler() {
    require(false);
    std::abort();
}

int compareNames(const wchar_t* left, const wchar_t* right) { return std::wcscmp(left, right); }

}  // namespace wut

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    HostileSpooler spooler({reinterpret_cast<const char*>(data), size});
    const wut::SpoolerForTest inUse(spooler);
    constexpr int mostQuestions = 8;
    for (int question = 0; question < mostQuestions && !spooler.ended(); ++question) {
        askAll(spooler);
    }
    return 0;
}
