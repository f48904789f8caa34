// SQLConfigDataSource with real setup libraries.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <exception>
#include <string>

#include "message_box_script.h"
#include "setup_calls.h"
#include "test_home.h"

namespace jx::test {

namespace {

using namespace std::string_literals;

constexpr HWND kWindow = 77;
constexpr char kTitle[] = "KALDERO ODBC Admin";
constexpr char kSalesItem[] = "DSN=Sales\0Database=sales\0";
constexpr char kSales[] =
    "[ODBC Data Sources]\nSales=Sample Driver\nPlain=Other\n\n[Sales]\nDriver=/opt/sample.so\nDatabase=old\n";
constexpr char kWithoutSales[] = "[ODBC Data Sources]\nPlain=Other\n\n";

std::string drivers(std::string_view setup) {
    return "[Sample Driver]\nDriver=/opt/sample.so\nSetup=" + std::string(setup) + "\n";
}

// Scene: a home with one driver, its setup library's calls and the message boxes of one test.
struct Scene {
    explicit Scene(std::string_view library, std::string_view dataSources = kSales,
                   std::initializer_list<unsigned int> answers = {})
        : boxes(answers) {
        home.put(".odbcinst.ini", drivers(library.empty() ? "" : setupLibrary(library)));
        home.put(".odbc.ini", dataSources);
    }

    std::string dataSources() const { return home.text(".odbc.ini"); }

    TestHome home;
    SetupCalls calls;
    MessageBoxScript boxes;
};

std::string called(HWND hwnd, int request, const std::string& attributes) {
    return "ConfigDSN hwnd=" + std::to_string(hwnd) + " request=" + std::to_string(request) +
           " driver=Sample Driver attributes=" + attributes;
}

ShownBox box(const std::string& text, unsigned int style) {
    return {kWindow, text, kTitle, style};
}

const ShownBox kNotFound = box("DSN attribute was not found", 0);
const ShownBox kAlreadyExists = box("DSN - Sales already exists Do you want to overwrite it?", 36);
const ShownBox kCannotLoad =
    box("Not able to load the driver corresponding to DSN - Sales.\n Do you want it deleted anyway?", 36);

}  // namespace

TEST(ConfigDataSource, AddPassesTheListOnAndUnloadsTheLibrary) {
    const Scene scene("driver_mixed", "");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", kSalesItem), TRUE);
    EXPECT_EQ(scene.calls.lines(), (Lines{"loaded", called(0, 1, "DSN=Sales|Database=sales||"), "unloaded"}));
    EXPECT_EQ(scene.boxes.boxes(), Boxes{});
    EXPECT_EQ(scene.dataSources(), "");
}

TEST(ConfigDataSource, AddWithoutAWindowAndAListLoadsNothing) {
    const Scene scene("driver_mixed");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", nullptr), FALSE);
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "\0"), FALSE);
    EXPECT_EQ(scene.calls.lines(), Lines{});
    EXPECT_EQ(scene.dataSources(), kSales);
}

TEST(ConfigDataSource, AddWithAWindowLeavesEverythingToTheSetupRoutine) {
    const Scene scene("driver_mixed");
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", nullptr), TRUE);
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", "\0"), TRUE);
    EXPECT_EQ(scene.calls.lines(),
              (Lines{"loaded", called(kWindow, 1, "|"), "unloaded", "loaded", called(kWindow, 1, "|"), "unloaded"}));
    EXPECT_EQ(scene.boxes.boxes(), Boxes{});
}

TEST(ConfigDataSource, ChangeAndRemoveNeedAListAlsoWithAWindow) {
    const Scene scene("driver_mixed");
    for (const WORD request : {WORD{ODBC_CONFIG_DSN}, WORD{ODBC_REMOVE_DSN}, WORD{0}, WORD{7}}) {
        for (const HWND hwnd : {HWND{0}, kWindow}) {
            SCOPED_TRACE(request);
            EXPECT_EQ(SQLConfigDataSource(hwnd, request, "Sample Driver", nullptr), FALSE);
            EXPECT_EQ(SQLConfigDataSource(hwnd, request, "Sample Driver", "\0"), FALSE);
        }
    }
    EXPECT_EQ(scene.calls.lines(), Lines{});
    EXPECT_EQ(scene.boxes.boxes(), Boxes{});
    EXPECT_EQ(scene.dataSources(), kSales);
}

