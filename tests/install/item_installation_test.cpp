// Installing the files of a run, component by component.
#include "install/item_installation.h"

#include <gtest/gtest.h>
#include <jxdialog.h>

#include <algorithm>
#include <string>
#include <vector>

#include "install/processed_files.h"
#include "record_text.h"
#include "recorded_hooks.h"
#include "test_home.h"

namespace {

using namespace jx::install;
using namespace jx::test;
using Calls = std::vector<std::string>;

// The calls that begin with hook.
Calls callsOf(const RecordedHooks& hooks, const std::string& hook) {
    Calls found;
    std::copy_if(hooks.calls.begin(), hooks.calls.end(), std::back_inserter(found),
                 [&](const std::string& call) { return call.starts_with(hook); });
    return found;
}

TEST(InstallItems, GoesThroughItsHooksInOrderAndEntersTheFiles) {
    const TestHome home;
    RecordedHooks hooks;
    TestRecord record;
    record.item(DriverItem, "D").file("Driver", "d.so").file("Setup", "s.so").directories("/cdrom", "/opt/");
    EXPECT_EQ(InstallItems(7, record.get()), 1U);
    EXPECT_EQ(hooks.calls, (Calls{"VersionCheck 0 0", "CopyDisk 0 0", "CopyDisk 0 1",
                                  "Decompress /cdrom/d.s_ /opt/d.so", "Decompress /cdrom/s.s_ /opt/s.so"}));
    EXPECT_EQ(home.text(".odbcinst.ini"), "[ODBC Drivers]\nD=Installed\n\n[D]\nDriver=/opt/d.so\nSetup=/opt/s.so\n");
    EXPECT_EQ(record->anyFileInstalled, 1U);
    EXPECT_EQ(dumpProcessed(*record.get()), "\"d.so\"\"s.so\"");
}

TEST(InstallItems, ChecksVersionsOfFourRolesInEveryItemSelectedOrNot) {
    const TestHome home;
    RecordedHooks hooks;
    TestRecord record;
    record.item(DriverItem, "A").file("Driver", nullptr).file("Setup", nullptr).file("Windows00", nullptr);
    record.item(CoreItem, "B").file("CPanel", nullptr).file("driver", nullptr).file(nullptr, nullptr);
    record.item(TranslatorItem, "C").file("Translator", nullptr).file("Drive", nullptr).directories("/s", "/t/");
    record->items[1].selected = 0;
    InstallItems(0, record.get());
    EXPECT_EQ(callsOf(hooks, "VersionCheck"),
              (Calls{"VersionCheck 0 0", "VersionCheck 0 2", "VersionCheck 1 0", "VersionCheck 2 0"}));
}

TEST(InstallItems, ShowsTheWaitCursorOnceAVersionIsChecked) {
    const TestHome home;
    for (const bool checked : {false, true}) {
        JXW_SetCursor(kJxwArrowCursor);
        TestRecord record;
        record.item(DriverItem, "A").file(checked ? "Driver" : "Setup", nullptr).directories("/s", "/t/");
        InstallItems(0, record.get());
        EXPECT_EQ(JXW_GetCursor(), unsigned{checked ? kJxwWaitCursor : kJxwArrowCursor});
    }
    JXW_SetCursor(kJxwArrowCursor);
}

TEST(InstallItems, AsksForDisksWhereSelectedIsOneAndProcessesWhereItIsNotZero) {
    const TestHome home;
    RecordedHooks hooks;
    TestRecord record;
    record.item(CoreItem, "Zero").file("A", "zero.so").item(CoreItem, "One").file("A", "one.so");
    record.item(CoreItem, "Two").file("A", "two.so").directories("/s", "/t/");
    for (std::uint32_t item = 0; item < 3; ++item)
        record->items[item].selected = item;
    InstallItems(0, record.get());
    EXPECT_EQ(hooks.calls, (Calls{"CopyDisk 1 0", "Decompress /s/one.s_ /t/one.so", "Decompress /s/two.s_ /t/two.so"}));
}

TEST(InstallItems, EndsBeforeAnyFileWhenADiskIsRefused) {
    const TestHome home;
    RecordedHooks hooks;
    hooks.copyDiskResult = 2;
    TestRecord record;
    record.item(DriverItem, "D").file("Driver", "d.so").file("Setup", "s.so").directories("/s", "/t/");
    EXPECT_EQ(InstallItems(0, record.get()), 1U);
    EXPECT_EQ(hooks.calls, (Calls{"VersionCheck 0 0", "CopyDisk 0 0"}));
    EXPECT_EQ(record->anyFileInstalled, 0U);
    EXPECT_TRUE(home.names().empty());
}

TEST(InstallItems, ProcessesAFileOnceWhateverComponentsNameIt) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "A").file("Driver", "d.so").file("Setup", "d.so");
    record.item(DriverItem, "B").file("Driver", "d.so").file("Setup", "D.so").directories("/s", "/t/");
    InstallItems(0, record.get());
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[ODBC Drivers]\nA=Installed\n\n[A]\nDriver=/t/d.so\nSetup=/t/d.so\n\n[B]\nSetup=/t/D.so\n");
    EXPECT_EQ(dumpProcessed(*record.get()), "\"d.so\"\"D.so\"");
}

