// Entering and removing data sources through the exported functions, on whole files.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <string>

#include "message_box_script.h"
#include "test_home.h"

namespace jx::test {

namespace {

constexpr char kDrivers[] =
    "[ODBC Drivers]\nSample Driver=Installed\nOther=Installed\n\n"
    "[Sample Driver]\nDriver=/opt/sample.so\n\n[Other]\nDriver=/opt/other.so\n\n[Bare]\nSetup=/opt/s.so\n";

constexpr char kSales[] =
    "[ODBC Data Sources]\nSales=Sample Driver\nPlain=Other\n\n"
    "[Sales]\nDriver=/opt/sample.so\nDatabase=sales\n\n[Plain]\nDriver=/opt/other.so\n";

constexpr char kWithDefault[] = "[Default]\nDriver=Sample Driver\n";

}  // namespace

TEST(WriteDSNToIni, EntersADataSourceOfAnInstalledDriver) {
    const TestHome home{{".odbcinst.ini", kDrivers}};
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "Sample Driver"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample.so\n");
    EXPECT_EQ(home.text(".odbcinst.ini"), kDrivers);
}

TEST(WriteDSNToIni, ReplacesAnOldEntryWithAllItsKeys) {
    const TestHome home{{".odbcinst.ini", kDrivers}, {".odbc.ini", kSales}};
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "Other"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"),
              "[ODBC Data Sources]\nPlain=Other\nSales=Other\n\n"
              "[Plain]\nDriver=/opt/other.so\n\n[Sales]\nDriver=/opt/other.so\n");
}

TEST(WriteDSNToIni, WritesNothingForADriverWithoutALibraryButHasRemovedTheOldEntry) {
    for (const char* driver : {"Bare", "Absent", ""}) {
        SCOPED_TRACE(driver);
        const TestHome home{{".odbcinst.ini", kDrivers}, {".odbc.ini", kSales}};
        EXPECT_EQ(SQLWriteDSNToIni("Sales", driver), FALSE);
        EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nPlain=Other\n\n[Plain]\nDriver=/opt/other.so\n");
        EXPECT_EQ(home.text(".odbcinst.ini"), kDrivers);
    }
}

TEST(WriteDSNToIni, WritesNothingAtAllForANewNameOfADriverThatIsNotInstalled) {
    const TestHome home;
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "Absent"), FALSE);
    EXPECT_TRUE(home.names().empty());
}

