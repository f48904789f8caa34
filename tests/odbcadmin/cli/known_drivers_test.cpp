// What is known of drivers: the files that say so, and what the commands make of them.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "admin_test.h"
#include "odbcadmin/model/data_folder.h"
#include "odbcadmin/model/known_driver.h"
#include "rules/names.h"

namespace jx::test {
namespace {

class KnownDrivers : public AdminTest {
protected:
    KnownDrivers() {
        home_.put(".odbcinst.ini",
                  "[ODBC Drivers]\nPg=Installed\nLite=Installed\nOther=Installed\n"
                  "[Pg]\nDriver=/usr/lib/psqlodbcw.so\n"
                  "[Lite]\nDriver=/usr/lib/libsqlite3odbc-0.9998.so\n"
                  "[Other]\nDriver=/opt/libother.so\n");
        home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Pg\n[Sales]\nDriver=/usr/lib/psqlodbcw.so\n");
    }

    std::string remarksOf(const std::vector<std::string>& arguments) {
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.code, 0) << result.err;
        return result.err;
    }

    // What the completion offers for the last word.
    std::string completed(std::vector<std::string> words) {
        words.insert(words.begin(), {"__complete", "--"});
        return out(words);
    }
};

TEST_F(KnownDrivers, EveryFileNamesItsKeysOnceAndEndsSentencesInOneWay) {
    model::useKnownDrivers(JX_KNOWN_DRIVERS);
    std::size_t count = 0;
    for (const char* library : {"psqlodbcw.so", "psqlodbca.so", "libmaodbc.so", "libtdsodbc.so", "libsqlite3odbc.so",
                                "libmdbodbc.so", "libmdbodbcW.so"}) {
        SCOPED_TRACE(library);
        const model::KnownDriver* driver = model::knownDriverOf(std::string("/nowhere/") + library);
        ASSERT_NE(driver, nullptr);
        count += driver->keys.size();
        for (const model::KnownKey& each : driver->keys) {
            SCOPED_TRACE(each.name);
            EXPECT_FALSE(each.says.empty() || each.says.ends_with('.'));
            EXPECT_EQ(std::count_if(driver->keys.begin(), driver->keys.end(),
                                    [&](const auto& other) { return rules::sameName(other.name, each.name); }),
                      1);
        }
        for (const auto& [other, meant] : driver->otherNames) {
            EXPECT_EQ(driver->key(other), nullptr) << other;
            EXPECT_TRUE(meant.empty() || driver->key(meant) != nullptr) << other;
        }
    }
    EXPECT_GT(count, 100U);
}

TEST_F(KnownDrivers, TheFolderOfDataIsThatOfTheLibrarysPrefix) {
    EXPECT_EQ(model::dataFolderOf("/usr/lib/x86_64-linux-gnu/odbc/a.so"), "/usr/share");
    EXPECT_EQ(model::dataFolderOf("/opt/acme/lib64/a.so"), "/opt/acme/share");
    EXPECT_EQ(model::dataFolderOf("/lib/a.so"), "/usr/share");
    EXPECT_EQ(model::dataFolderOf("/opt/lib/acme/lib/a.so"), "/opt/lib/acme/share");
    EXPECT_EQ(model::dataFolderOf("/opt/acme/a.so"), "");
    EXPECT_EQ(model::dataFolderOf("a.so"), "");
}

TEST_F(KnownDrivers, AKeyThatTheDriverNeverAsksForIsNamedWhenItIsGiven) {
    const std::string pwd = "PostgreSQL's driver never asks for PWD; it asks for Password. Use Password.\n";
    const std::string sever = "PostgreSQL's driver never asks for Sever. Did you mean Servername?\n";
    const std::string added = remarksOf({"dsn", "add", "A", "--driver", "Pg", "Sever=x", "PWD=y", "Port=1"});
    EXPECT_NE(added.find(pwd), std::string::npos) << added;
    EXPECT_NE(added.find(sever), std::string::npos) << added;
    EXPECT_EQ(added.find("asks for Port"), std::string::npos);
    EXPECT_NE(remarksOf({"dsn", "set", "Sales", "PWD=y"}).find(pwd), std::string::npos);
    EXPECT_NE(remarksOf({"dsn", "ensure", "Sales", "Sever=x"}).find(sever), std::string::npos);
    EXPECT_NE(remarksOf({"dsn", "ensure", "B", "--driver", "Pg", "Sever=x"}).find(sever), std::string::npos);
    EXPECT_EQ(out({"dsn", "get", "A", "PWD", "--show-secrets"}), "y\n") << "it is stored all the same";
}

TEST_F(KnownDrivers, KeysInAnyCaseAndThoseOfEveryDataSourceAreRight) {
    const std::string told = remarksOf(
        {"dsn", "add", "A", "--driver", "Pg", "SERVERNAME=x", "password@env=P", "Description=d", "database=d"});
    EXPECT_EQ(told.find("never asks"), std::string::npos) << told;
    EXPECT_EQ(remarksOf({"dsn", "add", "B", "--driver", "Other", "Whatever=1"}).find("never asks"), std::string::npos);
}

TEST_F(KnownDrivers, AddNamesWhatTheDriverNeeds) {
    EXPECT_NE(remarksOf({"dsn", "add", "A", "--driver", "Lite"}).find("SQLite's driver needs Database as well"),
              std::string::npos);
    EXPECT_EQ(remarksOf({"dsn", "add", "B", "--driver", "Lite", "database=/x"}).find("needs"), std::string::npos);
    EXPECT_EQ(remarksOf({"dsn", "add", "C", "--driver", "Lite", "Database@file=/x"}).find("needs"), std::string::npos);
}

TEST_F(KnownDrivers, LintNamesThemWithTheirLines) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Pg\n[Sales]\nDriver=/usr/lib/psqlodbcw.so\nSever=x\nUID=app\n");
    const std::string told = run({"lint"}).out;
    EXPECT_NE(told.find("warning names.key-misspelt data source Sales\n  " + home_.file(".odbc.ini") +
                        ":5: PostgreSQL's driver never asks for Sever.\n  Did you mean Servername?\n"),
              std::string::npos)
        << told;
    EXPECT_NE(told.find("warning names.key-not-asked data source Sales\n  " + home_.file(".odbc.ini") +
                        ":6: PostgreSQL's driver never asks for UID; it asks for Username.\n  Use Username.\n"),
              std::string::npos)
        << told;
}

