// Which sections are reserved.
#include "rules/sections.h"

#include <gtest/gtest.h>

namespace jx::rules::test {
namespace {

TEST(Sections, ReservedOnesAreKnownInAnyCaseAndWithBlanksAround) {
    for (const char* name : {"ODBC", "odbc", "ODBC Data Sources", "odbc data sources", "ODBC Drivers", "Odbc dRIVERS",
                             "ODBC Translators", " ODBC TRANSLATORS\t", "ODBC Core", "odbc core"})
        EXPECT_TRUE(isReservedSection(name)) << name;
    for (const char* name : {"ODBC 2", "ODBCData Sources", "ODBC  Data Sources", "ODBC Cores", "Sales", "Default", ""})
        EXPECT_FALSE(isReservedSection(name)) << name;
}

TEST(Sections, ListsAreTheSectionsThatSeveralFilesShare) {
    for (const char* name : {"ODBC Data Sources", "odbc drivers", " ODBC Translators"})
        EXPECT_TRUE(isListSection(name)) << name;
    for (const char* name : {"ODBC", "ODBC Core", "Default", "Sales", ""})
        EXPECT_FALSE(isListSection(name)) << name;
}

TEST(Sections, TheDefaultDataSourceIsKnownInAnyCase) {
    for (const char* name : {"Default", "dEFAULT", " default "})
        EXPECT_TRUE(isDefaultName(name)) << name;
    for (const char* name : {"Default2", "Def ault", ""})
        EXPECT_FALSE(isDefaultName(name)) << name;
}

}  // namespace
}  // namespace jx::rules::test