TEST(ConfigDataSource, AddWithoutAWindowReplacesAnExistingDataSourceSilently) {
    const Scene scene("driver_mixed");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", kSalesItem), TRUE);
    EXPECT_EQ(scene.boxes.boxes(), Boxes{});
    EXPECT_EQ(scene.dataSources(), kWithoutSales);
    EXPECT_EQ(scene.calls.lines().size(), 3U);
}

TEST(ConfigDataSource, AddAsksBeforeItReplacesAndNoKeepsTheOldEntry) {
    const Scene scene("driver_mixed", kSales, {IDNO});
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", kSalesItem), FALSE);
    EXPECT_EQ(scene.boxes.boxes(), Boxes{kAlreadyExists});
    EXPECT_EQ(scene.calls.lines(), Lines{});
    EXPECT_EQ(scene.dataSources(), kSales);
}

TEST(ConfigDataSource, AddReplacesForEveryAnswerButNo) {
    for (const unsigned int answer : {unsigned{IDYES}, unsigned{IDOK}, unsigned{IDCANCEL}, 0U}) {
        SCOPED_TRACE(answer);
        const Scene scene("driver_mixed", kSales, {answer});
        EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", kSalesItem), TRUE);
        EXPECT_EQ(scene.boxes.boxes(), Boxes{kAlreadyExists});
        EXPECT_EQ(scene.dataSources(), kWithoutSales);
        EXPECT_EQ(scene.calls.lines().size(), 3U);
    }
}

TEST(ConfigDataSource, AnEmptySectionCountsAsADataSourceThatExists) {
    const Scene scene("driver_mixed", "[Sales]\n", {IDNO});
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", kSalesItem), FALSE);
    EXPECT_EQ(scene.boxes.boxes(), Boxes{kAlreadyExists});
}

TEST(ConfigDataSource, AKeyInTheListOfDataSourcesAloneIsNoDataSource) {
    const Scene scene("driver_mixed", "[ODBC Data Sources]\nSales=Sample Driver\n");
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", kSalesItem), TRUE);
    EXPECT_EQ(scene.boxes.boxes(), Boxes{});
    EXPECT_EQ(scene.dataSources(), "[ODBC Data Sources]\nSales=Sample Driver\n");
}

TEST(ConfigDataSource, ASectionWhoseFirstKeyIsSpelledLikeTheAnswerForNoneIsTakenAsAbsent) {
    const Scene scene("driver_mixed", "[Sales]\nNOT AVAILABLE=1\n");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_CONFIG_DSN, "Sample Driver", kSalesItem), FALSE);
    EXPECT_EQ(scene.calls.lines(), Lines{});
}

TEST(ConfigDataSource, ChangeAndRemoveOfAMissingDataSourceAreReportedAndLoadNothing) {
    for (const WORD request : {WORD{ODBC_CONFIG_DSN}, WORD{ODBC_REMOVE_DSN}}) {
        SCOPED_TRACE(request);
        const Scene scene("driver_mixed");
        EXPECT_EQ(SQLConfigDataSource(0, request, "Sample Driver", "DSN=Absent\0"), FALSE);
        EXPECT_EQ(scene.boxes.boxes(), Boxes{});
        EXPECT_EQ(SQLConfigDataSource(kWindow, request, "Sample Driver", "DSN=Absent\0"), FALSE);
        EXPECT_EQ(scene.boxes.boxes(), Boxes{box("DSN - Absent does not exist", 48)});
        EXPECT_EQ(scene.calls.lines(), Lines{});
        EXPECT_EQ(scene.dataSources(), kSales);
    }
}

TEST(ConfigDataSource, ChangeAndRemovePassTheListOnAndAskNothing) {
    for (const WORD request : {WORD{ODBC_CONFIG_DSN}, WORD{ODBC_REMOVE_DSN}}) {
        SCOPED_TRACE(request);
        const Scene scene("driver_mixed");
        EXPECT_EQ(SQLConfigDataSource(kWindow, request, "Sample Driver", kSalesItem), TRUE);
        EXPECT_EQ(scene.calls.lines(),
                  (Lines{"loaded", called(kWindow, request, "DSN=Sales|Database=sales||"), "unloaded"}));
        EXPECT_EQ(scene.boxes.boxes(), Boxes{});
        EXPECT_EQ(scene.dataSources(), kSales);
    }
}

