#include <algorithm>
#include <array>
#include <cstddef>

#include <platen/papers.h>
#include "papers/built_in_tables.h"

namespace wut {

namespace {

template <std::size_t Count>
constexpr std::size_t lengthOfNames(const std::array<Sheet, Count>& sheets) {
    std::size_t length = 0;
    for (const Sheet& sheet : sheets) {
        length += sheet.name.size() + 1;
    }
    return length;
}

/// The canonical names of `sheets`, one after the other, each with its null character.
template <std::size_t Length, std::size_t Count>
constexpr std::array<wchar_t, Length> canonicalNames(const std::array<Sheet, Count>& sheets) {
    std::array<wchar_t, Length> names{};
    auto end = names.begin();
    for (const Sheet& sheet : sheets) {
        end = std::replace_copy(sheet.name.begin(), sheet.name.end(), end, L' ', L'_') + 1;
    }
    return names;
}

constexpr double single(double value) { return static_cast<float>(value); }

/// Margins that went through single precision lost digits; configurations hold the result, so it is
/// kept. The near margins are the rounded values. The far ones are what is left of the sheet beyond
/// the rounded edge of the plotting area, the third of its height and the fourth of its width
/// whichever way the sheet is turned.
constexpr SheetMargins recordedMargins(const Sheet& sheet) {
    SheetMargins margins = sheet.margins;
    if (margins.source == MarginSource::SinglePrecision) {
        margins.left = single(margins.left);
        margins.bottom = single(margins.bottom);
        margins.right = sheet.height - single(sheet.height - margins.right);
        margins.top = sheet.width - single(sheet.width - margins.top);
    }
    return margins;
}

/// `canonicalName` walks over the names that `canonicalNames` made of the same sheets.
template <std::size_t Count>
constexpr std::array<PaperSizeInfo, Count> papersOf(const std::array<Sheet, Count>& sheets,
                                                    const wchar_t* canonicalName) {
    std::array<PaperSizeInfo, Count> papers{};
    for (std::size_t row = 0; row < Count; ++row) {
        const Sheet& sheet = sheets[row];
        const SheetMargins margins = recordedMargins(sheet);
        papers[row] = {sheet.name.data(), canonicalName,  sheet.width,   sheet.height, sheet.units,
                       margins.left,      margins.bottom, margins.right, margins.top};
        canonicalName += sheet.name.size() + 1;
    }
    return papers;
}

constexpr auto pdfNames = canonicalNames<lengthOfNames(pdfSheets)>(pdfSheets);
constexpr auto pdfPapers = papersOf(pdfSheets, pdfNames.data());
constexpr auto imageNames = canonicalNames<lengthOfNames(imageSheets)>(imageSheets);
constexpr auto imagePapers = papersOf(imageSheets, imageNames.data());
constexpr auto noneNames = canonicalNames<lengthOfNames(noneSheets)>(noneSheets);
constexpr auto nonePapers = papersOf(noneSheets, noneNames.data());

}  // namespace

const PaperSizeInfo* const cPdfPapers = pdfPapers.data();
const std::size_t cPdfPapersCount = pdfPapers.size();
const PaperSizeInfo* const cImagePapers = imagePapers.data();
const std::size_t cImagePapersCount = imagePapers.size();
const PaperSizeInfo* const cNonePapers = nonePapers.data();
const std::size_t cNonePapersCount = nonePapers.size();

}  // namespace wut
