// Installations in which each allocation fails, once or from then on.
#include <gtest/gtest.h>
#include <jxdialog.h>
#include <jxmemory.h>
#include <odbcinst.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "allocations.h"
#include "install/batch_installation.h"
#include "install/installation_paths.h"
#include "install/item_installation.h"
#include "install/script_entries.h"
#include "install/script_items.h"
#include "record_text.h"
#include "test_home.h"
#include "watched_files.h"

namespace {

using namespace jx::install;
using namespace jx::test;
using namespace std::string_literals;
using jx::ini::test::InUse;

constexpr HWND kWindow = 77;

// FastFiles: no flushing, and home directories in memory where possible. There are thousands of writes, and the disk
// would take most of their time.
class FastFiles : public jx::ini::test::WatchedFiles {
public:
    FastFiles() {
        if (std::getenv(kPlace) == nullptr && access("/dev/shm", W_OK) == 0)
            isSet_ = setenv(kPlace, "/dev/shm", 1) == 0;
    }
    ~FastFiles() override {
        if (isSet_)
            unsetenv(kPlace);
    }
    FastFiles(const FastFiles&) = delete;
    FastFiles& operator=(const FastFiles&) = delete;

private:
    static constexpr char kPlace[] = "TMPDIR";
    bool isSet_ = false;
};

// Boxes are counted, since keeping their texts would take memory: those about a missing comma, which have no owner, and
// those that report an abortion to the window.
class CountedBoxes {
public:
    CountedBoxes() { JXW_SetMessageBoxHandler(&CountedBoxes::answer, this); }
    ~CountedBoxes() { JXW_SetMessageBoxHandler(nullptr, nullptr); }
    CountedBoxes(const CountedBoxes&) = delete;
    CountedBoxes& operator=(const CountedBoxes&) = delete;
    int commas = 0;
    int aborted = 0;
    int others = 0;

private:
    static unsigned int answer(void* self, HWND owner, const char* text, const char*, unsigned int) {
        auto& boxes = *static_cast<CountedBoxes*>(self);
        const std::string_view shown(text);
        if (owner == 0 && shown.starts_with("Not able to find comma 2 in File: "))
            ++boxes.commas;
        else if (owner == kWindow && shown == "Installation was aborted")
            ++boxes.aborted;
        else
            ++boxes.others;
        return IDOK;
    }
};

const std::string kScript = "[D]\n\"Driver\"=" + scriptLine("d.so") + "\n\"Setup\"=" + scriptLine("s.so") +
                            "\n[D-Keys]\nAPILevel=1\nCreateDSN=Sales\nSQLLevel=0\n[ODBC Translators]\n\"T\"=\n[T]\n"
                            "\"Translator\"=" +
                            scriptLine("t.so") + "\n\"Setup\"=" + scriptLine("t.so") + "\n[ODBC]\n\"x\"=1,too few\n";

// What the user had before: another driver, another data source, an older library of the driver.
constexpr char kOlderDrivers[] =
    "[ODBC Drivers]\nOther=Installed\n\n[Other]\nDriver=/o/other.so\n\n[D]\nDriver=/old/d.so\n";
constexpr char kOlderSources[] = "[ODBC Data Sources]\nMine=Other\n\n[Mine]\nDriver=/o/other.so\nUID=me\n";

constexpr char kDrivers[] =
    "[ODBC Drivers]\nOther=Installed\nD=Installed\n\n[Other]\nDriver=/o/other.so\n\n"
    "[D]\nDriver=/l/d.so\nAPILevel=1\nSQLLevel=0\nSetup=/l/s.so\n\n"
    "[ODBC Translators]\nT=Installed\n\n[T]\nTranslator=/l/t.so\nSetup=/l/t.so\n";
constexpr char kSources[] =
    "[ODBC Data Sources]\nMine=Other\nSales=D\n\n[Mine]\nDriver=/o/other.so\nUID=me\n\n"
    "[Sales]\nDriver=/l/d.so\n";

constexpr char kDriversOfList[] =
    "[ODBC Drivers]\nOther=Installed\n\n[Other]\nDriver=/o/other.so\n\n[D]\nDriver=/l/d.so\nSetup=/l/s.so\nA=1\n";
constexpr char kDriversOfScript[] =
    "[ODBC Drivers]\nOther=Installed\n\n[Other]\nDriver=/o/other.so\n\n"
    "[D]\nDriver=/old/d.so\nSetup=/old/s.so\nAPILevel=1\nCreateDSN=Sales\nSQLLevel=0\n";

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// The other driver and the other data source are unchanged.
void expectOthers(const TestHome& home) {
    const std::string drivers = home.text(".odbcinst.ini");
    const std::string sources = home.text(".odbc.ini");
    EXPECT_TRUE(drivers.starts_with("[ODBC Drivers]\nOther=Installed\n")) << drivers;
    EXPECT_TRUE(holds(drivers, "\n[Other]\nDriver=/o/other.so\n")) << drivers;
    EXPECT_TRUE(sources.starts_with("[ODBC Data Sources]\nMine=Other\n")) << sources;
    EXPECT_TRUE(holds(sources, "\n[Mine]\nDriver=/o/other.so\nUID=me\n")) << sources;
}

// Each file is old or new; that of data sources, which is written second, is not new before the other.
void expectOldOrNew(const TestHome& home, const std::string& newDrivers, const std::string& newSources) {
    const std::string drivers = home.text(".odbcinst.ini");
    const std::string sources = home.text(".odbc.ini");
    EXPECT_TRUE(drivers == kOlderDrivers || drivers == newDrivers) << drivers;
    EXPECT_TRUE(sources == kOlderSources || sources == newSources) << sources;
    EXPECT_TRUE(drivers == newDrivers || sources == kOlderSources);
}

// The driver and the translator are each installed with all that belongs to them, or as they were.
void expectWholeComponents(const TestHome& home) {
    const std::string drivers = home.text(".odbcinst.ini");
    const std::string sources = home.text(".odbc.ini");
    EXPECT_EQ(holds(drivers, "\nD=Installed\n"),
              holds(drivers, "[D]\nDriver=/l/d.so\nAPILevel=1\nSQLLevel=0\nSetup=/l/s.so\n"))
        << drivers;
    EXPECT_EQ(holds(drivers, "\nT=Installed\n"), holds(drivers, "[T]\nTranslator=/l/t.so\nSetup=/l/t.so\n")) << drivers;
    EXPECT_TRUE(sources == kOlderSources || (sources == kSources && holds(drivers, "\nD=Installed\n"))) << sources;
}

// The home holds the script and the two files, and nothing else.
void expectNoLitter(const TestHome& home) {
    for (const std::string& name : home.names())
        EXPECT_TRUE(name == ".odbcinst.ini" || name == ".odbc.ini" || name == "odbc.inf") << name;
}

TEST(ShortMemory, OfABatchInstallationGivesItsFailureValueAndLeaksNothing) {
    FastFiles files;
    const InUse inUse(files);
    int unreported = 0;
    const int failures = failEachAllocationOfNewThread([&](ShortMemory& memory) {
        const TestHome home({{"odbc.inf", kScript}, {".odbcinst.ini", kOlderDrivers}, {".odbc.ini", kOlderSources}});
        const std::string script = home.file("odbc.inf");
        char list[] = "D\0";
        const CountedBoxes boxes;
        memory.begin();
        const BOOL result = SQLInstallODBC(kWindow, script.c_str(), "/l", list);
        const bool failed = memory.end();
        EXPECT_EQ(result, FALSE);
        unreported += 1 - boxes.aborted;
        EXPECT_LE(boxes.aborted, 1);
        EXPECT_TRUE(boxes.commas == 1 || (failed && boxes.commas == 0)) << boxes.commas;
        EXPECT_EQ(boxes.others, 0);
        expectOthers(home);
        expectWholeComponents(home);
        expectNoLitter(home);
        if (!failed) {
            EXPECT_EQ(home.text(".odbcinst.ini"), kDrivers);
            EXPECT_EQ(home.text(".odbc.ini"), kSources);
        }
    });
    EXPECT_GT(failures, 100);
    EXPECT_EQ(unreported, 2) << "only a run without a record, which is the first allocation, ends without a message";
}

TEST(ShortMemory, OfADriverInstallationLeaksNothing) {
    FastFiles files;
    const InUse inUse(files);
    const int failures = failEachAllocationOfNewThread([&](ShortMemory& memory) {
        const TestHome home({{".odbcinst.ini", kOlderDrivers}, {".odbc.ini", kOlderSources}});
        char path[64] = "?";
        WORD length = 0;
        memory.begin();
        const BOOL result = SQLInstallDriver(nullptr, "D\0Driver=/l/d.so\0Setup=/l/s.so\0CreateDSN=Sales\0A=1\0", path,
                                             sizeof path, &length);
        const bool failed = memory.end();
        EXPECT_STREQ(path, result == TRUE ? "/l" : "");
        EXPECT_EQ(length, result == TRUE ? 2 : 0);
        expectNoLitter(home);
        expectOldOrNew(home, kDriversOfList, kSources);
        EXPECT_TRUE(failed || result == TRUE);
        if (result == TRUE) {
            EXPECT_EQ(home.text(".odbcinst.ini"), kDriversOfList);
            EXPECT_EQ(home.text(".odbc.ini"), kSources);
        }
    });
    EXPECT_GT(failures, 30);
}

TEST(ShortMemory, OfADriverInstallationFromAScriptLeaksNothing) {
    FastFiles files;
    const InUse inUse(files);
    failEachAllocationOfNewThread([&](ShortMemory& memory) {
        const TestHome home({{"odbc.inf", kScript}, {".odbcinst.ini", kOlderDrivers}, {".odbc.ini", kOlderSources}});
        const std::string script = home.file("odbc.inf");
        char path[64] = "?";
        memory.begin();
        const BOOL result = SQLInstallDriver(script.c_str(), "D", path, sizeof path, nullptr);
        const bool failed = memory.end();
        expectNoLitter(home);
        expectOldOrNew(home, kDriversOfScript, kOlderSources);
        EXPECT_TRUE(failed || result == TRUE);
        EXPECT_EQ(home.text(".odbcinst.ini"), result == TRUE ? kDriversOfScript : kOlderDrivers);
        EXPECT_TRUE(result == TRUE ? path == "/old"s : path == "?"s || path == ""s) << path;
    });
}

// Runs one step on a record that was made before memory is short, and checks its result and the record.
template <typename Prepare, typename Step, typename Check>
int failEachStep(Prepare prepare, Step step, Check check) {
    const TestHome home({{"odbc.inf", kScript}});
    CountedBoxes boxes;
    return failEachAllocationOfNewThread([&](ShortMemory& memory) {
        TestRecord record(home.file("odbc.inf").c_str());
        prepare(record);
        memory.begin();
        const unsigned int result = step(record.get());
        const bool failed = memory.end();
        check(record, result, failed);
    });
}

TEST(ShortMemory, LeavesARecordWithoutTheComponentThatDidNotFit) {
    const int failures = failEachStep(
        [](TestRecord& record) { record.item(CoreItem, "First"); },
        [](_Install* install) { return appendItem(install, "Second", DriverItem); },
        [](TestRecord& record, unsigned int result, bool failed) {
            EXPECT_EQ(result, failed ? 1U : 0U);
            EXPECT_EQ(dumpNames(*record.get()), failed ? "core \"First\"\n" : "core \"First\"\ndriver \"Second\"\n");
        });
    EXPECT_EQ(failures, 2);
}

TEST(ShortMemory, EndsTheReadingOfADriverListWithTheDriversSoFar) {
    const int failures = failEachStep([](TestRecord&) {},
                                      [](_Install* install) {
                                          char list[] = "A\0B=1\0C\0";
                                          return PlaceDriversToBeInstalledInInstallStruct(
                                              install, reinterpret_cast<unsigned char*>(list));
                                      },
                                      [](TestRecord& record, unsigned int result, bool failed) {
                                          EXPECT_EQ(result, failed ? 1U : 0U);
                                          EXPECT_EQ(record->itemCount == 3, !failed);
                                      });
    EXPECT_EQ(failures, 6);
}

TEST(ShortMemory, LeavesAComponentWithoutFilesRatherThanWithSomeOfThem) {
    failEachStep([](TestRecord& record) { record.item(DriverItem, "D"); },
                 [](_Install* install) { return GetDataFromObdcInf(install, 0); },
                 [](TestRecord& record, unsigned int result, bool failed) {
                     const std::uint32_t files = record->items[0].entryCount;
                     EXPECT_EQ(result, files == 2 ? 0U : 1U);
                     EXPECT_TRUE(files == 0 || files == 2);
                     for (const InfEntry& file : entriesOf(record->items[0]))
                         EXPECT_TRUE(file.key != nullptr && file.fileName != nullptr);
                     EXPECT_TRUE(failed || files == 2);
                 });
}

TEST(ShortMemory, LeavesEveryOtherStepOfTheReaderWithAWholeRecord) {
    using Step = unsigned int (*)(_Install*);
    for (const Step step : {&GetTheDriverKeys, &PlaceTranslatorsToBeInstalledInInstallStruct, &GetTheNonDriverItems,
                            &GetTheOdbcInfEntriesForEachItem}) {
        const int failures =
            failEachStep([](TestRecord& record) { record.item(DriverItem, "D").item(CoreItem, "ODBC"); }, step,
                         [](TestRecord& record, unsigned int result, bool failed) {
                             EXPECT_TRUE(failed || result == 0);
                             EXPECT_FALSE(dump(*record.get()).empty());
                         });
        EXPECT_GT(failures, 1);
    }
}

TEST(ShortMemory, EndsTheFilePassWithoutABufferOrWithoutAPlaceInTheList) {
    FastFiles files;
    const InUse inUse(files);
    const int failures = failEachAllocationOfNewThread([&](ShortMemory& memory) {
        const TestHome home;
        TestRecord record;
        record.item(CoreItem, "A").file("x", "a.so").file("x", "b.so").directories("/s", "/t/");
        memory.begin();
        const unsigned int result = InstallItems(0, record.get());
        const bool failed = memory.end();
        EXPECT_EQ(result, 1U);
        EXPECT_EQ(record->processedCount == 2, !failed);
    });
    EXPECT_EQ(failures, 11) << "three buffers, a filter, three for the run, and a name and a place for each file";
}

TEST(ShortMemory, LeavesTheRecordWithoutPathsOrWithSomeAndFails) {
    failEachStep([](TestRecord&) {},
                 [](_Install* install) {
                     const auto* script = reinterpret_cast<const unsigned char*>("pkg/odbc.inf");
                     ramFree(install->infFile);
                     install->infFile = nullptr;
                     return takePaths(*install, script, nullptr) ? 0U : 1U;
                 },
                 [](TestRecord&, unsigned int result, bool failed) { EXPECT_EQ(result, failed ? 1U : 0U); });
}

}  // namespace