TEST(ConfigDataSource, ReportsARefusingRoutineAndUnloadsItsLibrary) {
    for (const WORD request : {WORD{ODBC_ADD_DSN}, WORD{ODBC_CONFIG_DSN}, WORD{ODBC_REMOVE_DSN}}) {
        SCOPED_TRACE(request);
        const Scene scene("driver_refusing");
        EXPECT_EQ(SQLConfigDataSource(0, request, "Sample Driver", kSalesItem), FALSE);
        EXPECT_EQ(scene.calls.lines(), (Lines{"loaded", called(0, request, "DSN=Sales|Database=sales||"), "unloaded"}));
    }
}

TEST(ConfigDataSource, CallsTheUpperCaseEntryPointWhenThereAreBoth) {
    const Scene scene("driver_both", "");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "DSN=Sales\0"), TRUE);
    EXPECT_EQ(scene.calls.lines(),
              (Lines{"loaded", "CONFIGDSN hwnd=0 request=1 driver=Sample Driver attributes=DSN=Sales||", "unloaded"}));
}

TEST(ConfigDataSource, FailsForASetupLibraryWithoutEntryPoint) {
    for (const WORD request : {WORD{ODBC_CONFIG_DSN}, WORD{ODBC_REMOVE_DSN}}) {
        const Scene scene("no_entry");
        EXPECT_EQ(SQLConfigDataSource(kWindow, request, "Sample Driver", kSalesItem), FALSE);
        EXPECT_EQ(scene.calls.lines(), (Lines{"loaded", "unloaded"}));
        EXPECT_EQ(scene.boxes.boxes(), Boxes{});
        EXPECT_EQ(scene.dataSources(), kSales);
    }
}

TEST(ConfigDataSource, NeverCallsTheRoutineForAnUnknownRequest) {
    for (const WORD request : {WORD{0}, WORD{4}, WORD{7}, WORD{32768}, WORD{65535}}) {
        for (const HWND hwnd : {HWND{0}, kWindow}) {
            SCOPED_TRACE(request);
            const Scene scene("driver_mixed");
            EXPECT_EQ(SQLConfigDataSource(hwnd, request, "Sample Driver", kSalesItem), FALSE);
            EXPECT_EQ(SQLConfigDataSource(hwnd, request, "Sample Driver", "DSN=Absent\0"), FALSE);
            EXPECT_EQ(SQLConfigDataSource(hwnd, request, "Absent Driver", kSalesItem), FALSE);
            for (const std::string& line : scene.calls.lines())
                EXPECT_TRUE(line == "loaded" || line == "unloaded") << line;
            EXPECT_EQ(scene.boxes.boxes(), Boxes{});
            EXPECT_EQ(scene.dataSources(), kSales);
        }
    }
}

TEST(ConfigDataSource, MissesTheDataSourceInListsWithoutItsItem) {
    const std::string lists[] = {"Database=sales\0"s, "dsn=Sales\0"s, "Dsn=Sales\0"s,  "DSN\0DSN=Sales\0"s,
                                 " DSN=Sales\0"s,     "=Sales\0"s,    "DSN =Sales\0"s, "x=1\0plain\0DSN=Sales\0"s};
    for (const std::string& list : lists) {
        for (const WORD request : {WORD{ODBC_CONFIG_DSN}, WORD{ODBC_REMOVE_DSN}, WORD{9}}) {
            SCOPED_TRACE(list);
            const Scene scene("driver_mixed");
            EXPECT_EQ(SQLConfigDataSource(0, request, "Sample Driver", list.c_str()), FALSE);
            EXPECT_EQ(scene.boxes.boxes(), Boxes{});
            EXPECT_EQ(SQLConfigDataSource(kWindow, request, "Sample Driver", list.c_str()), FALSE);
            EXPECT_EQ(scene.boxes.boxes(), Boxes{kNotFound});
            EXPECT_EQ(scene.calls.lines(), Lines{});
            EXPECT_EQ(scene.dataSources(), kSales);
        }
    }
}

