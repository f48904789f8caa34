// What an installed file leaves in the configuration files.
#include "install/configuration_update.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "record_text.h"
#include "test_home.h"

namespace {

using namespace jx::install;
using namespace jx::test;

void update(TestRecord& record, unsigned long item, unsigned long file, const char* path) {
    WritableText installed(path);
    UpdateOdbcIniAndOdbcInstIni(record.get(), item, file, installed.bytes());
    EXPECT_EQ(installed.all(), path);
}

TEST(ConfigurationUpdate, EntersADriverWithItsLibraryAndCapabilities) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "My Driver").file("Driver", "libdrv.so");
    record.capability("SQLLevel", "0").capability("APILevel", "1").capability("FileExtns", "*.txt");
    update(record, 0, 0, "/opt/odbc/lib/libdrv.so");
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[ODBC Drivers]\nMy Driver=Installed\n\n[My Driver]\nDriver=/opt/odbc/lib/libdrv.so\nAPILevel=1\n"
              "FileExtns=*.txt\nSQLLevel=0\n");
    EXPECT_EQ(home.names(), std::vector<std::string>{".odbcinst.ini"});
}

TEST(ConfigurationUpdate, WritesAllCapabilitiesInOrderButForCreateDSN) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "D").file("Driver", "d.so");
    for (const char* key : kCapabilityKeys) {
        if (std::string(key) != "CreateDSN")
            record.capability(key, key);
    }
    update(record, 0, 0, "/l/d.so");
    EXPECT_EQ(
        home.text(".odbcinst.ini"),
        "[ODBC Drivers]\nD=Installed\n\n[D]\nDriver=/l/d.so\nAPILevel=APILevel\nConnectFunctions=ConnectFunctions\n"
        "DriverODBCVer=DriverODBCVer\nFileUsage=FileUsage\nFileExtns=FileExtns\nSQLLevel=SQLLevel\n");
}

TEST(ConfigurationUpdate, ReplacesAnOlderSectionAndMovesTheDriverToTheEndOfTheList) {
    const TestHome home(
        {{".odbcinst.ini",
          "; mine\n[ODBC Drivers]\nD=Installed\nOther=Installed\n\n[D]\nDriver=/old\nNote=gone\n\n[Other]\n"
          "Driver=/o\n"}});
    TestRecord record;
    record.item(DriverItem, "D").file("Driver", "d.so").capability("APILevel", "2");
    update(record, 0, 0, "/l/d.so");
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "; mine\n[ODBC Drivers]\nOther=Installed\nD=Installed\n\n[Other]\nDriver=/o\n\n[D]\nDriver=/l/d.so\n"
              "APILevel=2\n");
}

TEST(ConfigurationUpdate, ClearsAListThatReadsAsAbsent) {
    const TestHome home({{".odbcinst.ini", "[ODBC Drivers]\nNOT AVAILABLE=Installed\nOther=Installed\n"}});
    TestRecord record;
    record.item(DriverItem, "D").file("Driver", "d.so");
    update(record, 0, 0, "/l/d.so");
    EXPECT_EQ(home.text(".odbcinst.ini"), "[ODBC Drivers]\nD=Installed\n\n[D]\nDriver=/l/d.so\n");
}

TEST(ConfigurationUpdate, KeepsAListThatIsThereThoughNoDriverIsInIt) {
    const TestHome home({{".odbcinst.ini", "[ODBC Drivers]\n; mine\n"}});
    TestRecord record;
    record.item(DriverItem, "D").file("Driver", "d.so");
    update(record, 0, 0, "/l/d.so");
    EXPECT_EQ(home.text(".odbcinst.ini"), "[ODBC Drivers]\nD=Installed\n; mine\n\n[D]\nDriver=/l/d.so\n");
}

TEST(ConfigurationUpdate, WritesTheDriverAsItsOwnSetupLibraryWhenBothAreOneFile) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "D").file("Setup", "d.so").file("Driver", "d.so").capability("APILevel", "1");
    update(record, 0, 1, "/l/d.so");
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[ODBC Drivers]\nD=Installed\n\n[D]\nDriver=/l/d.so\nSetup=/l/d.so\nAPILevel=1\n");
}

TEST(ConfigurationUpdate, WritesAnotherSetupLibraryWhenThatFileIsInstalled) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "D").file("Driver", "d.so").file("Setup", "s.so").capability("APILevel", "1");
    update(record, 0, 0, "/l/d.so");
    EXPECT_EQ(home.text(".odbcinst.ini"), "[ODBC Drivers]\nD=Installed\n\n[D]\nDriver=/l/d.so\nAPILevel=1\n");
    update(record, 0, 1, "/l/s.so");
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[ODBC Drivers]\nD=Installed\n\n[D]\nDriver=/l/d.so\nAPILevel=1\nSetup=/l/s.so\n");
}

TEST(ConfigurationUpdate, MovesASetupLibraryThatIsInstalledAgainToTheEndOfItsSection) {
    const TestHome home({{".odbcinst.ini", "[D]\nDriver=/l/d.so\nSetup=/l/s.so\nSQLLevel=1\n"}});
    TestRecord record;
    record.item(DriverItem, "D").file("Setup", "s.so");
    update(record, 0, 0, "/l/s.so");
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nDriver=/l/d.so\nSQLLevel=1\nSetup=/l/s.so\n");
}

