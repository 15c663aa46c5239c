#include <algorithm>
#include <string>
#include <string_view>

#include <platen/gui_images.h>
#include <platen/utcore.h>

namespace wut {

bool isSupportedImageType(const wchar_t* extension) {
    if (extension == nullptr) {
        return false;
    }
    constexpr std::wstring_view supported =
        L"bmp;jpg;jpeg;pcx;png;gif;tga;tif;jp2;j2k;ecw;sid;mti;";
    std::wstring entry(extension);
    std::ranges::transform(entry, entry.begin(), ut::toLower);
    entry += L';';
    return supported.find(entry) != std::wstring_view::npos;
}

}  // namespace wut