TEST(ConfigDataSource, AddWithoutAWindowNeedsTheDataSourcesItem) {
    const Scene scene("driver_mixed");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "Database=sales\0"), FALSE);
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "plain\0DSN=Sales\0"), FALSE);
    EXPECT_EQ(scene.calls.lines(), Lines{});
    EXPECT_EQ(scene.dataSources(), kSales);
}

TEST(ConfigDataSource, AddWithAWindowAndNoDataSourceItemSkipsTheExistenceChecks) {
    const Scene scene("driver_mixed");
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", "Database=sales\0"), TRUE);
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", "plain\0DSN=Sales\0"), TRUE);
    EXPECT_EQ(scene.calls.lines(), (Lines{"loaded", called(kWindow, 1, "Database=sales||"), "unloaded", "loaded",
                                          called(kWindow, 1, "plain|DSN=Sales||"), "unloaded"}));
    EXPECT_EQ(scene.boxes.boxes(), Boxes{});
    EXPECT_EQ(scene.dataSources(), kSales);
}

TEST(ConfigDataSource, TakesTheFirstDataSourceItemWithEverythingBehindItsFirstEqualsSign) {
    const Scene scene("driver_mixed", "[a=b]\nx=1\n", {IDNO});
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", "x=1\0DSN=a=b\0DSN=other\0"), FALSE);
    EXPECT_EQ(scene.boxes.boxes(), Boxes{box("DSN - a=b already exists Do you want to overwrite it?", 36)});
}

TEST(ConfigDataSource, RemoveWithoutALoadableDriverDeletesSilentlyWithoutAWindow) {
    for (const char* setupPath : {"", "/nowhere/libsetup.so", "/"}) {
        SCOPED_TRACE(setupPath);
        const Scene scene("");
        scene.home.put(".odbcinst.ini", drivers(setupPath));
        EXPECT_EQ(SQLConfigDataSource(0, ODBC_REMOVE_DSN, "Sample Driver", kSalesItem), TRUE);
        EXPECT_EQ(scene.boxes.boxes(), Boxes{});
        EXPECT_EQ(scene.dataSources(), kWithoutSales);
    }
}

TEST(ConfigDataSource, RemoveWithoutALoadableDriverAsksTheWindowAndOnlyYesDeletes) {
    for (const unsigned int answer : {unsigned{IDYES}, unsigned{IDNO}, unsigned{IDOK}, unsigned{IDCANCEL}, 0U}) {
        SCOPED_TRACE(answer);
        const Scene scene("", kSales, {answer});
        EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_REMOVE_DSN, "Sample Driver", kSalesItem), answer == IDYES);
        EXPECT_EQ(scene.boxes.boxes(), Boxes{kCannotLoad});
        EXPECT_EQ(scene.dataSources(), answer == IDYES ? kWithoutSales : kSales);
    }
}

TEST(ConfigDataSource, AddAndChangeWithoutALoadableDriverFailWithoutAMessage) {
    const Scene scene("");
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_CONFIG_DSN, "Sample Driver", kSalesItem), FALSE);
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", "DSN=New\0"), FALSE);
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Absent Driver", nullptr), FALSE);
    EXPECT_EQ(scene.boxes.boxes(), Boxes{});
    EXPECT_EQ(scene.dataSources(), kSales);
}

TEST(ConfigDataSource, AnEmptySetupPathDoesNotNameThisProgramWhichHasTheEntryPoint) {
    const Scene scene("");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_CONFIG_DSN, "Sample Driver", kSalesItem), FALSE);
    EXPECT_EQ(scene.calls.lines(), Lines{});
}

TEST(ConfigDataSource, LetsTheSetupLibraryCallTheInstallerBack) {
    const Scene scene("driver_writing", "");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "DSN=Sales\0one\0"), TRUE);
    EXPECT_EQ(scene.dataSources(),
              "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample.so\nLast=one\n");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_CONFIG_DSN, "Sample Driver", "DSN=Sales\0two\0"), TRUE);
    EXPECT_EQ(scene.dataSources(),
              "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample.so\nLast=two\n");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_REMOVE_DSN, "Sample Driver", "DSN=Sales\0"), TRUE);
    EXPECT_EQ(scene.dataSources(), "[ODBC Data Sources]\n\n");
}