TEST(ConfigurationUpdate, CreatesTheDriversDataSourcesWithTheLibraryJustWritten) {
    const TestHome home({{".odbcinst.ini", "[D]\nDriver=/old/d.so\n"}});
    TestRecord record;
    record.item(DriverItem, "D").file("Driver", "d.so").capability("CreateDSN", "Sales, Accounts");
    update(record, 0, 0, "/l/d.so");
    EXPECT_EQ(home.text(".odbcinst.ini"), "[ODBC Drivers]\nD=Installed\n\n[D]\nDriver=/l/d.so\n");
    EXPECT_EQ(quoted(record->items[0].driverKeys[kCreateDsn]), "\"Sales  Accounts\"") << "its commas are gone";
    EXPECT_EQ(home.text(".odbc.ini"),
              "[ODBC Data Sources]\nSales=D\nAccounts=D\n\n[Sales]\nDriver=/l/d.so\n\n[Accounts]\nDriver=/l/d.so\n");
}

TEST(ConfigurationUpdate, EntersATranslator) {
    const TestHome home({{".odbcinst.ini", "[ODBC Translators]\nOld=Installed\n\n[T]\nTranslator=/old\nNote=gone\n"}});
    TestRecord record;
    record.item(TranslatorItem, "T").file("Translator", "t.so").capability("APILevel", "never written");
    update(record, 0, 0, "/l/t.so");
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[ODBC Translators]\nOld=Installed\nT=Installed\n\n[T]\nTranslator=/l/t.so\n");
}

TEST(ConfigurationUpdate, LeavesATranslatorThatIsInstalledAgainAtItsPlaceInTheList) {
    const TestHome home({{".odbcinst.ini", "[ODBC Translators]\nT=1\nOther=Installed\n"}});
    TestRecord record;
    record.item(TranslatorItem, "T").file("Translator", "t.so");
    update(record, 0, 0, "/l/t.so");
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[ODBC Translators]\nT=Installed\nOther=Installed\n\n[T]\nTranslator=/l/t.so\n");
}

TEST(ConfigurationUpdate, WritesATranslatorAsItsOwnSetupLibraryOnlyWhenBothAreOneFile) {
    const TestHome home;
    TestRecord record;
    record.item(TranslatorItem, "T").file("Translator", "t.so").file("Setup", "other.so").file("Setup", "t.so");
    update(record, 0, 0, "/l/t.so");
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[ODBC Translators]\nT=Installed\n\n[T]\nTranslator=/l/t.so\nSetup=/l/t.so\n");
    TestRecord apart;
    apart.item(TranslatorItem, "T").file("Translator", "t.so").file("Setup", "other.so");
    update(apart, 0, 0, "/l/t.so");
    EXPECT_EQ(home.text(".odbcinst.ini"), "[ODBC Translators]\nT=Installed\n\n[T]\nTranslator=/l/t.so\n");
    update(apart, 0, 1, "/l/other.so");
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[ODBC Translators]\nT=Installed\n\n[T]\nTranslator=/l/t.so\nSetup=/l/other.so\n");
}

TEST(ConfigurationUpdate, LetsTheFirstItemsKindDecideWhetherASetupFileIsRecorded) {
    struct Row {
        ItemKind first;
        ItemKind second;
        const char* text;
    };
    constexpr Row rows[] = {{DriverItem, CoreItem, "[Second]\nSetup=/l/s.so\n"},
                            {TranslatorItem, DriverItem, "[Second]\nSetup=/l/s.so\n"},
                            {CoreItem, DriverItem, "(absent)"},
                            {CoreItem, TranslatorItem, "(absent)"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const TestHome home;
        TestRecord record;
        record.item(row.first, "First").item(row.second, "Second").file("Setup", "s.so");
        update(record, 1, 0, "/l/s.so");
        EXPECT_EQ(home.text(".odbcinst.ini"), row.text);
    }
}

TEST(ConfigurationUpdate, LeavesTheFilesAloneForOtherRolesAndOtherItems) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "D")
        .file("Help", "d.hlp")
        .file("driver", "d.so")
        .file(nullptr, "n.so")
        .file("Translator", "t.so");
    record.item(TranslatorItem, "T").file("Driver", "d.so").file("", "e.so");
    record.item(CoreItem, "ODBC").file("Driver", "d.so").file("Translator", "t.so").file("CPanel", "c.so");
    for (const InstallItem& item : itemsOf(*record.get())) {
        for (unsigned long file = 0; file < item.entryCount; ++file)
            update(record, static_cast<unsigned long>(&item - record->items), file, "/l/x.so");
    }
    EXPECT_TRUE(home.names().empty());
}

TEST(ConfigurationUpdate, WritesNothingForAnItemThatIsNamedLikeAList) {
    constexpr char kBefore[] = "[ODBC Drivers]\nA=Installed\n\n[ODBC Translators]\nT=Installed\n";
    const TestHome home({{".odbcinst.ini", kBefore}});
    for (const char* name :
         {"ODBC Drivers", "ODBC Translators", "ODBC Data Sources", "odbc DRIVERS", " ODBC Drivers\t"}) {
        for (const ItemKind kind : {DriverItem, CoreItem, TranslatorItem}) {
            SCOPED_TRACE(name);
            TestRecord record;
            record.item(kind, name).file("Driver", "d.so").file("Setup", "s.so").file("Translator", "t.so");
            record.capability("CreateDSN", "Sales");
            for (unsigned long file = 0; file < 3; ++file)
                update(record, 0, file, "/l/x.so");
        }
    }
    EXPECT_EQ(home.text(".odbcinst.ini"), kBefore);
    EXPECT_EQ(home.names(), std::vector<std::string>{".odbcinst.ini"});
}

TEST(ConfigurationUpdate, WritesNothingForAnItemWithoutAName) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "").file("Driver", "d.so").file("Setup", "s.so").capability("APILevel", "1");
    update(record, 0, 0, "/l/d.so");
    update(record, 0, 1, "/l/s.so");
    EXPECT_EQ(home.text(".odbcinst.ini"), "(absent)");
}

}  // namespace
