// Names that are nearly the one that was not found.
#include "odbcadmin/model/near_matches.h"

#include <gtest/gtest.h>

namespace jx::model {
namespace {

TEST(NearMatches, CountsEdits) {
    struct Row {
        const char* left;
        const char* right;
        std::size_t distance;
    };
    for (const Row& row :
         {Row{"", "", 0}, Row{"a", "", 1}, Row{"Sales", "sales", 0}, Row{"Sales", "Slaes", 1}, Row{"Sales", "Sals", 1},
          Row{"Sales", "Salse", 1}, Row{"abc", "xyz", 3}, Row{"kitten", "sitting", 3}}) {
        SCOPED_TRACE(row.left);
        EXPECT_EQ(editDistance(row.left, row.right, 9), row.distance);
        EXPECT_EQ(editDistance(row.right, row.left, 9), row.distance);
    }
    EXPECT_EQ(editDistance("kitten", "sitting", 2), 3U);
    EXPECT_EQ(editDistance("a", "aaaaaaaaaa", 3), 4U);
}

TEST(NearMatches, GivesTheNearestFirstAndThreeAtMost) {
    EXPECT_EQ(nearMatches("Sales", {"Other", "Sale", "SALES1", "Sales22", "Salt", "Sailes"}),
              (std::vector<std::string>{"Sale", "SALES1", "Sailes"}));
    EXPECT_EQ(nearMatches("Sal", {"Sales of the year 2026"}), (std::vector<std::string>{"Sales of the year 2026"}));
    EXPECT_TRUE(nearMatches("x", {"abc", "", "y", "xy"}).empty());
    EXPECT_TRUE(nearMatches("", {"abc", "", "y"}).empty());
    EXPECT_EQ(adviceFor("Slaes", {"Sales", "Stales"}, "no"), "Did you mean Sales?");
    EXPECT_EQ(adviceFor("ab", {"aa", "ac"}, "no"), "Did you mean aa or ac?");
    EXPECT_EQ(adviceFor("qqqqq", {"Sales"}, "no"), "no");
}

TEST(NearMatches, ANearerOneReplacesTheLastOfThreeAndAnEqualOneDoesNot) {
    EXPECT_EQ(nearMatches("Orders", {"Order55", "Order66", "Order77", "Order88"}),
              (std::vector<std::string>{"Order55", "Order66", "Order77"}));
    EXPECT_EQ(nearMatches("Orders", {"Order55", "Order66", "Order77", "Order", "orders"}),
              (std::vector<std::string>{"orders", "Order", "Order55"}));
    EXPECT_EQ(nearMatches("Orders", {"Orders of 2024", "Orders of 2025", "Orders of 2026", "Orders of 2027", "Ordres"}),
              (std::vector<std::string>{"Ordres", "Orders of 2024", "Orders of 2025"}));
    EXPECT_EQ(nearMatches("Orders", {"orders", "ORDERS", "Orders", "oRDERS"}),
              (std::vector<std::string>{"orders", "ORDERS", "Orders"}));
}

}  // namespace
}  // namespace jx::model
