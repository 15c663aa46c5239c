/// An ANSI code page: what a byte above 127 means. Bytes below 128 are ASCII in all of them.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ut {

class CodePage {
public:
    explicit CodePage(std::string name) : name_(std::move(name)) {}
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;
    virtual ~CodePage();

    const std::string& name() const { return name_; }

    /// A byte that the page does not define becomes the code point of the same number.
    virtual std::wstring decode(std::string_view bytes) const = 0;
    /// Appends one character that is not ASCII. False, and nothing appended, when the page does
    /// not hold it.
    virtual bool encode(char32_t character, std::string& bytes) const = 0;

private:
    std::string name_;
};

/// UTF-8 as a code page.
class Utf8CodePage : public CodePage {
public:
    using CodePage::CodePage;
    std::wstring decode(std::string_view bytes) const override;
    bool encode(char32_t character, std::string& bytes) const override;
};

/// A page of one byte for each character, whose conversions are tables made once.
class SingleByteCodePage : public CodePage {
public:
    /// The characters of the bytes 0 to 255; for an undefined byte the one of the same number.
    using Characters = std::array<wchar_t, 256>;

    SingleByteCodePage(std::string name, const Characters& characters);
    std::wstring decode(std::string_view bytes) const override;
    bool encode(char32_t character, std::string& bytes) const override;

private:
    Characters characters_;
    /// Characters above 127 with their bytes, ascending.
    std::vector<std::pair<wchar_t, char>> bytes_;
};

// One implementation for each system.

/// The page that the process starts with.
std::unique_ptr<CodePage> defaultCodePage();
/// The page of that name, or null when the system has none that could be the ANSI code page.
std::unique_ptr<CodePage> openCodePage(const std::string& name);

}  // namespace ut
