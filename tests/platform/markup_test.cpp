#include "platform/utcore/markup.h"

#include <gtest/gtest.h>

#include <utility>

using namespace std::string_literals;

namespace {

TEST(Markup, TextOfOthersIsTextInMarkup) {
    const std::pair<std::string, std::string> cases[] = {
        {"A0 f\xC3\xBCr \xF0\x9F\x96\xA8", "A0 f\xC3\xBCr \xF0\x9F\x96\xA8"},
        {"<script>alert(1)</script>", "&lt;script&gt;alert(1)&lt;/script&gt;"},
        {"\" onmouseover='x'", "&quot; onmouseover=&#39;x&#39;"},
        {"&lt;]]>", "&amp;lt;]]&gt;"},
        {"a\0b\t\n\x1B\x7F"s, "a\u2400b\u2409\u240A\u241B\u2421"},
        {"\xC2\x9B\xEF\xBF\xBE\xEF\xB7\x90", "\uFFFD\uFFFD\uFFFD"},
        {"gpj\u202E.pc3\u2066", "gpj\uFFFD.pc3\uFFFD"},
        // Bytes that another reader could take for markup.
        {"\xC0\xBCscript\xF8<\xE2\x82", "\uFFFD\uFFFDscript\uFFFD&lt;\uFFFD\uFFFD"},
    };
    for (const auto& [text, escaped] : cases) {
        EXPECT_EQ(ut::escapeMarkup(text), escaped);
    }
    EXPECT_EQ(ut::escapeMarkup(L"<\xD800>"), "&lt;\uFFFD&gt;");
}

}  // namespace
