// One value of an INI file: what is there, what is not, and what could not be read.
#include "config/profile_value.h"

#include <gtest/gtest.h>

#include <string>

#include "test_home.h"

namespace jx::test {

TEST(ProfileValueOfAKey, KnowsWhatIsThere) {
    const TestHome home({{"s.inf", "[A]\nk=v\nempty=\nodd=NOT AVAILABLE\n[B]\n[C]\nNOT AVAILABLE=1\nx=2\n"}});
    const std::string file = home.file("s.inf");
    struct Row {
        const char* section;
        const char* key;
        bool there;
        const char* text;
    };
    const Row rows[] = {
        {"A", "k", true, "v"},
        {"A", "empty", true, ""},
        {"A", "absent", false, "NOT AVAILABLE"},
        {"A", "odd", false, "NOT AVAILABLE"},
        {"", "k", false, "NOT AVAILABLE"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.section) + " " + row.key);
        ProfileValue text;
        EXPECT_EQ(text.read(asBytes(row.section), asBytes(row.key), asBytes(file.c_str())), row.there);
        EXPECT_STREQ(asChars(text.text()), row.text);
    }
}

TEST(ProfileValueOfAKey, ReadsNothingFromANullFile) {
    ProfileValue text;
    EXPECT_FALSE(text.read(asBytes("A"), asBytes("k"), nullptr));
    EXPECT_STREQ(asChars(text.text()), "");
}

TEST(ProfileValueOfAKey, KnowsAFailedReadFromAMissingEntry) {
    const TestHome home({{"s.inf", "[A]\nk=v\n"}});
    const std::string folder = home.path();
    const std::string absent = home.file("absent");
    const std::string file = home.file("s.inf");
    ProfileValue text;
    EXPECT_FALSE(text.read(asBytes("A"), asBytes("k"), asBytes(folder.c_str())));
    EXPECT_TRUE(text.readFailed());
    EXPECT_STREQ(asChars(text.text()), "NOT AVAILABLE");
    EXPECT_FALSE(text.read(asBytes("A"), asBytes("k"), nullptr));
    EXPECT_FALSE(text.readFailed()) << "nothing was read";
    EXPECT_FALSE(text.read(asBytes("A"), asBytes("k"), asBytes(absent.c_str())));
    EXPECT_FALSE(text.readFailed());
    text.read(asBytes("A"), asBytes("k"), asBytes(folder.c_str()));
    EXPECT_FALSE(text.read(asBytes("B"), asBytes("k"), asBytes(file.c_str())));
    EXPECT_FALSE(text.readFailed());
    text.read(asBytes("A"), asBytes("k"), asBytes(folder.c_str()));
    EXPECT_TRUE(text.read(asBytes("A"), asBytes("k"), asBytes(file.c_str())));
    EXPECT_FALSE(text.readFailed());
}

TEST(ProfileValueOfAKey, ForgetsTheLastRead) {
    const TestHome home({{"s.inf", "[A]\nlong=0123456789\nshort=a\n"}});
    const std::string file = home.file("s.inf");
    ProfileValue text;
    text.read(asBytes("A"), asBytes("long"), asBytes(file.c_str()));
    text.read(asBytes("A"), asBytes("short"), asBytes(file.c_str()));
    EXPECT_EQ(std::string(asChars(text.text()), 10), "a" + std::string(9, '\0'));
}

TEST(ProfileValueOfAKey, CutsAValueAt1023Bytes) {
    const TestHome home({{"s.inf", "[A]\nk=" + std::string(3000, 'v') + "\n"}});
    ProfileValue text;
    ASSERT_TRUE(text.read(asBytes("A"), asBytes("k"), asBytes(home.file("s.inf").c_str())));
    EXPECT_EQ(text.view(), std::string(1023, 'v'));
}

}  // namespace jx::test
