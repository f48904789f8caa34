// The attribute list of a configuration request, on lists of every shape and size.
#include "config/attribute_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace jx::test {

namespace {

using namespace std::string_literals;

// The name of the data source in a list. The list is copied to memory of its exact size, so that a sanitizer sees a
// read past it.
std::string dataSourceIn(const std::string& list) {
    const std::vector<unsigned char> bytes(list.begin(), list.end());
    AttributeList attributes;
    if (!attributes.take(bytes.data()))
        return "(refused)";
    const unsigned char* name = attributes.dataSource();
    return name == nullptr ? "(none)" : asChars(name);
}

}  // namespace

TEST(AttributeItems, GiveTheFirstDataSourceBeforeAnItemWithoutEqualsSign) {
    struct Row {
        std::string list;
        std::string name;
    };
    const Row rows[] = {
        {"DSN=Sales\0\0"s, "Sales"}, {"x=1\0DSN=Sales\0\0"s, "Sales"},
        {"DSN=a\0DSN=b\0\0"s, "a"},  {"DSN=\0\0"s, ""},
        {"DSN==\0\0"s, "="},         {"dsn=a\0\0"s, "(none)"},
        {"DSNx=a\0\0"s, "(none)"},   {"x\0DSN=a\0\0"s, "(none)"},
        {"=DSN=a\0\0"s, "(none)"},   {"x=DSN\0DSN=[a;b\0\0"s, "[a;b"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.list);
        EXPECT_EQ(dataSourceIn(row.list), row.name);
    }
}

TEST(AttributeItems, TakeListsUpTo1024BytesAndReadNothingBehindTheirEnd) {
    for (const std::size_t size : {7U, 1022U, 1023U, 1024U, 1025U, 1026U, 70000U}) {
        SCOPED_TRACE(size);
        const std::string list = "DSN=" + std::string(size - 6, 'n') + std::string(2, '\0');
        ASSERT_EQ(list.size(), size);
        EXPECT_EQ(dataSourceIn(list), size <= 1024 ? std::string(size - 6, 'n') : "(refused)");
    }
}

TEST(AttributeItems, AreNoneInNullAndEmptyLists) {
    EXPECT_TRUE(AttributeList::isEmpty(nullptr));
    EXPECT_TRUE(AttributeList::isEmpty(asBytes("")));
    EXPECT_FALSE(AttributeList::isEmpty(asBytes("x\0")));
}

}  // namespace jx::test
