// The exported class that stands for a text resource in a list.
#include <jxdataresource.h>

#include <gtest/gtest.h>

namespace jx::test {

TEST(DataResource, IgnoresItsNumberAndOrdersAsEveryObject) {
    const JxDataResource first(1);
    const JxDataResource second(1);
    const JxObject& base = first;
    EXPECT_EQ(base.compare(&first), 0);
    EXPECT_NE(base.compare(&second), 0);
    EXPECT_EQ(sizeof(JxDataResource), sizeof(JxObject));
}

TEST(DataResource, CanBeOwnedByAList) {
    JxList list;
    auto* node = new JxDataResource(7);
    EXPECT_EQ(list.append(node), node);
    EXPECT_EQ(list.getNodeAtPos(0), node);
}

}  // namespace jx::test
