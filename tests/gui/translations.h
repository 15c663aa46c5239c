/// A language that a test knows.
#pragma once

#include <wx/translation.h>

#include <cstddef>
#include <string>

/// While it lives, one text is translated to German. Both are UTF-8.
class German {
public:
    German(const std::string& text, const std::string& translation) {
        auto* translations = new wxTranslations;
        wxTranslations::Set(translations);
        translations->SetLoader(new Loader(text, translation));
        translations->SetLanguage("de");
        translations->AddCatalog("application");
    }
    German(const German&) = delete;
    German& operator=(const German&) = delete;
    ~German() { wxTranslations::Set(nullptr); }

private:
    class Loader : public wxTranslationsLoader {
    public:
        Loader(const std::string& text, const std::string& translation) {
            // As compilers of translations write it: a header, the lengths and places of two texts
            // and of what they are translated to, and these four.
            const char header[] =
                "\xDE\x12\x04\x95\0\0\0\0\2\0\0\0\x1C\0\0\0\x2C\0\0\0\0\0\0\0\0\0\0";
            file_.assign(header, sizeof(header));
            std::string texts;
            for (const std::string& each :
                 {std::string(), text, std::string("Content-Type: text/plain; charset=UTF-8\n"),
                  translation}) {
                for (const std::size_t value : {each.size(), 60 + texts.size()}) {
                    file_ += {static_cast<char>(value), static_cast<char>(value >> 8), 0, 0};
                }
                texts += each + '\0';
            }
            file_ += texts;
        }

        wxMsgCatalog* LoadCatalog(const wxString& domain, const wxString&) override {
            return wxMsgCatalog::CreateFromData(
                wxScopedCharBuffer::CreateNonOwned(file_.data(), file_.size()), domain);
        }
        wxArrayString GetAvailableTranslations(const wxString&) const override {
            return wxArrayString(1, {wxString("de")});
        }

    private:
        std::string file_;
    };
};
