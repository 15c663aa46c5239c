// Locale, numbers, environment variables, formatting.
#include <gtest/gtest.h>
#include <wx/string.h>
#include <wx/utils.h>

#include <array>
#include <clocale>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include <platen/gui_os.h>

namespace {

TEST(Locale, OfTheApplicationHasTheUsersTextAndPlainNumbers) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(std::setlocale(LC_ALL, ""), nullptr);
    const std::string users = std::setlocale(LC_COLLATE, nullptr);
    // Otherwise the test could not tell the user's locale from the plain one.
    ASSERT_NE(users, "C");
    wut::setApplicationLocale();
    for (const int category : {LC_COLLATE, LC_CTYPE, LC_MONETARY, LC_TIME}) {
        EXPECT_EQ(std::setlocale(category, nullptr), users) << category;
    }
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
    std::setlocale(LC_ALL, before.c_str());
}

TEST(Numbers, MultiplyAndDivideLikeTheSystem) {
    constexpr int largest = std::numeric_limits<int>::max();
    constexpr int smallest = std::numeric_limits<int>::min();
    const std::array<int, 4> cases[] = {{7, 3, 2, 11},
                                        {-7, 3, 2, -11},
                                        {7, 3, -2, -11},
                                        {-7, -3, -2, -11},
                                        {1, 1, 3, 0},
                                        {2, 1, 3, 1},
                                        {1, 1, 0, -1},
                                        {largest, largest, largest, largest},
                                        {largest, 2, 1, -1},
                                        {smallest, 1, 1, -1},
                                        {smallest, 1, 2, -1073741824},
                                        {smallest, smallest, 1, -1},
                                        {largest, 1, -1, -largest},
                                        {largest, 1, smallest, -1},
                                        {smallest, 1, smallest, 1}};
    for (const auto& [number, numerator, denominator, result] : cases) {
        EXPECT_EQ(wut::mulDiv(number, numerator, denominator), result)
            << number << " * " << numerator << " / " << denominator;
    }
}

TEST(EnvironmentVariables, AreReplacedInTexts) {
    wxSetEnv("PLATEN_TEST_A", "a value");
    wxSetEnv("PLATEN_TEST_B", "%PLATEN_TEST_A%");
    wxUnsetEnv("PLATEN_TEST_NONE");
    for (const auto& [source, result] : {
             std::pair(L"", std::wstring_view(L"")),
             {L"<%PLATEN_TEST_A%%PLATEN_TEST_A%>", L"<a valuea value>"},
             // Values are not looked into.
             {L"%PLATEN_TEST_B%", L"%PLATEN_TEST_A%"},
             {L"100% %PLATEN_TEST_NONE%", L"100% %PLATEN_TEST_NONE%"},
             {L"%PLATEN_TEST_A", L"%PLATEN_TEST_A"},
             {L"%", L"%"},
             {L"%%", L"%%"},
         }) {
        const auto needed = static_cast<unsigned long>(result.size() + 1);
        // The exact room does, one less is told and not exceeded.
        std::wstring target(needed, L'x');
        EXPECT_EQ(wut::expandEnvironmentStrings(source, target.data(), needed), needed);
        EXPECT_EQ(std::wstring_view(target.c_str()), result);
        target[needed - 1] = L'x';
        EXPECT_EQ(wut::expandEnvironmentStrings(source, target.data(), needed - 1), needed);
        EXPECT_EQ(target[needed - 1], L'x');
    }
    EXPECT_EQ(wut::expandEnvironmentStrings(L"%PLATEN_TEST_A%", nullptr, 0), 8u);
    EXPECT_EQ(wut::expandEnvironmentStrings(L"%PLATEN_TEST_A%", nullptr, 100), 8u);
    wchar_t target[2] = L"x";
    EXPECT_EQ(wut::expandEnvironmentStrings(nullptr, target, 2), 0u);
}

std::wstring reported;
void takeReport(const wchar_t* reason) { reported = reason; }
void takeOtherReport(const wchar_t*) { reported = L"other"; }
void takeCheck(const wxString&, int, const wxString&, const wxString&, const wxString&) {
    reported = L"another check";
}

TEST(FormattingErrors, GoToTheHandler) {
    const wxAssertHandler_t before = wxSetAssertHandler(takeCheck);
    EXPECT_EQ(wut::setFormattingErrorHandler(takeReport), nullptr);
    EXPECT_EQ(wxString::Format("%d", 5), "5");
    EXPECT_EQ(reported, L"");
    static_cast<void>(wxString::Format("%d", 5.5));
    EXPECT_EQ(reported, L"format specifier doesn't match argument type");
    EXPECT_EQ(wut::setFormattingErrorHandler(takeOtherReport), takeReport);
    static_cast<void>(wxString::Format("%d", 5.5));
    EXPECT_EQ(reported, L"other");
    // Other checks go where they went before, and all do at the end.
    wxFAIL_MSG("fails");
    EXPECT_EQ(reported, L"another check");
    EXPECT_EQ(wut::setFormattingErrorHandler(nullptr), takeOtherReport);
    EXPECT_EQ(wxSetAssertHandler(before), takeCheck);
}

}  // namespace
