// What is found in the files, and where it stands.
#include "odbcadmin/model/configuration.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "jxutl/ini/child_process.h"
#include "model_fixture.h"
#include "odbcadmin/model/text.h"

namespace jx::model::test {
namespace {

class ConfigurationTest : public ModelTest {
protected:
    std::string at(const Located& place) const {
        return place ? "\"" + place.text + "\" " + replaced(place.where(), home_.path(), "~") : "-";
    }

    std::string dump(const DataSource& source) const {
        return source.name + (source.isListed() ? " listed" : "") + (source.isDefault ? " default" : "") + ", driver " +
               source.driver + "\n  listed " + at(source.listed) + "\n  header " + at(source.header) + "\n  library " +
               at(source.library) + "\n  in " + replaced(source.file->path, home_.path(), "~") + "\n";
    }

    std::string dump(const Registered& entry) const {
        return entry.name + "\n  listed " + at(entry.listed) + "\n  header " + at(entry.header) + "\n  library " +
               at(entry.library) + "\n  setup " + at(entry.setup) + "\n";
    }

    template <class Rows>
    std::string dumpAll(const Rows& rows) const {
        std::string text;
        for (const auto& row : rows)
            text += dump(row);
        return text;
    }
};

TEST_F(ConfigurationTest, DataSourcesAreThoseOfTheListThenThoseWithADriverThenTheDefaultOne) {
    home_.put(".odbc.ini", R"([Loose]
Driver=/opt/loose.so
[ODBC Data Sources]
sales = Plain
NoSection=Plain
Hollow=Plain
[Other]
Key=no driver
[SALES]
Driver = /opt/libplain.so
[Hollow]
Driver=
[ODBC]
Driver=no data source
[Default]
Driver=/opt/libplain.so
)");
    home_.put(".odbcinst.ini", "[Default]\nDriver=Plain\n");
    EXPECT_EQ(dumpAll(Configuration::read().dataSources()), R"(sales listed, driver Plain
  listed "Plain" ~/.odbc.ini:4
  header "SALES" ~/.odbc.ini:9
  library "/opt/libplain.so" ~/.odbc.ini:10
  in ~/.odbc.ini
NoSection listed, driver Plain
  listed "Plain" ~/.odbc.ini:5
  header -
  library -
  in ~/.odbc.ini
Hollow listed, driver Plain
  listed "Plain" ~/.odbc.ini:6
  header "Hollow" ~/.odbc.ini:11
  library -
  in ~/.odbc.ini
Loose, driver /opt/loose.so
  listed -
  header "Loose" ~/.odbc.ini:1
  library "/opt/loose.so" ~/.odbc.ini:2
  in ~/.odbc.ini
Default default, driver Plain
  listed "Plain" ~/.odbcinst.ini:2
  header "Default" ~/.odbc.ini:15
  library "/opt/libplain.so" ~/.odbc.ini:16
  in ~/.odbc.ini
)");
}

TEST_F(ConfigurationTest, ADataSourceIsFoundInAnyCaseByItsExactName) {
    home_.put(".odbc.ini", std::string(kSources) + "[Other]\nKey=no driver\n");
    const Configuration configuration = Configuration::read();
    const struct {
        std::string name, found;
    } rows[] = {
        {"Sales", "Sales"}, {"sALES", "Sales"}, {"Accounts", "Accounts"},
        {"other", "Other"}, {" Sales", ""},     {"Sales ", ""},
        {"", ""},           {"ODBC", ""},       {"odbc drivers", ""},
        {"Default", ""},    {"Sale", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto source = configuration.dataSource(row.name);
        EXPECT_EQ(source ? source->name : "", row.found);
    }
    EXPECT_EQ(configuration.dataSource("other")->driver, "");
}

TEST_F(ConfigurationTest, TheDefaultOneIsThereWhenEitherFileHasIt) {
    home_.put(".odbcinst.ini", "[default]\ndriver=Plain\n");
    EXPECT_EQ(dump(*Configuration::read().dataSource("DEFAULT")),
              "Default default, driver Plain\n  listed \"Plain\" ~/.odbcinst.ini:2\n  header -\n  library -\n  in "
              "~/.odbc.ini\n");
    home_.put(".odbc.ini", "[Default]\nServer=db1\n");
    home_.put(".odbcinst.ini", "");
    EXPECT_EQ(dump(*Configuration::read().dataSource("Default")),
              "Default default, driver \n  listed -\n  header \"Default\" ~/.odbc.ini:1\n  library -\n  in "
              "~/.odbc.ini\n");
    EXPECT_EQ(namesOf(Configuration::read().dataSources()), (std::vector<std::string>{"Default"}));
}

TEST_F(ConfigurationTest, DriversAndTranslatorsAreThoseOfTheListThenSectionsWithTheirKey) {
    home_.put(".odbcinst.ini", R"([ODBC Drivers]
Plain=Installed
Gone=Installed
[ODBC Translators]
Latin=Installed
[Latin]
Translator=/opt/latin.so
Setup=
[Loose]
Driver=/opt/loose.so
Setup=/opt/set.so
[Plain]
Driver=/opt/libplain.so
[Default]
Driver=Plain
[Both]
Driver=/opt/both.so
Translator=/opt/both.so
)");
    const Configuration configuration = Configuration::read();
    EXPECT_EQ(dumpAll(configuration.drivers()), R"(Plain
  listed "Installed" ~/.odbcinst.ini:2
  header "Plain" ~/.odbcinst.ini:12
  library "/opt/libplain.so" ~/.odbcinst.ini:13
  setup -
Gone
  listed "Installed" ~/.odbcinst.ini:3
  header -
  library -
  setup -
Loose
  listed -
  header "Loose" ~/.odbcinst.ini:9
  library "/opt/loose.so" ~/.odbcinst.ini:10
  setup "/opt/set.so" ~/.odbcinst.ini:11
Both
  listed -
  header "Both" ~/.odbcinst.ini:16
  library "/opt/both.so" ~/.odbcinst.ini:17
  setup -
)");
    EXPECT_EQ(dumpAll(configuration.all(kTranslatorKind)), R"(Latin
  listed "Installed" ~/.odbcinst.ini:5
  header "Latin" ~/.odbcinst.ini:6
  library "/opt/latin.so" ~/.odbcinst.ini:7
  setup -
Both
  listed -
  header "Both" ~/.odbcinst.ini:16
  library "/opt/both.so" ~/.odbcinst.ini:18
  setup -
)");
    EXPECT_TRUE(configuration.driver("PLAIN"));
    EXPECT_FALSE(configuration.driver("Latin"));
    EXPECT_FALSE(configuration.driver("Plain "));
    EXPECT_FALSE(configuration.driver("Default"));
    EXPECT_TRUE(configuration.find(kTranslatorKind, "latin"));
    EXPECT_FALSE(configuration.find(kTranslatorKind, "Plain"));
}

TEST_F(ConfigurationTest, DataSourcesOfADriverAreThoseThatNameIt) {
    home_.put(".odbc.ini", std::string(kSources) + "[Loose]\nDriver=/opt/libplain.so\n[ODBC Data Sources]\nX=Other\n");
    home_.put(".odbcinst.ini", "[Default]\nDriver=PLAIN\n");
    EXPECT_EQ(namesOf(Configuration::read().dataSourcesOf("plain")),
              (std::vector<std::string>{"Sales", "Accounts", "Default"}));
}

TEST_F(ConfigurationTest, ManyNamesAreFoundOnce) {
    std::string text = "[ODBC Data Sources]\n";
    for (int i = 0; i < 2000; ++i)
        text += "S" + std::to_string(i) + "=Plain\n";
    for (int i = 0; i < 2000; ++i)
        text += "[s" + std::to_string(i) + "]\nDriver=/x.so\n";
    home_.put(".odbc.ini", text);
    EXPECT_EQ(Configuration::read().dataSources().size(), 2000U);
}

TEST_F(ConfigurationTest, AnAbsentFileIsAnEmptyOne) {
    unlink(home_.file(".odbc.ini").c_str());
    const Configuration configuration = Configuration::read();
    EXPECT_EQ(configuration.file(FileKind::dataSources).state, ConfigFile::State::absent);
    EXPECT_EQ(configuration.file(FileKind::drivers).state, ConfigFile::State::read);
    EXPECT_EQ(told(configuration.trouble()), "");
    EXPECT_TRUE(configuration.dataSources().empty());
    EXPECT_EQ(namesOf(configuration.drivers()), (std::vector<std::string>{"Plain"}));
}

TEST_F(ConfigurationTest, AnUnreadableFileIsAValueAndTheOtherOneAnswers) {
    const struct {
        const char* what;
        std::function<void(const std::string&)> make;
        std::string reason;
    } rows[] = {
        {"directory", [](const std::string& path) { mkdir(path.c_str(), 0700); },
         "file trouble: Cannot open ~/.odbc.ini: Is a directory | There must be a file at this place, or nothing."},
        {"FIFO", [](const std::string& path) { mkfifo(path.c_str(), 0600); },
         "file trouble: Cannot open ~/.odbc.ini: Operation not supported | There must be an ordinary file at this "
         "place, or "
         "nothing."},
        {"link to itself", [](const std::string& path) { std::filesystem::create_symlink(".odbc.ini", path); },
         "file trouble: Cannot find ~/.odbc.ini: Too many levels of symbolic links | Make the link anew, or remove "
         "it."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        std::filesystem::remove_all(home_.file(".odbc.ini"));
        row.make(home_.file(".odbc.ini"));
        const Configuration configuration = Configuration::read();
        EXPECT_EQ(configuration.file(FileKind::dataSources).state, ConfigFile::State::unreadable);
        EXPECT_EQ(told(configuration.trouble(FileKind::dataSources)), row.reason);
        EXPECT_EQ(told(configuration.trouble()), row.reason);
        EXPECT_EQ(told(configuration.trouble(FileKind::drivers)), "");
        EXPECT_EQ(namesOf(configuration.drivers()), (std::vector<std::string>{"Plain"}));
        EXPECT_TRUE(configuration.dataSources().empty());
    }
}

TEST_F(ConfigurationTest, AFileThatMayNotBeReadSaysSo) {
    chmod(home_.path().c_str(), 0755);
    chmod(home_.file(".odbcinst.ini").c_str(), 0);
    EXPECT_TRUE(jx::ini::test::passesAsNobody([&] {
        const Configuration configuration = Configuration::read();
        EXPECT_EQ(told(configuration.trouble(FileKind::drivers)),
                  "no right: Cannot open ~/.odbcinst.ini: Permission denied | Look at the rights of the file and of "
                  "its directory: ls -ld.");
    }));
}

// The first file of a kind that knows a name answers for it, and says which file it is.
TEST_F(ConfigurationTest, OfSeveralFilesTheFirstThatKnowsANameAnswers) {
    const auto file = [](FileKind kind, const std::string& path, std::string_view text) {
        ConfigFile made;
        made.kind = kind;
        made.path = path;
        made.state = ConfigFile::State::read;
        made.view = std::move(*IniView::parse(text));
        return made;
    };
    std::vector<ConfigFile> files;
    files.push_back(file(FileKind::drivers, "/a/inst", "[ODBC Drivers]\nD=Installed\n[D]\nDriver=/a/d.so\n"));
    files.push_back(
        file(FileKind::dataSources, "/a/odbc", "[ODBC Data Sources]\nOne=D\n[One]\nDriver=/a/d.so\n[ODBC]\nTrace=1\n"));
    files.push_back(file(FileKind::dataSources, "/b/odbc",
                         "[ODBC Data Sources]\nONE=E\nTwo=E\n[ONE]\nDriver=/b\n[Two]\nDriver=/b\n[ODBC]\nTrace=0\n"));
    files.push_back(file(FileKind::drivers, "/b/inst",
                         "[ODBC Drivers]\nE=Installed\nd=Installed\n[E]\nDriver=/b/e.so\n[Default]\nDriver=E\n"));
    const Configuration configuration(std::move(files));
    EXPECT_EQ(namesOf(configuration.dataSources()), (std::vector<std::string>{"One", "Two", "Default"}));
    EXPECT_EQ(namesOf(configuration.drivers()), (std::vector<std::string>{"D", "E"}));
    EXPECT_EQ(configuration.dataSource("one")->listed.where(), "/a/odbc:2");
    EXPECT_EQ(configuration.dataSource("two")->library.where(), "/b/odbc:7");
    EXPECT_EQ(configuration.dataSource("two")->file->path, "/b/odbc");
    EXPECT_EQ(configuration.driver("e")->library.where(), "/b/inst:5");
    EXPECT_EQ(configuration.setting("Trace").where(), "/a/odbc:6");
    EXPECT_EQ(configuration.defaultDriver().where(), "/b/inst:7");
    EXPECT_EQ(configuration.file(FileKind::drivers).path, "/a/inst");
    EXPECT_EQ(configuration.sectionNames(FileKind::dataSources), (std::vector<std::string>{"One", "ONE", "Two"}));
}

// A section is never put together from two files: the list may stand in the one and the section in the other.
TEST_F(ConfigurationTest, AListAndASectionOfTwoFilesAreOneDataSource) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Plain\n[Stock]\nServer=db1\n");
    home_.putSystem("odbc.ini", "[Sales]\nDriver=/x.so\n[Stock]\nDriver=/y.so\nPWD=x\n[ODBC]\nTrace=1\n");
    const Configuration configuration = Configuration::read(Scopes());
    const auto sales = configuration.dataSource("sales");
    ASSERT_TRUE(sales);
    EXPECT_EQ(sales->file->scope, Scope::system);
    EXPECT_EQ(sales->listed.where(), home_.file(".odbc.ini") + ":2");
    EXPECT_EQ(sales->library.where(), home_.systemFile("odbc.ini") + ":2");
    const auto stock = configuration.dataSource("Stock");
    ASSERT_TRUE(stock);
    EXPECT_FALSE(stock->library);
    EXPECT_EQ(stock->section->value("PWD"), "");
    EXPECT_EQ(stock->hides.where(), home_.systemFile("odbc.ini") + ":3");
    // Its section answers, and has no Driver.
    EXPECT_EQ(namesOf(configuration.dataSources()), (std::vector<std::string>{"Sales"}));
    EXPECT_EQ(namesOf(configuration.hiddenDataSources()), (std::vector<std::string>{"Stock"}));
}

TEST_F(ConfigurationTest, TheScopesThatAreAskedForAreRead) {
    home_.putSystem("odbc.ini", "[ODBC Data Sources]\nSALES=Wide\nStock=Wide\n[SALES]\nDriver=/x.so\n");
    home_.putSystem("odbcinst.ini", "[ODBC Drivers]\nWide=Installed\nplain=Installed\n[Wide]\nDriver=/w.so\n");
    const struct {
        Scopes scopes;
        const char* sources;
        const char* drivers;
    } rows[] = {
        {{}, "Sales Accounts Stock", "Plain Wide"},
        {{Seen::user, Seen::user}, "Sales Accounts", "Plain"},
        {{Seen::user, Seen::both}, "Sales Accounts", "Plain Wide"},
        {{Seen::system, Seen::system}, "SALES Stock", "Wide plain"},
    };
    for (const auto& row : rows) {
        const Configuration configuration = Configuration::read(row.scopes);
        EXPECT_EQ(joined(namesOf(configuration.dataSources()), " "), row.sources);
        EXPECT_EQ(joined(namesOf(configuration.drivers()), " "), row.drivers);
    }
}

TEST_F(ConfigurationTest, AFileThatBothScopesHaveIsReadOnce) {
    setenv("ODBCINSTINI", home_.file(".odbcinst.ini").c_str(), 1);
    const Configuration both = Configuration::read(Scopes());
    EXPECT_EQ(both.files(FileKind::drivers).size(), 1U);
    EXPECT_EQ(both.driver("Plain")->file->scope, Scope::user);
    EXPECT_EQ(Configuration::read({Seen::system, Seen::system}).driver("Plain")->file->scope, Scope::system);
}

TEST_F(ConfigurationTest, ASystemsFileThatCannotBeReadLeavesTheUsersToAnswer) {
    mkdir(home_.systemFile("odbc.ini").c_str(), 0700);
    const Configuration configuration = Configuration::read(Scopes());
    EXPECT_EQ(told(configuration.trouble()), "");
    ASSERT_EQ(configuration.furtherTroubles().size(), 1U);
    EXPECT_EQ(configuration.furtherTroubles()[0].fact,
              "Cannot open " + home_.systemFile("odbc.ini") + ": Is a directory");
    EXPECT_TRUE(configuration.dataSource("Sales"));
    EXPECT_EQ(told(Configuration::read({Seen::system, Seen::system}).trouble(FileKind::dataSources)),
              "file trouble: Cannot open ~.etc/odbc.ini: Is a directory | There must be a file at this place, or "
              "nothing.");
}

TEST_F(ConfigurationTest, WhatWasFoundStaysGoodWhenTheConfigurationIsMoved) {
    Configuration configuration = Configuration::read();
    const auto source = configuration.dataSource("Sales");
    const Configuration moved = std::move(configuration);
    EXPECT_EQ(source->section->value("Server"), "db1");
    EXPECT_EQ(source->library.where(), home_.file(".odbc.ini") + ":8");
}

TEST_F(ConfigurationTest, WhatIsNotThereComesWithNearNames) {
    const Configuration configuration = Configuration::read();
    EXPECT_EQ(told(noDataSource(configuration, "Slaes")),
              "not found: There is no data source Slaes in ~/.odbc.ini | Did you mean Sales?");
    EXPECT_EQ(told(noDataSource(configuration, "x")),
              "not found: There is no data source x in ~/.odbc.ini | See odbcadmin dsn list.");
    EXPECT_EQ(told(noneRegistered(configuration, kTranslatorKind, "x")),
              "not found: There is no translator x in ~/.odbcinst.ini | See odbcadmin translator list; odbcadmin "
              "translator add registers one.");
    EXPECT_EQ(told(noDataSourceOrDriver(configuration, "Plaim")),
              "not found: There is no data source or driver Plaim in ~/.odbc.ini and ~/.odbcinst.ini | Did you mean "
              "Plain?");
    EXPECT_EQ(told(noDataSourceOrDriver(configuration, "x")),
              "not found: There is no data source or driver x in ~/.odbc.ini and ~/.odbcinst.ini | See odbcadmin dsn "
              "list and odbcadmin driver list.");
}

// What the screens read, which know the user's files only.
TEST_F(ConfigurationTest, WhatStandsInAFileThatIsNotLookedAtIsSaidToStandThere) {
    home_.putSystem("odbc.ini", "[Wide One]\nDriver=/x.so\n");
    home_.putSystem("odbcinst.ini", "[Wide]\nDriver=/x.so\n");
    const Configuration users = Configuration::read();
    EXPECT_EQ(
        told(noDataSource(users, "wide one")),
        "not found: The data source wide one stands in ~.etc/odbc.ini only, the file of the system | Leave --user "
        "out to read it; --system changes it.");
    EXPECT_EQ(told(noDataSource(users, "x")),
              "not found: There is no data source x in ~/.odbc.ini | See odbcadmin dsn list.");
    EXPECT_EQ(told(noneRegistered(users, kDriverKind, "Wide")),
              "not found: The driver Wide stands in ~.etc/odbcinst.ini only, the file of the system | Leave --user out "
              "to read it; --system changes it.");
    const Configuration systems = Configuration::read({Seen::system, Seen::system});
    EXPECT_EQ(
        told(noneRegistered(systems, kDriverKind, "Plain")),
        "not found: The driver Plain stands in ~/.odbcinst.ini only, the file of the user | Leave --system out, or "
        "copy it first: see odbcadmin driver copy --help.");
    EXPECT_EQ(told(noDataSource(Configuration::read(Scopes()), "x")),
              "not found: There is no data source x in ~/.odbc.ini or ~.etc/odbc.ini | See odbcadmin dsn list.");
}

TEST_F(ConfigurationTest, TheEnvironmentNamesTheFiles) {
    home_.put("mine.ini", "[ODBC Data Sources]\nMine=Plain\n");
    setenv("ODBCINI", home_.file("mine.ini").c_str(), 1);
    const Configuration configuration = Configuration::read();
    EXPECT_EQ(namesOf(configuration.dataSources()), (std::vector<std::string>{"Mine"}));
    EXPECT_EQ(configuration.file(FileKind::dataSources).path, home_.file("mine.ini"));
    EXPECT_EQ(configuration.file(FileKind::dataSources).name, ".odbc.ini");
}

}  // namespace
}  // namespace jx::model::test
