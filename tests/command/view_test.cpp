#include <platen/utcore.h>
#include "tests/command/support.h"

using testing::HasSubstr;

namespace {

class CommandViewTest : public CommandTest {
protected:
    void SetUp() override { name(path("page.html")); }
    void TearDown() override { name(""); }

    static void name(const std::string& page) { ut::setSetting(L"Page", ut::decodePath(page)); }

    static constexpr const char* before = "<p></p><script id=\"platen-files\">";
    static constexpr const char* after = "</script><p></p>";
};

TEST_F(CommandViewTest, ThePageHasTheFilesInIt) {
    write("page.html", std::string(before) + "[]" + after);
    const std::string all("\0\1\2\377\376", 5);
    const struct {
        std::size_t size;
        const char* base64;
    } cases[] = {{0, ""}, {1, "AA=="}, {2, "AAE="}, {3, "AAEC"}, {4, "AAEC/w=="}, {5, "AAEC//4="}};
    for (const auto& [size, base64] : cases) {
        write("a.ctb", all.substr(0, size));
        expectRun({"view", "@a.ctb", "-o", "@out.html"}, 0, testing::IsEmpty());
        EXPECT_EQ(read("out.html"),
                  std::string(before) + R"([{"name":"a.ctb","base64":")" + base64 + "\"}]" + after);
    }
    write("b & b.pmp", "");
    expectRun({"view", "@a.ctb", "@b & b.pmp", "-o", "@out.html"}, 0, testing::IsEmpty());
    EXPECT_THAT(read("out.html"), HasSubstr(R"({"name":"b & b.pmp","base64":""})"));
}

TEST_F(CommandViewTest, WhatIsMissingIsNamed) {
    write("a.ctb", "");
    expectRefused({"view", "@a.ctb", "-o", "@out.html"}, "PLATEN_PAGE");
    write("page.html", "another page");
    expectRefused({"view", "@a.ctb", "-o", "@out.html"}, "no page of this program");
    write("page.html", std::string(before) + "[]" + after);
    expectRefused({"view", "@none.ctb", "-o", "@out.html"}, "none.ctb");
    expectRefused({"view", "@a.ctb", "-o", "@no/out.html"}, "out.html");
    EXPECT_THAT(names(), testing::UnorderedElementsAre("a.ctb", "page.html"));
}

}  // namespace
