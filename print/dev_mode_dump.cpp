#include <cstddef>
#include <cstdio>
#include <iterator>
#include <span>
#include <string>

#include "print/dev_mode.h"

namespace wut {

namespace {

constexpr std::size_t bytesPerLine = 16;

std::wstring hexadecimal(std::span<const std::byte> bytes) {
    constexpr wchar_t digits[] = L"0123456789ABCDEF";
    std::wstring text;
    text.reserve(3 * bytes.size() + bytes.size() / bytesPerLine + 1);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = std::to_integer<unsigned>(bytes[i]);
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
        text += L' ';
        if (i % bytesPerLine == bytesPerLine - 1 || i == bytes.size() - 1) {
            text += L'\n';
        }
    }
    return text;
}

}  // namespace

void dumpDevMode(const DEVMODEW& devMode, OdString& out) {
    wchar_t fields[2048];
    const int length = std::swprintf(
        fields, std::size(fields),
        L"dmDeviceName = %ls\ndmSpecVersion = %hu\ndmDriverVersion = %hu\ndmSize = %hu\n"
        L"dmDriverExtra = %hu\ndmFields = %lX\ndmOrientation = %hi\ndmPaperSize = %hi\n"
        L"dmPaperLength = %hi\ndmPaperWidth = %hi\ndmScale = %hi\ndmCopies = %hi\n"
        L"dmDefaultSource = %hi\ndmPrintQuality = %hi\ndmColor = %hi\ndmDuplex = %hi\n"
        L"dmYResolution = %hi\ndmTTOption = %hi\ndmCollate = %hi\ndmFormName = %ls\n"
        L"dmLogPixels = %hu\ndmBitsPerPel = %lX\ndmPelsWidth = %lX\ndmPelsHeight = %lX\n"
        L"dmDisplayFlags/dmNup = %lX\ndmDisplayFrequency = %lX\ndmICMMethod = %lX\n"
        L"dmICMIntent = %lX\ndmMediaType = %lX\ndmDitherType = %lX\ndmReserved1 = %lX\n"
        L"dmReserved2 = %lX\ndmPanningWidth = %lX\ndmPanningHeight = %lX\n",
        textOf(devMode.dmDeviceName).c_str(), devMode.dmSpecVersion, devMode.dmDriverVersion,
        devMode.dmSize, devMode.dmDriverExtra, devMode.dmFields, devMode.dmOrientation,
        devMode.dmPaperSize, devMode.dmPaperLength, devMode.dmPaperWidth, devMode.dmScale,
        devMode.dmCopies, devMode.dmDefaultSource, devMode.dmPrintQuality, devMode.dmColor,
        devMode.dmDuplex, devMode.dmYResolution, devMode.dmTTOption, devMode.dmCollate,
        textOf(devMode.dmFormName).c_str(), devMode.dmLogPixels, devMode.dmBitsPerPel,
        devMode.dmPelsWidth, devMode.dmPelsHeight, devMode.dmNup, devMode.dmDisplayFrequency,
        devMode.dmICMMethod, devMode.dmICMIntent, devMode.dmMediaType, devMode.dmDitherType,
        devMode.dmReserved1, devMode.dmReserved2, devMode.dmPanningWidth, devMode.dmPanningHeight);

    std::wstring text(fields, length > 0 ? static_cast<std::size_t>(length) : 0);
    text += L"\nprivate data:\n";
    if (devMode.dmDriverExtra == 0) {
        text += L"No\n";
    } else {
        const auto* bytes = reinterpret_cast<const std::byte*>(&devMode) + devMode.dmSize;
        text += hexadecimal({bytes, devMode.dmDriverExtra});
    }
    out = OdString(std::move(text));
}

}  // namespace wut
