#include "tests/command/support.h"

using testing::_;
using testing::HasSubstr;

namespace {

class CommandBundlePosixTest : public CommandTest {};

TEST_F(CommandBundlePosixTest, NoLinkIsFollowed) {
    std::filesystem::create_directories(path("office/sub"));
    prepare({"create", "ctb", "-o", "@office/pens.ctb"});
    prepare({"create", "ctb", "-o", "@office/sub/pens.ctb"});
    std::filesystem::create_symlink("pens.ctb", path("office/link.ctb"));
    expectRun({"bundle", "@office", "-o", "@o.zip"}, 0, HasSubstr("link.ctb: it is a link"));

    std::filesystem::create_directories(path("new"));
    std::filesystem::create_directories(path("elsewhere"));
    std::filesystem::create_directory_symlink(path("elsewhere"), path("new/sub"));
    write("target", "mine");
    std::filesystem::create_symlink(path("target"), path("new/pens.ctb"));
    for (const char* replace : {"--dry-run", "--replace"}) {
        expectRun({"restore", "@o.zip", "@new", replace}, 2, _,
                  testing::AllOf(HasSubstr("sub\" is a link"), HasSubstr("a link stands there")));
    }
    EXPECT_EQ(read("target"), "mine");
    EXPECT_TRUE(std::filesystem::is_empty(path("elsewhere")));
    // The folder itself may be one.
    std::filesystem::create_directory_symlink(path("elsewhere"), path("there"));
    EXPECT_EQ(run({"restore", "@o.zip", "@there"}).code, 0);
    EXPECT_EQ(read("elsewhere/sub/pens.ctb"), read("office/sub/pens.ctb"));
}

TEST_F(CommandBundlePosixTest, NamesThatOtherSystemsDoNotTakeAreChangedAndSaid) {
    std::filesystem::create_directories(path("office"));
    for (const char* name : {"a:b.ctb", "\xFF.ctb", "A.ctb", "a.ctb", "nul.ctb"}) {
        prepare({"create", "ctb", "-o", "@office/" + std::string(name)});
    }
    expectRun({"bundle", "@office", "-o", "@o.zip"}, 3, _,
              HasSubstr("it is called \"a_b.ctb\" in the bundle"));
    EXPECT_EQ(run({"restore", "@o.zip", "@new"}).code, 0);
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(path("new"))) {
        found.push_back(entry.path().filename().string());
    }
    EXPECT_THAT(found,
                testing::UnorderedElementsAre("a_b.ctb", "_.ctb", "A.ctb", "a_2.ctb", "_nul.ctb"));
}

}  // namespace