TEST(InstallItems, PassesOverAFileThatTheRecordHoldsAsProcessed) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "D").file("Driver", "d.so").directories("/s", "/t/");
    EXPECT_EQ(AddFileToProcessedList(record.get(), 0, 0), 1U);
    InstallItems(0, record.get());
    EXPECT_EQ(home.text(".odbcinst.ini"), "(absent)");
    EXPECT_EQ(record->processedCount, 1U);
}

TEST(InstallItems, InstallsAComponentThatIsListedTwiceOnce) {
    const TestHome home;
    TestRecord record;
    for (int time = 0; time < 3; ++time)
        record.item(DriverItem, "A").file("Driver", "d.so");
    record.directories("/s", "/t/");
    InstallItems(0, record.get());
    EXPECT_EQ(home.text(".odbcinst.ini"), "[ODBC Drivers]\nA=Installed\n\n[A]\nDriver=/t/d.so\n");
    EXPECT_EQ(dumpProcessed(*record.get()), "\"d.so\"");
}

TEST(InstallItems, PassesOverEntriesWithoutAFileName) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "A").file("Driver", nullptr).file("Setup", "s.so").directories("/s", "/t/");
    InstallItems(0, record.get());
    EXPECT_EQ(home.text(".odbcinst.ini"), "[A]\nSetup=/t/s.so\n");
    EXPECT_EQ(dumpProcessed(*record.get()), "\"s.so\"");
}

TEST(InstallItems, ReplacesTheLastCharacterOfTheMediumsName) {
    const TestHome home;
    RecordedHooks hooks;
    TestRecord record;
    record.item(CoreItem, "A").file("x", "driver.so").file("x", "a").file("x", "README").directories("/cdrom", "/t/");
    InstallItems(0, record.get());
    EXPECT_EQ(callsOf(hooks, "Decompress"), (Calls{"Decompress /cdrom/driver.s_ /t/driver.so",
                                                   "Decompress /cdrom/_ /t/a", "Decompress /cdrom/READM_ /t/README"}));
}

TEST(InstallItems, PutsNoSeparatorBehindTheTargetDirectory) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "A").file("Setup", "a.so").directories("/s", "/t");
    InstallItems(0, record.get());
    EXPECT_EQ(home.text(".odbcinst.ini"), "[A]\nSetup=/ta.so\n");
}

TEST(InstallItems, PassesOverFilesWhosePathsDoNotFit) {
    for (const std::size_t length : {1019U, 1020U, 1021U, 40000U}) {
        SCOPED_TRACE(length);
        const TestHome home;
        TestRecord record;
        const std::string name(length, 'n');
        record.item(DriverItem, "A").file("Setup", name.c_str()).directories("/s", "/s/");
        InstallItems(0, record.get());
        const bool fits = length + 3 < 1024;
        EXPECT_EQ(record->anyFileInstalled, fits ? 1U : 0U);
        EXPECT_EQ(home.text(".odbcinst.ini"), fits ? "[A]\nSetup=/s/" + name + "\n" : "(absent)");
    }
}

TEST(InstallItems, SurvivesDirectoriesThatAreNotSet) {
    const TestHome home;
    RecordedHooks hooks;
    TestRecord record;
    record.item(CoreItem, "A").file("x", "a.so");
    InstallItems(0, record.get());
    EXPECT_EQ(callsOf(hooks, "Decompress"), (Calls{"Decompress /a.s_ a.so"}));
}

TEST(InstallItems, LendsTheExportedBuffersClearedForEveryFile) {
    const TestHome home;
    RecordedHooks hooks;
    int seen = 0;
    const auto isCleared = [](const unsigned char* buffer, std::size_t size) {
        return std::all_of(buffer, buffer + size, [](unsigned char byte) { return byte == 0; });
    };
    hooks.onDecompress = [&] {
        ++seen;
        EXPECT_TRUE(isCleared(inbuf, 16384) && isCleared(outbuf, 32768) && isCleared(bigbuf, 2048));
        std::fill_n(inbuf, 16384, 'x');
        std::fill_n(outbuf, 32768, 'x');
        std::fill_n(bigbuf, 2048, 'x');
    };
    TestRecord record;
    record.item(CoreItem, "A").file("x", "a.so").file("x", "b.so").directories("/s", "/t/");
    InstallItems(0, record.get());
    EXPECT_EQ(seen, 2);
}

TEST(InstallItems, LendsAndReleasesTheBuffersEvenWithNothingSelectedAndLeavesThePointersAsTheyWere) {
    const TestHome home;
    inbuf = outbuf = bigbuf = nullptr;
    TestRecord record;
    record.item(DriverItem, "A").file("Driver", "d.so").directories("/s", "/t/");
    record->items[0].selected = 0;
    EXPECT_EQ(InstallItems(0, record.get()), 1U);
    EXPECT_EQ(record->anyFileInstalled, 0U);
    EXPECT_TRUE(inbuf != nullptr && outbuf != nullptr && bigbuf != nullptr);
    inbuf = outbuf = bigbuf = nullptr;
    EXPECT_TRUE(home.names().empty());
}

TEST(InstallItems, HasNothingToDoWithoutItems) {
    TestRecord record;
    EXPECT_EQ(InstallItems(0, record.get()), 1U);
}

}  // namespace
