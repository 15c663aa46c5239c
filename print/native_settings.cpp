#include "print/native_settings.h"

#include <commdlg.h>

#include <cstddef>
#include <span>

#include "print/dev_mode.h"

namespace wut {

namespace {

/// A `DEVNAMES` of the printer's name alone. A device mode has room for 31 characters of it only.
GlobalBlock namesOf(const std::wstring& printer) {
    // Offsets are in characters: the record, the empty driver name, the printer, the empty port.
    constexpr std::size_t driver = sizeof(DEVNAMES) / sizeof(wchar_t);
    constexpr std::size_t device = driver + 1;
    const std::size_t output = device + printer.size() + 1;
    if (output > 0xFFFF) {
        return nullptr;
    }
    GlobalBlock block(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, (output + 1) * sizeof(wchar_t)));
    const auto names = lockGlobal<DEVNAMES>(block.get());
    if (!names) {
        return nullptr;
    }
    names->wDriverOffset = static_cast<WORD>(driver);
    names->wDeviceOffset = static_cast<WORD>(device);
    names->wOutputOffset = static_cast<WORD>(output);
    printer.copy(reinterpret_cast<wchar_t*>(names.get()) + device, printer.size());
    return block;
}

}  // namespace

NativeSettings defaultSettings() {
    PRINTDLGW dialog = {};
    dialog.lStructSize = sizeof(dialog);
    dialog.Flags = PD_RETURNDEFAULT;
    const bool asked = spooler().printDialog(dialog);
    NativeSettings settings{GlobalBlock(dialog.hDevMode), GlobalBlock(dialog.hDevNames)};
    if (!asked || !lockDevMode(settings.devMode.get())) {
        return {};
    }
    return settings;
}

NativeSettings settingsOf(const std::wstring& name) {
    const PrinterHandle printer{OdString(name)};
    const std::size_t size = printer ? devModeSize(printer, name.c_str()) : 0;
    if (size == 0) {
        return {};
    }
    GlobalBlock block(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size));
    const auto memory = lockGlobal<std::byte>(block.get());
    if (!memory || !fillDevMode(printer, name.c_str(), std::span(memory.get(), size))) {
        return {};
    }
    return {std::move(block), namesOf(name)};
}

}  // namespace wut