// The store trims names, so a name with outer blanks is the same data source.
TEST(DefaultDataSource, IsTheSameWithBlanksAroundItsName) {
    const TestHome home{{".odbcinst.ini", "[Sample Driver]\nDriver=/opt/sample.so\n"}};
    EXPECT_EQ(SQLWriteDSNToIni(" Default\t", "Sample Driver"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), "[Default]\nDriver=/opt/sample.so\n");
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[Sample Driver]\nDriver=/opt/sample.so\n\n[Default]\nDriver=Sample Driver\n");
    EXPECT_EQ(SQLRemoveDSNFromIni(" Default"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini").find("Default"), std::string::npos);
    EXPECT_EQ(home.text(".odbcinst.ini").find("Default"), std::string::npos);
}

TEST(WriteDSNToIni, TakesDefaultInAnyCaseAsTheDefaultDataSource) {
    for (const std::string name : {"Default", "default", "DEFAULT"}) {
        SCOPED_TRACE(name);
        const TestHome home{{".odbcinst.ini", "[Sample Driver]\nDriver=/opt/sample.so\n"}};
        EXPECT_EQ(SQLWriteDSNToIni(name.c_str(), "Sample Driver"), TRUE);
        EXPECT_EQ(home.text(".odbcinst.ini"),
                  "[Sample Driver]\nDriver=/opt/sample.so\n\n[Default]\nDriver=Sample Driver\n");
        EXPECT_EQ(home.text(".odbc.ini"), "[" + name + "]\nDriver=/opt/sample.so\n");
    }
}

TEST(WriteDSNToIni, RemovesADefaultInLowerCaseAsAnOrdinaryNameBeforeItIsTheDefault) {
    const TestHome home{{".odbcinst.ini", "[Sample Driver]\nDriver=/opt/sample.so\n"},
                        {".odbc.ini", "[ODBC Data Sources]\ndefault=Other\nA=Other\n\n[default]\nUID=me\n"}};
    EXPECT_EQ(SQLWriteDSNToIni("default", "Sample Driver"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nA=Other\n\n[default]\nDriver=/opt/sample.so\n");
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[Sample Driver]\nDriver=/opt/sample.so\n\n[Default]\nDriver=Sample Driver\n");
}

TEST(WriteDSNToIni, RefusesNullsAndChangesNothing) {
    const TestHome home{{".odbcinst.ini", kDrivers}, {".odbc.ini", kSales}};
    EXPECT_EQ(SQLWriteDSNToIni(nullptr, "Sample Driver"), FALSE);
    EXPECT_EQ(SQLWriteDSNToIni("Sales", nullptr), FALSE);
    EXPECT_EQ(SQLWriteDSNToIni(nullptr, nullptr), FALSE);
    EXPECT_EQ(home.text(".odbc.ini"), kSales);
    EXPECT_EQ(home.text(".odbcinst.ini"), kDrivers);
}

TEST(WriteDSNToIni, RefusesNamesThatTheFileCannotHold) {
    for (const char* name : {"", "a\nb", "a\rb", "a=b", "[a", ";a", "#a", "  "}) {
        SCOPED_TRACE(name);
        const TestHome home{{".odbcinst.ini", kDrivers}, {".odbc.ini", kSales}};
        EXPECT_EQ(SQLWriteDSNToIni(name, "Sample Driver"), FALSE);
        EXPECT_EQ(home.text(".odbc.ini"), kSales);
    }
}

TEST(WriteDSNToIni, KeepsANameWithAClosingBracketInIt) {
    const TestHome home{{".odbcinst.ini", kDrivers}};
    EXPECT_EQ(SQLWriteDSNToIni("a]b", "Sample Driver"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\na]b=Sample Driver\n\n[a]b]\nDriver=/opt/sample.so\n");
    EXPECT_EQ(SQLRemoveDSNFromIni("a]b"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini").find("a]b"), std::string::npos);
}

TEST(RemoveDSNFromIni, RemovesTheKeyAndTheSection) {
    const TestHome home{{".odbc.ini", kSales}};
    EXPECT_EQ(SQLRemoveDSNFromIni("Sales"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nPlain=Other\n\n[Plain]\nDriver=/opt/other.so\n");
}

TEST(RemoveDSNFromIni, OfAnAbsentDataSourceSucceedsAndChangesNothing) {
    const TestHome home{{".odbc.ini", kSales}};
    EXPECT_EQ(SQLRemoveDSNFromIni("Absent"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), kSales);
    EXPECT_EQ(home.names(), (std::vector<std::string>{".odbc.ini"}));
}

TEST(RemoveDSNFromIni, RemovesTheDefaultDataSourceFromBothFiles) {
    const TestHome home{{".odbc.ini", "[Default]\nDriver=/opt/sample.so\nx=1\n[B]\n"}, {".odbcinst.ini", kWithDefault}};
    EXPECT_EQ(SQLRemoveDSNFromIni("Default"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), "[B]\n");
    EXPECT_EQ(home.text(".odbcinst.ini"), "");
}

TEST(RemoveDSNFromIni, TakesLowerCaseDefaultAsAnOrdinaryNameAndLeavesTheDriverFileAlone) {
    const TestHome home{
        {".odbc.ini", "[ODBC Data Sources]\ndefault=Sample Driver\nA=Other\n\n[Default]\nDriver=/opt/sample.so\n"},
        {".odbcinst.ini", kWithDefault}};
    EXPECT_EQ(SQLRemoveDSNFromIni("default"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nA=Other\n\n");
    EXPECT_EQ(home.text(".odbcinst.ini"), kWithDefault);
}

TEST(RemoveDSNFromIni, RefusesNullAndEmptyNames) {
    const TestHome home{{".odbcinst.ini", kDrivers}, {".odbc.ini", kSales}};
    EXPECT_EQ(SQLRemoveDSNFromIni(nullptr), FALSE);
    EXPECT_EQ(SQLRemoveDSNFromIni(""), FALSE);
    EXPECT_EQ(home.text(".odbc.ini"), kSales);
}

TEST(RemoveDSNFromIni, KeepsTheSectionWhenTheKeyCannotBeDeleted) {
    const TestHome home{{".odbc.ini", "[a=b]\nx=1\n"}};
    EXPECT_EQ(SQLRemoveDSNFromIni("a=b"), FALSE);
    EXPECT_EQ(home.text(".odbc.ini"), "[a=b]\nx=1\n");
}

TEST(ValidDSN, AcceptsEveryNameWithoutLookingAtIt) {
    const TestHome home;
    MessageBoxScript boxes;
    const std::string longName(70000, 'x');
    for (const char* name : {static_cast<const char*>(nullptr), "", "of no file", "[];?*=\n", longName.c_str()})
        EXPECT_EQ(SQLValidDSN(name), TRUE);
    EXPECT_EQ(boxes.boxes(), Boxes{});
    EXPECT_TRUE(home.names().empty());
}

TEST(RemoveDefaultDataSource, RemovesNothingAndAnswersTrue) {
    const TestHome home{{".odbc.ini", "[Default]\nDriver=/opt/sample.so\n"}, {".odbcinst.ini", kWithDefault}};
    EXPECT_EQ(SQLRemoveDefaultDataSource(), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), "[Default]\nDriver=/opt/sample.so\n");
    EXPECT_EQ(home.text(".odbcinst.ini"), kWithDefault);
}

}  // namespace jx::test
