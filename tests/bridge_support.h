/// Printers in memory for documents, and the means to compare device modes.
#pragma once

#include <gtest/gtest.h>
#include <wx/init.h>
#include <wx/log.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "plotcfg.h"
#include "print.h"
#include "print/printer_system.h"
#include "tests/support/fake_spooler.h"

class BridgeTest : public testing::Test {
protected:
    BridgeTest() : before_(registerPrinterSystem(&wut::installedPrinters())) {
        wut::registerPrintFactory();
        wut::onPrinterSettingsChanged(OdString());
    }
    BridgeTest(const BridgeTest&) = delete;
    BridgeTest& operator=(const BridgeTest&) = delete;
    ~BridgeTest() override {
        wut::unRegisterPrintFactory();
        registerPrinterSystem(before_);
    }

    /// A printer whose driver has every setting that documents store.
    test_support::FakePrinter& addFull(const std::wstring& name) {
        test_support::FakePrinter& printer = spooler_.add(name);
        printer.comment = L"Second floor";
        DEVMODEW& mode = printer.devMode;
        mode.dmFields |= DM_SCALE | DM_DEFAULTSOURCE | DM_DUPLEX | DM_YRESOLUTION | DM_TTOPTION |
                         DM_COLLATE | DM_FORMNAME | DM_ICMMETHOD | DM_ICMINTENT | DM_MEDIATYPE |
                         DM_DITHERTYPE;
        mode.dmScale = 80;
        mode.dmDefaultSource = DMBIN_MANUAL;
        mode.dmDuplex = DMDUP_VERTICAL;
        mode.dmYResolution = 1200;
        mode.dmTTOption = DMTT_DOWNLOAD;
        mode.dmCollate = DMCOLLATE_TRUE;
        std::wstring(L"A4").copy(mode.dmFormName, CCHFORMNAME - 1);
        mode.dmICMMethod = DMICMMETHOD_SYSTEM;
        mode.dmICMIntent = DMICM_CONTRAST;
        mode.dmMediaType = DMMEDIA_GLOSSY;
        mode.dmDitherType = DMDITHER_FINE;
        return printer;
    }

    static std::unique_ptr<CPlotCfg3> create(const wchar_t* printer) {
        const wxLogNull quiet;
        return std::unique_ptr<CPlotCfg3>(CPlotCfg3::create(printer));
    }

    test_support::FakeSpooler spooler_;

private:
    wut::SpoolerForTest inPlace_{spooler_};
    wxInitializer wx_;
    const PrinterSystem* before_;
};

/// The device mode that print data come to before the driver has a say, with its private bytes.
inline std::vector<std::byte> deviceModeOf(wut::PrintData& data) {
    auto* native = wut::WindowsPrintNativeData::GetNativeData(data);
    EXPECT_TRUE(native != nullptr && native->TransferFrom(data));
    const auto* mode = static_cast<const DEVMODEW*>(GlobalLock(native->GetDevMode()));
    const auto* bytes = reinterpret_cast<const std::byte*>(mode);
    std::vector<std::byte> copy(bytes, bytes + mode->dmSize + mode->dmDriverExtra);
    GlobalUnlock(native->GetDevMode());
    return copy;
}

/// The names of the fields in which two device modes differ; "private" stands for the driver's own.
inline std::set<std::string> differences(const std::vector<std::byte>& left,
                                         const std::vector<std::byte>& right) {
    struct Field {
        const char* name;
        std::size_t begin;
    };
    // A field ends where the next one begins.
    const Field fields[] = {
        {"dmDeviceName", offsetof(DEVMODEW, dmDeviceName)},
        {"dmSpecVersion", offsetof(DEVMODEW, dmSpecVersion)},
        {"dmDriverVersion", offsetof(DEVMODEW, dmDriverVersion)},
        {"dmSize", offsetof(DEVMODEW, dmSize)},
        {"dmDriverExtra", offsetof(DEVMODEW, dmDriverExtra)},
        {"dmFields", offsetof(DEVMODEW, dmFields)},
        {"dmOrientation", offsetof(DEVMODEW, dmOrientation)},
        {"dmPaperSize", offsetof(DEVMODEW, dmPaperSize)},
        {"dmPaperLength", offsetof(DEVMODEW, dmPaperLength)},
        {"dmPaperWidth", offsetof(DEVMODEW, dmPaperWidth)},
        {"dmScale", offsetof(DEVMODEW, dmScale)},
        {"dmCopies", offsetof(DEVMODEW, dmCopies)},
        {"dmDefaultSource", offsetof(DEVMODEW, dmDefaultSource)},
        {"dmPrintQuality", offsetof(DEVMODEW, dmPrintQuality)},
        {"dmColor", offsetof(DEVMODEW, dmColor)},
        {"dmDuplex", offsetof(DEVMODEW, dmDuplex)},
        {"dmYResolution", offsetof(DEVMODEW, dmYResolution)},
        {"dmTTOption", offsetof(DEVMODEW, dmTTOption)},
        {"dmCollate", offsetof(DEVMODEW, dmCollate)},
        {"dmFormName", offsetof(DEVMODEW, dmFormName)},
        {"dmLogPixels", offsetof(DEVMODEW, dmLogPixels)},
        {"dmBitsPerPel", offsetof(DEVMODEW, dmBitsPerPel)},
        {"dmPelsWidth", offsetof(DEVMODEW, dmPelsWidth)},
        {"dmPelsHeight", offsetof(DEVMODEW, dmPelsHeight)},
        {"dmNup", offsetof(DEVMODEW, dmNup)},
        {"dmDisplayFrequency", offsetof(DEVMODEW, dmDisplayFrequency)},
        {"dmICMMethod", offsetof(DEVMODEW, dmICMMethod)},
        {"dmICMIntent", offsetof(DEVMODEW, dmICMIntent)},
        {"dmMediaType", offsetof(DEVMODEW, dmMediaType)},
        {"dmDitherType", offsetof(DEVMODEW, dmDitherType)},
        {"dmReserved1", offsetof(DEVMODEW, dmReserved1)},
        {"dmReserved2", offsetof(DEVMODEW, dmReserved2)},
        {"dmPanningWidth", offsetof(DEVMODEW, dmPanningWidth)},
        {"dmPanningHeight", offsetof(DEVMODEW, dmPanningHeight)},
        {"private", sizeof(DEVMODEW)},
    };
    std::set<std::string> names;
    if (left.size() != right.size()) {
        names.insert("length");
    }
    for (std::size_t at = 0; at < std::min(left.size(), right.size()); ++at) {
        if (left[at] != right[at]) {
            names.insert(std::prev(std::upper_bound(std::begin(fields), std::end(fields), at,
                                                    [](std::size_t place, const Field& field) {
                                                        return place < field.begin;
                                                    }))
                             ->name);
        }
    }
    return names;
}
