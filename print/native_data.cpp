#include <wx/paper.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <platen/log.h>
#include "print/dev_mode.h"
#include "print/native_settings.h"

wxIMPLEMENT_DYNAMIC_CLASS(wut::WindowsPrintNativeData, wxWindowsPrintNativeData);

namespace wut {

namespace {

/// The longest side in millimetres that every driver takes: 16 bits of tenths, with a sign.
constexpr int longestSide = std::numeric_limits<short>::max() / 10;

constexpr DWORD bothSides = DM_PAPERWIDTH | DM_PAPERLENGTH;

bool canBeStated(int millimetres) { return millimetres >= 0 && millimetres <= longestSide; }

/// A side as its driver means it: drivers of plotters count on past the sign.
int millimetresOf(short tenths) { return static_cast<std::uint16_t>(tenths) / 10; }

/// Calls `visit` with each number that wxWidgets leaves alone: its bit, its member here, its field
/// in the device mode, and the value that stands for none.
template <class Visit>
void eachNumber(WindowsPrintNativeData& data, DEVMODEW& devMode, const Visit& visit) {
    visit(DM_SCALE, data.scale, devMode.dmScale, 100);
    visit(DM_YRESOLUTION, data.yResolution, devMode.dmYResolution, 0);
    visit(DM_TTOPTION, data.ttOption, devMode.dmTTOption, 0);
    visit(DM_NUP, data.pagesPerSheet, devMode.dmNup, 0);
    visit(DM_ICMMETHOD, data.icmMethod, devMode.dmICMMethod, 0);
    visit(DM_ICMINTENT, data.icmIntent, devMode.dmICMIntent, 0);
    visit(DM_DITHERTYPE, data.ditherType, devMode.dmDitherType, 0);
}

bool isKnownPaper(const wxPrintData& data) {
    return data.GetPaperId() != wxPAPER_NONE && wxThePrintPaperDatabase != nullptr &&
           wxThePrintPaperDatabase->FindPaperType(data.GetPaperId()) != nullptr;
}

/// A paper with a size of its own; the sizes of others go by their number.
bool isOwnPaper(const wxPrintData& data) {
    return !isKnownPaper(data) && data.GetPaperSize() != wxDefaultSize;
}

/// The data as wxWidgets can write them, which cuts sides to 16 bits.
wxPrintData withoutLongSides(const wxPrintData& data) {
    wxPrintData copy(data);
    if (isOwnPaper(data)) {
        const wxSize size = data.GetPaperSize();
        copy.SetPaperSize({canBeStated(size.x) ? size.x : 0, canBeStated(size.y) ? size.y : 0});
    }
    return copy;
}

/// Takes back what was written in place of a side that cannot be stated, unless the driver has
/// stated it by itself. True when it is left out.
bool leaveOut(int millimetres, DWORD bit, short DEVMODEW::*side, const DEVMODEW& before,
              DEVMODEW& devMode) {
    if (canBeStated(millimetres)) {
        return false;
    }
    devMode.*side = before.*side;
    if ((before.dmFields & bit) != 0 && millimetresOf(before.*side) == millimetres) {
        return false;
    }
    devMode.dmFields &= ~bit;
    return true;
}

/// wxWidgets has written a paper that it does not know without its number, which it keeps to
/// itself.
void storeOwnPaper(const wxPrintData& data, short id, const DEVMODEW& before, DEVMODEW& devMode) {
    if (!isOwnPaper(data)) {
        return;
    }
    const wxSize size = data.GetPaperSize();
    const bool tooWide = leaveOut(size.x, DM_PAPERWIDTH, &DEVMODEW::dmPaperWidth, before, devMode);
    const bool tooLong =
        leaveOut(size.y, DM_PAPERLENGTH, &DEVMODEW::dmPaperLength, before, devMode);
    if (tooWide || tooLong) {
        logWarning(
            L"A paper of %d x %d mm is set for %ls without the sides that its settings cannot "
            L"state: these are below 0 or above %d mm.",
            size.x, size.y, data.GetPrinterName().wc_str(), longestSide);
    }
    if (size == wxSize(0, 0)) {
        // No paper is 0 by 0: only its number counts.
        devMode.dmFields &= ~bothSides;
    }
    const bool sized = (devMode.dmFields & bothSides) != 0;
    if (id != 0) {
        devMode.dmPaperSize = id;
    } else {
        devMode.dmPaperSize = sized ? static_cast<short>(DMPAPER_USER) : before.dmPaperSize;
    }
    if (id != 0 && id != DMPAPER_USER) {
        devMode.dmFields |= DM_PAPERSIZE;
    } else if (sized) {
        // Drivers without a user-defined paper would look for the number and not find it.
        devMode.dmFields &= ~static_cast<DWORD>(DM_PAPERSIZE);
    }
}

void storeFormName(const std::wstring& name, DEVMODEW& devMode) {
    if (name.empty()) {
        // The old name stays in place, as the old numbers do: what is read of a device mode goes by
        // the bits.
        devMode.dmFields &= ~static_cast<DWORD>(DM_FORMNAME);
        return;
    }
    const std::size_t length = name.copy(devMode.dmFormName, CCHFORMNAME - 1);
    devMode.dmFormName[length] = 0;
    devMode.dmFields |= DM_FORMNAME;
}

/// Gives a device mode the memory that its driver wants by now. Null when it cannot be had, because
/// there is none or because somebody else has it locked; a block that cannot move is another one
/// then.
HGLOBAL grow(HGLOBAL block, std::size_t size) {
    return (GlobalFlags(block) & GMEM_LOCKCOUNT) == 0
               ? GlobalReAlloc(block, size, GMEM_MOVEABLE | GMEM_ZEROINIT)
               : nullptr;
}

}  // namespace

WindowsPrintNativeData* WindowsPrintNativeData::GetNativeData(wxPrintData& data) {
    return wxDynamicCast(data.GetNativeData(), WindowsPrintNativeData);
}

const WindowsPrintNativeData* WindowsPrintNativeData::GetNativeData(const wxPrintData& data) {
    return wxDynamicCast(data.GetNativeData(), WindowsPrintNativeData);
}

bool WindowsPrintNativeData::obtain(const wxString& printerName) {
    NativeSettings settings =
        printerName.empty() ? defaultSettings() : settingsOf(printerName.ToStdWstring());
    if (!settings.devMode) {
        return false;
    }
    const GlobalBlock oldDevMode(GetDevMode());
    const GlobalBlock oldDevNames(GetDevNames());
    SetDevMode(settings.devMode.release());
    SetDevNames(settings.devNames.release());
    return true;
}

bool WindowsPrintNativeData::Initialize(wxPrintData& data, const wxString& printerName) {
    return obtain(printerName) && TransferTo(data) && !data.GetPrinterName().empty();
}

bool WindowsPrintNativeData::TransferTo(wxPrintData& data) {
    // wxWidgets would take the default printer's device mode past the spooler in use.
    if (GetDevMode() == nullptr && !obtain(wxString())) {
        return false;
    }
    const auto devMode = lockDevMode(GetDevMode());
    // Without its papers, which it has once it is initialised, wxWidgets raises an assertion.
    if (!devMode || wxThePrintPaperDatabase == nullptr) {
        return false;
    }
    // Another assertion is about drivers that name no media type and set its bit.
    const bool namesNoMedia = (devMode->dmFields & DM_MEDIATYPE) != 0 && devMode->dmMediaType == 0;
    if (namesNoMedia) {
        devMode->dmFields &= ~static_cast<DWORD>(DM_MEDIATYPE);
        data.SetMedia(wxPRINTMEDIA_DEFAULT);
    }
    const bool transferred = wxWindowsPrintNativeData::TransferTo(data);
    if (namesNoMedia) {
        devMode->dmFields |= DM_MEDIATYPE;
    }
    if (!transferred) {
        return false;
    }
    if (GetDevNames() == nullptr && devMode->dmDeviceName[0] != 0) {
        // wxWidgets takes the whole array, with what follows the terminator.
        data.SetPrinterName(wxString(textOf(devMode->dmDeviceName)));
    }
    specVersion = devMode->dmSpecVersion;
    driverVersion = devMode->dmDriverVersion;
    size = devMode->dmSize;
    eachNumber(*this, *devMode, [&devMode](DWORD bit, auto& member, auto& field, int none) {
        using Member = std::remove_reference_t<decltype(member)>;
        member = static_cast<Member>((devMode->dmFields & bit) != 0 ? field : none);
    });
    formName = (devMode->dmFields & DM_FORMNAME) != 0 ? textOf(devMode->dmFormName) : L"";
    customWindowsPaperId = 0;
    if (data.GetPaperId() == wxPAPER_NONE) {
        customWindowsPaperId = devMode->dmPaperSize;
        if ((devMode->dmFields & bothSides) == bothSides) {
            data.SetPaperSize(
                {millimetresOf(devMode->dmPaperWidth), millimetresOf(devMode->dmPaperLength)});
        }
    }
    return true;
}

bool WindowsPrintNativeData::TransferFrom(const wxPrintData& data) {
    // Asked by wxWidgets for a printer by its name, Windows may give the default printer's
    // settings.
    if (GetDevMode() == nullptr && !obtain(data.GetPrinterName())) {
        return false;
    }
    const auto devMode = lockDevMode(GetDevMode());
    if (!devMode) {
        return false;
    }
    // wxWidgets copies private bytes without asking how many there is room for.
    const std::size_t room = GlobalSize(GetDevMode()) - devMode->dmSize;
    const int privateBytes = data.GetPrivDataLen();
    if (privateBytes > 0 && (static_cast<std::size_t>(privateBytes) > room ||
                             privateBytes > std::numeric_limits<WORD>::max())) {
        return false;
    }
    const DEVMODEW before = *devMode;
    if (!wxWindowsPrintNativeData::TransferFrom(withoutLongSides(data))) {
        return false;
    }
    storeOwnPaper(data, customWindowsPaperId, before, *devMode);
    eachNumber(*this, *devMode, [&devMode](DWORD bit, auto& member, auto& field, int none) {
        using Field = std::remove_reference_t<decltype(field)>;
        // Of what is absent only the bit goes: a caller may still find the driver's last value.
        if (static_cast<Field>(member) == static_cast<Field>(none)) {
            devMode->dmFields &= ~bit;
        } else {
            field = static_cast<Field>(member);
            devMode->dmFields |= bit;
        }
    });
    storeFormName(formName, *devMode);
    return true;
}

bool WindowsPrintNativeData::ResolveConflicts(const wxPrintData& data) {
    if (GetDevMode() == nullptr && !TransferFrom(data)) {
        return false;
    }
    auto devMode = lockDevMode(GetDevMode());
    if (!devMode) {
        return false;
    }
    const std::wstring name = data.GetPrinterName().ToStdWstring();
    const PrinterHandle printer{OdString(name)};
    if (!printer) {
        // The lock stays, on purpose: a caller that still has the pointer of a failed attempt may
        // read on, since the block cannot move from under it.
        devMode.release();
        return false;
    }
    // The driver writes into a copy: one that writes more than it has asked for spoils nothing
    // then, and a block that others have locked need have no room to spare.
    const auto* bytes = reinterpret_cast<const std::byte*>(devMode.get());
    std::vector<std::byte> answer(bytes, bytes + GlobalSize(GetDevMode()));
    answer.resize(std::max(devModeSize(printer, name.c_str()), answer.size()));
    if (spooler().documentProperties(printer.get(), name.c_str(), answer, devMode.get(),
                                     DM_IN_BUFFER | DM_OUT_BUFFER) != IDOK) {
        // It has nothing to correct.
        return true;
    }
    const auto& corrected = *reinterpret_cast<const DEVMODEW*>(answer.data());
    if (!isWhole(corrected, answer.size())) {
        return false;
    }
    const std::size_t length = std::size_t{corrected.dmSize} + corrected.dmDriverExtra;
    if (length > GlobalSize(GetDevMode())) {
        // The driver is another one than at the time of the device mode.
        devMode.reset();
        const HGLOBAL grown = grow(GetDevMode(), length);
        if (grown == nullptr) {
            return false;
        }
        SetDevMode(grown);
        devMode = lockGlobal<DEVMODEW>(GetDevMode());
    }
    std::memcpy(static_cast<void*>(devMode.get()), answer.data(), length);
    return true;
}

}  // namespace wut
