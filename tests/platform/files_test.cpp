#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <platen/utcore.h>
#include <platen/utcore_replace.h>
#include "platform/utcore/file_system.h"
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;

/// The system's files behind calls of which one fails. Writes take three bytes at a time.
class FailingFiles : public ut::FileSystem {
public:
    /// The call, counted from 0, that fails with code 5000 and the action of that call.
    explicit FailingFiles(int failing) : failing_(failing) {}

    ut::SystemError openForReading(const std::wstring& path, File& file,
                                   std::uint64_t& size) override {
        return fails() ? failure("open") : files_.openForReading(path, file, size);
    }
    ut::SystemError read(File file, char* bytes, std::size_t room, std::size_t& count) override {
        return fails() ? failure("read")
                       : files_.read(file, bytes, std::min<std::size_t>(room, 3), count);
    }
    ut::SystemError tooLarge() const override { return files_.tooLarge(); }
    ut::SystemError findDestination(const std::wstring& path, ut::Destination& found) override {
        return fails() ? failure("find") : files_.findDestination(path, found);
    }
    ut::SystemError create(const std::wstring& path, bool replaces, File& file,
                           File& held) override {
        return fails() ? failure("create") : files_.create(path, replaces, file, held);
    }
    ut::SystemError taken() const override { return files_.taken(); }
    ut::Left removeAbandoned(const std::wstring& path) override {
        return files_.removeAbandoned(path);
    }
    void release(File held) override { files_.release(held); }
    void discard(const std::wstring& path, File held) override { files_.discard(path, held); }
    void pause() override { ++pauses; }
    ut::SystemError openDevice(const std::wstring& path, File& file) override {
        return files_.openDevice(path, file);
    }
    ut::SystemError write(File file, std::string_view bytes, std::size_t& count) override {
        return fails() ? failure("write") : files_.write(file, bytes.substr(0, 3), count);
    }
    ut::SystemError copyPermissions(const std::wstring& path, File file) override {
        return fails() ? failure("permissions") : files_.copyPermissions(path, file);
    }
    ut::SystemError flush(File file) override {
        return fails() ? failure("flush") : files_.flush(file);
    }
    ut::SystemError close(File file) override {
        EXPECT_FALSE(files_.close(file));
        return fails() ? failure("close") : ut::SystemError{};
    }
    ut::SystemError rename(const std::wstring& from, const std::wstring& to) override {
        return fails() ? failure("rename") : files_.rename(from, to);
    }
    void remove(const std::wstring& path) override { files_.remove(path); }
    void flushFolder(const std::wstring& path) override { files_.flushFolder(path); }

    int pauses = 0;

private:
    bool fails() { return failing_-- == 0; }
    static ut::SystemError failure(const char* action) { return {5000, action}; }

    ut::FileSystem& files_ = ut::systemFiles();
    int failing_;
};

class Files : public testing::Test {
protected:
    std::wstring folder() const { return folder_.path("").parent_path().wstring(); }
    std::wstring path(const wchar_t* name) const { return folder() + L"/" + name; }

    /// The library's own conversion of a wide path depends on the locale.
    static fs::path native(const std::wstring& path) {
        const std::string bytes = ut::encodePath(path);
        return fs::path(std::u8string(bytes.begin(), bytes.end()));
    }
    static std::string content(const std::wstring& path) { return readBytes(native(path)); }
    std::size_t entries() const { return folder_.files().size(); }

    TemporaryFolder folder_;
};

const std::vector<std::string_view> pieces = {"head", "", "the body"};

TEST_F(Files, ReplaceCreatesAndOverwrites) {
    const std::wstring file = path(L"Pl\u00E4ne \u0416.ctb");
    for (const std::string_view body : {"a long first content", "short", ""}) {
        ASSERT_FALSE(ut::replaceFile(file, std::vector<std::string_view>{"<", body, ">"}));
        EXPECT_EQ(content(file), "<" + std::string(body) + ">");
        EXPECT_EQ(entries(), 1u);
    }
    ASSERT_FALSE(ut::replaceFile(file, {}));
    EXPECT_EQ(content(file), "");
}

TEST_F(Files, ReplaceLeavesTheOldFileWhateverFails) {
    const std::wstring file = path(L"table.ctb");
    writeBytes(native(file), "old");
    std::vector<std::string> actions;
    bool refused = true;
    for (int failing = 0;; ++failing) {
        ASSERT_LT(failing, 100);
        FailingFiles files(failing);
        const ut::SystemError error = ut::replaceFile(files, file, pieces, {}, refused);
        EXPECT_EQ(entries(), 1u) << error.action;
        if (!error) {
            break;
        }
        EXPECT_EQ(error.code, 5000u);
        EXPECT_EQ(content(file), "old") << error.action;
        actions.emplace_back(error.action);
    }
    EXPECT_EQ(content(file), "headthe body");
    EXPECT_EQ(actions,
              (std::vector<std::string>{"find", "create", "write", "write", "write", "write",
                                        "write", "permissions", "flush", "close", "rename"}));
}

