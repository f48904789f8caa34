// Drivers and translators registered, changed and removed: whole files before and after.
#include "odbcadmin/model/registration.h"

#include "model_fixture.h"

namespace jx::model::test {
namespace {

class RegistrationTest : public ModelTest {
protected:
    std::string enter(const Registration& wish, WhenPresent present = WhenPresent::fail,
                      const RegisteredKind& kind = kDriverKind) {
        return change([&](const auto& configuration, const auto& way) {
            return registerEntry(configuration, kind, wish, present, way);
        });
    }
    std::string remove(const std::string& name, const RegisteredKind& kind = kDriverKind) {
        return change([&](const auto& configuration, const auto& way) {
            return unregisterEntry(configuration, kind, name, way);
        });
    }
};

TEST_F(RegistrationTest, EntersListSectionLibrarySetupAndKeys) {
    EXPECT_EQ(enter({"New Driver", "/opt/new.so", "/opt/set.so", {{"FileUsage", "1"}}}), "");
    EXPECT_EQ(drivers(), R"([ODBC Drivers]
Plain=Installed
New Driver=Installed

[Plain]
Driver=/opt/libplain.so
Setup=/opt/setup.so
FileUsage=0

[New Driver]
Driver=/opt/new.so
Setup=/opt/set.so
FileUsage=1
)");
    EXPECT_EQ(sources(), kSources);
}

TEST_F(RegistrationTest, ATranslatorHasAListAndAKeyOfItsOwn) {
    home_.put(".odbcinst.ini", "");
    EXPECT_EQ(enter({"Latin", "liblatin.so"}, WhenPresent::fail, kTranslatorKind), "");
    EXPECT_EQ(drivers(), "[ODBC Translators]\nLatin=Installed\n\n[Latin]\nTranslator=liblatin.so\n");
}

TEST_F(RegistrationTest, AChangeLeavesWhatIsNotGiven) {
    EXPECT_EQ(enter({"plain", "/opt/two.so", {}, {{"fileusage", "2"}}}, WhenPresent::change), "");
    EXPECT_EQ(drivers(),
              with(with(kDrivers, "Driver=/opt/libplain.so", "Driver=/opt/two.so"), "FileUsage=0", "FileUsage=2"));
    home_.put(".odbcinst.ini", kDrivers);
    EXPECT_EQ(enter({"Plain", ""}, WhenPresent::change), "");
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(RegistrationTest, AnEmptySetupLibraryRemovesTheOldOne) {
    EXPECT_EQ(enter({"Plain", "/opt/two.so", ""}, WhenPresent::change), "");
    EXPECT_EQ(drivers(),
              with(with(kDrivers, "Driver=/opt/libplain.so", "Driver=/opt/two.so"), "Setup=/opt/setup.so\n", ""));
}

TEST_F(RegistrationTest, ASectionWithoutAListLineIsListed) {
    home_.put(".odbcinst.ini", "[Loose]\nDriver=/l.so\n");
    EXPECT_EQ(enter({"Loose", ""}, WhenPresent::change), "");
    EXPECT_EQ(drivers(), "[Loose]\nDriver=/l.so\n\n[ODBC Drivers]\nLoose=Installed\n");
}

TEST_F(RegistrationTest, RefusesWithAReason) {
    const std::string longest(49, 'n');
    const std::string name = "refused: No driver can be called ";
    const struct {
        Registration wish;
        std::string told;
    } rows[] = {
        {{"PLAIN", "/x.so"},
         "exists: There is a driver PLAIN in ~/.odbcinst.ini | Use odbcadmin driver ensure to change it."},
        {{"", "/x.so"}, "refused: The driver has no name | Give it one."},
        {{longest + "n", "/x.so"}, name + "\"" + longest + "n\": it has more than 49 bytes | Choose another name."},
        {{"A(B", "/x.so"}, name + "\"A(B\": its parentheses are not in pairs | Choose another name."},
        {{"a=b", "/x.so"}, name + "\"a=b\": it holds = | Choose another name."},
        {{"a;b", "/x.so"}, name + "\"a;b\": it holds one of []{};=\"\\ | Choose another name."},
        {{"odbc drivers", "/x.so"},
         name + "\"odbc drivers\": the section of that name has another use | Choose another name."},
        {{"DEFAULT", "/x.so"}, name + "\"DEFAULT\": the section of that name has another use | Choose another name."},
        {{"New", ""}, "incomplete: The driver New has no library yet | Give it with --lib."},
        {{"New", "./x.so"}, "refused: The path of the driver's library does not begin with / | Give its full path."},
        {{"New", "/x.so", "y/x.so"},
         "refused: The path of the setup library does not begin with / | Give its full path."},
        {{"New", "/" + std::string(1023, 'x')},
         "refused: The path of the driver's library is too long | At most 1023 bytes are possible."},
        {{"New", "/x.so", {}, {{"k", " v"}}},
         "refused: This value of k cannot be stored: it begins or ends with a blank | ~/.odbcinst.ini could not give "
         "it "
         "back as it is; use another one."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.told);
        EXPECT_EQ(enter(row.wish), row.told);
    }
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(RegistrationTest, TakesNamesAndPathsUpToTheirLimits) {
    const std::string longest(49, 'n');
    const std::string path = "/" + std::string(1022, 'x');
    EXPECT_EQ(enter({longest, path}), "");
    EXPECT_EQ(enter({"A(B) 3.5, 64-bit", "libx.so"}), "");
    const Configuration configuration = Configuration::read();
    EXPECT_EQ(configuration.driver(longest)->library.text, path);
    EXPECT_EQ(configuration.driver("A(B) 3.5, 64-bit")->library.text, "libx.so");
}

TEST_F(RegistrationTest, ANameThatSomethingElseHasIsTaken) {
    EXPECT_EQ(enter({"Latin", "/l.so"}, WhenPresent::fail, kTranslatorKind), "");
    EXPECT_EQ(enter({"latin", "/l.so"}, WhenPresent::fail, kTranslatorKind),
              "exists: There is something called latin in ~/.odbcinst.ini | Remove it first, or choose another name.");
    EXPECT_EQ(enter({"Plain", "/l.so"}, WhenPresent::fail, kTranslatorKind),
              "exists: There is something called Plain in ~/.odbcinst.ini | Remove it first, or choose another name.");
    EXPECT_EQ(enter({"Latin", "/l.so"}),
              "exists: There is something called Latin in ~/.odbcinst.ini | Remove it first, or choose another name.");
}

TEST_F(RegistrationTest, RemoveTakesListLineAndSectionAndNothingElse) {
    EXPECT_EQ(remove("PLAIN"), "");
    EXPECT_EQ(drivers(), "[ODBC Drivers]\n\n");
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(remove("Plain"),
              "not found: There is no driver Plain in ~/.odbcinst.ini | See odbcadmin driver list; odbcadmin driver "
              "add registers one.");
    EXPECT_EQ(remove("Plain", kTranslatorKind),
              "not found: There is no translator Plain in ~/.odbcinst.ini | See odbcadmin translator list; odbcadmin "
              "translator add registers one.");
    EXPECT_EQ(remove("ODBC Drivers"),
              "refused: No driver can be called \"ODBC Drivers\": the section of that name has another use | Choose "
              "another name.");
}

// Whoever made it: the rules for new names do not stand in the way.
TEST_F(RegistrationTest, WhatHasAForbiddenNameAlreadyCanBeChangedAndRemoved) {
    const std::string old = "[ODBC Drivers]\nA;B=Installed\n[A;B]\nDriver=/a.so\n";
    home_.put(".odbcinst.ini", old);
    EXPECT_EQ(enter({"A;B", "/b.so"}, WhenPresent::change), "");
    EXPECT_EQ(drivers(), with(old, "/a.so", "/b.so"));
    EXPECT_EQ(remove("a;b"), "");
    EXPECT_EQ(drivers(), "[ODBC Drivers]\n");
    EXPECT_EQ(told(whyNoRegisteredName(Configuration::read(), kDriverKind, "A;B")),
              "refused: No driver can be called \"A;B\": it holds one of []{};=\"\\ | Choose another name.");
}

// Another program removed it after the configuration was read.
TEST_F(RegistrationTest, WhatIsGoneMeanwhileIsNotMadeAnew) {
    const Configuration configuration = Configuration::read();
    home_.put(".odbcinst.ini", "[ODBC Drivers]\n");
    const ChangeWay way;
    for (const ChangeResult& result :
         {setRegisteredKeys(configuration, kDriverKind, "Plain", {{"a", "b"}}, way),
          unsetRegisteredKeys(configuration, kDriverKind, "Plain", {"FileUsage"}, way),
          renameRegistered(configuration, kDriverKind, "Plain", "Other", {Scope::user}, way)}) {
        EXPECT_EQ(result.reason.kind, Reason::Kind::notFound);
        EXPECT_TRUE(result.files.empty());
    }
    EXPECT_EQ(drivers(), "[ODBC Drivers]\n");
    EXPECT_EQ(sources(), kSources);
}

TEST_F(RegistrationTest, ANameOnAListAloneIsTaken) {
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nListed=Installed\n[ODBC Translators]\nGreek=Installed\n");
    EXPECT_EQ(enter({"listed", "/l.so"}),
              "exists: There is a driver listed in ~/.odbcinst.ini | Use odbcadmin driver ensure to change it.");
    EXPECT_EQ(enter({"greek", "/l.so"}, WhenPresent::fail, kTranslatorKind),
              "exists: There is something called greek in ~/.odbcinst.ini | Remove it first, or choose another name.");
    EXPECT_EQ(enter({"Listed", "/l.so"}, WhenPresent::change), "");
    EXPECT_EQ(drivers(),
              "[ODBC Drivers]\nListed=Installed\n[ODBC Translators]\nGreek=Installed\n\n[Listed]\nDriver=/l.so\n");
}

TEST_F(RegistrationTest, HalfOfAnEntryIsEnoughToChangeIt) {
    const auto set = [&](const std::string& name) {
        return change([&](const auto& configuration, const auto& way) {
            return setRegisteredKeys(configuration, kDriverKind, name, {{"FileUsage", "1"}}, way);
        });
    };
    home_.put(".odbcinst.ini", "[Loose]\nDriver=/l.so\n");
    EXPECT_EQ(set("loose"), "");
    EXPECT_EQ(drivers(), "[Loose]\nDriver=/l.so\nFileUsage=1\n");
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nListed=Installed\n");
    EXPECT_EQ(set("listed"), "");
    EXPECT_EQ(drivers(), "[ODBC Drivers]\nListed=Installed\n\n[listed]\nFileUsage=1\n");
}

TEST_F(RegistrationTest, KeysAreRefusedWithAReason) {
    const std::string longest = "/" + std::string(1022, 'x');
    const std::string path = "refused: The path of the ";
    const struct {
        const RegisteredKind& kind;
        std::pair<std::string, std::string> key;
        std::string told;
    } rows[] = {
        {kDriverKind, {"driver", "sub/x.so"}, path + "driver's library does not begin with / | Give its full path."},
        {kDriverKind,
         {"Driver", longest + "x"},
         path + "driver's library is too long | At most 1023 bytes are possible."},
        {kDriverKind, {"Driver", longest}, ""},
        {kDriverKind,
         {"Driver", ""},
         "refused: A driver cannot be without its library | Give a path, or remove the driver."},
        {kDriverKind, {"SETUP", "sub/x.so"}, path + "setup library does not begin with / | Give its full path."},
        {kDriverKind, {"Setup", longest + "x"}, path + "setup library is too long | At most 1023 bytes are possible."},
        {kDriverKind, {"Setup", ""}, ""},
        {kDriverKind, {"Translator", "sub/x.so"}, ""},
        {kDriverKind,
         {"PWD", "********"},
         "refused: The value given for PWD is what a hidden secret is shown as, not the secret | Give the secret "
         "itself; "
         "--show-secrets prints one that is stored."},
        {kTranslatorKind,
         {"Translator", "sub/x.so"},
         path + "translator's library does not begin with / | Give its full path."},
        {kTranslatorKind,
         {"translator", ""},
         "refused: A translator cannot be without its library | Give a path, or remove the translator."},
        {kTranslatorKind, {"Driver", "sub/x.so"}, ""},
        {kTranslatorKind, {"Driver", ""}, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.key.first + "=" + row.key.second);
        home_.put(".odbcinst.ini",
                  "[ODBC Translators]\nLatin=Installed\n[Latin]\nTranslator=/l.so\n" + std::string(kDrivers));
        const std::string name = &row.kind == &kDriverKind ? "Plain" : "Latin";
        EXPECT_EQ(change([&](const auto& configuration, const auto& way) {
                      return setRegisteredKeys(configuration, row.kind, name, {row.key}, way);
                  }),
                  row.told);
    }
}

TEST_F(RegistrationTest, SeveralAreEnteredTogetherOrNotAtAll) {
    const auto enterAll = [&](const std::vector<Entering>& entries) {
        return change([&](const auto& configuration, const auto& way) {
            return registerEntries(configuration, kDriverKind, entries, way);
        });
    };
    const Entering good{{"New", "/new.so"}, WhenPresent::fail};
    EXPECT_EQ(enterAll({good, {{"plain", "/x.so"}, WhenPresent::fail}}),
              "exists: There is a driver plain in ~/.odbcinst.ini | Use odbcadmin driver ensure to change it.");
    EXPECT_EQ(enterAll({good, {{"A=B", "/x.so"}, WhenPresent::change}}),
              "refused: No driver can be called \"A=B\": it holds = | Choose another name.");
    EXPECT_EQ(enterAll({good, {{"Other", ""}, WhenPresent::change}}),
              "incomplete: The driver Other has no library yet | Give it with --lib.");
    EXPECT_EQ(enterAll({good, {{"Other", "/x.so", "", {{"PWD", "********"}}}, WhenPresent::fail}}),
              "refused: The value given for PWD is what a hidden secret is shown as, not the secret | Give the secret "
              "itself; --show-secrets prints one that is stored.");
    EXPECT_EQ(drivers(), kDrivers);
    EXPECT_EQ(enterAll({}), "");
    EXPECT_EQ(enterAll({good, {{"plain", "/x.so"}, WhenPresent::change}}), "");
    EXPECT_EQ(drivers(), with(with(kDrivers, "Plain=Installed\n", "Plain=Installed\nNew=Installed\n"),
                              "Driver=/opt/libplain.so", "Driver=/x.so") +
                             "\n[New]\nDriver=/new.so\n");
}

}  // namespace
}  // namespace jx::model::test
