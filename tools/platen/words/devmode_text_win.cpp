#include <algorithm>
#include <cstddef>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string_view>

#include <platen/print.h>
#include <platen/utcore.h>
#include "tools/platen/words/devmode_text.h"

namespace cli::words {
namespace {

using Json = nlohmann::ordered_json;

/// A text that fills its field has no terminator.
template <std::size_t size>
std::string fieldText(const wchar_t (&field)[size]) {
    return ut::encodeUtf8(std::wstring_view(field, std::find(field, field + size, L'\0') - field));
}

std::string hexadecimal(const unsigned char* bytes, std::size_t count) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (std::size_t index = 0; index < count; ++index) {
        text += digits[bytes[index] >> 4U];
        text += digits[bytes[index] & 0xFU];
    }
    return text;
}

Json jsonOf(const DEVMODEW& devMode, const std::string& source) {
    // Older drivers leave out the last fields.
    DEVMODEW mode{};
    std::memcpy(&mode, &devMode, std::min<std::size_t>(devMode.dmSize, sizeof(mode)));
    Json json;
    json["schema"] = "platen.devmode/1";
    json["source"] = source;
    json["dmDeviceName"] = fieldText(mode.dmDeviceName);
    json["dmSpecVersion"] = mode.dmSpecVersion;
    json["dmDriverVersion"] = mode.dmDriverVersion;
    json["dmSize"] = mode.dmSize;
    json["dmDriverExtra"] = mode.dmDriverExtra;
    json["dmFields"] = mode.dmFields;
    json["dmOrientation"] = mode.dmOrientation;
    json["dmPaperSize"] = mode.dmPaperSize;
    json["dmPaperLength"] = mode.dmPaperLength;
    json["dmPaperWidth"] = mode.dmPaperWidth;
    json["dmScale"] = mode.dmScale;
    json["dmCopies"] = mode.dmCopies;
    json["dmDefaultSource"] = mode.dmDefaultSource;
    json["dmPrintQuality"] = mode.dmPrintQuality;
    json["dmColor"] = mode.dmColor;
    json["dmDuplex"] = mode.dmDuplex;
    json["dmYResolution"] = mode.dmYResolution;
    json["dmTTOption"] = mode.dmTTOption;
    json["dmCollate"] = mode.dmCollate;
    json["dmFormName"] = fieldText(mode.dmFormName);
    json["dmLogPixels"] = mode.dmLogPixels;
    json["dmBitsPerPel"] = mode.dmBitsPerPel;
    json["dmPelsWidth"] = mode.dmPelsWidth;
    json["dmPelsHeight"] = mode.dmPelsHeight;
    json["dmNup"] = mode.dmNup;
    json["dmDisplayFrequency"] = mode.dmDisplayFrequency;
    json["dmICMMethod"] = mode.dmICMMethod;
    json["dmICMIntent"] = mode.dmICMIntent;
    json["dmMediaType"] = mode.dmMediaType;
    json["dmDitherType"] = mode.dmDitherType;
    json["dmReserved1"] = mode.dmReserved1;
    json["dmReserved2"] = mode.dmReserved2;
    json["dmPanningWidth"] = mode.dmPanningWidth;
    json["dmPanningHeight"] = mode.dmPanningHeight;
    json["private_data"] = hexadecimal(
        reinterpret_cast<const unsigned char*>(&devMode) + devMode.dmSize, devMode.dmDriverExtra);
    return json;
}

}  // namespace

void printDevMode(const DEVMODEW& devMode, const std::string& source, bool json,
                  const Console& console) {
    if (json) {
        console.out << jsonOf(devMode, source).dump() << '\n';
        return;
    }
    OdString text;
    wut::dumpDevMode(devMode, text);
    console.out << ut::encodeUtf8(text.text());
}

}  // namespace cli::words
