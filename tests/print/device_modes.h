/// Comparing the device modes of print data.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include <platen/print.h>

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