TEST(ConfigDataSource, TakesAListOfExactly1024BytesAndRefusesOneMore) {
    // "DSN=New", NUL, "x=...", NUL, NUL
    const auto list = [](std::size_t sizeInBytes) {
        return "DSN=New\0x="s + std::string(sizeInBytes - 8 - 2 - 2, 'v') + "\0"s;
    };
    ASSERT_EQ(list(1024).size() + 1, 1024U);
    const Scene scene("driver_mixed", kSales);
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", list(1023).c_str()), TRUE);
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", list(1024).c_str()), TRUE);
    EXPECT_EQ(scene.calls.lines().size(), 6U);
    for (const std::size_t size : {1025U, 2048U, 32767U, 32768U, 65535U, 70000U}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", list(size).c_str()), FALSE);
        EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", list(size).c_str()), FALSE);
    }
    EXPECT_EQ(scene.calls.lines().size(), 6U);
    EXPECT_EQ(scene.boxes.boxes(), Boxes{});
}

TEST(ConfigDataSource, ALongListChangesNothingEvenWhenItNamesAnExistingDataSource) {
    const Scene scene("driver_mixed");
    const std::string list = "DSN=Sales\0x="s + std::string(1024, 'v') + "\0"s;
    for (const WORD request : {WORD{1}, WORD{2}, WORD{3}})
        EXPECT_EQ(SQLConfigDataSource(0, request, "Sample Driver", list.c_str()), FALSE);
    EXPECT_EQ(scene.dataSources(), kSales);
}

TEST(ConfigDataSource, TakesADriverDescriptionOf49BytesAndRefusesOneOf50) {
    for (const std::size_t length : {0U, 48U, 49U, 50U, 51U, 32767U, 32768U, 65535U, 70000U}) {
        SCOPED_TRACE(length);
        const std::string driver(length, 'd');
        const Scene scene("");
        scene.home.put(".odbcinst.ini", "[" + driver + "]\nSetup=" + setupLibrary("driver_mixed") + "\n[" +
                                            std::string(49, 'd') + "]\nSetup=" + setupLibrary("driver_mixed") + "\n");
        const bool fits = length == 48 || length == 49;
        EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, driver.c_str(), "DSN=New\0"), fits);
        EXPECT_EQ(scene.calls.lines().size(), fits ? 3U : 0U);
        EXPECT_EQ(scene.dataSources(), kSales);
    }
}

TEST(ConfigDataSource, RefusesALongOrNullDriverBeforeAnythingIsAskedOrRemoved) {
    const std::string driver(50, 'd');
    for (const char* refused : {driver.c_str(), static_cast<const char*>(nullptr)}) {
        const Scene scene("driver_mixed");
        for (const WORD request : {WORD{1}, WORD{2}, WORD{3}}) {
            EXPECT_EQ(SQLConfigDataSource(0, request, refused, kSalesItem), FALSE);
            EXPECT_EQ(SQLConfigDataSource(kWindow, request, refused, kSalesItem), FALSE);
        }
        EXPECT_EQ(scene.boxes.boxes(), Boxes{});
        EXPECT_EQ(scene.dataSources(), kSales);
    }
}

TEST(ConfigDataSource, KeepsTheQuestionWholeWhenTheNameIsLong) {
    const std::string name(1010, 'n');
    const Scene scene("", "[" + name + "]\nx=1\n", {IDNO, IDNO});
    const std::string list = "DSN=" + name + "\0"s;
    const std::string absent = "DSN=" + std::string(1018, 'a') + "\0"s;
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", list.c_str()), FALSE);
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_REMOVE_DSN, "Sample Driver", list.c_str()), FALSE);
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_REMOVE_DSN, "Sample Driver", absent.c_str()), FALSE);
    const Boxes& boxes = scene.boxes.boxes();
    ASSERT_EQ(boxes.size(), 3U);
    const std::string question = " already exists Do you want to overwrite it?";
    EXPECT_EQ(boxes[0].text, "DSN - " + std::string(1023 - 6 - question.size(), 'n') + question);
    EXPECT_TRUE(boxes[1].text.ends_with("n.\n Do you want it deleted anyway?"));
    EXPECT_EQ(boxes[2].text, "DSN - " + std::string(1002, 'a') + " does not exist");
    for (const ShownBox& shown : boxes)
        EXPECT_EQ(shown.text.size(), 1023U);
    EXPECT_EQ(scene.dataSources(), "[" + name + "]\nx=1\n");
}

