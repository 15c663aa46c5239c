#include "print/spooler_data.h"

#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <iterator>

namespace wut {

namespace {

/// Far more than the records of a thousand printers take.
constexpr DWORD largestAnswer = 16u << 20;
/// Printers come and go while they are listed, but not at every call.
constexpr int attempts = 3;

}  // namespace

std::vector<std::byte> spoolerData(const SpoolerCall& call) {
    DWORD needed = 0;
    if (call({}, needed)) {
        return {};
    }
    std::vector<std::byte> data;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (needed <= data.size() || needed > largestAnswer) {
            return {};
        }
        data.assign(needed, std::byte{});
        SetLastError(ERROR_SUCCESS);
        if (call(data, needed)) {
            return data;
        }
    }
    return {};
}

std::wstring textIn(std::span<const std::byte> data, const wchar_t* text) {
    const auto begin = reinterpret_cast<std::uintptr_t>(data.data());
    const auto at = reinterpret_cast<std::uintptr_t>(text);
    if (text == nullptr || at < begin || at >= begin + data.size()) {
        return {};
    }
    const std::size_t room = (begin + data.size() - at) / sizeof(wchar_t);
    return std::wstring(text, wcsnlen(text, room));
}

std::wstring driverName(const PrinterHandle& printer) {
    if (!printer) {
        return {};
    }
    const auto data = spoolerData([&printer](std::span<std::byte> out, DWORD& needed) {
        return spooler().driver(printer.get(), 1, out, needed);
    });
    if (data.size() < sizeof(DRIVER_INFO_1W)) {
        return {};
    }
    return textIn(data, reinterpret_cast<const DRIVER_INFO_1W*>(data.data())->pName);
}

bool takesPostScript(HDC device) {
    // Drivers that cannot be identified may still let it pass.
    constexpr DWORD numbers[] = {POSTSCRIPT_IDENTIFY, POSTSCRIPT_PASSTHROUGH};
    return std::any_of(std::begin(numbers), std::end(numbers), [device](const DWORD& number) {
        return spooler().escape(device, QUERYESCSUPPORT, std::as_bytes(std::span(&number, 1))) > 0;
    });
}

}  // namespace wut
