#include <platen/utcore.h>
#include <platen/utcore_host.h>

namespace ut {

namespace {

constexpr char substitute = '\x1A';

/// Takes the rest of the line end that `character` began.
void finishLine(int character, std::FILE* file) {
    if (character != '\r') {
        return;
    }
    const int next = std::getc(file);
    if (next != '\n') {
        std::ungetc(next, file);
    }
}

bool endsLine(int character) { return character == '\n' || character == '\r'; }

}  // namespace

char* nfgets(char* text, int size, std::FILE* file) {
    if (size < 2) {
        // There is no room for a character, so reading would never come to an end.
        return nullptr;
    }
    int length = 0;
    int character = std::getc(file);
    if (character == EOF) {
        return nullptr;
    }
    while (character != EOF && !endsLine(character)) {
        text[length++] = character == '\0' ? substitute : static_cast<char>(character);
        character = std::getc(file);
        if (length == size - 1 && character != EOF && !endsLine(character)) {
            std::ungetc(character, file);
            break;
        }
    }
    if (endsLine(character)) {
        finishLine(character, file);
    }
    text[length] = '\0';
    return std::ferror(file) != 0 ? nullptr : text;
}

std::wstring removeSpaces(std::wstring_view text, std::string_view mode) {
    if (mode.find('b') != std::string_view::npos) {
        while (!text.empty() && isSpace(text.front())) {
            text.remove_prefix(1);
        }
    }
    if (mode.find('e') != std::string_view::npos) {
        while (!text.empty() && isSpace(text.back())) {
            text.remove_suffix(1);
        }
    }
    return std::wstring(text);
}

}  // namespace ut
