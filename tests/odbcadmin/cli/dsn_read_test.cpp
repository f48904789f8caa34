// dsn list, show and get.
#include <unistd.h>

#include "admin_test.h"

namespace jx::test {
namespace {

class DsnRead : public AdminTest {};

TEST_F(DsnRead, ListsNamesAndDriversInTheFilesOrder) {
    EXPECT_EQ(out({"dsn", "list"}), "Sales     Plain\nAccounts  Plain\n");
    EXPECT_EQ(out({"dsn", "list", "-q"}), "Sales\nAccounts\n");
}

TEST_F(DsnRead, ListsAsJson) {
    const auto list = json({"dsn", "list"});
    EXPECT_EQ(list["schema"], "odbcadmin/1");
    ASSERT_EQ(list["dataSources"].size(), 2U);
    EXPECT_EQ(list["dataSources"][0]["name"], "Sales");
    EXPECT_EQ(list["dataSources"][0]["driver"], "Plain");
    EXPECT_EQ(list["dataSources"][0]["listed"], true);
}

TEST_F(DsnRead, ListsTheDefaultDataSourceLast) {
    home_.put(".odbcinst.ini", std::string(kDrivers) + "[Default]\nDriver=Plain\n");
    EXPECT_EQ(out({"dsn", "list", "-q"}), "Sales\nAccounts\nDefault\n");
    EXPECT_EQ(json({"dsn", "list"})["dataSources"][2]["default"], true);
}

TEST_F(DsnRead, ListsSectionsWithADriverThatAreNotOnTheList) {
    home_.put(".odbc.ini", "[Loose]\nDriver=/opt/x.so\n[ODBC]\nDriver=no\n[Other]\na=b\n");
    EXPECT_EQ(out({"dsn", "list"}), "Loose  /opt/x.so  (not listed)\n");
    EXPECT_EQ(json({"dsn", "list"})["dataSources"][0]["listed"], false);
}

TEST_F(DsnRead, SaysWhenThereAreNone) {
    home_.put(".odbc.ini", "");
    EXPECT_EQ(out({"dsn", "list"}), "There are no data sources in " + home_.file(".odbc.ini") + "\n");
    EXPECT_EQ(out({"dsn", "list", "-q"}), "");
}

TEST_F(DsnRead, AnAbsentFileIsAnEmptyOne) {
    unlink(home_.file(".odbc.ini").c_str());
    EXPECT_EQ(out({"dsn", "list", "-q"}), "");
    EXPECT_EQ(home_.text(".odbc.ini"), "(absent)");
}

TEST_F(DsnRead, ShowsAllKeysWithSecretsHidden) {
    EXPECT_EQ(out({"dsn", "show", "Sales", "-q"}), "[Sales]\nDriver=/opt/libplain.so\nServer=db1\nPWD=********\n");
    EXPECT_EQ(out({"dsn", "show", "Sales", "-q", "--show-secrets"}),
              "[Sales]\nDriver=/opt/libplain.so\nServer=db1\nPWD=geheim\n");
}

TEST_F(DsnRead, ShowsAsJsonWithTheLine) {
    const auto shown = json({"dsn", "show", "sales"});
    EXPECT_EQ(shown["name"], "Sales");
    EXPECT_EQ(shown["line"], 7);
    EXPECT_EQ(shown["file"], home_.file(".odbc.ini"));
    EXPECT_EQ(shown["attributes"]["PWD"], nullptr);
    EXPECT_EQ(json({"--show-secrets", "dsn", "show", "Sales"})["attributes"]["PWD"], "geheim");
}

TEST_F(DsnRead, ShowOfAnUnknownNameNamesNearOnes) {
    const ProgramResult result = run({"dsn", "show", "Slaes"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "odbcadmin: There is no data source Slaes in " + home_.file(".odbc.ini") + "\n  Did you mean Sales?\n");
}

TEST_F(DsnRead, GetsOneValue) {
    EXPECT_EQ(out({"dsn", "get", "Sales", "SERVER"}), "db1\n");
    EXPECT_EQ(json({"dsn", "get", "Sales", "Server"})["value"], "db1");
    EXPECT_EQ(run({"dsn", "get", "Sales", "Sever"}).code, 3);
    EXPECT_EQ(run({"dsn", "get", "Sales", "Sever"}).err,
              "odbcadmin: Data source Sales has no key Sever\n  Did you mean Server?\n");
}

TEST_F(DsnRead, GetOfASecretFailsSinceStarsCouldBeTakenForIt) {
    const ProgramResult result = run({"dsn", "get", "Sales", "PWD"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "odbcadmin: The value of PWD is a secret\n  --show-secrets prints it.\n");
    EXPECT_EQ(json({"dsn", "get", "Sales", "PWD"})["value"], nullptr);
    EXPECT_EQ(json({"dsn", "get", "Sales", "PWD"})["masked"], true);
    EXPECT_EQ(json({"dsn", "get", "Sales", "Server"})["masked"], false);
    EXPECT_EQ(out({"dsn", "get", "Sales", "PWD", "--show-secrets"}), "geheim\n");
}

TEST_F(DsnRead, NamesMayBeWordsOfTheCommandLineItself) {
    out({"dsn", "add", "driver", "--driver", "Plain", "list=1"});
    EXPECT_EQ(out({"dsn", "get", "driver", "list"}), "1\n");
    out({"dsn", "copy", "driver", "remove"});
    EXPECT_EQ(out({"dsn", "get", "remove", "list"}), "1\n");
}

TEST_F(DsnRead, ControlCharactersOfAFileDoNotReachTheTerminal) {
    home_.put(".odbc.ini",
              "[ODBC Data Sources]\nA\x1b[31mB=Pl\x07"
              "ain\n");
    EXPECT_EQ(out({"dsn", "list"}), "A?[31mB  Pl?ain\n");
}

TEST_F(DsnRead, JsonOfBytesThatAreNotUtf8IsStillJson) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nM\xfcller=Plain\n");
    EXPECT_EQ(json({"dsn", "list"})["dataSources"][0]["name"], "M\xEF\xBF\xBDller");
}

TEST_F(DsnRead, ReadsNamesAndValuesOfAnyLength) {
    const std::string name(5000, 'n');
    const std::string value(70000, 'v');
    home_.put(".odbc.ini", "[ODBC Data Sources]\n" + name + "=Plain\n[" + name + "]\nKey=" + value + "\n");
    EXPECT_EQ(out({"dsn", "list", "-q"}), name + "\n");
    EXPECT_EQ(out({"dsn", "get", name, "Key"}), value + "\n");
}

TEST_F(DsnRead, ListsTenThousandDataSources) {
    std::string list = "[ODBC Data Sources]\n";
    std::string sections;
    std::string names;
    for (int i = 0; i < 10000; ++i) {
        const std::string name = "Source" + std::to_string(i);
        list += name + "=Plain\n";
        sections += "\n[" + name + "]\nDriver=/opt/libplain.so\n";
        names += name + "\n";
    }
    home_.put(".odbc.ini", list + sections);
    EXPECT_EQ(out({"dsn", "list", "-q"}), names);
    EXPECT_EQ(json({"dsn", "list"})["dataSources"].size(), 10000U);
    out({"dsn", "ensure", "Source9999", "Server=db9"});
    EXPECT_EQ(sources(), list + sections + "Server=db9\n");
}

}  // namespace
}  // namespace jx::test