/// Notes a file that stands beside the destination while it is written.
class WatchedFiles : public FailingFiles {
public:
    WatchedFiles() : FailingFiles(-1) {}
    ut::SystemError create(const std::wstring& path, bool replaces, File& file,
                           File& held) override {
        temporary = path;
        return FailingFiles::create(path, replaces, file, held);
    }
    std::wstring temporary;
};

TEST_F(Files, ReplaceTakesAwayWhatAKilledOneLeftAndWaitsForALiveOne) {
    const std::wstring file = path(L"table.ctb");
    writeBytes(native(file), "old");
    WatchedFiles files;
    bool refused = true;
    // The other one is in the middle when this one comes.
    const auto other = [&] {
        const ut::SystemError error = ut::replaceFile(files, file, pieces, {}, refused);
        EXPECT_EQ(error.code, files.taken().code);
        EXPECT_GE(files.pauses, 1000);
        EXPECT_EQ(entries(), 2u);
        return true;
    };
    ASSERT_FALSE(ut::replaceFile(file, std::vector<std::string_view>{"first"}, other, refused));
    EXPECT_EQ(content(file), "first");
    EXPECT_EQ(entries(), 1u);

    for (const bool replaces : {true, false}) {
        writeBytes(native(files.temporary), "what a killed one left");
        if (replaces) {
            ASSERT_FALSE(ut::replaceFile(file, pieces));
        } else {
            ut::removeAbandoned(file);
        }
        EXPECT_EQ(content(file), "headthe body");
        EXPECT_EQ(entries(), 1u);
    }
    // What is none of ours stays, and does not stand in the way.
    fs::create_directory(native(files.temporary));
    ASSERT_FALSE(ut::replaceFile(file, {}));
    EXPECT_EQ(content(file), "");
    EXPECT_EQ(entries(), 2u);
}

TEST_F(Files, ReplaceAsksOnceTheNewContentIsThere) {
    const std::wstring file = path(L"table.ctb");
    writeBytes(native(file), "old");
    bool refused = false;
    const auto no = [&] {
        EXPECT_EQ(entries(), 2u);
        return false;
    };
    EXPECT_FALSE(ut::replaceFile(file, pieces, no, refused));
    EXPECT_TRUE(refused);
    EXPECT_EQ(content(file), "old");
    EXPECT_EQ(entries(), 1u);
}

TEST_F(Files, ReplaceReportsWhatStandsInTheWay) {
    EXPECT_TRUE(ut::replaceFile(folder(), pieces));
    EXPECT_TRUE(ut::replaceFile(L"", pieces));
    EXPECT_TRUE(ut::replaceFile(path(L"cut") + L'\0' + L"short", pieces));
    const ut::SystemError error = ut::replaceFile(path(L"missing") + L"/table.ctb", pieces);
    EXPECT_STREQ(error.action, "create");
    const std::string message = error.message();
    EXPECT_TRUE(message.starts_with("create: ") && message.size() > 12) << message;
    EXPECT_NE(message.back(), '\n');
    EXPECT_EQ(entries(), 0u);
    EXPECT_EQ(ut::SystemError{}.message(), "");
}

TEST_F(Files, ReadTakesWholeFilesWithinTheLimit) {
    const std::wstring file = path(L"table.ctb");
    for (const std::size_t size : {0u, 1u, 4095u, 4096u, 4097u, 100000u}) {
        writeBytes(native(file), std::string(size, 'x'));
        for (const std::uint64_t limit : {std::uint64_t{size}, ~std::uint64_t{0}}) {
            ut::ByteBuffer bytes;
            bool tooLarge = true;
            EXPECT_FALSE(ut::readFile(file, limit, bytes, tooLarge));
            EXPECT_FALSE(tooLarge);
            EXPECT_EQ(bytes.size(), size);
        }
        if (size > 0) {
            ut::ByteBuffer bytes;
            bool tooLarge = false;
            EXPECT_TRUE(ut::readFile(file, size - 1, bytes, tooLarge));
            EXPECT_TRUE(tooLarge);
            EXPECT_EQ(bytes.size(), 0u);
        }
    }
}

TEST_F(Files, ReadReportsEveryFailure) {
    const std::wstring file = path(L"table.ctb");
    writeBytes(native(file), "1234567");
    ut::ByteBuffer bytes;
    bool tooLarge = true;
    // Opening, three reads with something in them, and one at the end.
    for (int failing = 0; failing < 5; ++failing) {
        FailingFiles files(failing);
        EXPECT_EQ(ut::readFile(files, file, 100, bytes, tooLarge).code, 5000u) << failing;
        EXPECT_FALSE(tooLarge);
        EXPECT_EQ(bytes.size(), 0u);
    }
    FailingFiles files(-1);
    EXPECT_FALSE(ut::readFile(files, file, 100, bytes, tooLarge));
    EXPECT_EQ(bytes.view(), "1234567");
    EXPECT_STREQ(ut::readFile(folder(), 100, bytes, tooLarge).action, "open");
    EXPECT_STREQ(ut::readFile(path(L"missing"), 100, bytes, tooLarge).action, "open");
    EXPECT_TRUE(ut::readFile(file + L'\0' + L"x", 100, bytes, tooLarge));
    EXPECT_EQ(bytes.view(), "1234567");
}

}  // namespace
