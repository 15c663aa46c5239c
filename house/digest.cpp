#include "house/digest.h"

#include <sha2.h>

#include <array>

namespace platen::house {

std::string sha256(std::string_view bytes) {
    SHA2_CTX context{};
    std::array<unsigned char, SHA256_DIGEST_LENGTH> digest{};
    SHA256Init(&context);
    SHA256Update(&context, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    SHA256Final(digest.data(), &context);
    std::string text;
    for (const unsigned char byte : digest) {
        text += "0123456789abcdef"[byte >> 4U];
        text += "0123456789abcdef"[byte & 0xFU];
    }
    return text;
}

}  // namespace platen::house
