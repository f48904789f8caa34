// The keys of a section: which there are, what is cut, and what a section is taken for that is absent or unreadable.
#include "config/key_list.h"

#include <gtest/gtest.h>

#include <string>

#include "config/named_profile.h"
#include "test_home.h"

namespace jx::test {

namespace {

// The keys that are left in a list, each with a semicolon behind it.
std::string keysLeft(KeyList keys) {
    std::string all;
    for (const unsigned char* key = keys.next(); key != nullptr; key = keys.next())
        all += std::string(asChars(key)) + ";";
    return all;
}

// A section with a key of firstSize bytes and one of secondSize.
std::string sectionOf(std::size_t firstSize, std::size_t secondSize) {
    return "[A]\n" + std::string(firstSize, 'a') + "=1\n" + std::string(secondSize, 'b') + "=2\nThird=3\n";
}

}  // namespace

TEST(KeyListOfASection, HoldsItsKeysInTheOrderOfTheFile) {
    const TestHome home({{"s.ini", "[A]\nB = x\nA\n; C=1\nlast=\n[Empty]\n"}});
    const std::string file = home.file("s.ini");
    struct Row {
        const char* section;
        const char* keys;
        std::size_t count;
        bool there;
    };
    for (const Row& row : {Row{"A", "B;A;last;", 3, true}, Row{"a", "B;A;last;", 3, true}, Row{"Empty", "", 0, true},
                           Row{"Absent", "NOT AVAILABLE;", 1, false}}) {
        SCOPED_TRACE(row.section);
        const KeyList keys(asBytes(row.section), kNotAvailable, asBytes(file.c_str()));
        EXPECT_EQ(keys.isThere(), row.there);
        EXPECT_EQ(keys.names().count(), row.count);
        EXPECT_EQ(keysLeft(keys), row.keys);
    }
    EXPECT_EQ(keysLeft(KeyList(asBytes("Absent"), "", asBytes(file.c_str()))), "");
}

TEST(KeyListOfASection, IsTakenForAbsentWhenItsFirstKeyReadsSo) {
    const TestHome home({{"s.ini", "[A]\nNOT AVAILABLE=1\nx=2\n[B]\nx=1\nNOT AVAILABLE=1\n"}});
    const std::string file = home.file("s.ini");
    EXPECT_FALSE(KeyList(asBytes("A"), kNotAvailable, asBytes(file.c_str())).isThere());
    EXPECT_TRUE(KeyList(asBytes("B"), kNotAvailable, asBytes(file.c_str())).isThere());
}

TEST(KeyListOfASection, KnowsAFailedReadFromAMissingSection) {
    const TestHome home({{"s.ini", "[A]\nx=1\n"}});
    const std::string file = home.file("s.ini");
    const KeyList unreadable(asBytes("A"), kNotAvailable, asBytes(home.path().c_str()));
    EXPECT_FALSE(unreadable.isThere());
    EXPECT_TRUE(unreadable.readFailed());
    const KeyList absent(asBytes("B"), kNotAvailable, asBytes(file.c_str()));
    EXPECT_FALSE(absent.isThere());
    EXPECT_FALSE(absent.readFailed());
    const KeyList there(asBytes("A"), kNotAvailable, asBytes(file.c_str()));
    EXPECT_TRUE(there.isThere());
    EXPECT_FALSE(there.readFailed());
}

TEST(KeyListOfASection, IsAbsentAndEmptyWithoutAFile) {
    for (const KeyList& keys : {KeyList(asBytes("A"), kNotAvailable, static_cast<const unsigned char*>(nullptr)),
                                KeyList(asBytes("A"), kNotAvailable, static_cast<JxIniFileCache*>(nullptr))}) {
        EXPECT_FALSE(keys.isThere());
        EXPECT_FALSE(keys.readFailed()) << "nothing was read";
        EXPECT_EQ(keysLeft(keys), "");
    }
}

TEST(KeyListOfASection, CanBeReadFromAnOpenFile) {
    const TestHome home({{"s.ini", "[A]\nx=1\ny=2\n"}});
    const NamedProfile open(asBytes(home.file("s.ini").c_str()));
    EXPECT_EQ(keysLeft(KeyList(asBytes("A"), kNotAvailable, open.get())), "x;y;");
    EXPECT_FALSE(KeyList(asBytes("B"), kNotAvailable, open.get()).isThere());
}

// The list's last byte ends it: of 1024 bytes 1023 are the keys' and their NULs'.
TEST(KeyListOfASection, CutsTheKeyAtItsEdge) {
    const TestHome home;
    for (const std::size_t size : {21U, 22U, 23U, 70000U}) {
        SCOPED_TRACE(size);
        home.put("s.ini", sectionOf(1000, size));
        const KeyList keys(asBytes("A"), kNotAvailable, asBytes(home.file("s.ini").c_str()));
        EXPECT_EQ(keysLeft(keys),
                  std::string(1000, 'a') + ";" + std::string(std::min<std::size_t>(size, 22), 'b') + ";");
    }
}

TEST(KeyListOfASection, LeavesTheKeyAtItsEdgeOutWhenOnlyWholeOnesAreWanted) {
    const TestHome home;
    for (const int sizeInBytes : {KeyList::kSize, 999}) {
        const auto firstSize = static_cast<std::size_t>(sizeInBytes) - 24;
        for (const std::size_t size : {21U, 22U, 23U, 70000U}) {
            SCOPED_TRACE(size);
            home.put("s.ini", sectionOf(firstSize, size));
            const KeyList keys(asBytes("A"), "", asBytes(home.file("s.ini").c_str()), LastKey::whole, sizeInBytes);
            EXPECT_EQ(keysLeft(keys),
                      std::string(firstSize, 'a') + ";" + (size <= 22 ? std::string(size, 'b') + ";" : ""));
        }
        home.put("s.ini", sectionOf(70000, 1));
        const KeyList keys(asBytes("A"), "", asBytes(home.file("s.ini").c_str()), LastKey::whole, sizeInBytes);
        EXPECT_EQ(keysLeft(keys), "");
    }
}

}  // namespace jx::test
