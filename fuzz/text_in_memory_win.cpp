#include "fuzz/oracle.h"
#include "fuzz/text_in_memory.h"

std::FILE* openTextInMemory(std::string_view text) {
    std::FILE* const file = std::tmpfile();
    require(file != nullptr && std::fwrite(text.data(), 1, text.size(), file) == text.size());
    std::rewind(file);
    return file;
}
