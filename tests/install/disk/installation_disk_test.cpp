// Installations on a disk that fails or whose process is killed, at each of its calls.
#include <gtest/gtest.h>
#include <jxini.h>
#include <jxprofile.h>
#include <odbcinst.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>
#include <vector>

#include "change_cases.h"
#include "child_process.h"
#include "deadly_files.h"
#include "disk_check.h"
#include "faulty_files.h"
#include "install/item_installation.h"
#include "installation_case.h"
#include "recording_files.h"
#include "test_home.h"

namespace {

using namespace jx::test;
using namespace jx::ini::test;
using Files = InstallationCase::Files;
using Report = InstallationCase::Report;
using Names = std::vector<std::string>;

class InstallationOnDisk : public ::testing::Test {
protected:
    void SetUp() override { home_.put("odbc.inf", installationScript()); }
    void TearDown() override { EXPECT_EQ(openDescriptors(), descriptors_); }

    std::vector<InstallationCase> cases() const { return installationCases(home_.file("odbc.inf")); }

    // Each file is old or new; .odbc.ini, which is written second, is not new before the other.
    void expectOldOrNew(const InstallationCase& installation) const {
        const Files& before = InstallationCase::before();
        const Files& after = installation.after();
        const Files now = InstallationCase::filesOf(home_);
        EXPECT_TRUE(now == before || now == after || now == (Files{after.drivers, before.sources})) << now;
    }

    // The next writes remove what a killed one left.
    void expectNoLitterAfterTheNextWrites() const {
        const auto bytes = [](const char* text) { return reinterpret_cast<const unsigned char*>(text); };
        for (const char* file : {".odbcinst.ini", ".odbc.ini"})
            EXPECT_EQ(jxWritePrivateProfileString(bytes("After"), bytes("k"), bytes("1"), bytes(file)), 1);
        EXPECT_EQ(home_.names(), (Names{".odbc.ini", ".odbcinst.ini", "odbc.inf"}));
    }

    const InMemory inMemory_;
    const std::size_t descriptors_ = openDescriptors();
    const TestHome home_;
};

TEST_F(InstallationOnDisk, WritesEachFileOnceAndThatOfDriversFirst) {
    for (const InstallationCase& installation : cases()) {
        SCOPED_TRACE(installation.name());
        InstallationCase::putBack(home_);
        RecordingFiles files;
        {
            const InUse inUse(files);
            EXPECT_EQ(installation.call(), Report::success);
        }
        EXPECT_EQ(InstallationCase::filesOf(home_), installation.after());
        Names placed;
        for (const std::string& call : files.trace())
            if (call.starts_with("flush") || call.starts_with("exchange") || call.starts_with("rename"))
                placed.push_back(call);
        Names expected;
        if (installation.after().drivers != InstallationCase::before().drivers)
            expected = {"flush .odbcinst.ini.jxnew-N", "exchange .odbcinst.ini.jxnew-N .odbcinst.ini", "flush ."};
        expected.insert(expected.end(), {"flush .odbc.ini.jxnew-N", "exchange .odbc.ini.jxnew-N .odbc.ini", "flush ."});
        EXPECT_EQ(placed, expected);
    }
}

TEST_F(InstallationOnDisk, WhateverFailsEachFileIsOldOrNew) {
    int faults = 0;
    for (const InstallationCase& installation : cases())
        for (const Fail style : {Fail::once, Fail::fromThenOn})
            for (int n = 1;; ++n) {
                SCOPED_TRACE(installation.name() + std::string(" ") + std::to_string(n));
                InstallationCase::putBack(home_);
                FaultyFiles files(n, style, EIO);
                Report report;
                {
                    const InUse inUse(files);
                    report = installation.call();
                }
                expectOldOrNew(installation);
                if (report == Report::success) {
                    EXPECT_EQ(InstallationCase::filesOf(home_), installation.after());
                }
                expectNoLitterAfterTheNextWrites();
                EXPECT_EQ(openDescriptors(), descriptors_);
                if (!files.fired())
                    break;
                ++faults;
            }
    EXPECT_GT(faults, 300);
}

TEST_F(InstallationOnDisk, WheneverItIsKilledEachFileIsOldOrNew) {
    int kills = 0;
    for (const InstallationCase& installation : cases())
        for (int n = 1;; ++n) {
            SCOPED_TRACE(installation.name() + std::string(" ") + std::to_string(n));
            InstallationCase::putBack(home_);
            const int status = statusOfChild([&] {
                DeadlyFiles files(n);
                const InUse inUse(files);
                EXPECT_EQ(installation.call(), Report::success);
            });
            expectOldOrNew(installation);
            expectNoLitterAfterTheNextWrites();
            if (!WIFSIGNALED(status))
                break;
            ++kills;
        }
    EXPECT_GT(kills, 150);
}

// A disk on which another program looks at the two files before each call.
class LookedAtFiles : public WatchedFiles {
public:
    LookedAtFiles(const TestHome& home, const InstallationCase& installation)
        : home_(home), installation_(installation) {}

