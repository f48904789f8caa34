// Where the files may be, and which of them counts.
#include "odbcadmin/model/config_places.h"

#include <cstdlib>
#include <filesystem>

#include "model_fixture.h"
#include "odbcadmin/model/system_files.h"
#include "odbcadmin/model/text.h"

namespace jx::model::test {
namespace {

class ConfigPlacesTest : public ModelTest {
protected:
    // The winner, and every candidate but the account's own, whose path depends on who runs the test, and those in
    // /etc, of which the machine may have some.
    std::string dump(const ConfigPlace& place) const {
        std::string text = place.file + " by " + place.variable + ": " + place.path + "\n";
        for (const Candidate& each : place.candidates)
            if (each.why.find("of the account") == std::string::npos && !each.path.starts_with("/etc/"))
                text += std::string(each.wins ? "* " : "  ") + each.path + (each.exists ? "" : " (absent)") + ", " +
                        each.why + "\n";
        return replaced(text, home_.path(), "~");
    }
};

TEST_F(ConfigPlacesTest, TheUsersFileComesBeforeTheSystemsOfEachKind) {
    home_.putSystem("odbcinst.ini", "");
    const auto places = configPlaces();
    ASSERT_EQ(places.size(), 4U);
    EXPECT_EQ(dump(places[0]), R"(.odbc.ini by ODBCINI: ~/.odbc.ini
* ~/.odbc.ini, in the directory that HOME names
)");
    EXPECT_EQ(dump(places[1]), R"(odbc.ini by ODBCSYSINI: ~.etc/odbc.ini
* ~.etc/odbc.ini (absent), in the directory that ODBCSYSINI names
)");
    EXPECT_EQ(dump(places[2]), R"(.odbcinst.ini by ODBCINSTINI: ~/.odbcinst.ini
* ~/.odbcinst.ini, in the directory that HOME names
)");
    EXPECT_EQ(dump(places[3]), R"(odbcinst.ini by ODBCSYSINI: ~.etc/odbcinst.ini
* ~.etc/odbcinst.ini, in the directory that ODBCSYSINI names
)");
}

TEST_F(ConfigPlacesTest, AVariableCountsMore) {
    setenv("ODBCINI", "some.ini", 1);
    EXPECT_EQ(dump(configPlaces()[0]), R"(.odbc.ini by ODBCINI: some.ini
* some.ini (absent), ODBCINI names it
  ~/.odbc.ini, in the directory that HOME names
)");
    setenv("ODBCINI", home_.file(".odbc.ini").c_str(), 1);
    EXPECT_EQ(dump(configPlaces()[0]), R"(.odbc.ini by ODBCINI: ~/.odbc.ini
* ~/.odbc.ini, ODBCINI names it
)");
    setenv("ODBCINI", "", 1);
    EXPECT_EQ(configPlaces()[0].path, home_.file(".odbc.ini"));
}

// What libodbcinst.so.2 makes of the variables that move the system's files.
TEST_F(ConfigPlacesTest, TheSystemsFilesMoveAsTheLibraryMovesThem) {
    const std::string etc = home_.systemPath();
    const struct {
        const char* directory;
        const char* drivers;
        std::string sourcesPath, driversPath;
    } rows[] = {
        {"/srv/odbc", "", "/srv/odbc/odbc.ini", "/srv/odbc/odbcinst.ini"},
        {"/srv/odbc/", "", "/srv/odbc/odbc.ini", "/srv/odbc/odbcinst.ini"},
        {"/", "", "/odbc.ini", "/odbcinst.ini"},
        {"", "", "/etc/odbc.ini", "/etc/odbcinst.ini"},
        {"srv/odbc", "", "/etc/odbc.ini", "/etc/odbcinst.ini"},
        {"/srv", "/opt/inst.ini", "/srv/odbc.ini", "/opt/inst.ini"},
        {"/srv", "inst.ini", "/srv/odbc.ini", "/srv/inst.ini"},
        {"/srv", "./inst.ini", "/srv/odbc.ini", "/srv/odbcinst.ini"},
        {"/srv", "..", "/srv/odbc.ini", "/srv/odbcinst.ini"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.directory) + " " + row.drivers);
        setenv("ODBCSYSINI", row.directory, 1);
        setenv("ODBCINSTINI", row.drivers, 1);
        EXPECT_EQ(systemPath(FileKind::dataSources), row.sourcesPath);
        EXPECT_EQ(systemPath(FileKind::drivers), row.driversPath);
    }
    setenv("ODBCINSTINI", "inst.ini", 1);
    setenv("ODBCSYSINI", etc.c_str(), 1);
    EXPECT_EQ(dump(configPlaces()[3]), R"(odbcinst.ini by ODBCSYSINI: ~.etc/inst.ini
* ~.etc/inst.ini (absent), ODBCINSTINI names it
  ~.etc/odbcinst.ini (absent), in the directory that ODBCSYSINI names
)");
}

TEST_F(ConfigPlacesTest, WithoutHomeTheAccountsDirectoryCounts) {
    unsetenv("HOME");
    for (const ConfigPlace& place : configPlaces()) {
        if (place.scope == Scope::system)
            continue;
        const auto& winner = place.candidates.front();
        EXPECT_EQ(winner.path, place.path);
        EXPECT_TRUE(winner.wins);
        EXPECT_EQ(winner.why, "in the home directory of the account; counts when HOME is not set");
    }
}

TEST_F(ConfigPlacesTest, EachGenerationReadsFilesOfItsOwn) {
    const auto text = [&] {
        std::string all;
        for (const Generation& each : generations())
            all += each.program + ": " + joined(each.dataSources) + "; " + joined(each.drivers) + "\n";
        return replaced(all, home_.path(), "~");
    };
    EXPECT_EQ(text(), R"(libodbcinst.so.1: ~/.odbc.ini; ~/.odbcinst.ini
libodbcinst.so.2: ~/.odbc.ini, ~.etc/odbc.ini; ~/.odbcinst.ini, ~.etc/odbcinst.ini
libodbcinst.so.2 without ODBCSYSINI: ~/.odbc.ini, /etc/odbc.ini; ~/.odbcinst.ini, /etc/odbcinst.ini
)");
    unsetenv("ODBCSYSINI");
    setenv("ODBCINSTINI", "/opt/inst.ini", 1);
    setenv("ODBCINI", "mine.ini", 1);
    EXPECT_EQ(text(), R"(libodbcinst.so.1: mine.ini; /opt/inst.ini
libodbcinst.so.2: ~/.odbc.ini, /etc/odbc.ini; ~/.odbcinst.ini, /opt/inst.ini
libodbcinst.so.2 with ODBCSYSINI=DIR: ~/.odbc.ini, DIR/odbc.ini; ~/.odbcinst.ini, /opt/inst.ini
)");
}

TEST_F(ConfigPlacesTest, AFullPathInOdbciniMovesTheDataSourcesOnly) {
    setenv("ODBCINI", "/srv/mine.ini", 1);
    for (const Generation& each : generations()) {
        EXPECT_EQ(each.dataSources.front(), "/srv/mine.ini") << each.program;
        EXPECT_EQ(each.drivers.front(), home_.file(".odbcinst.ini")) << each.program;
    }
}

TEST_F(ConfigPlacesTest, NameTheirVariables) {
    EXPECT_STREQ(variableOf(FileKind::dataSources), "ODBCINI");
    EXPECT_STREQ(variableOf(FileKind::drivers), "ODBCINSTINI");
}

}  // namespace
}  // namespace jx::model::test
