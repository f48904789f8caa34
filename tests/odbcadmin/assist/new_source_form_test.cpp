// Making a data source of a driver that the system has.
#include "odbcadmin/assist/new_source_form.h"

#include <control_ids.h>

#include "both_scopes.h"
#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/worker.h"
#include "odbcadmin/model/known_driver.h"

namespace jx::assist::test {
namespace {

class NewSourceForm : public BothScopes {
protected:
    static constexpr int kTheirs = 1;  // row of the system's driver among those for a new data source

    static Action theirs() { return doubleClick(JxAddDataSourceList, kTheirs); }

    Action keySays() {
        return call([this](HWND dialog) {
            std::string whole(512, '\0');
            whole.resize(static_cast<std::size_t>(
                JXW_GetDlgItemText(dialog, kNewKeySays, whole.data(), static_cast<int>(whole.size()))));
            told_.push_back(whole);
        });
    }
};

TEST_F(NewSourceForm, MakesTheUsersDataSourceWithTheSystemsDriver) {
    EXPECT_EQ(manage({press(JxAddButton), theirs(), title(), type(kNewName, "Web"), type(kSectionKey, "Server"),
                      type(kSectionValue, "db5"), press(kSectionSet), type(kSectionKey, "Port"),
                      type(kSectionValue, "6"), press(IDOK), title(), see()}),
              Lines{});
    EXPECT_EQ(told_, (Lines{"New Data Source of Theirs", "Data Sources"}));
    std::string expected = kBothUserSources + "\n[Web]\nDriver=" + folder_.driver() + "\nServer=db5\nPort=6\n";
    expected.insert(expected.find("Refuse=Mine\n") + 12, "Web=Theirs\n");
    EXPECT_EQ(home_.text(".odbc.ini"), expected);
    EXPECT_EQ(home_.systemText("odbc.ini"), kBothSystemSources);
    EXPECT_NE(seen_.at(0).find(" Web (Theirs)\n"), std::string::npos) << seen_.at(0);
}

TEST_F(NewSourceForm, MakesOneForAllUsersInTheSystemsFile) {
    manage({press(JxAddButton), theirs(), type(kNewName, "Web"), click(kNewForSystem), press(IDOK), see()});
    EXPECT_EQ(home_.text(".odbc.ini"), kBothUserSources);
    std::string expected = kBothSystemSources + "\n[Web]\nDriver=" + folder_.driver() + "\n";
    expected.insert(expected.find("Sales=Mine\n") + 11, "Web=Theirs\n");
    EXPECT_EQ(home_.systemText("odbc.ini"), expected);
    EXPECT_NE(seen_.at(0).find(" Web (Theirs)  [system] \n"), std::string::npos) << seen_.at(0);
}

TEST_F(NewSourceForm, CancelMakesNoneAndLeavesTheUserAmongTheDrivers) {
    manage({press(JxAddButton), theirs(), type(kNewName, "Web"), press(IDCANCEL), title()});
    EXPECT_EQ(told_, Lines{"Add Data Source"});
    EXPECT_TRUE(isUntouched());
}

TEST_F(NewSourceForm, StaysOpenWhileTheNameIsRefusedThere) {
    const Lines boxes =
        manage({press(JxAddButton), theirs(), press(IDOK), type(kNewName, "a[b"), press(IDOK), type(kNewName, "sales"),
                press(IDOK), type(kNewName, "stock"), click(kNewForSystem), press(IDOK), press(IDCANCEL)},
               {IDOK, IDOK, IDOK, IDOK});
    ASSERT_EQ(boxes.size(), 4U);
    EXPECT_TRUE(boxes[0].starts_with("New Data Source|No data source can be called \"\": ")) << boxes[0];
    EXPECT_TRUE(boxes[1].starts_with("New Data Source|No data source can be called \"a[b\": ")) << boxes[1];
    EXPECT_TRUE(boxes[2].starts_with("New Data Source|There is a data source sales in " + home_.file(".odbc.ini")))
        << boxes[2];
    EXPECT_TRUE(boxes[3].starts_with("New Data Source|There is a data source stock in " + home_.systemFile("odbc.ini")))
        << boxes[3];
    EXPECT_TRUE(isUntouched());
}

TEST_F(NewSourceForm, AUsersOwnMayHaveTheNameOfOneOfTheSystems) {
    manage({press(JxAddButton), theirs(), type(kNewName, "Stock"), press(IDOK), see()});
    EXPECT_EQ(home_.systemText("odbc.ini"), kBothSystemSources);
    EXPECT_NE(seen_.at(0).find(" Stock (Theirs)\n"), std::string::npos) << seen_.at(0);
    EXPECT_NE(seen_.at(0).find(" Stock (Theirs)  [system, shadowed] \n"), std::string::npos) << seen_.at(0);
}

TEST_F(NewSourceForm, ProposesTheKeysThatAreKnownAndStoresThoseWithAValue) {
    home_.putSystem("odbcinst.ini", "[Theirs]\nDriver=psqlodbcw.so\n");
    home_.put("known.ini",
              "[Driver]\nName=PostgreSQL\n[Libraries]\npsqlodbcw.so=PostgreSQL Unicode\n[Key Servername]\n"
              "Says=Host name of the server\nDefault=localhost\n[Key Password]\nSays=Password\n");
    std::filesystem::create_directory(home_.file("drivers"));
    std::filesystem::rename(home_.file("known.ini"), home_.file("drivers/known.ini"));
    model::useKnownDrivers(home_.file("drivers"));
    manage({press(JxAddButton), theirs(), type(kNewName, "Web"), see(), selectRow(kSectionList, 0), keySays(),
            type(kSectionValue, "db7"), press(kSectionSet), see(), selectRow(kSectionList, 1), keySays(), press(IDOK)});
    model::useKnownDrivers("");
    EXPECT_EQ(seen_, (Lines{" Servername = \n Password = \n", ">Servername = db7\n Password = \n"}));
    EXPECT_EQ(told_, (Lines{"Host name of the server. Without it: localhost.", "Password."}));
    EXPECT_NE(home_.text(".odbc.ini").find("\n[Web]\nDriver=psqlodbcw.so\nServername=db7\n"), std::string::npos)
        << home_.text(".odbc.ini");
    EXPECT_EQ(home_.text(".odbc.ini").find("Password"), std::string::npos);
}

TEST_F(NewSourceForm, WithoutTheRightItGivesTheCommandWithSudo) {
    const Lines boxes =
        manage({press(JxAddButton), theirs(), type(kNewName, "Web"), click(kNewForSystem), type(kSectionKey, "PWD"),
                type(kSectionHidden, "geheim"), loseRights(), press(IDOK), press(IDCANCEL)},
               {IDOK});
    regainRights();
    EXPECT_NE(boxes.at(0).find(command() + " --system dsn add Web --driver Theirs 'PWD=********' (with the secret in "
                                           "place of the stars)"),
              std::string::npos)
        << boxes.at(0);
    EXPECT_TRUE(isUntouched());
}

TEST_F(NewSourceForm, NoSetupLibraryIsSaidToWork) {
    const auto note = call([this](HWND dialog) { told_.push_back(workerOf(dialog)); });
    manage({selectRow(JxDataSourcesList, kSystemStock), note, press(JxAddButton),
            selectRow(JxAddDataSourceList, kTheirs), note});
    EXPECT_EQ(told_, (Lines{"", ""}));
}

TEST_F(NewSourceForm, ShadowedDriversAreNotOffered) {
    home_.putSystem("odbcinst.ini", "[Mine]\nDriver=/opt/other.so\n");
    manage({press(JxAddButton), see()});
    EXPECT_EQ(seen_, Lines{" Mine\n"});
}

}  // namespace
}  // namespace jx::assist::test
