#include <gtest/gtest.h>

#include <string>

#include "tests/support/documents.h"
#include "tests/support/files.h"

namespace {

// A name of Windows says where it starts from, and may name a file here.
TEST(PmpNames, OfAnotherSystemAreNotRelative) {
    const TemporaryFolder folder;
    const CurrentFolder current(folder.path("."));
    const std::wstring beside = folder.wide("plan.pmp");
    ASSERT_TRUE(PlotModelParam().write(beside.c_str()));
    OdArray<OdString> search;
    search.append(OdString(folder.wide("")));
    for (const std::wstring name : {L"\\plan.pmp", L"c:plan.pmp"}) {
        ASSERT_TRUE(PlotModelParam().write(name.c_str()));
        EXPECT_EQ(ut::fileNameOf(PlotModelParam::find(name, search)), ut::fileNameOf(name));
        EXPECT_NE(PlotModelParam::find(name, search), beside);
    }
}

}  // namespace
