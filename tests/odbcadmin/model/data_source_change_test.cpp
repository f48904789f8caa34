// Data sources added, changed, renamed, copied and removed: whole files before and after.
#include "odbcadmin/model/data_source_change.h"

#include <filesystem>

#include "model_fixture.h"

namespace jx::model::test {
namespace {

class DataSourceChange : public ModelTest {
protected:
    std::string add(const DataSourceWish& wish) {
        return change(
            [&](const auto& configuration, const auto& way) { return addDataSource(configuration, wish, way); });
    }
    std::string ensure(const DataSourceWish& wish, OtherKeys others = OtherKeys::keep) {
        return change([&](const auto& configuration, const auto& way) {
            return ensureDataSource(configuration, wish, others, way);
        });
    }
    std::string set(const std::string& name, const Pairs& pairs) {
        return change(
            [&](const auto& configuration, const auto& way) { return setKeys(configuration, name, pairs, way); });
    }
    std::string unset(const std::string& name, const std::vector<std::string>& keys) {
        return change(
            [&](const auto& configuration, const auto& way) { return unsetKeys(configuration, name, keys, way); });
    }
    std::string copy(const std::string& from, const std::string& to, Old old = Old::keep) {
        return change([&](const auto& configuration, const auto& way) {
            return copyDataSource(configuration, from, to, old, way);
        });
    }
    std::string rename(const std::string& from, const std::string& to) { return copy(from, to, Old::remove); }
    std::string remove(const std::vector<std::string>& names) {
        return change([&](const auto& /*configuration*/, const auto& way) { return removeDataSources(names, way); });
    }
    std::string makeDefaultOf(const std::string& name) {
        return change(
            [&](const auto& configuration, const auto& way) { return makeDefault(configuration, name, way); });
    }
};

TEST_F(DataSourceChange, AddEntersListSectionDriverAndAttributesAndKeepsTheRest) {
    EXPECT_EQ(add({"Stock", "plain", {{"Server", "db2"}, {"Empty", ""}}}), "");
    EXPECT_EQ(sources(), with(kSources, "Accounts=Plain\n", "Accounts=Plain\nStock=Plain\n") +
                             "\n[Stock]\nDriver=/opt/libplain.so\nServer=db2\nEmpty=\n");
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(DataSourceChange, AddMakesTheListWhereThereIsNone) {
    home_.put(".odbc.ini", "");
    EXPECT_EQ(add({"Stock", "Plain", {}}), "");
    EXPECT_EQ(sources(), "[ODBC Data Sources]\nStock=Plain\n\n[Stock]\nDriver=/opt/libplain.so\n");
}

TEST_F(DataSourceChange, ADriverAmongTheAttributesIsStoredInsteadOfTheRegisteredOne) {
    home_.put(".odbc.ini", "");
    EXPECT_EQ(add({"Stock", "Plain", {{"DRIVER", "/other.so"}}}), "");
    EXPECT_EQ(sources(), "[ODBC Data Sources]\nStock=Plain\n\n[Stock]\nDRIVER=/other.so\n");
}

TEST_F(DataSourceChange, AddRefusesWithAReason) {
    home_.put(".odbc.ini", std::string(kSources) + "[Loose]\nKey=kept\n");
    home_.put(".odbcinst.ini", std::string(kDrivers) + "[ODBC Drivers]\nHollow=Installed\n[Hollow]\nSetup=/s.so\n");
    const std::string notNew = " in ~/.odbc.ini | Use odbcadmin dsn set or dsn ensure to change it.";
    const std::string name = "refused: No data source can be called ";
    const struct {
        DataSourceWish wish;
        std::string told;
    } rows[] = {
        {{"Sales", "Plain", {}}, "exists: There is a data source Sales" + notNew},
        {{"SALES", "Plain", {}}, "exists: There is a data source SALES" + notNew},
        {{"Loose", "Plain", {}}, "exists: There is a data source Loose" + notNew},
        {{"", "Plain", {}}, name + "\"\": it is empty | Choose another name."},
        {{" a", "Plain", {}}, name + "\" a\": it begins or ends with a blank | Choose another name."},
        {{"a\nb", "Plain", {}}, name + "\"a\nb\": it holds a line break | Choose another name."},
        {{"a=b", "Plain", {}}, name + "\"a=b\": it holds = | Choose another name."},
        {{"A(B)", "Plain", {}}, name + "\"A(B)\": it holds one of []{}(),;?*=!@\\ | Choose another name."},
        {{"odbc", "Plain", {}}, name + "\"odbc\": the section of that name has another use | Choose another name."},
        {{std::string(33, 'n'), "Plain", {}},
         name + "\"" + std::string(33, 'n') + "\": it has more than 32 bytes | Choose another name."},
        {{"Stock", "Plani", {}}, "not found: There is no driver Plani in ~/.odbcinst.ini | Did you mean Plain?"},
        {{"Stock", "xyz", {}},
         "not found: There is no driver xyz in ~/.odbcinst.ini | See odbcadmin driver list; odbcadmin driver add "
         "registers one."},
        {{"Stock", "Hollow", {}},
         "failed: Driver Hollow has no library in ~/.odbcinst.ini | Register it: odbcadmin driver ensure NAME --lib "
         "PATH"},
        {{"Stock", "Plain", {{"a=b", "1"}}},
         "refused: The key \"a=b\" cannot be stored: it holds = | The file could not give it back as it is."},
        {{"Stock", "Plain", {{"PWD", "geheim\n"}}},
         "refused: This value of PWD cannot be stored: it holds a line break | The file could not give it back as it "
         "is."},
        {{"Stock", "Plain", {{"PWD", " geheim"}}},
         "refused: This value of PWD cannot be stored: it begins or ends with a blank | The file could not give it "
         "back as it is."},
        {{"Stock", "Plain", {{"K", std::string("a\0b", 3)}}},
         "refused: This value of K cannot be stored: it holds a NUL | The file could not give it back as it is."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.wish.name + "/" + row.wish.driver);
        EXPECT_EQ(add(row.wish), row.told);
    }
}

TEST_F(DataSourceChange, NamesOfAnyCharactersThatTheStandardAllowsComeBack) {
    for (const std::string name : {"a b", "M\xC3\xBCller \xE2\x82\xAC", "a#b", "\"q\"", "'", "%s", "$HOME", "-dash",
                                   "a.b/c", "n2345678901234567890123456789012"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(add({name, "Plain", {{"K", "[1,2];x # y"}}}), "");
        const Configuration configuration = Configuration::read();
        const auto source = configuration.dataSource(name);
        ASSERT_TRUE(source);
        EXPECT_EQ(source->section->value("K"), "[1,2];x # y");
        EXPECT_EQ(remove({name}), "");
    }
    // The store spares the blank line above a section it removes.
    EXPECT_EQ(sources(), std::string(kSources) + "\n");
}

TEST_F(DataSourceChange, WhatHasAForbiddenNameAlreadyCanBeChangedAndRemoved) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nA(B)=Plain\n[A(B)]\nDriver=/opt/libplain.so\n");
    EXPECT_EQ(set("A(B)", {{"k", "v"}}), "");
    EXPECT_EQ(ensure({"a(b)", "", {{"k", "w"}}}), "");
    EXPECT_EQ(sources(), "[ODBC Data Sources]\nA(B)=Plain\n[A(B)]\nDriver=/opt/libplain.so\nk=w\n");
    EXPECT_EQ(copy("A(B)", "C(D)"),
              "refused: No data source can be called \"C(D)\": it holds one of []{}(),;?*=!@\\ | Choose another name.");
    EXPECT_EQ(rename("A(B)", "AB"), "");
    EXPECT_EQ(sources(), "[ODBC Data Sources]\nAB=Plain\n\n[AB]\nDriver=/opt/libplain.so\nk=w\n");
    home_.put(".odbc.ini", "[ODBC Data Sources]\nA(B)=Plain\n[A(B)]\nDriver=/opt/libplain.so\n");
    EXPECT_EQ(remove({"A(B)"}), "");
    EXPECT_EQ(sources(), "[ODBC Data Sources]\n");
}

TEST_F(DataSourceChange, EnsureAddsRepairsAndLeavesAlone) {
    EXPECT_EQ(ensure({"Sales", "Plain", {{"Server", "db1"}}}), "");
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(ensure({"SALES", "", {{"SERVER", "db9"}}}), "");
    EXPECT_EQ(sources(), with(kSources, "Server = db1", "Server = db9"));
    EXPECT_EQ(ensure({"Stock", "Plain", {}}), "");
    EXPECT_EQ(sources(), with(with(kSources, "Server = db1", "Server = db9"), "Accounts=Plain\n",
                              "Accounts=Plain\nStock=Plain\n") +
                             "\n[Stock]\nDriver=/opt/libplain.so\n");
}

TEST_F(DataSourceChange, EnsureRepairsTheListLineAndTheDriver) {
    home_.put(".odbc.ini", "[Sales]\nDriver=/old/path.so\nServer=db1\n");
    EXPECT_EQ(ensure({"Sales", "Plain", {}}), "");
    EXPECT_EQ(sources(), "[Sales]\nDriver=/opt/libplain.so\nServer=db1\n\n[ODBC Data Sources]\nSales=Plain\n");
}

TEST_F(DataSourceChange, EnsureExactlyRemovesOtherKeysButTheDriver) {
    EXPECT_EQ(ensure({"Sales", "", {{"Server", "db1"}, {"New", "1"}}}, OtherKeys::remove), "");
    EXPECT_EQ(sources(), with(kSources, "PWD=geheim\n", "New=1\n"));
}

TEST_F(DataSourceChange, EnsureNeedsADriverWhereNoneIsKnown) {
    home_.put(".odbc.ini", "[Lone]\nDriver=/opt/libplain.so\n[Stray]\nDriver=/opt/libother.so\n");
    EXPECT_EQ(ensure({"Stock", "", {}}),
              "incomplete: There is no data source Stock yet | Say with --driver what it is to use.");
    EXPECT_EQ(ensure({"Stray", "", {}}),
              "incomplete: The driver of data source Stray is not known: no driver is registered with its library | "
              "Say with --driver what it is to use.");
    EXPECT_EQ(ensure({"Lone", "", {{"a", "b"}}}), "");
    EXPECT_EQ(sources(),
              "[Lone]\nDriver=/opt/libplain.so\na=b\n[Stray]\nDriver=/opt/libother.so\n\n[ODBC Data "
              "Sources]\nLone=Plain\n");
    EXPECT_EQ(ensure({"a;b", "Plain", {}}),
              "refused: No data source can be called \"a;b\": it holds one of []{}(),;?*=!@\\ | Choose another name.");
}

TEST_F(DataSourceChange, SetChangesInPlaceAndAddsAtTheSectionsEnd) {
    EXPECT_EQ(set("Sales", {{"server", "db5"}, {"Timeout", "30"}}), "");
    EXPECT_EQ(sources(),
              with(with(kSources, "Server = db1", "Server = db5"), "PWD=geheim\n", "PWD=geheim\nTimeout=30\n"));
    EXPECT_EQ(set("Sales", {{"Timeout", "30"}}), "");
}

TEST_F(DataSourceChange, SetAndUnsetRefuseWithAReason) {
    EXPECT_EQ(set("Slaes", {{"a", "b"}}),
              "not found: There is no data source Slaes in ~/.odbc.ini | Did you mean Sales?");
    EXPECT_EQ(set("xyz", {{"a", "b"}}),
              "not found: There is no data source xyz in ~/.odbc.ini | See odbcadmin dsn list.");
    EXPECT_EQ(set("ODBC", {{"Trace", "1"}}),
              "refused: No data source can be called \"ODBC\": the section of that name has another use | Choose "
              "another name.");
    EXPECT_EQ(set("Sales", {{";a", "b"}}),
              "refused: The key \";a\" cannot be stored: it begins with ; | The file could not give it back as it is.");
    EXPECT_EQ(unset("Sales ", {"PWD"}),
              "refused: No data source can be called \"Sales \": it begins or ends with a blank | Choose another "
              "name.");
    EXPECT_EQ(unset("Sales", {"PWD", "driver"}),
              "refused: A data source cannot be without its Driver | Use odbcadmin dsn ensure NAME --driver to change "
              "it.");
    EXPECT_EQ(unset("Nothing", {"PWD"}),
              "not found: There is no data source Nothing in ~/.odbc.ini | See odbcadmin dsn list.");
}

TEST_F(DataSourceChange, UnsetPassesOverWhatIsNotThere) {
    EXPECT_EQ(unset("Sales", {"pwd", "Nothing"}), "");
    EXPECT_EQ(sources(), with(kSources, "PWD=geheim\n", ""));
    EXPECT_EQ(unset("Sales", {"pwd"}), "");
}

TEST_F(DataSourceChange, CopyTakesEveryKeyAndRenameTheListLineToo) {
    EXPECT_EQ(copy("sales", "Test"), "");
    EXPECT_EQ(sources(), with(kSources, "Accounts=Plain\n", "Accounts=Plain\nTest=Plain\n") +
                             "\n[Test]\nDriver=/opt/libplain.so\nServer=db1\nPWD=geheim\n");
    home_.put(".odbc.ini", kSources);
    EXPECT_EQ(rename("Accounts", "Books 2026"), "");
    EXPECT_EQ(sources(), with(with(kSources, "Accounts=Plain\n", "Books 2026=Plain\n"),
                              "[Accounts]\nDriver=/opt/libplain.so\n\n", "") +
                             "\n[Books 2026]\nDriver=/opt/libplain.so\n");
}

TEST_F(DataSourceChange, RenameMayChangeCapitalsOnly) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Plain\n[Sales]\nDriver=/x.so\n");
    EXPECT_EQ(rename("Sales", "SALES"), "");
    EXPECT_EQ(sources(), "[ODBC Data Sources]\nSALES=Plain\n\n[SALES]\nDriver=/x.so\n");
    EXPECT_EQ(rename("SALES", "SALES"), "");
    EXPECT_EQ(sources(), "[ODBC Data Sources]\nSALES=Plain\n\n[SALES]\nDriver=/x.so\n");
}

TEST_F(DataSourceChange, WhatIsInNoListStaysOutOfIt) {
    home_.put(".odbc.ini", "[Loose]\nDriver=/x.so\n");
    EXPECT_EQ(copy("Loose", "Free"), "");
    EXPECT_EQ(sources(), "[Loose]\nDriver=/x.so\n\n[Free]\nDriver=/x.so\n");
}

TEST_F(DataSourceChange, CopyAndRenameRefuseWithAReason) {
    const std::string isDefault =
        "refused: The default data source cannot be renamed, copied or replaced this way | Use odbcadmin dsn default "
        "NAME.";
    const struct {
        std::string from, to, told;
    } rows[] = {
        {"Sales", "accounts",
         "exists: There is a data source accounts in ~/.odbc.ini | Use odbcadmin dsn set or dsn ensure to change it."},
        {"Nothing", "New", "not found: There is no data source Nothing in ~/.odbc.ini | See odbcadmin dsn list."},
        {"Sales", "Default", isDefault},
        {"default", "New", isDefault},
        {"Sales", "", "refused: No data source can be called \"\": it is empty | Choose another name."},
        {"Sales", "ODBC Drivers",
         "refused: No data source can be called \"ODBC Drivers\": the section of that name has another use | Choose "
         "another name."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.from + " to " + row.to);
        EXPECT_EQ(copy(row.from, row.to), row.told);
        EXPECT_EQ(rename(row.from, row.to), row.told);
    }
    EXPECT_EQ(
        copy("Sales", "SALES"),
        "exists: There is a data source SALES in ~/.odbc.ini | Use odbcadmin dsn set or dsn ensure to change it.");
}

TEST_F(DataSourceChange, RemoveTakesSeveralInOneChangeAndSparesComments) {
    EXPECT_EQ(remove({"accounts", "SALES", "Nothing"}), "");
    EXPECT_EQ(sources(), "; our data sources\n[ODBC Data Sources]\n\n; the shop\n[ODBC]\nTrace=0\n");
    EXPECT_EQ(remove({"Sales"}), "");
}

TEST_F(DataSourceChange, TheDefaultOneStandsInTwoFiles) {
    EXPECT_EQ(makeDefaultOf("Sales"), "");
    EXPECT_EQ(drivers(), std::string(kDrivers) + "\n[Default]\nDriver=Plain\n");
    EXPECT_EQ(sources(), std::string(kSources) + "\n[Default]\nDriver=/opt/libplain.so\nServer=db1\nPWD=geheim\n");
    EXPECT_EQ(twinOfDefault(Configuration::read()), "Sales");
    EXPECT_EQ(makeDefaultOf("Sales"), "");
    EXPECT_EQ(makeDefaultOf("Accounts"), "");
    EXPECT_EQ(sources(), std::string(kSources) + "\n[Default]\nDriver=/opt/libplain.so\n");
    EXPECT_EQ(twinOfDefault(Configuration::read()), "Accounts");
    EXPECT_EQ(set("Default", {{"Server", "db7"}}), "");
    EXPECT_EQ(twinOfDefault(Configuration::read()), "");
    EXPECT_EQ(remove({"default"}), "");
    EXPECT_EQ(sources(), std::string(kSources) + "\n");
    EXPECT_EQ(drivers(), std::string(kDrivers) + "\n");
}

TEST_F(DataSourceChange, TheDefaultOneIsACopyOfAnother) {
    EXPECT_EQ(makeDefaultOf("Nothing"),
              "not found: There is no data source Nothing in ~/.odbc.ini | See odbcadmin dsn list.");
    EXPECT_EQ(makeDefaultOf("Default"),
              "not found: There is no data source Default in ~/.odbc.ini | See odbcadmin dsn list.");
    EXPECT_EQ(makeDefaultOf("Sales"), "");
    EXPECT_EQ(makeDefaultOf("Default"),
              "not found: The default data source cannot be a copy of itself | Name another one.");
    home_.put(".odbc.ini", "[ODBC Data Sources]\nOther=Gone\n[Other]\nDriver=/x.so\n");
    EXPECT_EQ(makeDefaultOf("Other"),
              "not found: There is no driver Gone in ~/.odbcinst.ini | See odbcadmin driver list; odbcadmin driver add "
              "registers one.");
}

// The driver's name goes first: a default without a section can be seen and repaired.
TEST_F(DataSourceChange, WhenTheSecondFileOfTheDefaultFailsTheFirstIsToldAsChanged) {
    home_.put("target", "");
    std::filesystem::remove(home_.file(".odbc.ini"));
    std::filesystem::create_directory(home_.file(".odbc.ini"));
    const Configuration configuration = Configuration::read();
    const ChangeResult result = ensureDataSource(configuration, {"Default", "Plain", {}}, OtherKeys::keep, ChangeWay());
    EXPECT_EQ(told(result.reason).substr(0, 14), "file trouble: ");
    EXPECT_EQ(pathsOf(result), (std::vector<std::string>{home_.file(".odbcinst.ini")}));
    EXPECT_EQ(drivers(), std::string(kDrivers) + "\n[Default]\nDriver=Plain\n");
}

TEST_F(DataSourceChange, LineEndsAndByteOrderMarkStay) {
    home_.put(".odbc.ini", "\xEF\xBB\xBF[ODBC Data Sources]\r\nSales=Plain\r\n[Sales]\r\nDriver=/opt/libplain.so\r\n");
    EXPECT_EQ(set("Sales", {{"a", "b"}}), "");
    EXPECT_EQ(sources(),
              "\xEF\xBB\xBF[ODBC Data Sources]\r\nSales=Plain\r\n[Sales]\r\nDriver=/opt/libplain.so\r\na=b\r\n");
}

// Two processes that looked before either had added it: the second finds it once it has the lock.
TEST_F(DataSourceChange, AddLooksAgainOnceTheFileIsLocked) {
    const Configuration before = Configuration::read();
    EXPECT_EQ(add({"Stock", "Plain", {{"a", "1"}}}), "");
    const std::string after = sources();
    const ChangeResult late = addDataSource(before, {"Stock", "Plain", {{"a", "2"}}}, ChangeWay());
    EXPECT_EQ(
        told(late.reason),
        "exists: There is a data source Stock in ~/.odbc.ini | Use odbcadmin dsn set or dsn ensure to change it.");
    EXPECT_EQ(sources(), after);
}

}  // namespace
}  // namespace jx::model::test
