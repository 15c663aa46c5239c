#include <gtest/gtest.h>

#include <platen/gui_images.h>

namespace {

TEST(ImageTypes, AreSearchedAsOneText) {
    for (const wchar_t* accepted : {L"png", L"PNG", L"Jp2", L"jpeg", L"peg", L"if", L""}) {
        EXPECT_TRUE(wut::isSupportedImageType(accepted)) << accepted;
    }
    for (const wchar_t* refused :
         {L"tiff", L".png", L"pn", L"svg", L"png;", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_FALSE(wut::isSupportedImageType(refused)) << wxString(refused);
    }
}

}  // namespace
