#include <gtest/gtest.h>

#include <string>

#include "tests/support/documents.h"
#include "tests/support/files.h"

namespace {

// A name of Windows says where it starts from, and may name a file here.
TEST(PmpNames, OfAnotherSystemAreNotRelative) {
    const TemporaryFolder folder;
    const CurrentFolder current(folder.path("."));
    ASSERT_TRUE(PlotModelParam().write(folder.wide("plan.pmp").c_str()));
    OdArray<OdString> search;
    search.append(OdString(folder.wide("")));
    for (const char* name : {"\\plan.pmp", "c:plan.pmp"}) {
        ASSERT_TRUE(PlotModelParam().write(ut::decodePath(name).c_str()));
        EXPECT_EQ(PlotModelParam::find(ut::decodePath(name), search), folder.wide(name));
    }
}

}  // namespace