TEST_F(KnownDrivers, CompletionOffersTheKeysOfTheDriver) {
    EXPECT_EQ(completed({"dsn", "add", "A", "--driver", "Pg", "Servern"}),
              "Servername=\tHost name or address of the server, or the directory of its socket (localhost)\n");
    EXPECT_EQ(completed({"dsn", "ensure", "A", "--driver=Pg", "SSL"}).substr(0, 8), "SSLmode=");
    EXPECT_EQ(completed({"dsn", "set", "Sales", "Po"}), "Port=\tPort of the server (5432)\n");
    EXPECT_EQ(completed({"dsn", "unset", "Sales", ""}), "Driver\t\n");
    EXPECT_EQ(completed({"dsn", "add", "A", "--driver", "Other", ""}), "");
}

// The example of the document, as a vendor would take it.
std::string exampleOfDocument() {
    std::ifstream file(JX_DOCUMENTS "/known-drivers.md");
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::size_t begin = text.find("```ini\n");
    return begin == std::string::npos ? "" : text.substr(begin + 7, text.find("```\n", begin + 7) - begin - 7);
}

TEST_F(KnownDrivers, AVendorsFileBesideItsLibraryIsRead) {
    std::filesystem::create_directories(home_.file("opt/acme/share/jxodbc/drivers"));
    home_.put("opt/acme/share/jxodbc/drivers/acme.ini", exampleOfDocument());
    home_.put("opt/acme/share/jxodbc/drivers/bad.ini", "\x01\n[Key\nno file of ours");
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nAcme=Installed\n[Acme]\nDriver=" +
                                   home_.file("opt/acme/lib/libacmeodbc-2.1.so.2") + "\n");
    const std::string told = remarksOf({"dsn", "add", "A", "--driver", "Acme", "Hots=x", "Server=y", "PWD=z"});
    for (const char* each : {"Acme's driver never asks for Hots. Did you mean Host?",
                             "Acme's driver never asks for Server; it asks for Host. Use Host.",
                             "Acme's driver never asks for PWD. Programs give it in the connection string.",
                             "Acme's driver needs Database as well"})
        EXPECT_NE(told.find(each), std::string::npos) << each << told;
}

TEST_F(KnownDrivers, AVendorsFileGoesBeforeThisProducts) {
    std::filesystem::create_directories(home_.file("opt/pg/share/jxodbc/drivers"));
    home_.put("opt/pg/share/jxodbc/drivers/pg.ini",
              "[Driver]\nName=Newer\n[Libraries]\npsqlodbcw.so=PG\n[Key Sever]\nSays=A new key\n");
    home_.put(".odbcinst.ini",
              "[ODBC Drivers]\nPg=Installed\n[Pg]\nDriver=" + home_.file("opt/pg/lib/psqlodbcw.so") + "\n");
    EXPECT_EQ(remarksOf({"dsn", "add", "A", "--driver", "Pg", "Sever=x"}).find("never asks"), std::string::npos);
}

}  // namespace
}  // namespace jx::test
