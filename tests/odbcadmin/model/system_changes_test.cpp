// Changes of the system's files: which file they go to, and what only the system has.
#include <sys/stat.h>

#include "model_fixture.h"
#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/registration.h"

namespace jx::model::test {
namespace {

class SystemChangesTest : public ModelTest {
protected:
    static ChangeWay wayTo(Scope scope) {
        ChangeWay way;
        way.scope = scope;
        return way;
    }

    mode_t modeOf(const std::string& path) const {
        struct stat state {};
        EXPECT_EQ(::stat(path.c_str(), &state), 0) << path;
        return state.st_mode & 0777U;
    }
};

TEST_F(SystemChangesTest, ANewFileOfTheSystemsMayBeReadByAllAndOneOfTheUsersByHimAlone) {
    unlink(home_.file(".odbcinst.ini").c_str());
    const mode_t before = ::umask(022);
    for (const Scope scope : {Scope::user, Scope::system})
        EXPECT_EQ(told(registerEntry(Configuration::read(Scopes()), kDriverKind, {"Wide", "/w.so", {}, {}},
                                     WhenPresent::fail, wayTo(scope))
                           .reason),
                  "");
    ::umask(before);
    EXPECT_EQ(modeOf(home_.systemFile("odbcinst.ini")), 0644U);
    EXPECT_EQ(modeOf(home_.file(".odbcinst.ini")), 0600U);
    EXPECT_EQ(home_.systemText("odbcinst.ini"), drivers());
}

// Whatever changes an entry that only the system has would make a section of the user's own, which hides the system's.
TEST_F(SystemChangesTest, WhatOnlyTheSystemHasIsNotChangedInTheUsersFile) {
    home_.putSystem("odbc.ini", "[Stock]\nDriver=/w.so\n");
    home_.putSystem("odbcinst.ini", "[Wide]\nDriver=/w.so\n");
    const std::string refused =
        "refused: The data source Stock is the system's: a change in ~/.odbc.ini would hide all of [Stock] in "
        "~.etc/odbc.ini | --system changes it for all users; odbcadmin dsn copy Stock --to user gives you one of your "
        "own.";
    const struct {
        const char* what;
        Action action;
        std::string reason;
    } rows[] = {
        {"set",
         [](const Configuration& c, const ChangeWay& w) {
             return setKeys(c, "Stock", {{"A", "b"}}, w);
         },
         refused},
        {"unset", [](const Configuration& c, const ChangeWay& w) { return unsetKeys(c, "stock", {"A"}, w); }, refused},
        {"ensure",
         [](const Configuration& c, const ChangeWay& w) {
             return ensureDataSource(c, {"Stock", "Wide", {}}, OtherKeys::keep, w);
         },
         refused},
        {"rename",
         [](const Configuration& c, const ChangeWay& w) { return copyDataSource(c, "Stock", "S2", Old::remove, w); },
         refused},
        {"add",
         [](const Configuration& c, const ChangeWay& w) {
             return addDataSource(c, {"Stock", "Wide", {}}, w);
         },
         "exists: There is a data source Stock in ~.etc/odbc.ini, the system's | --system changes that one; --user "
         "adds "
         "one of your own, which hides it."},
        {"driver",
         [](const Configuration& c, const ChangeWay& w) {
             return registerEntry(c, kDriverKind, {"Wide", "/v.so", {}, {}}, WhenPresent::change, w);
         },
         "refused: The driver Wide is the system's: a change in ~/.odbcinst.ini would hide all of [Wide] in "
         "~.etc/odbcinst.ini | --system changes it for all users; odbcadmin driver add registers one of your own."},
        {"unregister",
         [](const Configuration& c, const ChangeWay& w) { return unregisterEntry(c, kDriverKind, "Wide", w); },
         "refused: The driver Wide is the system's: it stands in ~.etc/odbcinst.ini | --system removes it for all "
         "users."},
    };
    const std::string before = sources() + drivers();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(told(row.action(Configuration::read(Scopes()), ChangeWay()).reason), row.reason);
        EXPECT_EQ(sources() + drivers(), before);
        EXPECT_EQ(home_.systemText("odbc.ini"), "[Stock]\nDriver=/w.so\n");
    }
}

TEST_F(SystemChangesTest, InItsOwnScopeTheSystemsIsChanged) {
    home_.putSystem("odbc.ini", "[Stock]\nDriver=/w.so\n");
    const Configuration system = Configuration::read({Seen::system, Seen::system});
    EXPECT_EQ(told(setKeys(system, "Stock", {{"A", "b"}}, wayTo(Scope::system)).reason), "");
    EXPECT_EQ(home_.systemText("odbc.ini"), "[Stock]\nDriver=/w.so\nA=b\n");
    EXPECT_EQ(sources(), kSources);
}

TEST_F(SystemChangesTest, ACopyOfTheSystemsUnderANewNameIsTheUsers) {
    home_.put(".odbc.ini", "");
    home_.putSystem("odbc.ini", "[Stock]\nDriver=/w.so\nServer=db1\n");
    EXPECT_EQ(told(copyDataSource(Configuration::read(Scopes()), "Stock", "Mine", Old::keep, ChangeWay()).reason), "");
    EXPECT_EQ(sources(), "[Mine]\nDriver=/w.so\nServer=db1\n");
}

TEST_F(SystemChangesTest, AnUnchangedSecretInAnOpenFileIsNoNewOne) {
    home_.putSystem("odbc.ini", "[Stock]\nDriver=/w.so\nPWD=geheim\n");
    const Configuration system = Configuration::read({Seen::system, Seen::system});
    const ChangeWay way = wayTo(Scope::system);
    EXPECT_EQ(told(setKeys(system, "Stock", {{"PWD", "geheim"}, {"A", "b"}}, way).reason), "");
    EXPECT_EQ(
        told(setKeys(system, "Stock", {{"PWD", "other"}}, way).reason),
        "refused: Everybody may read ~.etc/odbc.ini, and the value of PWD is a secret | Keep it in a file and store "
        "PWD@file=PATH instead; --open-secrets stores it all the same.");
}

// Only the suffixes that are followed say where a secret lies; behind any other stands the secret.
TEST_F(SystemChangesTest, WhereASecretLiesIsNone) {
    home_.putSystem("odbc.ini", "[Stock]\nDriver=/w.so\n");
    const Configuration system = Configuration::read({Seen::system, Seen::system});
    const ChangeWay way = wayTo(Scope::system);
    struct Row {
        const char* key;
        bool isStored;
    };
    constexpr Row kRows[] = {{"PWD@file", true},  {"pwd@ENV", true}, {"Password@credential", true},
                             {"PWD@home", false}, {"PWD@", false},   {"PWD@file@x", false},
                             {"user@PWD", false}, {"@file", true}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(told(setKeys(system, "Stock", {{row.key, "/run/x"}}, way).reason).empty(), row.isStored);
    }
}

}  // namespace
}  // namespace jx::model::test
