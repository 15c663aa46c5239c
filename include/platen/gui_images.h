/// Pixels, images and bitmaps.
#pragma once

#include <wx/string.h>

#include <platen/platen_api.h>

class wxBitmap;
class wxColour;
class wxDC;
class wxFont;
class wxImage;
class wxRect;
class wxSize;

namespace wut {

/// True when `extension` (without its dot, any case) names a raster format that the application
/// accepts. The list is searched as one text, so that an ending of a listed extension ("peg", "if")
/// and the empty text are accepted, too. False for null.
[[nodiscard]] PLATEN_API bool isSupportedImageType(const wchar_t* extension);

/// A new bitmap of `size` pixels with an alpha channel: `bottom` scaled to fill it, and `top` over
/// its middle, in its own size or, where that is larger than `size`, shrunk to fit with its
/// proportions kept. What both leave open is transparent. An invalid bitmap is left out; the result
/// is invalid when both are, or when a side of `size` is below 1.
[[nodiscard]] PLATEN_API wxBitmap drawOnBitmap(const wxBitmap& bottom, const wxBitmap& top,
                                               const wxSize& size);

namespace ImageUtils {

/// The bytes of a pixel in the order of memory. Odd values have four bytes, those above 1 have the
/// first and the third colour exchanged.
enum PixelFormat { PF_RGB, PF_RGBA, PF_BGR, PF_BGRA };

/// Whether the first row of a buffer is the bottom row of the picture or its top row.
enum VerticalDir { VD_BottomUp, VD_TopDown };

/// 11 points and bold, or 8 points and normal; both of the default family.
enum EFont { EF_Large, EF_Small };

/// Opaque greys: 40, 110 and 255 in each colour.
enum EColor { EC_Dark, EC_Grey, EC_White };

/// Copies `width` x `height` pixels from one buffer to another, turning the rows over when the
/// directions differ. A target with alpha takes the source's alpha or, when that has none, `alpha`.
///
/// A stride is the distance of two rows in bytes; below 1 it stands for rows without padding. When
/// formats, directions and strides are all equal, width * height pixels are copied as one block
/// from the start of the buffers, whatever the stride: padded rows are then not copied to the end.
///
/// The buffers must not overlap and must be large enough; that is not checked. A null buffer, a
/// width or a height below 1 copies nothing.
PLATEN_API void copyPixels(int width, int height, const unsigned char* src, PixelFormat srcFormat,
                           VerticalDir srcDir, unsigned char* dst, PixelFormat dstFormat,
                           VerticalDir dstDir, unsigned char alpha, int srcStride, int dstStride);

/// Copies the rectangle of `width` x `height` pixels at (`srcX`, `srcY`) of one picture to (`dstX`,
/// `dstY`) of another; y counts from the top of the picture in both, whatever the directions of the
/// buffers. Pixels, strides (below 1: the picture's own width) and null are as for `copyPixels`.
///
/// The caller keeps the rectangle inside both pictures; builds with assertions check it. The
/// buffers must not overlap.
PLATEN_API void copySubimagePixels(int srcWidth, int srcHeight, const unsigned char* src,
                                   PixelFormat srcFormat, VerticalDir srcDir, int dstWidth,
                                   int dstHeight, unsigned char* dst, PixelFormat dstFormat,
                                   VerticalDir dstDir, int srcX, int srcY, int dstX, int dstY,
                                   int width, int height, unsigned char alpha, int srcStride,
                                   int dstStride);

/// Finds the topmost, and there the leftmost, place at which `image` shows the colours of `sub`;
/// alpha and masks are not looked at. False, with `x` and `y` left alone, when there is none. A
/// `sub` of no height, as an invalid one is, is found at (0, 0).
///
/// Takes time in proportion to the two sizes, however alike the places are, and memory for a few
/// rows of `image`.
PLATEN_API bool findSubImage(wxImage& image, const wxImage& sub, int& x, int& y);

/// Finds `sub` as `findSubImage` does and makes its place in `image` transparent: alpha 0 where the
/// image has an alpha channel, the mask colour where it has a mask. False when it is not found.
PLATEN_API bool eraseSubImage(wxImage& image, const wxImage& sub, int& x, int& y);

/// Draws `top` over the upper left corner of `bottom`, without `top`'s mask. Does nothing when one
/// of them is invalid.
PLATEN_API void drawOnTop(wxBitmap& bottom, const wxBitmap& top);

// A line of a text ends with "\n", "\r\n" or "\r", which all give the same picture.

/// Breaks each line of more than 3 characters that is wider than `rect` on `dc` once, at the first
/// blank of its second half; a line without one stays, and so does a half that is still too wide.
/// Lines of the result are separated by "\r\n"; empty lines at its start, and one at its end, go.
[[nodiscard]] PLATEN_API wxString wrapText(const wxString& text, const wxRect& rect, wxDC& dc);

/// Draws `text` with its upper left corner at (`x`, `y`), in pixels, wrapped by `wrapText` when it
/// is wider than what is left of the bitmap there. Does nothing with an invalid bitmap.
PLATEN_API void drawText(wxBitmap& bitmap, const wxString& text, int x, int y, const wxFont& font,
                         const wxColour& colour);

/// The same through a graphics context, with edges that blend into what is behind them. A bitmap
/// without alpha gets an alpha channel, and what its mask hides becomes transparent.
PLATEN_API void drawTextHighQuality(wxBitmap& bitmap, const wxString& text, int x, int y,
                                    const wxFont& font, const wxColour& colour);

/// One of the two above, with a font and a colour of the set.
PLATEN_API void drawText(wxBitmap& bitmap, const wxString& text, int x, int y, EFont font,
                         EColor colour, bool highQuality);

}  // namespace ImageUtils
}  // namespace wut
