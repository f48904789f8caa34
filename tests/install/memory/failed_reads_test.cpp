// Installations that cannot read a file they are about to change.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <cerrno>
#include <string>
#include <string_view>

#include "config/text_bytes.h"
#include "install/configuration_update.h"
#include "install/data_source_creation.h"
#include "install/driver_installation.h"
#include "install/script_entries.h"
#include "install/script_items.h"
#include "record_text.h"
#include "test_home.h"
#include "watched_files.h"

namespace {

using namespace jx::install;
using namespace jx::test;
using jx::asBytes;
using jx::ini::test::Call;

// From the nth look at a file of that name on, the disk reports an error. Writes are not affected.
class BrokenFile : public jx::ini::test::WatchedFiles {
public:
    explicit BrokenFile(std::string_view name, int from = 1) : name_(name), from_(from) {}

private:
    int before(Call call, std::string_view path) override {
        return call == Call::look && path.ends_with(name_) && ++looks_ >= from_ ? EIO : 0;
    }

    std::string name_;
    int from_;
    int looks_ = 0;
    const jx::ini::test::InUse inUse_{*this};
};

constexpr char kDriverFile[] = "[ODBC Drivers]\nOther=Installed\n\n[Other]\nDriver=/o.so\n\n[D]\nDriver=/l/d.so\n";
constexpr char kSourceFile[] = "[ODBC Data Sources]\nMine=Other\n\n[Mine]\nDriver=/o.so\n";

TEST(FailedRead, OfTheDriverListKeepsTheOtherDrivers) {
    const TestHome home({{".odbcinst.ini", kDriverFile}});
    const BrokenFile broken("/.odbcinst.ini");
    TestRecord record;
    record.item(DriverItem, "D").file("Driver", "d.so");
    WritableText path("/n/d.so");
    UpdateOdbcIniAndOdbcInstIni(record.get(), 0, 0, path.bytes());
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[ODBC Drivers]\nOther=Installed\nD=Installed\n\n[Other]\nDriver=/o.so\n\n[D]\nDriver=/n/d.so\n");
}

TEST(FailedRead, OfADriversLibraryCreatesNoDataSource) {
    class BrokenDrivers : public jx::ini::test::WatchedFiles {
        int before(Call, std::string_view path) override {
            return path.find(".odbcinst.ini") != std::string_view::npos ? EIO : 0;
        }
    };
    const TestHome home({{".odbcinst.ini", kDriverFile}, {".odbc.ini", kSourceFile}});
    BrokenDrivers broken;
    const jx::ini::test::InUse inUse(broken);
    WritableText list("Sales, Accounts");
    CreateDataSources(list.bytes(), asBytes("D"));
    EXPECT_EQ(home.text(".odbc.ini"), kSourceFile);
    EXPECT_EQ(list.all(), "Sales  Accounts");
}

TEST(FailedRead, OfTheRegisteredLibraryRefusesADriverFromAScript) {
    const TestHome home({{".odbcinst.ini", kDriverFile}, {"odbc.inf", "[D]\n\"Driver\"=1,new.so,\n"}});
    const BrokenFile broken("/.odbcinst.ini");
    char path[64] = "?";
    WORD length = 999;
    EXPECT_EQ(SQLInstallDriver(home.file("odbc.inf").c_str(), "D", path, sizeof path, &length), FALSE);
    EXPECT_STREQ(path, "?");
    EXPECT_EQ(length, 999);
    EXPECT_EQ(home.text(".odbcinst.ini"), kDriverFile);
}

TEST(FailedRead, OfALineOfTheScriptLeavesTheComponentWithoutFiles) {
    const TestHome home(
        {{"odbc.inf", "[D]\n\"Driver\"=" + scriptLine("d.so") + "\n\"Setup\"=" + scriptLine("s.so") + "\n"}});
    for (int look = 1; look <= 3; ++look) {
        SCOPED_TRACE(look);
        const BrokenFile broken("/odbc.inf", look);
        TestRecord record(home.file("odbc.inf").c_str());
        record.item(DriverItem, "D");
        EXPECT_EQ(GetDataFromObdcInf(record.get(), 0), 1U);
        EXPECT_EQ(dump(*record.get()), "driver \"D\" selected\n");
    }
}

TEST(FailedRead, OfTheScriptIsReportedByEveryStepThatReadsIt) {
    const TestHome home({{"odbc.inf", "[D-Keys]\nAPILevel=1\n[ODBC]\nx=1\n[ODBC Translators]\n\"T\"=1\n"}});
    using Step = unsigned int (*)(_Install*);
    for (const Step step : {&GetTheDriverKeys, &PlaceTranslatorsToBeInstalledInInstallStruct, &GetTheNonDriverItems}) {
        const BrokenFile broken("/odbc.inf");
        TestRecord record(home.file("odbc.inf").c_str());
        record.item(DriverItem, "D");
        EXPECT_EQ(step(record.get()), 1U);
        EXPECT_EQ(dump(*record.get()), "driver \"D\" selected\n");
    }
}

TEST(FailedRead, OfASingleCapabilityIsReportedToo) {
    const TestHome home({{"odbc.inf", "[D-Keys]\nSQLLevel=1\n"}});
    const BrokenFile broken("/odbc.inf", 3);
    TestRecord record(home.file("odbc.inf").c_str());
    record.item(DriverItem, "D");
    EXPECT_EQ(GetTheDriverKeys(record.get()), 1U);
}

}  // namespace
