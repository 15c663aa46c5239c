#include <filesystem>

#include "tests/command/support.h"
#include "tests/support/trees.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class CommandRepairTest : public CommandTest {
protected:
    void SetUp() override {
        prepare({"create", "ctb", "-o", "@sound.ctb"});
        sound_ = read("sound.ctb");
    }

    std::string sound_;
};

TEST_F(CommandRepairTest, ACutTableComesBackWithWhatIsMissingNamed) {
    write("cut.ctb", sound_.substr(0, sound_.size() / 2));
    const CommandResult result = run({"repair", "@cut.ctb", "-o", "@out.ctb"});
    EXPECT_EQ(result.code, 3) << result.err;
    EXPECT_THAT(result.out, HasSubstr("cut.ctb: [stream-truncated] "));
    EXPECT_THAT(result.out, HasSubstr("more like this; --json lists them"));
    EXPECT_THAT(result.out, HasSubstr("lost "));
    expectRun({"check", "@out.ctb"}, 0, HasSubstr("ok"));
    EXPECT_EQ(read("cut.ctb"), sound_.substr(0, sound_.size() / 2));
}

TEST_F(CommandRepairTest, AFlippedBitIsUndone) {
    std::string flipped = sound_;
    flipped[sound_.size() / 2] = static_cast<char>(flipped[sound_.size() / 2] ^ 4);
    write("flipped.ctb", flipped);
    expectRun({"repair", "@flipped.ctb", "-o", "@out.ctb"}, 3, HasSubstr("[byte-corrected]"));
    EXPECT_EQ(read("out.ctb"), sound_);
}

TEST_F(CommandRepairTest, ExitCodesSayHowItEnded) {
    expectRun({"repair", "@sound.ctb", "-o", "@copy.ctb"}, 0, HasSubstr("nothing to repair"));
    EXPECT_EQ(read("copy.ctb"), sound_);
    write("none.ctb", std::string(1000, 'x'));
    expectRefused({"repair", "@none.ctb", "-o", "@out.ctb"}, "no item of it can be read");
    expectRefused({"repair", "@missing.ctb", "-o", "@out.ctb"}, "cannot be read");
    expectRefused({"repair", "@sound.ctb"}, "-o OUT");
    write("checksum.ctb", sound_ + "rest");
    const CommandResult json = run({"repair", "@checksum.ctb", "--dry-run", "--json"});
    EXPECT_EQ(json.code, 3);
    EXPECT_THAT(json.out, StartsWith(R"({"schema":"platen.repair/1","file":")"));
    EXPECT_THAT(json.out, HasSubstr(R"("code":"bytes-after-stream","safe":false)"));
    const CommandResult piped = run({"repair", "-", "-o", "-"}, false, sound_ + "rest");
    EXPECT_EQ(piped.code, 3);
    EXPECT_EQ(piped.out, sound_);
    EXPECT_THAT(piped.err, HasSubstr("[bytes-after-stream]"));
    EXPECT_THAT(names(), testing::ElementsAre("checksum.ctb", "copy.ctb", "none.ctb", "sound.ctb"));
}

TEST_F(CommandRepairTest, TheDamagedFileIsNeverWrittenOver) {
    namespace fs = std::filesystem;
    const std::string damaged = sound_ + "rest";
    write("a.ctb", damaged);
    fs::create_directory(path("folder"));
    fs::create_hard_link(path("a.ctb"), path("hard.ctb"));
    std::vector<std::string> spellings{"@a.ctb", "@./a.ctb", "@folder/../a.ctb", "@hard.ctb"};
    std::error_code refused;
    fs::create_symlink(path("a.ctb"), path("link.ctb"), refused);
    if (!refused) {
        spellings.emplace_back("@link.ctb");
    }
    for (const std::string& out : spellings) {
        expectRefused({"repair", "@a.ctb", "-o", out}, "never written over");
        expectRefused({"repair", out, "-o", "@a.ctb"}, "never written over");
    }
    EXPECT_EQ(read("a.ctb"), damaged);
    EXPECT_EQ(read("hard.ctb"), damaged);
}

TEST_F(CommandRepairTest, CheckFixesWhatIsCertainAndNamesTheRest) {
    const std::string wrongChecksum = replaced(sound_, sound_.substr(48, 4), "XXXX");
    const std::string body = bodyOf(sound_);
    std::filesystem::create_directory(path("t"));
    write("t/checksum.ctb", wrongChecksum);
    write("t/sound.ctb", sound_);
    write("t/torn.ctb", sound_.substr(0, 2000));
    writeFile("t/odd.ctb", replaced(body, "screen=100", "screen=101"), PiaKind::Ctb);
    const std::string odd = read("t/odd.ctb");
    write("t/odd.ctb", replaced(odd, odd.substr(48, 4), "XXXX"));

    expectRun({"check", "--fix", "@t/checksum.ctb"}, 3,
              testing::AllOf(HasSubstr("would fix [checksum]"), HasSubstr(": ok, ")));
    EXPECT_EQ(read("t/checksum.ctb"), wrongChecksum);
    expectRun({"check", "--fix", "@t/checksum.ctb", "-o", "@out.ctb"}, 0, HasSubstr("fixed "));
    EXPECT_EQ(read("out.ctb"), sound_);

    const CommandResult all = run({"check", "--fix", "-r", "@t", "--in-place=.old"});
    EXPECT_EQ(all.code, 2);
    EXPECT_THAT(all.out, HasSubstr("checksum.ctb: fixed [checksum]"));
    EXPECT_THAT(all.out, HasSubstr("odd.ctb: warning [style-screen-range]"));
    EXPECT_THAT(all.out, HasSubstr("torn.ctb: error [stream-truncated]"));
    EXPECT_EQ(read("t/checksum.ctb"), sound_);
    EXPECT_EQ(read("t/checksum.ctb.old"), wrongChecksum);
    EXPECT_EQ(read("t/odd.ctb"), odd);
    EXPECT_EQ(read("t/torn.ctb"), sound_.substr(0, 2000));
    EXPECT_FALSE(std::filesystem::exists(path("t/sound.ctb.old")));

    write("none.ctb", "x=1\n");
    expectRun({"check", "--fix", "@none.ctb"}, 2, HasSubstr("error [json-missing]"));
    expectRefused({"check", "@out.ctb", "--in-place"}, "go with --fix");
    expectRefused({"check", "--fix", "-r", "@t", "-o", "@out.ctb"}, "no room in one OUT");
    expectRefused({"check", "--fix", "@out.ctb", "-o", "@./out.ctb"}, "use --in-place");
}

}  // namespace
