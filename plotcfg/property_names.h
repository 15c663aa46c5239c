/// The properties of the "custom" block that the library itself stores.
#pragma once

namespace plot_config {

inline constexpr const wchar_t* pdfExport = L"PdfExport";
inline constexpr const wchar_t* viewNewFile = L"View_New_File";
inline constexpr const wchar_t* rasterBackground = L"RASTER_RGB_Back_Color";

inline constexpr const wchar_t* pdfEmbeddedTtf = L"PdfEmbeddedTtf";
inline constexpr const wchar_t* pdfExportHyperlinks = L"PdfExportHyperlinks";
inline constexpr const wchar_t* pdfCreateBookmarks = L"PdfCreateBookmarks";
inline constexpr const wchar_t* pdfImageAntiAlias = L"PdfImageAntiAlias";
inline constexpr const wchar_t* pdfImageCompression = L"PdfImageCompression";
inline constexpr const wchar_t* pdfImageDpi = L"PdfImageDPI";
inline constexpr const wchar_t* pdfPdfA = L"PdfPdfA";
inline constexpr const wchar_t* pdfLayersSetting = L"PdfLayersSetting";

/// Of the device mode. All but the private data, which are hexadecimal, are numbers.
inline constexpr const wchar_t* driverExtra = L"dmDriverExtra";
inline constexpr const wchar_t* modeSize = L"dmSize";
inline constexpr const wchar_t* specVersion = L"dmSpecVersion";
inline constexpr const wchar_t* mediaType = L"dmMediaType";
inline constexpr const wchar_t* defaultSource = L"dmDefaultSource";
inline constexpr const wchar_t* trueTypeOption = L"dmTTOption";
inline constexpr const wchar_t* privateData = L"RawPrivateDeviceData";

}  // namespace plot_config
