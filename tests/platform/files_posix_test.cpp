#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <thread>
#include <vector>

#include <platen/utcore.h>
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;

class PosixFiles : public testing::Test {
protected:
    PosixFiles() { fs::create_directory(folder_ / "inner"); }

    ut::SystemError replace(const fs::path& path) const {
        return ut::replaceFile(ut::decodePath((folder_ / path).string()),
                               std::vector<std::string_view>{"new"});
    }
    std::string content(const fs::path& path) const { return readBytes(folder_ / path); }
    void put(const fs::path& path) const { writeBytes(folder_ / path, "old"); }

    const TemporaryFolder temporary_;
    const fs::path folder_ = temporary_.path("").parent_path();
};

TEST_F(PosixFiles, LinksAreFollowed) {
    put("inner/table");
    fs::create_symlink("inner/second", folder_ / "first");
    fs::create_symlink("table", folder_ / "inner/second");
    fs::create_symlink(folder_ / "inner/created", folder_ / "dangling");
    ASSERT_FALSE(replace("first"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "first") && fs::is_symlink(folder_ / "inner/second"));
    EXPECT_EQ(content("inner/table"), "new");
    ASSERT_FALSE(replace("dangling"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "dangling"));
    EXPECT_EQ(content("inner/created"), "new");

    fs::create_symlink("loop", folder_ / "loop");
    EXPECT_EQ(replace("loop").code, static_cast<std::uint32_t>(ELOOP));
}

TEST_F(PosixFiles, PermissionsAreKept) {
    put("table");
    for (const mode_t mode : {0600u, 0664u, 0640u, 04755u}) {
        const std::string native = (folder_ / "table").string();
        ASSERT_EQ(::chmod(native.c_str(), mode), 0);
        ASSERT_FALSE(replace("table"));
        struct stat status {};
        ASSERT_EQ(::stat(native.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, mode);
    }
}

TEST_F(PosixFiles, ReadOnlyFileIsNotReplaced) {
    put("table");
    fs::permissions(folder_ / "table", fs::perms::owner_read);
    // Nothing is read-only to the superuser, who becomes somebody else for the moment.
    constexpr uid_t nobody = 65534;
    const bool isSuperuser = ::geteuid() == 0;
    if (isSuperuser) {
        ASSERT_EQ(::chown((folder_ / "table").c_str(), nobody, static_cast<gid_t>(-1)), 0);
        ASSERT_EQ(::chown(folder_.c_str(), nobody, static_cast<gid_t>(-1)), 0);
        ASSERT_EQ(::seteuid(nobody), 0);
    }
    const std::uint32_t code = replace("table").code;
    if (isSuperuser) {
        ASSERT_EQ(::seteuid(0), 0);
    }
    EXPECT_EQ(code, static_cast<std::uint32_t>(EACCES));
    EXPECT_EQ(content("table"), "old");
}

TEST_F(PosixFiles, PipeIsWrittenStraight) {
    const std::string pipe = (folder_ / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    ut::SystemError error;
    std::thread writer([&] { error = replace("pipe"); });
    EXPECT_EQ(content("pipe"), "new");
    writer.join();
    EXPECT_FALSE(error);
    EXPECT_TRUE(fs::is_fifo(folder_ / "pipe"));
}

TEST_F(PosixFiles, EndlessDeviceStopsAtTheLimit) {
    ut::ByteBuffer bytes;
    bool tooLarge = false;
    EXPECT_TRUE(ut::readFile(L"/dev/zero", 100000, bytes, tooLarge));
    EXPECT_TRUE(tooLarge);
}

TEST_F(PosixFiles, NamesOfAnyBytesAndTheLongest) {
    for (const std::string& name : {std::string("caf\xE9"), std::string(255, 'n')}) {
        ASSERT_FALSE(replace(name));
        EXPECT_EQ(content(name), "new");
    }
}

TEST_F(PosixFiles, RelativeNameHasItsFolder) {
    const CurrentFolder here(folder_);
    EXPECT_FALSE(ut::replaceFile(L"bare", std::vector<std::string_view>{"new"}));
    EXPECT_EQ(content("bare"), "new");
    EXPECT_EQ(ut::correctSlashes(L"a/b\\c"), L"a/b\\c");
}

}  // namespace
