#include <iconv.h>

#include <cerrno>
#include <cstdint>
#include <mutex>
#include <utility>

#include <platen/utcore.h>
#include "platform/utcore/code_page.h"
#include "platform/utcore/code_page_tables.h"

namespace ut {

namespace {

/// An iconv conversion between a code page and wide text.
class Converter {
public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (isOpen()) {
            iconv_close(handle_);
        }
    }

    bool isOpen() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

    /// Converts what it can of `input`, removes it from there and returns the number of bytes
    /// written to `output`. `error` is 0 or the reason why some input is left.
    std::size_t convert(std::string_view& input, char* output, std::size_t room, int& error) {
        // iconv takes a pointer to bytes that it does not write to.
        char* in = const_cast<char*>(input.data());
        std::size_t left = input.size();
        char* out = output;
        constexpr auto failed = static_cast<std::size_t>(-1);
        error = iconv(handle_, &in, &left, &out, &room) == failed ? errno : 0;
        // Pages with combining characters hold the last one back, to join it with the next.
        if (iconv(handle_, nullptr, nullptr, &out, &room) == failed && error == 0) {
            error = errno;
        }
        input.remove_prefix(input.size() - left);
        return static_cast<std::size_t>(out - output);
    }

private:
    iconv_t handle_;
};

/// A page with characters of several bytes.
class MultiByteCodePage : public CodePage {
public:
    explicit MultiByteCodePage(const std::string& name)
        : CodePage(name), fromBytes_("WCHAR_T", name.c_str()), toBytes_(name.c_str(), "WCHAR_T") {}

    std::wstring decode(std::string_view bytes) const override {
        const std::lock_guard lock(mutex_);
        std::wstring text;
        while (!bytes.empty()) {
            // No page has more characters than bytes.
            std::wstring part(bytes.size(), L'\0');
            int error = 0;
            const std::size_t written = fromBytes_.convert(
                bytes, reinterpret_cast<char*>(part.data()), part.size() * sizeof(wchar_t), error);
            text.append(part, 0, written / sizeof(wchar_t));
            if (!bytes.empty()) {
                text += static_cast<wchar_t>(static_cast<unsigned char>(bytes.front()));
                bytes.remove_prefix(1);
            }
        }
        return text;
    }

    bool encode(char32_t character, std::string& bytes) const override {
        const std::lock_guard lock(mutex_);
        const auto wide = static_cast<wchar_t>(character);
        std::string_view input(reinterpret_cast<const char*>(&wide), sizeof(wide));
        char output[32];
        int error = 0;
        const std::size_t written = toBytes_.convert(input, output, sizeof(output), error);
        if (error != 0) {
            return false;
        }
        bytes.append(output, written);
        return true;
    }

private:
    /// An iconv handle serves one thread at a time.
    mutable std::mutex mutex_;
    mutable Converter fromBytes_;
    mutable Converter toBytes_;
};

}  // namespace

std::unique_ptr<CodePage> defaultCodePage() {
    // Built in: a small system may come without the C library's conversion modules.
    return openCodePage("WINDOWS-1252", windows1252);
}

std::unique_ptr<CodePage> openCodePage(const std::string& name) {
    if (isUtf8Name(name)) {
        return std::make_unique<Utf8CodePage>(name);
    }
    // To iconv, an empty name is the locale's, and what follows a slash asks for look-alikes in
    // place of characters that the page does not hold.
    if (name.empty() || name.find('/') != std::string::npos) {
        return nullptr;
    }
    Converter converter("WCHAR_T", name.c_str());
    if (!converter.isOpen()) {
        return nullptr;
    }
    bool multiByte = false;
    SingleByteCodePage::Characters characters{};
    for (std::size_t byte = 0; byte < characters.size(); ++byte) {
        const char input = static_cast<char>(byte);
        std::string_view rest(&input, 1);
        std::array<wchar_t, 4> output{};
        int error = 0;
        const std::size_t written =
            converter.convert(rest, reinterpret_cast<char*>(output.data()), sizeof(output), error);
        const bool defined = error == 0 && written == sizeof(wchar_t);
        multiByte = multiByte || error == EINVAL;
        characters[byte] = defined ? output[0] : static_cast<wchar_t>(byte);
        // A page that gives ASCII another meaning, or none, would garble the syntax of a body.
        if (byte < 0x80 && (!defined || output[0] != static_cast<wchar_t>(byte))) {
            return nullptr;
        }
    }
    if (multiByte) {
        return std::make_unique<MultiByteCodePage>(name);
    }
    return std::make_unique<SingleByteCodePage>(name, characters);
}

}  // namespace ut
