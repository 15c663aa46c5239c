/// A language that tests speak.
#pragma once

#include <gtest/gtest.h>
#include <wx/arrstr.h>
#include <wx/init.h>
#include <wx/translation.h>

#include <cstddef>
#include <string>
#include <string_view>

/// A catalogue that has another text for two: as compilers of translations write it.
class TwoTexts : public wxTranslationsLoader {
public:
    wxMsgCatalog* LoadCatalog(const wxString& domain, const wxString&) override {
        std::string heads("\xDE\x12\x04\x95\0\0\0\0\3\0\0\0\x1C\0\0\0\x34\0\0\0\0\0\0\0\0\0\0\0",
                          28);
        std::string texts;
        for (const std::string_view text :
             {"", "Built-in direct output to PDF", "Color",
              "Content-Type: text/plain; charset=UTF-8\n", "Eingebaute Ausgabe als PDF", "Farbe"}) {
            for (const std::size_t number : {text.size(), 76 + texts.size()}) {
                heads += {static_cast<char>(number), static_cast<char>(number >> 8), '\0', '\0'};
            }
            texts.append(text).push_back('\0');
        }
        const std::string file = heads + texts;
        return wxMsgCatalog::CreateFromData(
            wxScopedCharBuffer::CreateNonOwned(file.data(), file.size()), domain);
    }
    wxArrayString GetAvailableTranslations(const wxString&) const override {
        return wxArrayString(1, {wxString("de")});
    }
};

class Translations : public testing::Test {
protected:
    void SetUp() override {
        auto* translations = new wxTranslations;
        wxTranslations::Set(translations);
        translations->SetLoader(new TwoTexts);
        translations->SetLanguage("de");
        ASSERT_TRUE(translations->AddCatalog("application"));
    }
    void TearDown() override { wxTranslations::Set(nullptr); }

    wxInitializer library_;
};
