// What systems other than Windows do their own way.
#include <gtest/gtest.h>
#include <sys/time.h>

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <platen/gui_os.h>
#include <platen/utcore.h>
#include "tests/gui/support/gui.h"
#include "tests/gui/support/processes.h"
#include "tests/support/files.h"

using namespace std::string_view_literals;

namespace {

void setVariable(const char* name, const char* value) {
    value != nullptr ? ::setenv(name, value, 1) : ::unsetenv(name);
}

/// Sets an environment variable while it lives; null removes it.
class Variable {
public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* const before = std::getenv(name)) {
            before_ = before;
        }
        setVariable(name, value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { setVariable(name_, before_ ? before_->c_str() : nullptr); }

private:
    const char* name_;
    std::optional<std::string> before_;
};

/// What the child writes when it is started with this command line, its file left out.
std::string outputOf(const std::string& action, const std::wstring& further) {
    const TemporaryFolder folder;
    const std::wstring command = childCommand({action, folder.path("a").string()}) + further;
    EXPECT_EQ(wut::OsShell().executeCommand(L"", command.c_str(), 0), 0u);
    EXPECT_EQ(childCount(), 0u);
    return readBytes(folder.path("a"));
}

TEST(Programs, StartFresh) {
    // What this process keeps for itself: a descriptor that it did not mark, and its signals.
    const TemporaryFolder folder;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> open(
        std::fopen(folder.path("open").c_str(), "w"), std::fclose);
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(outputOf("start", L""),
              "open: 0 1 2\n"
              "input: /dev/null, at its end: 1, for reading alone: 1\n"
              "group of its own: 1\n"
              "broken pipes end it: 1\n");
    std::signal(SIGPIPE, before);
}

TEST(Programs, AreFoundInThePathAndGetWordsWithoutAShell) {
    EXPECT_EQ(outputOf("arguments", L" 'a b'  c\\ d \"e\\\"\" $HOME * ; \xDCFF"),
              "a b\nc d\ne\"\n$HOME\n*\n;\n\xFF\n");
    EXPECT_EQ(wut::OsShell().executeCommand(L"", L"true", 0), 0u);
    EXPECT_EQ(wut::OsShell().executeCommand(L"", L"/etc/passwd", 0), unsigned{EACCES});
}

void ignore(int) {}

TEST(Programs, AreWaitedForWhateverSignalsDo) {
    // A signal every millisecond, which interrupts whatever waits; and then a system that takes
    // children away by itself.
    struct sigaction action {
    }, before{};
    action.sa_handler = ignore;
    ::sigaction(SIGALRM, &action, &before);
    const itimerval often{{0, 1000}, {0, 1000}}, never{};
    ::setitimer(ITIMER_REAL, &often, nullptr);
    EXPECT_EQ(outputOf("arguments", L" x"), "x\n");
    ::setitimer(ITIMER_REAL, &never, nullptr);
    ::sigaction(SIGALRM, &before, nullptr);
    const auto wanted = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(outputOf("arguments", L" x"), "x\n");
    std::signal(SIGCHLD, wanted);
}

TEST(Programs, OpenDocumentsAndPages) {
    const TemporaryFolder folder;
    const std::string opened = folder.path("opened").string();
    const std::filesystem::path opener = folder.path("xdg-open");
    writeBytes(opener, "#!/bin/sh\nexec '" + childProgram().string() + "' arguments '" + opened +
                           "' \"$@\"\n");
    std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
    const Variable path("PATH", (opener.parent_path().string() + ":/usr/bin:/bin").c_str());
    for (const wchar_t* const page : {L"/some/document.pdf", L"platentest://page/1"}) {
        EXPECT_TRUE(page[0] == L'/' ? wut::LaunchDefaultApplication(page)
                                    : wut::LaunchDefaultBrowser(page, true));
        EXPECT_TRUE(settleUntil([&] { return readBytes(opened) == ut::encodeUtf8(page) + "\n"; }))
            << readBytes(opened);
        std::filesystem::remove(opened);
    }
    EXPECT_TRUE(settleUntil([] { return childCount() == 0; }));
    EXPECT_FALSE(wut::isUnderWine());
}

/// A locale of the tests' own, "comma", whose numbers have a comma; Debian comes without one.
class CommaLocale {
public:
    CommaLocale() {
        std::filesystem::create_directory(folder_.path("comma"));
        // As localedef of glibc writes it: a header, the offsets of six values, the values.
        writeBytes(folder_.path("comma/LC_NUMERIC"),
                   "\x14\x11\x03\x20\6\0\0\0\x20\0\0\0\x22\0\0\0\x24\0\0\0\x28\0\0\0\x2C\0\0\0"
                   "\x30\0\0\0,\0.\0\3\3\0\0,\0\0\0.\0\0\0ANSI_X3.4-1968\0"sv);
    }

private:
    TemporaryFolder folder_;
    Variable path_{"LOCPATH", folder_.path("").c_str()};
    Variable all_{"LC_ALL", nullptr};
    Variable language_{"LANG", "C"};
    Variable numeric_{"LC_NUMERIC", "comma"};
};

TEST(Separators, AreTheUsersAndPositionFilesHavePoints) {
    {
        const Variable all("LC_ALL", "C");
        EXPECT_EQ(wut::getSystemDecimalSeparator(), L'.');
        EXPECT_EQ(wut::getSystemDefaultSeparator(), L',');
        const Variable none("LC_ALL", "no_SUCH.locale");
        EXPECT_EQ(wut::getSystemDecimalSeparator(), L'.');
    }
    const CommaLocale locale;
    EXPECT_EQ(wut::getSystemDecimalSeparator(), L',');
    EXPECT_EQ(wut::getSystemDefaultSeparator(), L';');
    // The program's own numbers stay what they were.
    EXPECT_STREQ(std::localeconv()->decimal_point, ".");
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    ASSERT_NE(std::setlocale(LC_NUMERIC, ""), nullptr);
    const TemporaryFolder folder;
    double a = 0, b = 0, c = 0, d = 0, e = 0, f = 0;
    for (const bool points : {true, false}) {
        writeBytes(folder.path("file"),
                   points ? "1.5\n-2.25\n3\n4\n5\n6\n" : "1,5\n2\n3\n4\n5\n6\n");
        EXPECT_EQ(wut::readPositionFile(OdString(folder.wide("file")), a, b, c, d, e, f), points);
        EXPECT_EQ(std::pair(c, f), std::pair(1.5, -2.25));
    }
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(EnvironmentVariables, HoldAnyBytes) {
    const Variable first("PLATEN_TEST_\xC3\xA9", "a\xFF");
    const Variable second("PLATEN_TEST_A", "");
    wchar_t target[64];
    EXPECT_EQ(
        wut::expandEnvironmentStrings(L"100% of %PLATEN_TEST_\x00E9%%PLATEN_TEST_A%.", target, 64),
        12u);
    EXPECT_EQ(std::wstring_view(target), L"100% of a\xDCFF.");
}

TEST(Keys, TellAltGrFromAlt) {
    // wxWidgets cannot press this key, the library it presses keys with can.
    const ut::DynamicLibrary x11(L"libX11.so.6", ut::DynamicLibrary::Now);
    const ut::DynamicLibrary tests(L"libXtst.so.6", ut::DynamicLibrary::Now);
    auto* const connect = x11.function<void*(const char*)>("XOpenDisplay");
    auto* const keyOf = x11.function<unsigned char(void*, unsigned long)>("XKeysymToKeycode");
    auto* const disconnect = x11.function<int(void*)>("XCloseDisplay");
    auto* const press =
        tests.function<int(void*, unsigned, int, unsigned long)>("XTestFakeKeyEvent");
    ASSERT_TRUE(connect && keyOf && disconnect && press);
    for (const bool down : {true, false}) {
        void* const display = connect(nullptr);
        constexpr unsigned long thirdLevel = 0xFE03;
        press(display, keyOf(display, thirdLevel), down, 0);
        disconnect(display);
        EXPECT_TRUE(settleUntil([&] { return wut::isAltGrDown() == down; }));
        EXPECT_FALSE(wut::isAltDown());
    }
}

}  // namespace
