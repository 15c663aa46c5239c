// Programs that are run, waited for and cancelled.
#include <gtest/gtest.h>
#include <wx/utils.h>

#include <filesystem>
#include <functional>
#include <string>

#include <platen/gui_os.h>
#include "tests/gui/support/gui.h"
#include "tests/gui/support/processes.h"
#include "tests/support/files.h"

namespace {

class Shell : public wut::OsShell {
public:
    explicit Shell(std::function<bool()> cancelled) : cancelled_(std::move(cancelled)) {}

    bool isCancelled() override {
        ++polls;
        return cancelled_();
    }

    int polls = 0;

private:
    std::function<bool()> cancelled_;
};

class OsShell : public testing::Test {
protected:
    std::string path(const char* name) const { return folder_.path(name).string(); }
    bool exists(const char* name) const { return std::filesystem::exists(folder_.path(name)); }
    unsigned long process(const char* name) const {
        return std::stoul(readBytes(folder_.path(name)));
    }

    static unsigned long run(wut::OsShell&& shell, const std::vector<std::string>& arguments) {
        return shell.executeCommand(L"Title", childCommand(arguments).c_str(), 4);
    }

    TemporaryFolder folder_;
};

TEST_F(OsShell, WaitsForTheEnd) {
    Shell shell([] { return false; });
    const std::wstring command = childCommand({"arguments", path("a"), "one", "two words", ""});
    EXPECT_EQ(shell.executeCommand(L"Title", command.c_str(), 4), 0u);
    EXPECT_EQ(readBytes(folder_.path("a")), "one\ntwo words\n\n");
    EXPECT_GE(shell.polls, 1);
    // Without a word of the program's own result, and when nobody cancels ever.
    EXPECT_EQ(run(wut::OsShell(), {"end", "7"}), 0u);
    EXPECT_EQ(run(wut::OsShell(), {"wx", path("wx")}), 0u);
    EXPECT_EQ(readBytes(folder_.path("wx")), "started ended");
    EXPECT_EQ(childCount(), 0u);
}

TEST_F(OsShell, TellsWhyAProgramDoesNotStart) {
    Shell shell([] { return true; });
    EXPECT_EQ(shell.executeCommand(L"Title", L"platen-no-such-program 1", 0), 2u);
    EXPECT_NE(shell.executeCommand(nullptr, L"", 0), 0u);
    EXPECT_NE(shell.executeCommand(nullptr, nullptr, 0), 0u);
    EXPECT_EQ(shell.polls, 0);
    EXPECT_EQ(childCount(), 0u);
}

TEST_F(OsShell, IsCancelledWithAllThatTheProgramStarted) {
    for (const bool cancelled : {false, true}) {
        // When it is not cancelled, the starter ends by itself: it is terminated from outside.
        Shell shell([&] {
            const bool started = exists("a") && exists("b");
            if (started && !cancelled) {
                wxKill(static_cast<long>(process("a")), wxSIGKILL);
            }
            return started && cancelled;
        });
        EXPECT_EQ(run(std::move(shell), {"nest", path("a"), path("b")}), 0u);
        EXPECT_TRUE(settleUntil([&] { return !isRunning(process("a")); }));
        if (!cancelled) {
            EXPECT_TRUE(isRunning(process("b")));
            wxKill(static_cast<long>(process("b")), wxSIGKILL);
        }
        EXPECT_TRUE(settleUntil([&] { return !isRunning(process("b")); }));
        EXPECT_EQ(childCount(), 0u);
        std::filesystem::remove(path("a"));
        std::filesystem::remove(path("b"));
    }
}

TEST_F(OsShell, LeavesNoHandleOpen) {
    const auto allWays = [&] {
        run(Shell([] { return false; }), {"end", "0"});
        run(Shell([] { return true; }), {"stay", path("a")});
        int polls = 0;
        run(Shell([&] { return ++polls > 1; }), {"stay", path("a")});
        wut::OsShell().executeCommand(nullptr, L"platen-no-such-program", 0);
    };
    // What the system opens once and keeps does not count.
    allWays();
    const std::size_t before = openHandleCount();
    allWays();
    EXPECT_EQ(openHandleCount(), before);
    EXPECT_TRUE(settleUntil([] { return childCount() == 0; }));
}

TEST_F(OsShell, ExecutesLikeWxWidgets) {
    EXPECT_EQ(wut::winExecute(OdString(childCommand({"end", "3"})), wxEXEC_SYNC), 3);
    wxKill(wut::winExecute(OdString(childCommand({"stay", path("a")})), wxEXEC_ASYNC), wxSIGKILL);
    EXPECT_TRUE(settleUntil([&] { return childCount() == 0; }));
}

}  // namespace
