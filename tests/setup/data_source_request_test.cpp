// Which attribute lists and data source names a setup routine takes.
#include "setup/data_source_request.h"

#include <gtest/gtest.h>

#include "attribute_list.h"

namespace {

using jx::setup::parseRequest;
using jx::test::list;

// "name: keyword=value ..." or "refused".
std::string parsed(const std::string& attributes) {
    const auto request = parseRequest(attributes.c_str());
    if (!request)
        return "refused";
    std::string text = request->name + ":";
    for (const auto& [keyword, value] : request->attributes)
        text += " " + keyword + "=" + value;
    return text;
}

TEST(DataSourceRequest, TakesListsApart) {
    const struct {
        std::string list;
        std::string result;
    } rows[] = {
        {list({"DSN=Sales"}), "Sales:"},
        {list({"DSN=Sales", "Server=a", "Port=1"}), "Sales: Server=a Port=1"},
        {list({"Server=a", "DSN=Sales"}), "Sales: Server=a"},
        {list({"dsn=Sales"}), "Sales:"},
        {list({"DSN=Sales", "Empty="}), "Sales: Empty="},
        {list({"DSN=Sales", "Url=a=b=c"}), "Sales: Url=a=b=c"},
        {list({"DSN=a=b"}), "a=b:"},
        {list({"DSN=Sales", " Spaced = x "}), "Sales:  Spaced = x "},
        {list({"DSN=Sales", "", "Server=a"}), "Sales:"},
        {list({"DSN=Sales", "Text=" + std::string(70000, 'x')}), "Sales: Text=" + std::string(70000, 'x')},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.list.substr(0, 40));
        EXPECT_EQ(parsed(row.list), row.result);
    }
}

TEST(DataSourceRequest, LeavesTheDriverItemOutInAnyCase) {
    EXPECT_EQ(parsed(list({"DSN=Sales", "DRIVER=x", "Server=a"})), "Sales: Server=a");
    EXPECT_EQ(parsed(list({"Driver={x}", "DSN=Sales"})), "Sales:");
    EXPECT_EQ(parsed(list({"driver=", "DSN=Sales", "DriverX=1"})), "Sales: DriverX=1");
}

TEST(DataSourceRequest, RefusesBadLists) {
    const std::string rows[] = {
        list({}),
        list({"Server=a"}),
        list({"DSN="}),
        list({"DSN"}),
        list({"DSN=Sales", "Server"}),
        list({"Server", "DSN=Sales"}),
        list({"DSN=Sales", "=a"}),
        list({"DSN=Sales", "="}),
        list({"DSN=Sales", "dsn=Other"}),
        list({"DSN=Sales", "DSN=Sales"}),
        list({"DSN=Sales", "Server=a", "SERVER=b"}),
        list({"DSN=Sales", "Driver=a", "DRIVER=b"}),
        list({" DSN=Sales"}),
        list({"DSN =Sales"}),
    };
    for (const std::string& row : rows) {
        SCOPED_TRACE(row);
        EXPECT_EQ(parsed(row), "refused");
    }
    EXPECT_FALSE(parseRequest(nullptr));
}

}  // namespace
