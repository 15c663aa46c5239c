#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/command/support.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;

using CommandInterruptTest = CommandTest;

/// The program itself, since only that hears of signals.
pid_t start(std::vector<std::string> arguments, const std::string& out, const std::string& err) {
    arguments.insert(arguments.begin(), "platen");
    std::vector<char*> list;
    for (std::string& argument : arguments) {
        list.push_back(argument.data());
    }
    list.push_back(nullptr);
    const pid_t process = fork();
    if (process == 0) {
        for (const auto& [file, descriptor] :
             {std::pair(out, STDOUT_FILENO), std::pair(err, STDERR_FILENO)}) {
            dup2(open(file.c_str(), O_CREAT | O_WRONLY, 0600), descriptor);
        }
        execv(PLATEN_COMMAND, list.data());
        _exit(127);
    }
    return process;
}

/// Waits until somebody reads the pipe.
int writingEnd(const std::string& pipe) {
    int end = -1;
    while ((end = open(pipe.c_str(), O_WRONLY | O_NONBLOCK)) < 0 && errno == ENXIO) {
        std::this_thread::yield();
    }
    return end;
}

TEST_F(CommandInterruptTest, WhatWasBegunIsFinishedAndTheRestIsNamed) {
    std::string list;
    for (const char* name : {"a.ctb", "pipe", "b.ctb", "c.ctb"}) {
        list += path(name) + '\n';
        if (name != std::string("pipe")) {
            prepare({"create", "ctb", "-o", std::string("@") + name});
        }
    }
    write("list", list);
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    const pid_t process =
        start({"set", "@" + path("list"), "description=new", "--in-place", "--jobs", "1"},
              path("out"), path("err"));
    // The program is at the second file, and waits for us.
    const int pipe = writingEnd(path("pipe"));
    ASSERT_GE(pipe, 0);
    kill(process, SIGINT);
    close(pipe);
    int status = 0;
    ASSERT_EQ(waitpid(process, &status, 0), process);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 130);
    EXPECT_THAT(read("err"), AllOf(HasSubstr("b.ctb: not begun"), HasSubstr("c.ctb: not begun"),
                                   Not(HasSubstr("a.ctb"))));
    EXPECT_EQ(run({"get", "@a.ctb", "description"}).out, "new\n");
    EXPECT_EQ(run({"get", "@b.ctb", "description"}).out, "\n");
}

// As from a folder on a server that does not answer, nothing ever comes; one thread waits, or four.
TEST_F(CommandInterruptTest, WaitingForWhatNeverComesEnds) {
    for (const char* name : {"pipe", "pipes"}) {
        ASSERT_EQ(mkfifo(path(name).c_str(), 0600), 0);
    }
    write("list", path("pipes") + '\n' + path("pipes") + '\n');
    std::vector<pid_t> processes;
    std::vector<int> pipes;
    for (const auto& [pipe, file] :
         {std::pair(path("pipe"), path("pipe")), std::pair(path("pipes"), "@" + path("list"))}) {
        processes.push_back(start({"check", file, "--jobs", "4"}, path("out"), path("err")));
        pipes.push_back(writingEnd(pipe));
        kill(processes.back(), SIGINT);
    }
    for (const pid_t process : processes) {
        int status = 0;
        ASSERT_EQ(waitpid(process, &status, 0), process);
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 130);
    }
    for (const int pipe : pipes) {
        close(pipe);
    }
}

}  // namespace
