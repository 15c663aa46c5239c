/// A folder of files for one test, and the command run on them within the test's process.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "pia.h"
#include "tools/platen/command.h"
#include "utcore.h"

struct CommandResult {
    int code = 0;
    std::string out;
    std::string err;
};

/// Arguments that begin with "@" name files of the folder.
class CommandTest : public testing::Test {
public:
    CommandTest() {
        const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
        folder_ =
            std::filesystem::temp_directory_path() /
            (std::string("platen-") + test.name() + "-" + std::to_string(std::random_device{}()));
        std::filesystem::create_directories(folder_);
    }
    CommandTest(const CommandTest&) = delete;
    CommandTest& operator=(const CommandTest&) = delete;
    ~CommandTest() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

protected:
    std::string path(std::string_view name) const { return (folder_ / name).string(); }

    CommandResult run(std::vector<std::string> arguments, bool terminal = false) const {
        for (std::string& argument : arguments) {
            if (argument.starts_with('@')) {
                argument = path(argument.substr(1));
            }
        }
        std::ostringstream out;
        std::ostringstream err;
        const int code = platen::run(arguments, out, err, terminal);
        return {code, out.str(), err.str()};
    }

    /// Runs what the test needs beforehand.
    void prepare(const std::vector<std::string>& arguments) const {
        const CommandResult result = run(arguments);
        ASSERT_EQ(result.code, 0) << result.err;
    }

    std::string read(std::string_view name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    void write(std::string_view name, std::string_view bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
    }

    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
            found.push_back(entry.path().filename().string());
        }
        return found;
    }

    /// Puts body text into a compressed file, past every check of the command.
    void writeFile(std::string_view name, std::string_view body, PiaKind kind) const {
        PiaInput input;
        ASSERT_TRUE(input.openBody(body)) << input.report().failure()->describe();
        PiaFileOut writer;
        writer.setKind(kind);
        ut::ByteBuffer bytes;
        ASSERT_TRUE(writer.encode(*input.root(), bytes));
        write(name, bytes.view());
    }

private:
    std::filesystem::path folder_;
};

/// `text` with the first `from` replaced by `to`; `from` must be there.
inline std::string replaced(std::string text, std::string_view from, std::string_view to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}
