// The working copy of the list or name that SQLInstallDriver gets, and the bounds of reading it.
#include "install/driver_description.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "config/text_bytes.h"
#include "page_edge.h"

namespace {

using namespace jx::install;
using jx::asBytes;
using jx::asChars;
using jx::test::PageEdge;
using namespace std::string_literals;

// A list of size bytes: one text that fills it, its NUL and the final empty text.
std::string listOfSize(std::size_t size) {
    return std::string(size - 2, 'x') + "\0\0"s;
}

TEST(DriverDescription, MeasuresListsWithTheirFinalEmptyText) {
    struct Row {
        std::string list;
        std::size_t size;
    };
    const Row rows[] = {
        {"\0"s, 1},
        {"a\0\0"s, 3},
        {"Name\0Driver=/l/d.so\0\0"s, 21},
        {"Name\0\0behind\0\0"s, 6},
        {listOfSize(1023), 1023},
        {listOfSize(1024), 1024},
        {listOfSize(1025), 0},
        {std::string(1023, 'x') + "\0"s, 0},
        {std::string(1024, 'x'), 0},
        {std::string(32768, 'x') + "\0\0"s, 0},
        {std::string(70000, 'x') + "\0\0"s, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.list.size());
        PageEdge list(row.list);
        EXPECT_EQ(descriptionSize(list.bytes(), DescriptionForm::keywordList), row.size);
    }
}

TEST(DriverDescription, MeasuresNamesUpToTheirNul) {
    struct Row {
        std::string name;
        std::size_t size;
    };
    const Row rows[] = {
        {"\0"s, 1},
        {"Name\0"s, 5},
        {"Name\0Driver=x\0\0"s, 5},
        {std::string(1023, 'x') + "\0"s, 1024},
        {std::string(1024, 'x') + "\0"s, 0},
        {std::string(1024, 'x'), 0},
        {std::string(65535, 'x') + "\0"s, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name.size());
        PageEdge name(row.name);
        EXPECT_EQ(descriptionSize(name.bytes(), DescriptionForm::name), row.size);
    }
}

TEST(DriverDescription, IsACopyOfTheWholeListWithAnEmptyTextBehindAName) {
    DriverDescription list;
    ASSERT_TRUE(list.take(asBytes("Name\0Driver=d\0\0x"), DescriptionForm::keywordList));
    EXPECT_EQ(std::string_view(asChars(list.bytes()), 16), "Name\0Driver=d\0\0\0"s);
    DriverDescription name;
    ASSERT_TRUE(name.take(asBytes("Name\0Driver=d\0"), DescriptionForm::name));
    EXPECT_EQ(std::string_view(asChars(name.bytes()), 7), "Name\0\0\0"s);
}

TEST(DriverDescription, NeverReadsBehindItsBufferForAListWithoutEnd) {
    for (const std::string& bytes : {std::string(1024, 'x'), std::string(1023, 'x') + "\0"s}) {
        PageEdge list(bytes);
        DriverDescription copy;
        EXPECT_FALSE(copy.take(list.bytes(), DescriptionForm::keywordList));
    }
}

TEST(DriverDescription, FindsTextsByTheirPlaceAndStopsAtTheEnd) {
    struct Row {
        std::string list;
        unsigned position;
        std::string_view text;
    };
    const Row rows[] = {
        {"Name\0Driver=d\0Setup=s\0\0"s, 0, "Name"},
        {"Name\0Driver=d\0Setup=s\0\0"s, 1, "Driver=d"},
        {"Name\0Driver=d\0Setup=s\0\0"s, 2, "Setup=s"},
        {"Name\0Driver=d\0Setup=s\0\0"s, 3, ""},
        {"Name\0Driver=d\0Setup=s\0\0"s, 9, ""},
        {"Name\0\0"s, 1, ""},
        {"Name\0\0behind\0\0"s, 2, ""},
        {"\0Driver=d\0\0"s, 1, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.position);
        PageEdge list(row.list);
        EXPECT_EQ(asChars(keywordText(list.bytes(), row.position)), row.text);
    }
}

}  // namespace
