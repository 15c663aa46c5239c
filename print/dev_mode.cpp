#include "print/dev_mode.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace wut {

namespace {

/// Two lengths of 16 bits, and room for what drivers add to round up.
constexpr std::size_t largestDevMode = 2 * 0xFFFF + 4096;
/// There are drivers that write more than they have asked for.
constexpr std::size_t slack = 1024;

}  // namespace

bool isWhole(const DEVMODEW& devMode, std::size_t capacity) {
    // Writing the last of the fields must not reach into the private bytes.
    return devMode.dmSize >= offsetof(DEVMODEW, dmReserved1) &&
           std::size_t(devMode.dmSize) + devMode.dmDriverExtra <= capacity;
}

std::size_t devModeSize(const PrinterHandle& printer, const wchar_t* name) {
    const std::size_t size = getDevModeBytes(printer, name);
    return size == 0 || size > largestDevMode ? 0 : std::max(size, sizeof(DEVMODEW)) + slack;
}

bool fillDevMode(const PrinterHandle& printer, const wchar_t* name, std::span<std::byte> out) {
    return spooler().documentProperties(printer.get(), name, out, nullptr, DM_OUT_BUFFER) == IDOK &&
           isWhole(*reinterpret_cast<const DEVMODEW*>(out.data()), out.size());
}

GlobalLocked<DEVMODEW> lockDevMode(HGLOBAL block) {
    auto devMode = lockGlobal<DEVMODEW>(block);
    const std::size_t capacity = devMode ? GlobalSize(block) : 0;
    if (capacity < sizeof(DEVMODEW) || !isWhole(*devMode, capacity)) {
        devMode.reset();
    }
    return devMode;
}

DEVMODEW* getDevMode(const wchar_t* printerName) {
    const OdString name(printerName);
    const PrinterHandle printer(name);
    const std::size_t size = printer ? devModeSize(printer, name.c_str()) : 0;
    if (size == 0) {
        return nullptr;
    }
    DevModePtr devMode(static_cast<DEVMODEW*>(::operator new(size)));
    std::memset(static_cast<void*>(devMode.get()), 0, size);
    const std::span<std::byte> bytes(reinterpret_cast<std::byte*>(devMode.get()), size);
    return fillDevMode(printer, name.c_str(), bytes) ? devMode.release() : nullptr;
}

std::size_t getDevModeBytes(const PrinterHandle& printer, const wchar_t* printerName) {
    const LONG size = spooler().documentProperties(printer.get(), printerName, {}, nullptr, 0);
    return size > 0 ? static_cast<std::size_t>(size) : 0;
}

void freeDevMode(DEVMODEW* devMode) noexcept { ::operator delete(devMode); }

}  // namespace wut
