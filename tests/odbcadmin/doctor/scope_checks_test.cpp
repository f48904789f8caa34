// Findings about the user's files and the system's together.
#include "odbcadmin/doctor/scope_checks.h"

#include <cstdlib>
#include <filesystem>

#include "doctor_fixture.h"
#include "odbcadmin/doctor/examination.h"
#include "odbcadmin/doctor/reference_checks.h"

namespace jx::doctor::test {
namespace {

using model::Configuration;
using model::Scopes;

class ScopeChecks : public testing::Test {
protected:
    // "ID SUBJECT: FACT", a line each.
    std::string tidy(const Findings& findings) const {
        std::string text;
        for (const Finding& each : findings)
            text.append(each.id + " " + each.subject + ": " + each.fact + "\n");
        return replaced(text, home_.path(), "~");
    }

    // Of every data source and driver.
    std::string told() const {
        const Configuration configuration = Configuration::read(Scopes());
        Findings all;
        const auto append = [&](const Findings& more) { all.insert(all.end(), more.begin(), more.end()); };
        for (const model::DataSource& each : configuration.dataSources())
            append(checkScopes(each, configuration));
        for (const model::Registered& each : configuration.drivers())
            append(checkScopes(each));
        return tidy(all);
    }

    DoctorHome home_;
};

TEST_F(ScopeChecks, NothingIsToldOfOneScopeAlone) {
    const char* sources = "[ODBC Data Sources]\nA=D\n[A]\nDriver=/d.so\n";
    const char* drivers = "[ODBC Drivers]\nD=Installed\n[D]\nDriver=/d.so\n";
    home_.put(".odbc.ini", sources);
    home_.put(".odbcinst.ini", drivers);
    EXPECT_EQ(told(), "");
    std::filesystem::remove(home_.file(".odbc.ini"));
    std::filesystem::remove(home_.file(".odbcinst.ini"));
    home_.putSystem("odbc.ini", sources);
    home_.putSystem("odbcinst.ini", drivers);
    EXPECT_EQ(told(), "");
}

TEST_F(ScopeChecks, ASectionThatHidesKeysOfTheSystemsIsSplit) {
    home_.put(".odbc.ini", "[Sales]\nDriver=/d.so\nServer=db1\n");
    home_.putSystem("odbc.ini", "[Sales]\nDriver=/d.so\nserver=db2\nPWD=geheim\nPort=1\n");
    EXPECT_EQ(told(),
              "scopes.split data source Sales: ~/.odbc.ini:1: the user's [Sales] hides all of the system's "
              "(~.etc/odbc.ini:1), also what only that one says: PWD, Port are not found.\n");
    home_.putSystem("odbc.ini", "[Sales]\nDriver=/d.so\n");
    EXPECT_EQ(told(),
              "scopes.shadowed data source Sales: ~/.odbc.ini:1: the user's [Sales] hides all of the system's "
              "(~.etc/odbc.ini:1).\n");
}

TEST_F(ScopeChecks, ADriverThatHidesTheSystemsIsTold) {
    home_.put(".odbcinst.ini", "[D]\nDriver=/d.so\n");
    home_.putSystem("odbcinst.ini", "[d]\nDriver=/e.so\nSetup=/s.so\n");
    EXPECT_EQ(told(),
              "scopes.split driver D: ~/.odbcinst.ini:1: the user's [D] hides all of the system's "
              "(~.etc/odbcinst.ini:1), also what only that one says: Setup is not found.\n");
}

TEST_F(ScopeChecks, AListEntryAndASectionInDifferentFilesAreTold) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nA=D\n");
    home_.putSystem("odbc.ini", "[A]\nDriver=/d.so\n");
    EXPECT_EQ(told(),
              "scopes.listed-elsewhere data source A: ~/.odbc.ini:2 lists it, and its section is in the file of the "
              "system (~.etc/odbc.ini:1): programs that read only one of the files find half of it.\n");
}

TEST_F(ScopeChecks, ADriverThatNotEveryReaderOfTheDataSourceSeesIsTold) {
    constexpr const char* kSources = "[ODBC Data Sources]\nA=D\n[A]\nDriver=/d.so\n";
    constexpr const char* kDrivers = "[ODBC Drivers]\nD=Installed\n[D]\nDriver=/d.so\n";
    home_.put(".odbc.ini", kSources);
    home_.putSystem("odbcinst.ini", kDrivers);
    EXPECT_EQ(told(),
              "scopes.driver-of-system data source A: ~/.odbc.ini:2: its driver D is registered for the system only, "
              "where libodbcinst.so.1 does not look.\n");
    std::filesystem::remove(home_.file(".odbc.ini"));
    std::filesystem::remove(home_.systemFile("odbcinst.ini"));
    home_.putSystem("odbc.ini", kSources);
    home_.put(".odbcinst.ini", kDrivers);
    EXPECT_EQ(told(),
              "scopes.driver-of-user data source A: ~.etc/odbc.ini:2: its driver D is registered for this user only; "
              "other users have none of that name.\n");
    home_.putSystem("odbcinst.ini", kDrivers);
    EXPECT_EQ(told().find("driver-of-user"), std::string::npos) << told();
    std::filesystem::remove(home_.systemFile("odbc.ini"));
    home_.put(".odbc.ini", kSources);
    EXPECT_EQ(told().find("driver-of-system"), std::string::npos) << told();
}

TEST_F(ScopeChecks, AListEntryWithoutASectionIsAnotherCheck) {
    constexpr const char* kListed = "[ODBC Data Sources]\nA=D\n";
    constexpr const char* kDrivers = "[ODBC Drivers]\nD=Installed\n[D]\nDriver=/d.so\n";
    home_.put(".odbc.ini", kListed);
    home_.putSystem("odbcinst.ini", kDrivers);
    EXPECT_EQ(told(), "");
    home_.put(".odbc.ini", "");
    home_.putSystem("odbc.ini", kListed);
    home_.putSystem("odbcinst.ini", "");
    home_.put(".odbcinst.ini", kDrivers);
    EXPECT_EQ(told(), "");
}

// Without the option the advice would be refused, or change the user's file.
TEST_F(ScopeChecks, WhatIsAdvisedForTheSystemsFilesIsSaidWithSystem) {
    home_.putSystem("odbc.ini",
                    "[ODBC Data Sources]\nA=D\nGone=D\nB?d=D\n[A]\nDriver=/d.so\nPWD=x\nPWD@env=Y\n"
                    "[B?d]\nDriver=/d.so\n[Unlisted]\nDriver=/d.so\n[Empty]\nDriver=\n");
    home_.putSystem("odbcinst.ini", "[ODBC Drivers]\nNone=Installed\n[D]\nDriver=/d.so\n[E=]\nDriver=/d.so\n");
    const Configuration configuration = Configuration::read(Scopes());
    Findings findings = lint(configuration, {{}, LintPlaces::Variables::ignored});
    const Findings references = checkReferences(*configuration.dataSource("A"), configuration, LoaderPlaces());
    findings.insert(findings.end(), references.begin(), references.end());
    int commands = 0;
    for (const Finding& each : findings)
        for (const char* verb : {" rename ", " ensure ", " remove ", " unset "})
            if (const std::size_t at = each.advice.find(verb); at != std::string::npos) {
                EXPECT_EQ(each.advice.find("odbcadmin dsn"), std::string::npos) << each.advice;
                EXPECT_EQ(each.advice.find("odbcadmin driver"), std::string::npos) << each.advice;
                EXPECT_NE(each.advice.find("odbcadmin --system d"), std::string::npos) << each.advice;
                ++commands;
            }
    EXPECT_GE(commands, 8);
}

TEST_F(ScopeChecks, VariablesThatMoveFilesAreTold) {
    EXPECT_EQ(tidy(checkVariables()), "");
    home_.putSystem("odbc.ini", "");
    EXPECT_EQ(tidy(checkVariables()),
              "files.system-moved ODBCSYSINI: ODBCSYSINI is set: the system's files are in ~.etc, also for programs "
              "started from here; others read /etc.\n");
    ::setenv("ODBCSYSINI", home_.file("none").c_str(), 1);
    EXPECT_EQ(tidy(checkVariables()),
              "files.system-moved ODBCSYSINI: ODBCSYSINI names ~/none, where there is no directory: the system's files "
              "are not found.\n");
    for (const char* value : {"", "some/where"}) {
        ::setenv("ODBCSYSINI", value, 1);
        EXPECT_EQ(tidy(checkVariables()),
                  "files.variable-relative ODBCSYSINI: ODBCSYSINI is \"" + std::string(value) +
                      "\", which is no full path and counts as not set: the system's files are in /etc.\n");
    }
}

TEST_F(ScopeChecks, TheVariableThatBothLibrariesReadDifferentlyIsTold) {
    ::setenv("ODBCINSTINI", "/opt/inst.ini", 1);
    EXPECT_EQ(
        tidy(checkVariables()),
        "files.drivers-moved ODBCINSTINI: ODBCINSTINI names /opt/inst.ini: libodbcinst.so.1 takes it for the user's "
        "drivers, libodbcinst.so.2 for the system's, and reads ~/.odbcinst.ini as well.\n");
    ::setenv("ODBCINSTINI", "inst.ini", 1);
    EXPECT_EQ(tidy(checkVariables()),
              "files.drivers-moved ODBCINSTINI: ODBCINSTINI is \"inst.ini\": libodbcinst.so.2 takes it for "
              "~.etc/inst.ini, libodbcinst.so.1 for a file where a program is started.\n");
    for (const char* both : {"", ".", "..", "sub/inst.ini"}) {
        ::setenv("ODBCINSTINI", both, 1);
        EXPECT_EQ(tidy(checkVariables()), "") << both;
    }
}

TEST_F(ScopeChecks, VariablesOfOtherProductsAreTold) {
    for (const char* name : {"ODBCINST", "TDSVER", "PGHOST"}) {
        ASSERT_EQ(std::getenv(name), nullptr);
        ::setenv(name, "x", 1);
        const std::string text = tidy(checkVariables());
        ::unsetenv(name);
        EXPECT_TRUE(text.starts_with("environment.foreign-variable " + std::string(name) + ": ")) << text;
    }
}

}  // namespace
}  // namespace jx::doctor::test
