#include <gtest/gtest.h>

#include <cstdlib>

#include "utcore.h"

namespace {

TEST(Settings, StartAsTheEnvironmentHasThem) {
    ASSERT_EQ(::setenv("PLATEN_PLOT_FOLDER_X", "/pl\xC3\xA4ne/\xFF", 1), 0);
    EXPECT_EQ(ut::encodePath(ut::getSetting(L"PlotFolderX")), "/pl\xC3\xA4ne/\xFF");
    ASSERT_EQ(::unsetenv("PLATEN_PLOT_FOLDER_X"), 0);
    EXPECT_EQ(ut::getSetting(L"PlotFolderX"), L"");
}

}  // namespace
