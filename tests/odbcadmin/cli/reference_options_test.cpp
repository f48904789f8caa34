// Values that lie elsewhere: stored, shown, exported, examined.
#include <filesystem>

#include "admin_test.h"

namespace jx::test {
namespace {

class References : public AdminTest {};

TEST_F(References, SetStoresWhereTheValueLiesAndRemovesTheValue) {
    home_.put(".odbc.ini", "[S]\nDriver=/x.so\nPWD=geheim\nPort=1\n");
    EXPECT_EQ(out({"dsn", "set", "S", "PWD", "--from-file", "/run/secrets/s"}), "Changed data source S\n");
    EXPECT_EQ(sources(), "[S]\nDriver=/x.so\nPort=1\nPWD@file=/run/secrets/s\n");
    out({"dsn", "set", "S", "PWD", "--from-env", "SALES_PASSWORD"});
    EXPECT_EQ(sources(), "[S]\nDriver=/x.so\nPort=1\nPWD@env=SALES_PASSWORD\n");
    out({"dsn", "set", "S", "PWD", "--from-credential", "sales"});
    EXPECT_EQ(sources(), "[S]\nDriver=/x.so\nPort=1\nPWD@credential=sales\n");
    EXPECT_EQ(out({"dsn", "set", "S", "PWD", "--from-credential", "sales"}), "unchanged: nothing to do\n");
    EXPECT_EQ(run({"dsn", "set", "S", "PWD", "--from-env", "OTHER", "--check"}).code, 9);
}

TEST_F(References, SetRefusesWhatWouldNeverBeFollowed) {
    home_.put(".odbc.ini", "[S]\nDriver=/x.so\n");
    const struct {
        std::vector<std::string> line;
        int code;
    } rows[] = {
        {{"PWD", "--from-file", "secrets/s"}, 5},
        {{"PWD", "--from-file", ""}, 5},
        {{"PWD", "--from-env", ""}, 5},
        {{"PWD", "--from-env", "A=B"}, 5},
        {{"PWD", "--from-credential", "a/b"}, 5},
        {{"PWD", "--from-credential", ".."}, 5},
        {{"Driver", "--from-file", "/x"}, 5},
        {{"Setup", "--from-env", "X"}, 5},
        {{"PWD@env", "--from-env", "X"}, 5},
        {{"PWD=x", "--from-env", "X"}, 2},
        {{"PWD", "UID", "--from-env", "X"}, 2},
        {{"PWD", "--from-env", "X", "--stdin"}, 2},
        {{"PWD", "--from-env", "X", "--from-file", "/x"}, 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line.back());
        std::vector<std::string> line{"dsn", "set", "S"};
        line.insert(line.end(), row.line.begin(), row.line.end());
        EXPECT_EQ(run(line).code, row.code);
    }
    EXPECT_EQ(run({"dsn", "set", "Nobody", "PWD", "--from-env", "X"}).code, 3);
    EXPECT_EQ(sources(), "[S]\nDriver=/x.so\n");
}

TEST_F(References, SetSaysWhenTheDriverNeverAsksForTheKey) {
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nPg=Installed\n[Pg]\nDriver=/usr/lib/psqlodbcw.so\n");
    home_.put(".odbc.ini", "[ODBC Data Sources]\nS=Pg\n[S]\nDriver=/usr/lib/psqlodbcw.so\n");
    EXPECT_NE(run({"dsn", "set", "S", "PWD", "--from-env", "X"}).err.find("never asks for PWD; it asks for Password"),
              std::string::npos);
    EXPECT_EQ(run({"dsn", "set", "S", "Password", "--from-env", "X"}).err, "");
}

TEST_F(References, AreNoSecretsThemselves) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nS=Plain\n[S]\nDriver=/opt/libplain.so\nPWD@env=VARIABLE\n");
    EXPECT_NE(out({"dsn", "show", "S"}).find("PWD@env=VARIABLE\n"), std::string::npos);
    EXPECT_EQ(out({"dsn", "get", "S", "PWD@env"}), "VARIABLE\n");
    const auto document = nlohmann::ordered_json::parse(out({"export"}));
    EXPECT_EQ(document["dataSources"][0]["keys"]["PWD@env"], "VARIABLE");
    std::filesystem::create_directory(home_.file("other"));
    home_.put("document", document.dump());
    out({"--home", home_.file("other"), "apply", "-f", home_.file("document")});
    EXPECT_NE(home_.text("other/.odbc.ini").find("PWD@env=VARIABLE\n"), std::string::npos);
}

TEST_F(References, LintNamesThoseThatAreNeverFollowed) {
    home_.put(".odbc.ini",
              "[ODBC Data Sources]\nS=Plain\n[S]\nDriver=/opt/libplain.so\nA@file=rel\nPWD=x\nPWD@env=V\n"
              "Setup@env=X\nB@credential=a/b\n");
    const std::string told = run({"lint"}).out;
    for (const char* each : {":5: A@file is not followed: \"rel\" is not an absolute path.",
                             ":7: PWD@env is not followed: PWD itself is there and wins.",
                             ":8: Setup@env is not followed: the value of Setup cannot lie elsewhere.",
                             ":9: B@credential is not followed: \"a/b\" is not the name of a credential."})
        EXPECT_NE(told.find(each), std::string::npos) << each << told;
}

TEST_F(References, AddReadsOneValueFromStandardInput) {
    const ProgramResult result =
        run({"dsn", "add", "New", "--driver", "Plain", "Server=db1", "Password", "--stdin"}, "geh heim\n");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(out({"dsn", "get", "New", "Password", "--show-secrets"}), "geh heim\n");
    EXPECT_EQ(out({"dsn", "get", "New", "Server"}), "db1\n");
    EXPECT_EQ(run({"dsn", "add", "N2", "--driver", "Plain", "Password", "--stdin"}).code, 2) << "no input";
    EXPECT_EQ(run({"dsn", "add", "N2", "--driver", "Plain", "A", "B", "--stdin"}, "x").code, 2);
    EXPECT_EQ(run({"dsn", "add", "N2", "--driver", "Plain", "Server=x", "--stdin"}, "x").code, 2);
    EXPECT_EQ(run({"dsn", "get", "N2", "Server"}).code, 3);
}

}  // namespace
}  // namespace jx::test
