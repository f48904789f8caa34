// The data sources a driver asks for when it is installed.
#include <gtest/gtest.h>

#include <string>

#include "config/text_bytes.h"
#include "install/data_source_creation.h"
#include "record_text.h"
#include "test_home.h"

namespace {

using jx::asBytes;
using namespace jx::test;

constexpr char kDriverFile[] = "[D]\nDriver=/l/d.so\n";

// Creates the data sources of list and returns the list as it is afterwards.
std::string create(const char* list, const char* driver = "D") {
    WritableText text(list);
    jx::install::CreateDataSources(text.bytes(), asBytes(driver));
    return text.all();
}

TEST(CreateDataSources, EntersEveryNameWithTheDriversLibrary) {
    const TestHome home({{".odbcinst.ini", kDriverFile}});
    create("Sales, Accounts");
    EXPECT_EQ(home.text(".odbc.ini"),
              "[ODBC Data Sources]\nSales=D\nAccounts=D\n\n[Sales]\nDriver=/l/d.so\n\n[Accounts]\nDriver=/l/d.so\n");
    EXPECT_EQ(home.text(".odbcinst.ini"), kDriverFile);
}

TEST(CreateDataSources, LeavesBlanksWhereTheCommasStood) {
    const TestHome home;
    EXPECT_EQ(create("A,B , C,"), "A B   C ");
    EXPECT_EQ(create("A"), "A");
    EXPECT_EQ(create(""), "");
}

TEST(CreateDataSources, SkipsBlanksBehindACommaAndHandsOnThoseBeforeIt) {
    const TestHome home({{".odbcinst.ini", kDriverFile}});
    create("A  ,    B");
    // The store trims names, so the blanks do not show in the file.
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nA=D\nB=D\n\n[A]\nDriver=/l/d.so\n\n[B]\nDriver=/l/d.so\n");
}

TEST(CreateDataSources, ReplacesAnOlderDataSourceAndKeepsTheOthers) {
    const TestHome home({{".odbcinst.ini", kDriverFile},
                         {".odbc.ini",
                          "; mine\n[ODBC Data Sources]\nSales=Old\nOther=X\n\n[Sales]\nDriver=/o\nUID=u\n\n"
                          "[Other]\nDriver=/x\n"}});
    create("Sales");
    EXPECT_EQ(home.text(".odbc.ini"),
              "; mine\n[ODBC Data Sources]\nSales=D\nOther=X\n\n[Other]\nDriver=/x\n\n[Sales]\nDriver=/l/d.so\n");
}

TEST(CreateDataSources, ClearsAListThatReadsAsAbsent) {
    const TestHome home(
        {{".odbcinst.ini", kDriverFile}, {".odbc.ini", "[ODBC Data Sources]\nNOT AVAILABLE=X\nOther=X\n"}});
    create("Sales");
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nSales=D\n\n[Sales]\nDriver=/l/d.so\n");
}

TEST(CreateDataSources, GivesADriverWithoutALibraryTheTextNotAvailable) {
    const TestHome home;
    create("Sales", "Unknown");
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nSales=Unknown\n\n[Sales]\nDriver=NOT AVAILABLE\n");
}

TEST(CreateDataSources, WritesNothingForEmptyNames) {
    for (const char* list : {"", " ", ",", ",,, ,", "  ,  "}) {
        SCOPED_TRACE(list);
        const TestHome home({{".odbcinst.ini", kDriverFile}});
        create(list);
        EXPECT_EQ(home.text(".odbc.ini"), "(absent)");
    }
}

TEST(CreateDataSources, KeepsGoingBehindANameTheStoreRefuses) {
    const TestHome home({{".odbcinst.ini", kDriverFile}});
    create("two\nlines, Good");
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nGood=D\n\n[Good]\nDriver=/l/d.so\n");
}

TEST(CreateDataSources, WritesTheSectionOfANameThatOnlyTheListCannotHold) {
    const TestHome home({{".odbcinst.ini", kDriverFile}});
    create("A=B");
    EXPECT_EQ(home.text(".odbc.ini"), "[A=B]\nDriver=/l/d.so\n");
}

TEST(CreateDataSources, PassesOverNamesOfListsWhoseSectionsWouldGo) {
    constexpr char kMine[] = "[ODBC Data Sources]\nMine=X\n";
    const TestHome home({{".odbcinst.ini", kDriverFile}, {".odbc.ini", kMine}});
    for (const char* list : {"ODBC Data Sources", "odbc data sources", " ODBC Data Sources ,ODBC DATA SOURCES\t",
                             "ODBC Drivers", "ODBC Translators"}) {
        SCOPED_TRACE(list);
        create(list);
        EXPECT_EQ(home.text(".odbc.ini"), kMine);
    }
    EXPECT_EQ(create("ODBC Data Sources,ODBC Drivers 2"), "ODBC Data Sources ODBC Drivers 2");
    EXPECT_EQ(home.text(".odbc.ini"),
              "[ODBC Data Sources]\nMine=X\nODBC Drivers 2=D\n\n[ODBC Drivers 2]\nDriver=/l/d.so\n");
}

TEST(CreateDataSources, TakesNamesOfAnyLength) {
    const std::string name(40000, 'n');
    const TestHome home({{".odbcinst.ini", kDriverFile}});
    create((name + ",B").c_str());
    EXPECT_EQ(home.text(".odbc.ini"),
              "[ODBC Data Sources]\n" + name + "=D\nB=D\n\n[" + name + "]\nDriver=/l/d.so\n\n[B]\nDriver=/l/d.so\n");
}

TEST(CreateDataSources, DoesNothingForANullList) {
    const TestHome home;
    jx::install::CreateDataSources(nullptr, asBytes("D"));
    EXPECT_TRUE(home.names().empty());
}

}  // namespace
