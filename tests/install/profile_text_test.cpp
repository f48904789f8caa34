// Reading values and lists of names, walking lists, and the small text helpers of the installation.
#include "install/profile_text.h"

#include <gtest/gtest.h>

#include <string>

#include "config/text_bytes.h"
#include "install/bounded_text.h"
#include "install/owned_text.h"
#include "record_text.h"
#include "test_home.h"

namespace {

using namespace jx::install;
using jx::asBytes;
using jx::asChars;
using jx::test::TestHome;
using jx::test::WritableText;
using namespace std::string_literals;

TEST(ProfileText, TellsWhatIsThereFromWhatIsNot) {
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
        {"A", nullptr, true, "k"},
        {"B", nullptr, true, ""},
        {"C", nullptr, false, "NOT AVAILABLE"},
        {"D", nullptr, false, "NOT AVAILABLE"},
        {"", nullptr, false, "NOT AVAILABLE"},
        {"", "k", false, "NOT AVAILABLE"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.section) + " " + (row.key == nullptr ? "(list)" : row.key));
        ProfileText text;
        EXPECT_EQ(text.read(asBytes(row.section), asBytes(row.key), asBytes(file.c_str())), row.there);
        EXPECT_STREQ(asChars(text.text()), row.text);
    }
}

TEST(ProfileText, ReadsNothingFromANullFile) {
    ProfileText text;
    EXPECT_FALSE(text.read(asBytes("A"), asBytes("k"), static_cast<const unsigned char*>(nullptr)));
    EXPECT_FALSE(text.read(asBytes("A"), asBytes("k"), static_cast<JxIniFileCache*>(nullptr)));
    EXPECT_STREQ(asChars(text.text()), "");
}

TEST(ProfileText, TellsAFailedReadFromAnAbsentEntry) {
    const TestHome home({{"s.inf", "[A]\nk=v\n"}});
    const std::string folder = home.path();
    const std::string absent = home.file("absent");
    const std::string file = home.file("s.inf");
    ProfileText text;
    EXPECT_FALSE(text.read(asBytes("A"), asBytes("k"), asBytes(folder.c_str())));
    EXPECT_TRUE(text.readFailed());
    EXPECT_STREQ(asChars(text.text()), "NOT AVAILABLE");
    EXPECT_FALSE(text.read(asBytes("A"), asBytes("k"), static_cast<const unsigned char*>(nullptr)));
    EXPECT_FALSE(text.readFailed()) << "nothing was read";
    EXPECT_FALSE(text.read(asBytes("A"), asBytes("k"), asBytes(absent.c_str())));
    EXPECT_FALSE(text.readFailed());
    text.read(asBytes("A"), asBytes("k"), asBytes(folder.c_str()));
    EXPECT_FALSE(text.read(asBytes("B"), nullptr, asBytes(file.c_str())));
    EXPECT_FALSE(text.readFailed());
    text.read(asBytes("A"), asBytes("k"), asBytes(folder.c_str()));
    EXPECT_TRUE(text.read(asBytes("A"), asBytes("k"), asBytes(file.c_str())));
    EXPECT_FALSE(text.readFailed());
}

TEST(ProfileText, ForgetsTheLastRead) {
    const TestHome home({{"s.inf", "[A]\nlong=0123456789\nshort=a\n"}});
    const std::string file = home.file("s.inf");
    ProfileText text;
    text.read(asBytes("A"), asBytes("long"), asBytes(file.c_str()));
    text.read(asBytes("A"), asBytes("short"), asBytes(file.c_str()));
    EXPECT_EQ(std::string(asChars(text.text()), 10), "a"s + std::string(9, '\0'));
}

TEST(ProfileText, EndsAListThatIsCutInsideAName) {
    // 100 names of 12 characters are 1300 bytes; 1023 of them fit, which is inside the 79th.
    std::string script = "[A]\n";
    for (int number = 100; number < 200; ++number)
        script += "name_num_" + std::to_string(number) + "=1\n";
    const TestHome home({{"s.inf", script}});
    ProfileText list;
    ASSERT_TRUE(list.read(asBytes("A"), nullptr, asBytes(home.file("s.inf").c_str())));
    EXPECT_EQ(countTexts(list.text()), 79U);
    unsigned char* last = list.text();
    for (unsigned char* text = last; *text != 0; text = textAfter(text))
        last = text;
    EXPECT_STREQ(asChars(last), "name_num_");
}

TEST(ProfileText, CutsAValueAt1023Bytes) {
    const TestHome home({{"s.inf", "[A]\nk=" + std::string(3000, 'v') + "\n"}});
    ProfileText text;
    ASSERT_TRUE(text.read(asBytes("A"), asBytes("k"), asBytes(home.file("s.inf").c_str())));
    EXPECT_EQ(viewOf(text.text()), std::string(1023, 'v'));
}

TEST(TextList, CountsTextsUpToTheEmptyOne) {
    EXPECT_EQ(countTexts(WritableText("\0"s).bytes()), 0U);
    EXPECT_EQ(countTexts(WritableText("a\0"s).bytes()), 1U);
    EXPECT_EQ(countTexts(WritableText("a\0bc\0\0d\0"s).bytes()), 2U);
}

TEST(TextList, CutsAtTheFirstEqualsSign) {
    WritableText pair("key=a=b");
    EXPECT_STREQ(asChars(cutAtEquals(pair.bytes())), "a=b");
    EXPECT_EQ(pair.all(), "key\0a=b"s);
    WritableText bare("key");
    EXPECT_EQ(cutAtEquals(bare.bytes()), nullptr);
    EXPECT_EQ(bare.all(), "key");
}

TEST(QuotedName, IsWhatStandsBetweenTheQuotesAndLosesItsFirstCharacterWithoutThem) {
    struct Row {
        const char* key;
        std::string_view name;
    };
    constexpr Row rows[] = {{"\"Driver\"", "Driver"},
                            {"\"Driver", "Driver"},
                            {"Driver", "river"},
                            {"ab\"cd\"", "b"},
                            {"\"\"", ""},
                            {"\"", ""},
                            {"x", ""},
                            {"", ""},
                            {"\"a\"b\"", "a"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(quotedName(asBytes(row.key)), row.name);
    }
}

TEST(BoundedText, RefusesWhatDoesNotFitAndKeepsWhatWasThere) {
    BoundedText<8> text;
    EXPECT_TRUE(text.append("abc"));
    EXPECT_FALSE(text.append("defgh"));
    EXPECT_STREQ(asChars(text.text()), "abc");
    EXPECT_TRUE(text.append("defg"));
    EXPECT_TRUE(text.append(""));
    EXPECT_FALSE(text.append("h"));
    EXPECT_STREQ(asChars(text.text()), "abcdefg");
    EXPECT_EQ(text.length(), 7U);
}

TEST(BoundedText, ReplacesItsLastCharacterButNotThatOfAnEmptyText) {
    BoundedText<8> text;
    text.replaceLast('_');
    EXPECT_STREQ(asChars(text.text()), "");
    EXPECT_TRUE(text.append("a.so"));
    text.replaceLast('_');
    EXPECT_STREQ(asChars(text.text()), "a.s_");
}

TEST(OwnedText, JoinsAndCopies) {
    EXPECT_STREQ(asChars(joined("My Driver", "-Keys").get()), "My Driver-Keys");
    EXPECT_STREQ(asChars(copyOf("a").get()), "a");
    EXPECT_STREQ(asChars(copyOf("").get()), "");
    EXPECT_EQ(viewOf(nullptr), "");
}

}  // namespace
