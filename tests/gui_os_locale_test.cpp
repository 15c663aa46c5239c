// Locale, numbers, environment variables, formatting.
#include <gtest/gtest.h>
#include <wx/string.h>
#include <wx/utils.h>

#include <clocale>
#include <limits>
#include <string>
#include <string_view>

#include "gui_os.h"

namespace {

/// Brings the C library's locale back.
class LocaleScope {
public:
    LocaleScope() : before_(std::setlocale(LC_ALL, nullptr)) {}
    LocaleScope(const LocaleScope&) = delete;
    LocaleScope& operator=(const LocaleScope&) = delete;
    ~LocaleScope() { std::setlocale(LC_ALL, before_.c_str()); }

private:
    std::string before_;
};

TEST(Locale, OfTheApplicationHasTheUsersTextAndPlainNumbers) {
    const LocaleScope scope;
    ASSERT_NE(std::setlocale(LC_ALL, ""), nullptr);
    const std::string users = std::setlocale(LC_COLLATE, nullptr);
    // Otherwise the test could not tell the user's locale from the plain one.
    ASSERT_NE(users, "C");
    wut::setApplicationLocale();
    for (const int category : {LC_COLLATE, LC_CTYPE, LC_MONETARY, LC_TIME}) {
        EXPECT_EQ(std::setlocale(category, nullptr), users) << category;
    }
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

TEST(Numbers, MultiplyAndDivideLikeTheSystem) {
    constexpr int largest = std::numeric_limits<int>::max();
    constexpr int smallest = std::numeric_limits<int>::min();
    const struct {
        int number;
        int numerator;
        int denominator;
        int result;
    } cases[] = {
        {7, 3, 2, 11},
        {-7, 3, 2, -11},
        {7, -3, 2, -11},
        {7, 3, -2, -11},
        {-7, -3, -2, -11},
        {1, 1, 2, 1},
        {-1, 1, 2, -1},
        {1, 1, 3, 0},
        {2, 1, 3, 1},
        {5, 1, 3, 2},
        {0, 5, 7, 0},
        {254, 96, 254, 96},
        {1, 1, 0, -1},
        {0, 0, 0, -1},
        {largest, largest, largest, largest},
        {largest, 2, 2, largest},
        {largest, 2, 1, -1},
        {largest, 3, 2, -1},
        {smallest, 1, 1, -1},
        {smallest, -1, 1, -1},
        {smallest, 1, 2, -1073741824},
        {smallest, smallest, 1, -1},
        {smallest, smallest, largest, -1},
        {largest, 1, -1, -largest},
        {smallest, largest, largest, -1},
        {largest, 1, smallest, -1},
        {smallest, 1, smallest, 1},
    };
    for (const auto& entry : cases) {
        EXPECT_EQ(wut::mulDiv(entry.number, entry.numerator, entry.denominator), entry.result)
            << entry.number << " * " << entry.numerator << " / " << entry.denominator;
    }
}

TEST(EnvironmentVariables, AreReplacedInTexts) {
    wxSetEnv("PLATEN_TEST_A", "a value");
    wxSetEnv("PLATEN_TEST_B", "%PLATEN_TEST_A%");
    wxUnsetEnv("PLATEN_TEST_NONE");
    const struct {
        const wchar_t* source;
        std::wstring_view result;
    } cases[] = {
        {L"", L""},
        {L"plain", L"plain"},
        {L"%PLATEN_TEST_A%", L"a value"},
        {L"<%PLATEN_TEST_A%%PLATEN_TEST_A%>", L"<a valuea value>"},
        // Values are not looked into.
        {L"%PLATEN_TEST_B%", L"%PLATEN_TEST_A%"},
        {L"%PLATEN_TEST_NONE%", L"%PLATEN_TEST_NONE%"},
        {L"100% %PLATEN_TEST_NONE%", L"100% %PLATEN_TEST_NONE%"},
        {L"%PLATEN_TEST_A", L"%PLATEN_TEST_A"},
        {L"%", L"%"},
        {L"%%", L"%%"},
    };
    for (const auto& entry : cases) {
        const std::size_t needed = entry.result.size() + 1;
        wchar_t target[64];
        EXPECT_EQ(wut::expandEnvironmentStrings(entry.source, target, 64), needed);
        EXPECT_EQ(std::wstring_view(target), entry.result);
        // The exact room does, one less is told and not exceeded.
        std::wstring exact(needed, L'x');
        EXPECT_EQ(wut::expandEnvironmentStrings(entry.source, exact.data(),
                                                static_cast<unsigned long>(needed)),
                  needed);
        EXPECT_EQ(std::wstring_view(exact.c_str()), entry.result);
        target[needed - 1] = L'x';
        EXPECT_EQ(wut::expandEnvironmentStrings(entry.source, target,
                                                static_cast<unsigned long>(needed - 1)),
                  needed);
        EXPECT_EQ(target[needed - 1], L'x');
    }
    EXPECT_EQ(wut::expandEnvironmentStrings(L"%PLATEN_TEST_A%", nullptr, 0), 8u);
}

std::wstring reported;

void takeReport(const wchar_t* reason) { reported = reason; }
void takeOtherReport(const wchar_t*) { reported = L"other"; }

TEST(FormattingErrors, GoToTheHandler) {
    EXPECT_EQ(wut::setFormattingErrorHandler(takeReport), nullptr);
    reported.clear();
    EXPECT_EQ(wxString::Format("%d", 5), "5");
    EXPECT_EQ(reported, L"");
    static_cast<void>(wxString::Format("%d", 5.5));
    EXPECT_EQ(reported, L"format specifier doesn't match argument type");

    EXPECT_EQ(wut::setFormattingErrorHandler(takeOtherReport), takeReport);
    static_cast<void>(wxString::Format("%d", 5.5));
    EXPECT_EQ(reported, L"other");
    EXPECT_EQ(wut::setFormattingErrorHandler(nullptr), takeOtherReport);
}

bool otherCheckFailed = false;

void takeCheck(const wxString&, int, const wxString&, const wxString&, const wxString&) {
    otherCheckFailed = true;
}

TEST(FormattingErrors, AreTheOnlyChecksTaken) {
    const wxAssertHandler_t before = wxSetAssertHandler(takeCheck);
    wut::setFormattingErrorHandler(takeReport);
    reported.clear();
    wxFAIL_MSG("another check");
    EXPECT_TRUE(otherCheckFailed);
    EXPECT_EQ(reported, L"");
    wut::setFormattingErrorHandler(nullptr);
    // All is as it was.
    EXPECT_EQ(wxSetAssertHandler(before), takeCheck);
}

}  // namespace
