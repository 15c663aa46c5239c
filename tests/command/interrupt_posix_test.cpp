#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <thread>

#include "tests/command/support.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;

using CommandInterruptTest = CommandTest;

/// The program itself, since only that hears of signals.
pid_t start(const std::string& list, const std::string& out, const std::string& err) {
    const pid_t process = fork();
    if (process == 0) {
        for (const auto& [file, descriptor] :
             {std::pair(out, STDOUT_FILENO), std::pair(err, STDERR_FILENO)}) {
            dup2(open(file.c_str(), O_CREAT | O_WRONLY, 0600), descriptor);
        }
        execl(PLATEN_COMMAND, "platen", "set", ("@" + list).c_str(), "description=new",
              "--in-place", "--jobs", "1", nullptr);
        _exit(127);
    }
    return process;
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
    const pid_t process = start(path("list"), path("out"), path("err"));
    // Somebody reads the pipe: the program is at the second file, and waits for us.
    int pipe = -1;
    while ((pipe = open(path("pipe").c_str(), O_WRONLY | O_NONBLOCK)) < 0 && errno == ENXIO) {
        std::this_thread::yield();
    }
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

}  // namespace
