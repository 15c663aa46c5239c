/// A language that a test knows.
#pragma once

#include <wx/translation.h>

#include <cstddef>
#include <string>
#include <utility>

/// While it lives, one text is translated to German. Both are UTF-8.
class German {
public:
    German(std::string text, std::string translation) {
        auto* translations = new wxTranslations;
        wxTranslations::Set(translations);
        translations->SetLoader(new Loader(std::move(text), std::move(translation)));
        translations->SetLanguage("de");
        translations->AddCatalog("application");
    }
    German(const German&) = delete;
    German& operator=(const German&) = delete;
    ~German() { wxTranslations::Set(nullptr); }

private:
    class Loader : public wxTranslationsLoader {
    public:
        Loader(std::string text, std::string translation) {
            // As compilers of translations write it: a header, the places of all texts and of what
            // they are translated to, and these.
            const std::string texts[] = {"", std::move(text),
                                         "Content-Type: text/plain; charset=UTF-8\n",
                                         std::move(translation)};
            for (const std::size_t value :
                 {std::size_t{0x950412DE}, std::size_t{0}, std::size_t{2}, std::size_t{28},
                  std::size_t{44}, std::size_t{0}, std::size_t{0}}) {
                append(value);
            }
            std::size_t place = 60;
            for (const std::string& each : texts) {
                append(each.size());
                append(place);
                place += each.size() + 1;
            }
            for (const std::string& each : texts) {
                file_ += each + '\0';
            }
        }

        wxMsgCatalog* LoadCatalog(const wxString& domain, const wxString&) override {
            return wxMsgCatalog::CreateFromData(
                wxScopedCharBuffer::CreateNonOwned(file_.data(), file_.size()), domain);
        }
        wxArrayString GetAvailableTranslations(const wxString&) const override {
            return wxArrayString(1, {wxString("de")});
        }

    private:
        void append(std::size_t value) {
            for (int byte = 0; byte < 4; ++byte) {
                file_ += static_cast<char>(value >> 8 * byte & 0xFF);
            }
        }

        std::string file_;
    };
};
