#include "tests/command/support.h"
#include "tests/support/configurations.h"

using testing::IsEmpty;

namespace {

using CommandPrintersPosixTest = CommandTest;

TEST_F(CommandPrintersPosixTest, LinksAreNotFollowed) {
    std::filesystem::create_directory(path("tree"));
    writeFile("outside.pc3", fullConfiguration, PiaKind::Pc3);
    std::filesystem::create_symlink(path("outside.pc3"), path("tree/link.pc3"));
    std::filesystem::create_directory_symlink(path("tree"), path("tree/loop"));
    const std::string before = read("outside.pc3");
    expectRun({"migrate", "@tree", "--map", "\\\\server\\plotter=B"}, 1, IsEmpty(), testing::_);
    EXPECT_EQ(read("outside.pc3"), before);
}

TEST_F(CommandPrintersPosixTest, NamesNeedNotBeText) {
    std::filesystem::create_directory(path("tree"));
    writeFile("tree/\xFF.pc3", fullConfiguration, PiaKind::Pc3);
    EXPECT_EQ(run({"migrate", "@tree", "--map", "\\\\server\\plotter=B"}).code, 0);
    EXPECT_EQ(run({"get", "@tree/\xFF.pc3", "meta/win_device_name"}).out, "B\n");
}

TEST_F(CommandPrintersPosixTest, WhatNeedsPrintersSaysSo) {
    for (const Arguments& arguments : {Arguments{"printers"},
                                       {"printers", "--json"},
                                       {"papers", "--printer", "Plotter"},
                                       {"devmode", "Plotter"},
                                       {"devmode", "@office.PC3", "--json"}}) {
        expectRefused(arguments, "Windows");
    }
    expectRefused({"devmode", "Plotter"}, "Plotter");
    prepare({"create", "pc3", "--device", "Print As PDF", "-o", "@a.pc3"});
    const std::string before = read("a.pc3");
    expectRefused({"check", "--printers", "@a.pc3"}, "only on Windows");
    expectRefused({"create", "pc3", "--printer", "Office", "-o", "@a.pc3"}, "only on Windows");
    EXPECT_EQ(read("a.pc3"), before);
}

}  // namespace
