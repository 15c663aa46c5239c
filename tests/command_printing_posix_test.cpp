#include <gmock/gmock.h>

#include "tests/command_support.h"

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using CommandPrintingPosixTest = CommandTest;

TEST_F(CommandPrintingPosixTest, PrintersNeedWindows) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"printers"},
                                               {"printers", "--json"},
                                               {"papers", "--printer", "Plotter"},
                                               {"devmode", "Plotter"},
                                               {"devmode", "@office.PC3", "--json"}}) {
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.code, 2) << testing::PrintToString(arguments);
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.err, HasSubstr("Windows"));
    }
    EXPECT_THAT(run({"devmode", "Plotter"}).err, HasSubstr("Plotter"));
}

}  // namespace
