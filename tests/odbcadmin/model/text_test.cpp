// Small operations on texts.
#include "odbcadmin/model/text.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace jx::model {
namespace {

TEST(Text, ControlCharactersAreShownAsQuestionMarks) {
    EXPECT_EQ(printable("a\x1b[31mb\tc\nd\x7F"), "a?[31mb?c?d?");
    EXPECT_EQ(printable("M\xC3\xBCller \xFF"), "M\xC3\xBCller \xFF");
    EXPECT_EQ(printable(std::string("a\0b", 3)), "a?b");
    EXPECT_EQ(printable("\xC2\x9B"
                        "31m \xC2\x80\xC2\x9F"),
              "??31m ????");
    EXPECT_EQ(printable("\xC2\xA0 \xC3\x9B \x9B \xC2"), "\xC2\xA0 \xC3\x9B \x9B \xC2");
}

TEST(Text, NamesOfScriptsLoseTheirQuotes) {
    for (const auto& [key, name] : {std::pair{"\"Small\"", "Small"},
                                    {"\"Small", "Small"},
                                    {"Small\"x", "Small"},
                                    {"Small", "Small"},
                                    {"\"\"", ""},
                                    {"", ""}})
        EXPECT_EQ(withoutQuotes(key), name) << key;
}

TEST(Text, ListsAndCountsReadAsSentences) {
    EXPECT_EQ(joined({}), "");
    EXPECT_EQ(joined({"a"}), "a");
    EXPECT_EQ(joined({"a", "b", "c"}), "a, b, c");
    EXPECT_EQ(joined({"a", "b"}, " or "), "a or b");
    EXPECT_EQ(counted(0, "driver"), "0 drivers");
    EXPECT_EQ(counted(1, "driver"), "1 driver");
    EXPECT_EQ(counted(2, "data source"), "2 data sources");
}

TEST(Text, PathsBecomeAbsoluteAndBareLibraryNamesStay) {
    const std::string here = std::filesystem::current_path().string();
    EXPECT_EQ(absolutePath("x/../y"), here + "/y");
    EXPECT_EQ(absolutePath("/a/./b/../c"), "/a/c");
    EXPECT_EQ(absoluteLibrary("libx.so"), "libx.so");
    EXPECT_EQ(absoluteLibrary("./libx.so"), here + "/libx.so");
    EXPECT_EQ(absoluteLibrary(""), "");
}

}  // namespace
}  // namespace jx::model
