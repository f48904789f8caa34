// Copying and moving between the user's files and the system's.
#include "odbcadmin/model/scope_transfer.h"

#include <sys/stat.h>

#include <thread>

#include "model_fixture.h"

namespace jx::model::test {
namespace {

constexpr const char* kOnlySales = R"([ODBC Data Sources]
Sales=Plain

[Sales]
Driver=/opt/libplain.so
Server=db1
)";

class ScopeTransferTest : public ModelTest {
protected:
    ScopeTransferTest() { home_.put(".odbc.ini", kOnlySales); }

    std::string transfer(const Transfer& wish) const { return told(transferDataSource(wish, ChangeWay()).reason); }
    std::string systems() const { return home_.systemText("odbc.ini"); }
};

TEST_F(ScopeTransferTest, ACopyIsTheWholeSectionAndTheOldOneStays) {
    EXPECT_EQ(transfer({"sales", "Sales", Scope::system, Old::keep}), "");
    EXPECT_EQ(systems(), kOnlySales);
    EXPECT_EQ(sources(), kOnlySales);
}

TEST_F(ScopeTransferTest, AMoveTakesListEntryAndSectionAlong) {
    EXPECT_EQ(transfer({"Sales", "Wide", Scope::system, Old::remove}), "");
    EXPECT_EQ(systems(), "[ODBC Data Sources]\nWide=Plain\n\n[Wide]\nDriver=/opt/libplain.so\nServer=db1\n");
    EXPECT_EQ(sources(), "[ODBC Data Sources]\n\n");
    EXPECT_EQ(transfer({"Wide", "Sales", Scope::user, Old::remove}), "");
    EXPECT_EQ(sources(), kOnlySales);
    EXPECT_EQ(systems(), "[ODBC Data Sources]\n\n");
}

TEST_F(ScopeTransferTest, OneThatIsNotListedStaysUnlisted) {
    home_.put(".odbc.ini", "[Loose]\nServer=db1\n");
    EXPECT_EQ(transfer({"Loose", "Loose", Scope::system, Old::keep}), "");
    EXPECT_EQ(systems(), "[Loose]\nServer=db1\n");
}

TEST_F(ScopeTransferTest, WhatCannotBeDoneChangesNothing) {
    home_.putSystem("odbc.ini", "[Taken]\nDriver=/x.so\n");
    const struct {
        Transfer wish;
        const char* reason;
    } rows[] = {
        {{"Sales", "taken", Scope::system, Old::remove},
         "exists: There is a data source taken in ~.etc/odbc.ini | Remove it first, or give the copy another name."},
        {{"Nobody", "Nobody", Scope::system, Old::keep},
         "not found: There is no data source Nobody in ~/.odbc.ini | --to system takes what stands in the file of the "
         "user."},
        {{"Sales", "Sales", Scope::user, Old::keep},
         "not found: There is no data source Sales in ~.etc/odbc.ini | --to user takes what stands in the file of the "
         "system."},
        {{"Sales", "A(B", Scope::system, Old::keep},
         "refused: No data source can be called \"A(B\": it holds one of []{}(),;?*=!@\\ | Choose another name."},
        {{"Default", "Default", Scope::system, Old::keep},
         "refused: There is no data source called Default | Name another one."},
        {{"ODBC Data Sources", "X", Scope::system, Old::keep},
         "refused: There is no data source called ODBC Data Sources | Name another one."},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(transfer(row.wish), row.reason);
        EXPECT_EQ(sources(), kOnlySales);
        EXPECT_EQ(systems(), "[Taken]\nDriver=/x.so\n");
    }
}

TEST_F(ScopeTransferTest, SecretsForEverybodyAreRefusedUnlessTheyAreAllowed) {
    home_.put(".odbc.ini", "[Sales]\nDriver=/x.so\nPWD=geheim\n");
    constexpr const char* kRefused =
        "refused: Everybody may read ~.etc/odbc.ini, and the value of PWD is a secret | Keep it in a file and store "
        "PWD@file=PATH instead; --open-secrets stores it all the same.";
    EXPECT_EQ(transfer({"Sales", "Sales", Scope::system, Old::remove}), kRefused);
    EXPECT_EQ(systems(), "(absent)");
    EXPECT_EQ(sources(), "[Sales]\nDriver=/x.so\nPWD=geheim\n");
    ChangeWay open;
    open.openSecrets = ChangeWay::OpenSecrets::allowed;
    EXPECT_EQ(told(transferDataSource({"Sales", "Sales", Scope::system, Old::keep}, open).reason), "");
    EXPECT_EQ(systems(), "[Sales]\nDriver=/x.so\nPWD=geheim\n");
}

TEST_F(ScopeTransferTest, SecretsMayGoWhereOthersCannotReadAndSoMayTheirReferences) {
    home_.put(".odbc.ini", "[Sales]\nPassword@file=/run/secret\n[Stock]\nPWD=geheim\n");
    EXPECT_EQ(transfer({"Sales", "Sales", Scope::system, Old::keep}), "");
    ::chmod(home_.systemFile("odbc.ini").c_str(), 0640);
    EXPECT_EQ(transfer({"Stock", "Stock", Scope::system, Old::keep}), "");
    EXPECT_EQ(systems(), "[Sales]\nPassword@file=/run/secret\n\n[Stock]\nPWD=geheim\n");
}

TEST_F(ScopeTransferTest, ADriverGoesWithAllItsKeys) {
    const auto transferred = [&](Scope to, Old old) {
        return told(transferRegistered(kDriverKind, {"Plain", "Plain", to, old}, ChangeWay()).reason);
    };
    const std::string before = drivers();
    EXPECT_EQ(transferred(Scope::system, Old::remove), "");
    EXPECT_EQ(home_.systemText("odbcinst.ini"), before);
    EXPECT_EQ(drivers(), "[ODBC Drivers]\n\n");
    EXPECT_EQ(transferred(Scope::user, Old::keep), "");
    EXPECT_EQ(drivers(), before);
}

TEST_F(ScopeTransferTest, OneFileOfBothScopesIsNoPlaceToMoveTo) {
    setenv("ODBCINSTINI", home_.file(".odbcinst.ini").c_str(), 1);
    EXPECT_EQ(told(transferRegistered(kDriverKind, {"Plain", "Plain", Scope::system, Old::remove}, ChangeWay()).reason),
              "refused: The user and the system have the same file here: ~/.odbcinst.ini | odbcadmin paths shows which "
              "variable makes it so.");
}

TEST_F(ScopeTransferTest, APreviewShowsBothFilesAndWritesNeither) {
    ChangeWay never;
    never.writing = ChangeWay::Writing::never;
    const ChangeResult result = transferDataSource({"Sales", "Sales", Scope::system, Old::remove}, never);
    EXPECT_EQ(pathsOf(result), (std::vector<std::string>{home_.systemFile("odbc.ini"), home_.file(".odbc.ini")}));
    EXPECT_EQ(sources(), kOnlySales);
    EXPECT_EQ(systems(), "(absent)");
}

// Each of the four threads moves its own data sources, two in either direction; whoever locked the files in another
// order than the rest would wait for ever.
TEST_F(ScopeTransferTest, MovesInBothDirectionsAtOnceLoseNothing) {
    constexpr int kEach = 10;
    std::string users;
    std::string systemsText;
    for (int i = 0; i < kEach; ++i)
        for (const char* name : {"a", "b"}) {
            users += "[" + std::string(name) + std::to_string(i) + "]\nServer=" + std::to_string(i) + "\n";
            systemsText += "[S" + std::string(name) + std::to_string(i) + "]\nServer=" + std::to_string(i) + "\n";
        }
    home_.put(".odbc.ini", users);
    home_.putSystem("odbc.ini", systemsText);
    const auto moveAll = [](const std::string& beginning, Scope to) {
        for (int i = 0; i < kEach; ++i) {
            const std::string name = beginning + std::to_string(i);
            EXPECT_EQ(transferDataSource({name, name, to, Old::remove}, ChangeWay()).reason.fact, "");
        }
    };
    std::thread threads[] = {std::thread(moveAll, "a", Scope::system), std::thread(moveAll, "b", Scope::system),
                             std::thread(moveAll, "Sa", Scope::user), std::thread(moveAll, "Sb", Scope::user)};
    for (std::thread& each : threads)
        each.join();
    const Configuration user = Configuration::read({Seen::user, Seen::user});
    const Configuration system = Configuration::read({Seen::system, Seen::system});
    for (int i = 0; i < kEach; ++i)
        for (const char* name : {"a", "b"}) {
            const std::string value = std::to_string(i);
            EXPECT_EQ(system.file(FileKind::dataSources).view.value(name + value, "Server"), value);
            EXPECT_EQ(user.file(FileKind::dataSources).view.value("S" + (name + value), "Server"), value);
            EXPECT_EQ(user.file(FileKind::dataSources).view.section(name + value), nullptr);
            EXPECT_EQ(system.file(FileKind::dataSources).view.section("S" + (name + value)), nullptr);
        }
}

}  // namespace
}  // namespace jx::model::test
