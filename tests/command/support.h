/// A folder of files for one test, and the command run on them within the test's process.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include <platen/pia.h>
#include <platen/utcore.h>
#include "tests/support/files.h"
#include "tests/support/json_seen.h"
#include "tools/platen/command.h"

struct CommandResult {
    int code = 0;
    std::string out;
    std::string err;
};

/// Arguments that begin with "@" name files of the folder, and with "@@" lists of files there.
class CommandTest : public testing::Test {
protected:
    using Arguments = std::vector<std::string>;

    std::string path(std::string_view name) const {
        return folder_.path(name).make_preferred().string();
    }

    static Arguments joined(Arguments first, const Arguments& more) {
        first.insert(first.end(), more.begin(), more.end());
        return first;
    }

    CommandResult run(Arguments arguments, bool terminal = false,
                      const std::string& input = {}) const {
        for (std::string& argument : arguments) {
            if (argument.starts_with('@')) {
                const bool isList = argument.starts_with("@@");
                argument = (isList ? "@" : "") + path(argument.substr(isList ? 2 : 1));
            }
        }
        std::ostringstream out;
        std::ostringstream err;
        std::istringstream in(input);
        const int code = cli::run(arguments, {out, err, in, terminal, false});
        keepJson(out.str());
        keepJson(err.str());
        return {code, out.str(), err.str()};
    }

    /// Runs what the test needs beforehand.
    void prepare(const Arguments& arguments) const {
        const CommandResult result = run(arguments);
        ASSERT_EQ(result.code, 0) << result.err;
    }

    /// The exit code, what is printed, and the messages.
    void expectRun(const Arguments& arguments, int code, const testing::Matcher<std::string>& out,
                   const testing::Matcher<std::string>& err = testing::IsEmpty()) const {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.code, code) << result.err;
        EXPECT_THAT(result.out, out);
        EXPECT_THAT(result.err, err);
    }
    /// Nothing but an error, in whose words `part` stands.
    void expectRefused(const Arguments& arguments, const std::string& part) const {
        expectRun(arguments, 2, testing::IsEmpty(), testing::HasSubstr(part));
    }
    /// Done, but not without these words.
    void expectWarned(const Arguments& arguments,
                      const testing::Matcher<std::string>& words) const {
        expectRun(arguments, 3, testing::_, words);
    }

    std::string read(std::string_view name) const { return readBytes(folder_.path(name)); }
    void write(std::string_view name, std::string_view bytes) const {
        writeBytes(folder_.path(name), bytes);
    }
    std::vector<std::string> names() const { return folder_.files(); }

    /// The body of a table that the command makes.
    std::string createdBody(const std::string& kind) const {
        prepare({"create", kind, "-o", "@created"});
        std::string body = run({"get", "@created"}).out;
        std::filesystem::remove(path("created"));
        return body;
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
    TemporaryFolder folder_;
};

/// `text` with the first `from` replaced by `to`; `from` must be there.
inline std::string replaced(std::string text, std::string_view from, std::string_view to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}
