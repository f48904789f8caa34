// Reading an installation script.
#include "install/script.h"

#include <gtest/gtest.h>

#include <string>

#include "record_text.h"
#include "test_home.h"

namespace {

using namespace jx::install;
using namespace jx::test;
using jx::asBytes;
using jx::asChars;
using jx::KeyList;
using jx::ProfileValue;
using jx::viewOf;

// The capabilities of a driver in a script, one a line, with "(failed)" at the end when reading failed.
std::string capabilitiesOf(const unsigned char* script, const char* driver, std::size_t most = 7) {
    std::string all;
    const bool isComplete = Script(script).readCapabilities(driver, [&](std::size_t place, const ProfileValue& value) {
        all += std::string(kCapabilityKeys[place]) + "=" + std::string(value.view()) + "\n";
        return --most > 0;
    });
    return isComplete ? all : all + "(failed)";
}

TEST(InstallationScript, HasKeysAndValues) {
    const TestHome home({{"odbc.inf", "[A]\n\"One\"=1, a.so,\n\"Two\"=\n"}});
    const std::string file = home.file("odbc.inf");
    const Script script(asBytes(file.c_str()));
    ProfileValue value;
    EXPECT_EQ(script.keys(asBytes("A")).names().count(), 2U);
    EXPECT_EQ(script.fileKeys(asBytes("A")).names().count(), 2U);
    EXPECT_FALSE(script.keys(asBytes("B")).isThere());
    EXPECT_FALSE(script.fileKeys(asBytes("B")).isThere());
    EXPECT_TRUE(script.read(asBytes("A"), asBytes("\"One\""), value));
    EXPECT_EQ(value.view(), "1, a.so,");
    EXPECT_FALSE(script.read(asBytes("A"), asBytes("One"), value));
}

TEST(InstallationScript, GivesTheKeyAtTheEdgeOfAListCutOrNotAtAll) {
    const TestHome home;
    home.put("odbc.inf", "[A]\n" + std::string(1000, 'a') + "=1\n" + std::string(40, 'b') + "=1\n");
    const std::string file = home.file("odbc.inf");
    const Script script(asBytes(file.c_str()));
    EXPECT_EQ(script.keys(asBytes("A")).names().count(), 2U);
    EXPECT_EQ(script.fileKeys(asBytes("A")).names().count(), 2U);
    EXPECT_EQ(script.wholeKeys(asBytes("A")).names().count(), 1U);
}

// Other reads take ".odbc.ini" for the user's file.
TEST(InstallationScript, IsOpenedUnderItsOwnNameForTheKeysOfFiles) {
    const TestHome home({{".odbc.ini", "[A]\n\"Driver\"=1,\n"}});
    const Script script(asBytes(".odbc.ini"));
    EXPECT_TRUE(script.keys(asBytes("A")).isThere());
    EXPECT_FALSE(script.fileKeys(asBytes("A")).isThere());
}

TEST(InstallationScript, WithoutANameHoldsNothing) {
    const Script script(nullptr);
    ProfileValue value;
    EXPECT_FALSE(script.keys(asBytes("A")).isThere());
    EXPECT_FALSE(script.wholeKeys(asBytes("A")).isThere());
    EXPECT_FALSE(script.fileKeys(asBytes("A")).isThere());
    EXPECT_FALSE(script.read(asBytes("A"), asBytes("x"), value));
    EXPECT_EQ(capabilitiesOf(nullptr, "A"), "");
}

TEST(Capabilities, AreReadInTheOrderOfTheirListWhateverTheScripts) {
    const TestHome home(
        {{"odbc.inf", "[A-Keys]\nSQLLevel=2\nOther=x\nCreateDSN=a,b\nAPILevel=1\nFileUsage=\n[B-Keys]\n"}});
    const std::string file = home.file("odbc.inf");
    EXPECT_EQ(capabilitiesOf(asBytes(file.c_str()), "A"), "APILevel=1\nCreateDSN=a,b\nFileUsage=\nSQLLevel=2\n");
    EXPECT_EQ(capabilitiesOf(asBytes(file.c_str()), "A", 2), "APILevel=1\nCreateDSN=a,b\n(failed)");
    EXPECT_EQ(capabilitiesOf(asBytes(file.c_str()), "B"), "");
    EXPECT_EQ(capabilitiesOf(asBytes(file.c_str()), "C"), "");
    EXPECT_EQ(capabilitiesOf(asBytes(home.path().c_str()), "A"), "(failed)");
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
        WritableText key(row.key);
        EXPECT_EQ(viewOf(quotedName(key.bytes())), row.name);
    }
}

}  // namespace
