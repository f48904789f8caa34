// Single entries in the two configuration files.
#include "config/configuration_file.h"

#include <gtest/gtest.h>

#include <string>

#include "test_home.h"

namespace jx::test {

namespace {

constexpr char kTwoDrivers[] = "; mine\n[ODBC Drivers]\nA=Installed\nB=Installed\n\n[A]\nDriver=/a.so\n";

}  // namespace

TEST(ConfigurationFile, KeepsTheOrderOfASectionUnlessAnEntryIsReplaced) {
    const TestHome home({{".odbcinst.ini", kTwoDrivers}});
    EXPECT_EQ(driverFile().write(asBytes("ODBC Drivers"), asBytes("A"), asBytes("1")), 1);
    EXPECT_EQ(home.text(".odbcinst.ini"), "; mine\n[ODBC Drivers]\nA=1\nB=Installed\n\n[A]\nDriver=/a.so\n");
    EXPECT_EQ(driverFile().replace(asBytes("ODBC Drivers"), asBytes("A"), asBytes("2")), 1);
    EXPECT_EQ(home.text(".odbcinst.ini"), "; mine\n[ODBC Drivers]\nB=Installed\nA=2\n\n[A]\nDriver=/a.so\n");
    EXPECT_EQ(home.names(), std::vector<std::string>{".odbcinst.ini"});
}

TEST(ConfigurationFile, RemovesAKeyOrAWholeSectionOfItsOwnFile) {
    const TestHome home({{".odbcinst.ini", kTwoDrivers}, {".odbc.ini", kTwoDrivers}});
    EXPECT_EQ(dataSourceFile().removeKey(asBytes("ODBC Drivers"), asBytes("B")), 1);
    EXPECT_EQ(dataSourceFile().removeSection(asBytes("A")), 1);
    EXPECT_EQ(dataSourceFile().removeSection(asBytes("Absent")), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "; mine\n[ODBC Drivers]\nA=Installed\n\n");
    EXPECT_EQ(home.text(".odbcinst.ini"), kTwoDrivers);
}

TEST(ConfigurationFile, ReadsAnEmptyTextForWhatIsNotThereAndCutsWhatIsTooLong) {
    const TestHome home({{".odbcinst.ini", kTwoDrivers}});
    unsigned char text[5] = "????";
    EXPECT_EQ(driverFile().read(asBytes("A"), asBytes("Setup"), text, sizeof text), 0);
    EXPECT_STREQ(asChars(text), "");
    EXPECT_EQ(driverFile().read(asBytes("A"), asBytes("Driver"), text, sizeof text), 4);
    EXPECT_STREQ(asChars(text), "/a.s");
}

TEST(ConfigurationFile, ClearsAListOnlyWhenItReadsAsAbsent) {
    struct Row {
        const char* before;
        const char* after;
    };
    constexpr Row rows[] = {
        {"[L]\nA=1\nNOT AVAILABLE=1\n", "[L]\nA=1\nNOT AVAILABLE=1\n"},
        {"[L]\n; mine\n", "[L]\n; mine\n"},
        {"[L]\nNOT AVAILABLE=1\nA=1\n[B]\n", "[B]\n"},
        {"[B]\n", "[B]\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.before);
        const TestHome home({{".odbc.ini", row.before}});
        dataSourceFile().clearAbsentList(asBytes("L"));
        EXPECT_EQ(home.text(".odbc.ini"), row.after);
    }
}

TEST(ConfigurationFile, IsFoundUnderTheNameThatTheExportedPointerHolds) {
    const TestHome home;
    const std::string moved = home.file("moved.ini");
    const char* own = INS_ODBCINI_FILENAME;
    INS_ODBCINI_FILENAME = moved.c_str();
    dataSourceFile().write(asBytes("A"), asBytes("x"), asBytes("1"));
    INS_ODBCINI_FILENAME = own;
    EXPECT_EQ(home.text("moved.ini"), "[A]\nx=1\n");
    EXPECT_EQ(home.text(".odbc.ini"), "(absent)");
}

}  // namespace jx::test
