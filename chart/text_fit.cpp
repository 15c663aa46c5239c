#include "chart/text_fit.h"

#include <algorithm>
#include <array>

#include "platform/utcore/utf.h"

namespace platen::chart {
namespace {

// Of DejaVu Sans from the blank to the tilde, in thousandths of the size: hardly any sans-serif
// font in use is wider.
constexpr std::array<short, 95> asciiWidths{
    318,  401, 460, 838, 636, 950, 780, 275, 390, 390, 500, 838, 318, 361, 318, 337,  //
    636,  636, 636, 636, 636, 636, 636, 636, 636, 636, 337, 337, 838, 838, 838, 531,  //
    1000, 684, 686, 698, 770, 632, 575, 775, 752, 295, 295, 656, 557, 863, 748, 787,  //
    603,  787, 695, 635, 611, 732, 684, 989, 685, 611, 685, 390, 337, 390, 838, 500,  //
    500,  613, 635, 550, 635, 615, 352, 635, 634, 278, 278, 579, 278, 974, 634, 612,  //
    635,  635, 411, 521, 392, 634, 592, 818, 592, 592, 525, 636, 337, 636, 838};

bool joinsTheOneBefore(char32_t character) {
    return (character >= 0x300 && character < 0x370) ||
           (character >= 0x200B && character < 0x2010) ||
           (character >= 0xFE00 && character < 0xFE10) ||
           (character >= 0x20D0 && character < 0x2100);
}

/// In thousandths of the size.
int widthOf(char32_t character) {
    constexpr int usual = 700;
    constexpr int full = 1050;
    if (character >= ' ' && character <= '~') {
        return asciiWidths[character - ' '];
    }
    if (joinsTheOneBefore(character)) {
        return 0;
    }
    // East Asian characters and pictures are as wide as they are high.
    return character >= 0x1100 ? full : usual;
}

/// Bold letters are wider.
double scaleOf(double size, bool bold) {
    constexpr double boldWider = 1.12;
    constexpr double thousand = 1000;
    return size * (bold ? boldWider : 1) / thousand;
}

constexpr std::string_view ellipsis = "\xE2\x80\xA6";
constexpr int ellipsisWidth = 1000;

/// At `at` of the text. Ranges of numbers stay whole.
bool mayBreakBehind(std::string_view text, std::size_t at) {
    const char character = text[at];
    const bool inRange =
        character == '-' && at + 1 < text.size() && text[at + 1] >= '0' && text[at + 1] <= '9';
    return !inRange &&
           (character == ' ' || character == ',' || character == ';' || character == '_' ||
            character == '-' || character == '/' || character == '\\');
}

struct Piece {
    /// Bytes that fit.
    std::size_t length = 0;
    /// Bytes up to the last place where a line may end; 0 for none.
    std::size_t atBreak = 0;
    bool whole = false;
};

/// How much of the text fits, and at least a character.
Piece pieceOf(std::string_view text, double thousandths) {
    Piece piece;
    double taken = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        char32_t character = 0;
        const std::size_t length =
            std::max<std::size_t>(ut::readUtf8(text.substr(at), character), 1);
        taken += widthOf(character);
        // A blank at the end of a line needs no room.
        if (taken > thousandths && at != 0 && character != ' ') {
            return piece;
        }
        at += length;
        piece.length = at;
        if (mayBreakBehind(text, at - 1)) {
            piece.atBreak = at;
        }
    }
    piece.whole = true;
    return piece;
}

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

double textWidth(std::string_view text, double size, bool bold) {
    int width = 0;
    while (!text.empty()) {
        char32_t character = 0;
        text.remove_prefix(std::max<std::size_t>(ut::readUtf8(text, character), 1));
        width += widthOf(character);
    }
    return width * scaleOf(size, bold);
}

std::string fitted(std::string_view text, double width, double size, bool bold) {
    const double scale = scaleOf(size, bold);
    const Piece all = pieceOf(text, width / scale);
    if (all.whole) {
        return std::string(text);
    }
    const Piece begin = pieceOf(text, width / scale - ellipsisWidth);
    std::string_view kept = text.substr(0, begin.length);
    kept = kept.substr(0, kept.find_last_not_of(" ,") + 1);
    return std::string(kept) + std::string(ellipsis);
}

std::vector<std::string> wrapped(std::string_view text, double width, double size, std::size_t most,
                                 bool bold) {
    const double scale = scaleOf(size, bold);
    std::vector<std::string> lines;
    text = withoutBlanks(text);
    while (lines.size() + 1 < most) {
        const Piece piece = pieceOf(text, width / scale);
        if (piece.whole) {
            break;
        }
        const std::size_t end = piece.atBreak != 0 ? piece.atBreak : piece.length;
        lines.emplace_back(withoutBlanks(text.substr(0, end)));
        text = withoutBlanks(text.substr(end));
    }
    lines.push_back(fitted(text, width, size, bold));
    return lines;
}

double widest(const std::vector<std::string>& lines, double size, bool bold) {
    double width = 0;
    for (const std::string& line : lines) {
        width = std::max(width, textWidth(line, size, bold));
    }
    return width;
}

}  // namespace platen::chart
