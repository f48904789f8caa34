// Values that hold what belongs elsewhere, and what the commonest mistakes in them are called.
#include "odbcadmin/doctor/value_checks.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "doctor_fixture.h"
#include "odbcadmin/doctor/examination.h"
#include "odbcadmin/doctor/file_checks.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/doctor/syntax_checks.h"

namespace jx::doctor::test {
namespace {

class ValueChecks : public testing::Test {
protected:
    std::string told(const std::string& lines) {
        home_.put(".odbc.ini", "[ODBC Data Sources]\nA=D\n[A]\nDriver=/l/d.so\n" + lines);
        home_.put(".odbcinst.ini", "[ODBC Drivers]\nD=Installed\n[D]\nDriver=/l/d.so\nSetup=/l/s.so\n");
        Findings findings =
            lint(model::Configuration::read(), {model::configPlaces(), LintPlaces::Variables::seen, home_.file("etc")});
        std::erase_if(findings, [](const Finding& each) { return !each.id.starts_with("values."); });
        return home_.dump(findings);
    }

    DoctorHome home_;
};

TEST_F(ValueChecks, QuotesBracesAndCommentsAreToldWithTheLineWithoutThem) {
    const struct {
        const char *line, *id, *fact, *advice;
    } rows[] = {
        {"Server=\"db1\"", "values.quoted", "the value of Server stands in quotes, which the driver gets as well",
         "Unless it is meant so, write the line as: Server=db1"},
        {"Server='db 1'", "values.quoted", "the value of Server stands in quotes, which the driver gets as well",
         "Unless it is meant so, write the line as: Server=db 1"},
        {"Server={db1}", "values.quoted",
         "the value of Server stands in braces, as values of connection strings do, which the driver gets as well",
         "Unless it is meant so, write the line as: Server=db1"},
        {"Port = 5432 ; ours", "values.comment",
         "the value of Port has a comment behind it, which the driver gets as well",
         "Unless it is meant so, write the line as: Port=5432"},
        {"PWD={a;b}", "values.quoted",
         "the value of PWD stands in braces, as values of connection strings do, which the driver gets as well",
         "Unless it is meant so, write the value of PWD without."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(told(std::string(row.line) + "\n"), std::string("warning ") + row.id +
                                                          " data source A\n  ~/.odbc.ini:5: " + row.fact + ".\n  " +
                                                          row.advice + "\n");
}

TEST_F(ValueChecks, WhatADriverMayWellWantIsNotTold) {
    for (const char* line : {"Description=ours # 5", "PWD=a;b", "Server=tcp:db,1433", "Options=a=1;b=2", "Server=\"",
                             "X=", "Query=\"a\" or b", "Color=#fff"})
        EXPECT_EQ(told(std::string(line) + "\n"), "") << line;
}

TEST(PathMistakes, AreNamedWithTheValueAsItShouldBe) {
    const DoctorHome home;
    ::setenv("JX_TEST_FOLDER", "/opt/acme", 1);
    const struct {
        const char *value, *id, *meant;
    } rows[] = {
        {"{Acme}", "names.quoted-path", "Acme"},
        {"{}", "names.quoted-path", ""},
        {"''", "names.quoted-path", ""},
        {"/l/d.so ; ours", "names.comment-in-value", "/l/d.so"},
        {"/l/d.so\t# ours", "names.comment-in-value", "/l/d.so"},
        {"$JX_TEST_FOLDER/lib/d.so", "names.unexpanded-path", "/opt/acme/lib/d.so"},
        {"${JX_TEST_FOLDER}/lib/d.so", "names.unexpanded-path", "/opt/acme/lib/d.so"},
        {"$JX_TEST_NOTHING/lib/d.so", "names.unexpanded-path", ""},
        {"C:\\Windows\\d.dll", "names.foreign-path", ""},
        {"d.DLL", "names.foreign-path", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        const auto mistake = mistakeIn(row.value);
        ASSERT_TRUE(mistake);
        EXPECT_STREQ(mistake->check->id, row.id);
        EXPECT_EQ(mistake->meant, row.meant);
    }
    ::unsetenv("JX_TEST_FOLDER");
    // The loader replaces these itself.
    for (const char* value : {"$ORIGIN/d.so", "${LIB}/d.so", "/l/$x/d.so", "dll", "/l/d.so", "{", "}", "{d.so", "d.so}",
                              "\"", "\"d.so", "d.so\"", "'d.so\"", "/l/d.so;x", "#d.so", ";"})
        EXPECT_FALSE(mistakeIn(value)) << value;
    EXPECT_EQ(mistakeIn("C:\\d.dll")->advice("Driver"),
              "Give the full path of the library on this system; odbcadmin driver scan shows those that are there.");
}

TEST(SyntaxOfOtherSystems, AFileInUtf16IsToldOnce) {
    const DoctorHome home;
    for (const std::string& text : {std::string("\xFF\xFE[\0A\0]\0\n\0", 10), std::string("\xFE\xFF\0[\0A\0]\0\n", 10)})
        EXPECT_EQ(
            home.dump(checkSyntaxOf("x", text)),
            "error syntax.utf-16 x\n  The file is in UTF-16, as some editors save it: no section of it is found.\n"
            "  Save it as UTF-8; this prints it so: iconv -f UTF-16 -t UTF-8 x\n");
}

TEST(SecretsOfFiles, NamesInAListAreNone) {
    const DoctorHome home;
    const auto told = [&](const std::string& text) {
        home.put(".odbc.ini", text);
        ::chmod(home.file(".odbc.ini").c_str(), 0644);
        return home.dump(checkFiles(model::configPlaces(home.file("etc")))).find("files.password-open") !=
               std::string::npos;
    };
    EXPECT_FALSE(told("[ODBC Data Sources]\nPassword=Some driver\nPIN=Other\n[Password]\nDriver=/x.so\n"));
    EXPECT_TRUE(told("[ODBC Data Sources]\nSales=Some driver\n[Sales]\nPassword=geheim\n"));
    EXPECT_TRUE(told("[ODBC Data Sources]\nSales=Some driver\n[ODBC]\nProxyPassword=geheim\n"));
}

TEST(FilesOfOthers, ADirectoryThatAVariableNamesIsNotToBeMovedAway) {
    const DoctorHome home;
    ::setenv("ODBCINI", home.path().c_str(), 1);
    const std::string told = home.dump(checkFiles(model::configPlaces(home.file("etc"))));
    ::unsetenv("ODBCINI");
    EXPECT_NE(told.find("error files.not-regular ~\n"), std::string::npos) << told;
    EXPECT_NE(told.find("\n  Let ODBCINI name a file.\n"), std::string::npos) << told;
}

}  // namespace
}  // namespace jx::doctor::test
