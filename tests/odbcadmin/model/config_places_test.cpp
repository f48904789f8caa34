// Where the files may be, and which of them counts.
#include "odbcadmin/model/config_places.h"

#include <cstdlib>
#include <filesystem>

#include "model_fixture.h"

namespace jx::model::test {
namespace {

class ConfigPlacesTest : public ModelTest {
protected:
    // The winner, and every candidate but the account's own, whose path depends on who runs the test.
    std::string dump(const ConfigPlace& place) const {
        std::string text = place.file + " by " + place.variable + ": " + place.path + "\n";
        for (const Candidate& each : place.candidates)
            if (each.why.find("of the account") == std::string::npos)
                text += std::string(each.wins ? "* " : "  ") + each.path + (each.exists ? "" : " (absent)") + ", " +
                        each.why + "\n";
        return replaced(text, home_.path(), "~");
    }
};

TEST_F(ConfigPlacesTest, HomeCountsAndTheSystemsFolderNeverDoes) {
    std::filesystem::create_directory(home_.file("etc"));
    home_.put("etc/odbcinst.ini", "");
    const auto places = configPlaces(home_.file("etc"));
    ASSERT_EQ(places.size(), 2U);
    EXPECT_EQ(dump(places[0]), R"(.odbc.ini by ODBCINI: ~/.odbc.ini
* ~/.odbc.ini, in the directory that HOME names
  ~/etc/odbc.ini (absent), other systems keep a file for all users there; it is never read
)");
    EXPECT_EQ(dump(places[1]), R"(.odbcinst.ini by ODBCINSTINI: ~/.odbcinst.ini
* ~/.odbcinst.ini, in the directory that HOME names
  ~/etc/odbcinst.ini, other systems keep a file for all users there; it is never read
)");
}

TEST_F(ConfigPlacesTest, AVariableCountsMore) {
    setenv("ODBCINI", "some.ini", 1);
    EXPECT_EQ(dump(configPlaces("/none")[0]), R"(.odbc.ini by ODBCINI: some.ini
* some.ini (absent), ODBCINI names it
  ~/.odbc.ini, in the directory that HOME names
  /none/odbc.ini (absent), other systems keep a file for all users there; it is never read
)");
    setenv("ODBCINI", home_.file(".odbc.ini").c_str(), 1);
    EXPECT_EQ(dump(configPlaces("/none")[0]), R"(.odbc.ini by ODBCINI: ~/.odbc.ini
* ~/.odbc.ini, ODBCINI names it
  /none/odbc.ini (absent), other systems keep a file for all users there; it is never read
)");
    setenv("ODBCINI", "", 1);
    EXPECT_EQ(configPlaces("/none")[0].path, home_.file(".odbc.ini"));
}

TEST_F(ConfigPlacesTest, WithoutHomeTheAccountsDirectoryCounts) {
    unsetenv("HOME");
    for (const ConfigPlace& place : configPlaces("/none")) {
        const auto& winner = place.candidates.front();
        EXPECT_EQ(winner.path, place.path);
        EXPECT_TRUE(winner.wins);
        EXPECT_EQ(winner.why, "in the home directory of the account; counts when HOME is not set");
    }
}

TEST_F(ConfigPlacesTest, NameTheirVariables) {
    EXPECT_STREQ(variableOf(FileKind::dataSources), "ODBCINI");
    EXPECT_STREQ(variableOf(FileKind::drivers), "ODBCINSTINI");
}

}  // namespace
}  // namespace jx::model::test
