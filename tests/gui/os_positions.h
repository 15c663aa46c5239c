/// Position files in a locale whose numbers have a comma.
#pragma once

#include <gtest/gtest.h>

#include <clocale>

#include <platen/gui_os.h>
#include "tests/support/files.h"

/// In the C library's current locale, which has one.
inline void expectPointsInPositionFiles() {
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    const TemporaryFolder folder;
    double a = 0, b = 0, c = 0, d = 0, e = 0, f = 0;
    writeBytes(folder.path("points"), "1.5\n-2.25\n3\n4\n5\n6\n");
    EXPECT_TRUE(wut::readPositionFile(OdString(folder.wide("points")), a, b, c, d, e, f));
    EXPECT_EQ(c, 1.5);
    EXPECT_EQ(f, -2.25);
    writeBytes(folder.path("commas"), "1,5\n2\n3\n4\n5\n6\n");
    EXPECT_FALSE(wut::readPositionFile(OdString(folder.wide("commas")), a, b, c, d, e, f));
}
