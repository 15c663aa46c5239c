/// A language that tests speak.
#pragma once

#include <wx/arrstr.h>
#include <wx/translation.h>

#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// While it lives, some texts are translated to German. All are UTF-8.
class German {
public:
    German(std::initializer_list<std::pair<const std::string, std::string>> texts) {
        auto* translations = new wxTranslations;
        wxTranslations::Set(translations);
        translations->SetLoader(new Loader(texts));
        translations->SetLanguage("de");
        translations->AddCatalog("application");
    }
    German(const German&) = delete;
    German& operator=(const German&) = delete;
    ~German() { wxTranslations::Set(nullptr); }

private:
    class Loader : public wxTranslationsLoader {
    public:
        /// As compilers of translations write it: a header, the lengths and places of the texts and
        /// of what they are translated to, and all of these.
        explicit Loader(std::map<std::string, std::string> texts) {
            texts[""] = "Content-Type: text/plain; charset=UTF-8\n";
            const auto count = static_cast<std::uint32_t>(texts.size());
            std::vector<std::uint32_t> numbers{0x950412DE, 0, count, 28, 28 + 8 * count, 0, 0};
            std::string all;
            for (const bool translated : {false, true}) {
                for (const auto& [text, translation] : texts) {
                    const std::string& each = translated ? translation : text;
                    numbers.push_back(static_cast<std::uint32_t>(each.size()));
                    numbers.push_back(static_cast<std::uint32_t>(28 + 16 * count + all.size()));
                    all += each + '\0';
                }
            }
            file_.assign(reinterpret_cast<const char*>(numbers.data()), numbers.size() * 4) += all;
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
