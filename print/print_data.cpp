#include <wx/paper.h>

#include <cmath>
#include <memory>

#include "print/spooler_data.h"

wxIMPLEMENT_DYNAMIC_CLASS(wut::PrintData, wxPrintData);

namespace wut {

namespace {

/// From here on bins are a driver's own, and the two countings run in parallel.
constexpr int binDistance = static_cast<int>(DMBIN_USER) - static_cast<int>(wxPRINTBIN_USER);

int lengthOf(LONG tenths) { return static_cast<int>(std::floor(tenths * 0.1 + 0.5)); }

bool initialize(wxPrintData& data, const wxString& printer) {
    WindowsPrintNativeData* native = WindowsPrintNativeData::GetNativeData(data);
    return native != nullptr && native->Initialize(data, printer);
}

}  // namespace

PrintData::PrintData(EInit) {
    if (initialize(*this, wxString())) {
        return;
    }
    OdArray<OdString> printers;
    getSystemPrinters(printers);
    if (!printers.isEmpty()) {
        initialize(*this, std::as_const(printers)[0].c_str());
    }
}

PrintData::PrintData(const wchar_t* printerName) { initialize(*this, printerName); }

wxPrinterDC* PrintData::createPrinterDC() {
    if (GetPrinterName().empty() && !initialize(*this, wxString())) {
        return nullptr;
    }
    return new wxPrinterDC(*this);
}

bool PrintData::ResolveConflicts() {
    WindowsPrintNativeData* native = WindowsPrintNativeData::GetNativeData(*this);
    return native == nullptr || (native->TransferFrom(*this) && native->ResolveConflicts(*this) &&
                                 native->TransferTo(*this));
}

void PrintData::setDmBin(short dmBin) {
    int bin = wxPRINTBIN_DEFAULT;
    if (dmBin >= DMBIN_ONLYONE && dmBin <= DMBIN_LARGECAPACITY) {
        bin = dmBin;
    } else if (dmBin == DMBIN_CASSETTE) {
        bin = wxPRINTBIN_CASSETTE;
    } else if (dmBin == DMBIN_FORMSOURCE) {
        bin = wxPRINTBIN_FORMSOURCE;
    } else if (dmBin >= DMBIN_USER) {
        bin = dmBin - binDistance;
    }
    SetBin(static_cast<wxPrintBin>(bin));
}

short PrintData::getDmBin() const {
    const int bin = GetBin();
    if (bin >= wxPRINTBIN_ONLYONE && bin <= wxPRINTBIN_LARGECAPACITY) {
        return static_cast<short>(bin);
    }
    if (bin == wxPRINTBIN_CASSETTE) {
        return DMBIN_CASSETTE;
    }
    if (bin == wxPRINTBIN_FORMSOURCE) {
        return DMBIN_FORMSOURCE;
    }
    // The default bin comes out as 242, which is no bin of Windows. Stored configurations have it,
    // and setDmBin takes it back as the default bin.
    return static_cast<short>(bin + binDistance);
}

void PrintData::setDmDuplex(short dmDuplex) {
    SetDuplex(dmDuplex == DMDUP_VERTICAL     ? wxDUPLEX_VERTICAL
              : dmDuplex == DMDUP_HORIZONTAL ? wxDUPLEX_HORIZONTAL
                                             : wxDUPLEX_SIMPLEX);
}

short PrintData::getDmDuplex() const {
    switch (GetDuplex()) {
        case wxDUPLEX_HORIZONTAL:
            return DMDUP_HORIZONTAL;
        case wxDUPLEX_VERTICAL:
            return DMDUP_VERTICAL;
        default:
            return DMDUP_SIMPLEX;
    }
}

void PrintData::setDmQuality(short dmQuality) {
    // Both count four grades downwards from -1, one from the best, the other from the worst.
    const bool grade = dmQuality >= DMRES_HIGH && dmQuality <= DMRES_DRAFT;
    SetQuality(grade ? DMRES_HIGH - 1 - dmQuality : dmQuality);
}

short PrintData::getDmQuality() const {
    const int quality = GetQuality();
    const bool grade = quality >= wxPRINT_QUALITY_DRAFT && quality <= wxPRINT_QUALITY_HIGH;
    return static_cast<short>(grade ? DMRES_HIGH - 1 - quality : quality);
}

bool PrintData::getDmPaperSize(short& paperId) const {
    if (GetPaperId() != wxPAPER_NONE && wxThePrintPaperDatabase != nullptr) {
        const wxPrintPaperType* type = wxThePrintPaperDatabase->FindPaperType(GetPaperId());
        if (type != nullptr) {
            paperId = static_cast<short>(type->GetPlatformId());
            return true;
        }
    }
    if (GetPaperSize() == wxDefaultSize) {
        return false;
    }
    const WindowsPrintNativeData* native = WindowsPrintNativeData::GetNativeData(*this);
    const short custom = native != nullptr ? native->customWindowsPaperId : short{0};
    paperId = custom != 0 ? custom : static_cast<short>(DMPAPER_USER);
    return true;
}

void PrintData::setDmPaperSize(short paperId, const wxSize* sizeMM) {
    const wxPrintPaperType* type = nullptr;
    if (paperId >= 1 && paperId < DMPAPER_USER && wxThePrintPaperDatabase != nullptr) {
        type = wxThePrintPaperDatabase->FindPaperTypeByPlatformId(paperId);
    }
    if (type != nullptr) {
        SetPaperId(type->GetId());
        SetPaperSize(wxSize(type->GetWidth() / 10, type->GetHeight() / 10));
    } else {
        SetPaperId(wxPAPER_NONE);
        SetPaperSize(sizeMM != nullptr ? *sizeMM : wxSize(0, 0));
    }
    if (WindowsPrintNativeData* native = WindowsPrintNativeData::GetNativeData(*this)) {
        native->customWindowsPaperId = type != nullptr ? short{0} : paperId;
    }
}

void PrintData::setDmPaperSize(short paperId, const POINT* sizeTenthsMM) {
    const wxSize size(lengthOf(sizeTenthsMM->x), lengthOf(sizeTenthsMM->y));
    setDmPaperSize(paperId, &size);
}

bool PrintData::isPostScript() {
    const std::unique_ptr<wxPrinterDC> dc(createPrinterDC());
    return dc && dc->IsOk() && takesPostScript(static_cast<HDC>(dc->GetHandle()));
}

}  // namespace wut
