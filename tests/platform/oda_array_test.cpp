#include <gtest/gtest.h>

#include <string>
#include <utility>

#include <platen/oda.h>

namespace {

TEST(OdArray, SharesElementsUntilOneSideChanges) {
    OdArray<std::string> first;
    first.append("a");
    first.append("b");
    OdArray<std::string> second = first;
    EXPECT_EQ(std::as_const(second).asArrayPtr(), std::as_const(first).asArrayPtr());

    second[0] = "c";
    first.push_back("d");
    EXPECT_EQ(std::as_const(first)[0], "a");
    EXPECT_EQ(first.size(), 3u);
    EXPECT_EQ(std::as_const(second)[0], "c");
    EXPECT_EQ(second.size(), 2u);

    const OdArray<std::string> third = second;
    for (std::string& text : second) {
        text += "!";
    }
    EXPECT_EQ(third[1], "b");
    EXPECT_EQ(second[1], "b!");
    second.resize(1);
    second.clear();
    EXPECT_TRUE(second.isEmpty());
    EXPECT_EQ(third.length(), 2u);
}

TEST(OdArray, ChecksIndices) {
    OdArray<int> array;
    EXPECT_THROW(array[0], OdError_InvalidIndex);
    EXPECT_THROW(std::as_const(array)[0], OdError_InvalidIndex);
    EXPECT_EQ(array.begin(), array.end());
    array.resize(2);
    EXPECT_EQ(array[1], 0);
    EXPECT_THROW(array[2], OdError_InvalidIndex);
    EXPECT_THROW(std::as_const(array)[static_cast<std::size_t>(-1)], OdError_InvalidIndex);
}

}  // namespace
