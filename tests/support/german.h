/// A language that tests speak.
#pragma once

#include <wx/arrstr.h>
#include <wx/translation.h>

#include <cstddef>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>

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
            constexpr std::size_t header = 28;
            const std::size_t table = texts.size() * 8;
            for (const std::size_t number :
                 {std::size_t{0x950412DE}, std::size_t{0}, texts.size(), header, header + table,
                  std::size_t{0}, std::size_t{0}}) {
                addNumber(number);
            }
            std::string all;
            const auto add = [&](const std::string& text) {
                addNumber(text.size());
                addNumber(header + 2 * table + all.size());
                all += text + '\0';
            };
            for (const auto& [text, translation] : texts) {
                add(text);
            }
            for (const auto& [text, translation] : texts) {
                add(translation);
            }
            file_ += all;
        }

        wxMsgCatalog* LoadCatalog(const wxString& domain, const wxString&) override {
            return wxMsgCatalog::CreateFromData(
                wxScopedCharBuffer::CreateNonOwned(file_.data(), file_.size()), domain);
        }
        wxArrayString GetAvailableTranslations(const wxString&) const override {
            return wxArrayString(1, {wxString("de")});
        }

    private:
        void addNumber(std::size_t number) {
            for (int byte = 0; byte < 4; ++byte, number >>= 8) {
                file_ += static_cast<char>(number);
            }
        }

        std::string file_;
    };
};