    int halves() const { return halves_; }

private:
    int before(Call, std::string_view) override {
        const Files now = InstallationCase::filesOf(home_);
        const Files& old = InstallationCase::before();
        const Files& after = installation_.after();
        if ((now.drivers != old.drivers && now.drivers != after.drivers) ||
            (now.sources != old.sources && now.sources != after.sources))
            ++halves_;
        return 0;
    }

    const TestHome& home_;
    const InstallationCase& installation_;
    int halves_ = 0;
};

TEST_F(InstallationOnDisk, OthersNeverSeeAPartOfIt) {
    for (const InstallationCase& installation : cases()) {
        SCOPED_TRACE(installation.name());
        InstallationCase::putBack(home_);
        LookedAtFiles files(home_, installation);
        const InUse inUse(files);
        EXPECT_EQ(installation.call(), Report::success);
        EXPECT_EQ(files.halves(), 0);
    }
}

// ---- the order of the locks ----

// The lock files in the order in which they were made.
Names locksOf(const RecordingFiles& files) {
    Names locks;
    for (const jx::ini::test::DiskChange& change : files.changes())
        if (change.kind == DiskChange::Kind::create && change.name.ends_with(".jxlock"))
            locks.push_back(change.name);
    return locks;
}

TEST_F(InstallationOnDisk, LocksTheFileOfDriversFirstEvenWhereItsFirstWriteIsRefusedOrGoesToTheOtherFile) {
    const auto installList = [](const std::string& list) {
        char path[64];
        SQLInstallDriver(nullptr, list.c_str(), path, sizeof path, nullptr);
    };
    using namespace std::string_literals;
    const std::vector<std::function<void()>> calls = {
        [&] { installList("CreateDSN=Sales ;x\0Driver=/l/d.so\0A=1\0\0"s); },
        [&] { installList("CreateDSN=Sales,\r\0Driver=/l/d.so\0A=1\0\0"s); },
        [] {
            TestRecord record;
            record.directories("/l", "/l/");
            record.item(jx::install::DriverItem, "a\rb").file("Driver", "d.so").capability("CreateDSN", "Sales");
            record.item(jx::install::DriverItem, "D").file("Driver", "e.so");
            jx::install::InstallItems(0, record.get());
        },
        [] { SQLWriteDSNToIni("default", "D"); },
        [] { SQLWriteDSNToIni("DEFAULT", "D"); },
    };
    for (const auto& call : calls) {
        InstallationCase::putBack(home_);
        RecordingFiles files;
        const InUse inUse(files);
        call();
        EXPECT_EQ(locksOf(files), (Names{".odbcinst.ini.jxlock", ".odbc.ini.jxlock"}));
    }
}

// ---- what is reported ----

TEST_F(InstallationOnDisk, OfADriverIsNotReportedWhereItsDataSourceCannotBeMade) {
    InstallationCase::putBack(home_);
    ASSERT_EQ(::unlink(home_.file(".odbc.ini").c_str()), 0);
    ASSERT_EQ(::mkdir(home_.file(".odbc.ini").c_str(), 0700), 0);
    char path[64] = "?";
    WORD length = 999;
    EXPECT_EQ(SQLInstallDriver(nullptr, "D\0Driver=/l/d.so\0CreateDSN=Sales\0", path, sizeof path, &length), FALSE);
    EXPECT_STREQ(path, "");
    EXPECT_EQ(length, 0);
    EXPECT_EQ(jxIniLastFailure().error, EISDIR);
    EXPECT_EQ(home_.text(".odbcinst.ini"), InstallationCase::before().drivers);
}

TEST_F(InstallationOnDisk, OfADataSourceChangesNothingWhereItsDriverCannotBeRead) {
    class BrokenDrivers : public WatchedFiles {
        int before(Call call, std::string_view path) override {
            return call == Call::look && path.ends_with("/.odbcinst.ini") ? EIO : 0;
        }
    };
    InstallationCase::putBack(home_);
    BrokenDrivers files;
    const InUse inUse(files);
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "D"), FALSE);
    EXPECT_EQ(jxIniLastFailure().error, EIO);
    EXPECT_EQ(InstallationCase::filesOf(home_), InstallationCase::before());
}

TEST_F(InstallationOnDisk, OfADataSourceTakesADirectoryInThePlaceOfTheDriverFileForAnEmptyOne) {
    InstallationCase::putBack(home_);
    ASSERT_EQ(::unlink(home_.file(".odbcinst.ini").c_str()), 0);
    ASSERT_EQ(::mkdir(home_.file(".odbcinst.ini").c_str(), 0700), 0);
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "D"), FALSE);
    EXPECT_EQ(home_.text(".odbc.ini").find("Sales"), std::string::npos) << "the old entry is removed";
}

}  // namespace