TEST(ConfigDataSource, LeavesANameThatNoSectionCanHaveToTheSetupRoutine) {
    const Scene scene("driver_mixed");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "DSN=Sales\r\0"), TRUE);
    EXPECT_EQ(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", "DSN=Sales\r\0"), TRUE);
    EXPECT_EQ(scene.calls.lines(), (Lines{"loaded", called(0, 1, "DSN=Sales\r||"), "unloaded", "loaded",
                                          called(kWindow, 1, "DSN=Sales\r||"), "unloaded"}));
    EXPECT_EQ(scene.boxes.boxes(), Boxes{});
    EXPECT_EQ(scene.dataSources(), kSales);
}

// Otherwise a whole list would be replaced or removed.
TEST(ConfigDataSource, TakesNoListOrSettingsForADataSource) {
    const std::string before =
        "[ODBC Data Sources]\nSales=Sample Driver\n\n[ODBC]\nTrace=1\n\n[odbc drivers]\na=1\n\n" +
        std::string("[ODBC Translators]\nb=2\n");
    for (const std::string name :
         {"ODBC Data Sources", " odbc data sources\t", "ODBC", "odbc", "ODBC Drivers", "ODBC TRANSLATORS"}) {
        SCOPED_TRACE(name);
        const std::string list = "DSN=" + name + "\0"s;
        const Scene scene("driver_mixed", before);
        EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", list.c_str()), TRUE);
        EXPECT_EQ(SQLConfigDataSource(0, ODBC_CONFIG_DSN, "Sample Driver", list.c_str()), FALSE);
        EXPECT_EQ(SQLConfigDataSource(0, ODBC_REMOVE_DSN, "Sample Driver", list.c_str()), FALSE);
        EXPECT_EQ(SQLConfigDataSource(0, ODBC_REMOVE_DSN, "Absent Driver", list.c_str()), FALSE);
        EXPECT_EQ(scene.calls.lines().size(), 3U) << "only the add reaches the setup routine";
        EXPECT_EQ(scene.dataSources(), before);
    }
}

TEST(ConfigDataSource, PassesAnExceptionOnAndKeepsItsLibraryLoaded) {
    const Scene scene("driver_throwing", "");
    const std::string path = setupLibrary("driver_throwing");
    std::string what;
    try {
        SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "DSN=Sales\0");
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::exception& thrown) {
        what = thrown.what();
    }
    EXPECT_EQ(what, "the driver's own words");
    EXPECT_EQ(scene.calls.lines(), (Lines{"loaded", called(0, 1, "DSN=Sales||"), "frame destroyed"}));
    void* still = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    EXPECT_NE(still, nullptr);
    if (still != nullptr)
        dlclose(still);
}

TEST(ConfigDataSource, WorksAsBeforeAfterAnException) {
    const Scene scene("driver_throwing", "");
    EXPECT_ANY_THROW(SQLConfigDataSource(kWindow, ODBC_ADD_DSN, "Sample Driver", nullptr));
    scene.home.put(".odbcinst.ini", drivers(setupLibrary("driver_mixed")));
    const std::size_t before = scene.calls.lines().size();
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "DSN=Sales\0"), TRUE);
    const Lines lines = scene.calls.lines();
    EXPECT_EQ(Lines(lines.begin() + static_cast<std::ptrdiff_t>(before), lines.end()),
              (Lines{"loaded", called(0, 1, "DSN=Sales||"), "unloaded"}));
}

TEST(ConfigDataSource, UnloadsTheLibraryWhenCalledWhileAnotherExceptionIsOnItsWay) {
    const Scene scene("driver_mixed", "");
    struct Caller {
        ~Caller() { SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "DSN=Sales\0"); }
    };
    try {
        const Caller caller;
        throw 1;
    } catch (int) {
        EXPECT_EQ(scene.calls.lines().size(), 3U);
        EXPECT_EQ(scene.calls.lines().back(), "unloaded");
    }
}

}  // namespace jx::test

// The entry point that an empty path would find: this program's own.
extern "C" __attribute__((visibility("default"))) BOOL CONFIGDSN(HWND, WORD, LPCSTR, LPCSTR) {
    ADD_FAILURE() << "the program itself was loaded as a setup library";
    return TRUE;
}
