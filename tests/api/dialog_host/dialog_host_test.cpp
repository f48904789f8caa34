// A program that shows dialogs: it defines the dialog starters itself, and some utility functions to watch their calls.
#include <gtest/gtest.h>
#include <jxdialog.h>
#include <jxmemory.h>
#include <jxtasks.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include "message_box_script.h"
#include "setup_calls.h"
#include "test_home.h"

namespace jx::test {

namespace {

// Host: the calls of the program's own functions, and what it does while a dialog is shown.
struct Host {
    Lines calls;
    std::function<int(void* record)> show = [](void*) { return 0; };
    JxDialogProcedure procedure = nullptr;
    std::vector<void*> released;
};

Host host;

void note(const std::string& call) {
    host.calls.push_back(call);
}

std::string number(unsigned long value) {
    return std::to_string(value);
}

// Every test begins with a new host.
class DialogHost : public ::testing::Test {
protected:
    DialogHost() { host = Host{}; }
    ~DialogHost() override {
        host = Host{};
        HWNDDSDLG = 0;
        HWNDADDLG = 0;
    }
};

// The record of the Select Translator dialog.
struct TranslatorRecord {
    char* name;
    OdbcIns* installer;
    unsigned int chosen;
};

}  // namespace

}  // namespace jx::test

int32_t jxDllDialog(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record) {
    jx::test::note("jxDllDialog " + jx::test::number(owner) + " " + jx::test::number(templateId));
    jx::test::host.procedure = procedure;
    return jx::test::host.show(record);
}

int32_t jxDllDialogReturnId(HWND, unsigned short, JxDialogProcedure, void*) {
    jx::test::note("jxDllDialogReturnId");
    return 0;
}

int JXW_IsWindow(HWND hwnd) {
    return hwnd == 4711 ? 1 : 0;
}

HWND JXW_SetFocus(HWND hwnd) {
    jx::test::note("JXW_SetFocus " + jx::test::number(hwnd));
    return 0;
}

int JXW_PostMessage(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    jx::test::note("JXW_PostMessage " + jx::test::number(hwnd) + " " + std::to_string(message) + " " +
                   std::to_string(wparam) + " " + jx::test::number(lparam));
    return 1;
}

int mdsPerTaskInit(void) {
    jx::test::note("mdsPerTaskInit");
    return 1;
}

int mdsPerTaskTerm(void) {
    jx::test::note("mdsPerTaskTerm");
    return 0;
}

// Records which blocks are released.
void ramFree(void* block) {
    if (block != nullptr)
        jx::test::host.released.push_back(block);
    std::free(block);
}

namespace jx::test {

TEST_F(DialogHost, RunsTheDataSourcesDialogInsideATask) {
    host.show = [](void*) { return 42; };
    EXPECT_EQ(SQLManageDataSources(77), 42);
    EXPECT_EQ(host.calls, (Lines{"mdsPerTaskInit", "jxDllDialog 77 102", "mdsPerTaskTerm"}));
    EXPECT_EQ(host.procedure, &DataSourcesDlgProc);
}

TEST_F(DialogHost, DoesNotRefuseTheDataSourcesDialogWithoutAnOwner) {
    EXPECT_EQ(SQLManageDataSources(0), 0);
    EXPECT_EQ(host.calls, (Lines{"mdsPerTaskInit", "jxDllDialog 0 102", "mdsPerTaskTerm"}));
}

TEST_F(DialogHost, FindsAFreshObjectInEveryDialog) {
    host.show = [](void* record) {
        auto* ins = static_cast<OdbcIns*>(record);
        EXPECT_EQ(ins->entryCount, 0U);
        EXPECT_EQ(ins->entries, nullptr);
        EXPECT_EQ(ins->dataSourceAdded, 0);
        ins->dataSourceAdded = 1;
        ins->hasDefault = 1;
        return 0;
    };
    SQLManageDataSources(77);
    SQLCreateDataSource(77, nullptr);
    SQLManageDataSources(77);
}

TEST_F(DialogHost, ReleasesTheListThatTheDataSourcesDialogBuilt) {
    const TestHome home{{".odbc.ini", "[ODBC Data Sources]\nA=B\nC=D\n"}};
    std::vector<void*> built;
    host.show = [&built](void* record) {
        auto* ins = static_cast<OdbcIns*>(record);
        EXPECT_EQ(ins->GetDataSourceNames(), 0U);
        ins->GetDriverNames();
        ins->ConcatenateNames();
        EXPECT_STREQ(reinterpret_cast<const char*>(ins->entries[1].display), "C (D)");
        for (const DataSourceEntry& row : {ins->entries[0], ins->entries[1]})
            built.insert(built.end(), {row.name, row.driver, row.display});
        built.push_back(ins->entries);
        host.released.clear();
        return 1;
    };
    EXPECT_EQ(SQLManageDataSources(77), 1);
    EXPECT_EQ(host.released, built);
}

TEST_F(DialogHost, ReleasesTheListAndEndsTheTaskWhenTheDialogThrows) {
    const TestHome home{{".odbc.ini", "[ODBC Data Sources]\nA=B\n"}};
    host.show = [](void* record) -> int {
        EXPECT_EQ(static_cast<OdbcIns*>(record)->GetDataSourceNames(), 0U);
        host.released.clear();
        throw 7;
    };
    EXPECT_THROW(SQLManageDataSources(77), int);
    EXPECT_EQ(host.released.size(), 2U);
    EXPECT_EQ(host.calls.back(), "mdsPerTaskTerm");
}

TEST_F(DialogHost, GivesAnOpenDataSourcesDialogTheFocusAndAMessageAndOpensNoSecond) {
    HWNDDSDLG = 4711;
    host.show = [](void*) { return 42; };
    EXPECT_EQ(SQLManageDataSources(77), 0);
    EXPECT_EQ(host.calls, (Lines{"JXW_SetFocus 4711", "JXW_PostMessage 4711 1025 0 0"}));
    EXPECT_EQ(HWNDDSDLG, 4711U);
}

// The dialogs set the handles; they may run on other threads.
TEST_F(DialogHost, LeavesTheHandlesOfOpenDialogsToTheDialogs) {
    host.show = [](void*) {
        HWNDDSDLG = 4711;
        HWNDADDLG = 4712;
        return 1;
    };
    SQLManageDataSources(77);
    SQLCreateDataSource(77, nullptr);
    EXPECT_EQ(HWNDDSDLG, 4711U);
    EXPECT_EQ(HWNDADDLG, 4712U);
}

TEST_F(DialogHost, RunsTheAddDataSourceDialogWithoutATask) {
    host.show = [](void*) { return 1; };
    EXPECT_EQ(SQLCreateDataSource(77, "Sales"), FALSE);
    EXPECT_EQ(host.calls, (Lines{"jxDllDialog 77 100"}));
    EXPECT_EQ(host.procedure, &AddDataSourceDlgProc);
}

TEST_F(DialogHost, ShowsNoAddDataSourceDialogWithoutAnOwner) {
    EXPECT_EQ(SQLCreateDataSource(0, "Sales"), FALSE);
    EXPECT_EQ(host.calls, Lines{});
}

TEST_F(DialogHost, AnswersTrueOnceASetupRoutineAcceptedAnAdd) {
    const TestHome home;
    home.put(".odbcinst.ini", "[Sample Driver]\nSetup=" + setupLibrary("driver_mixed") + "\n");
    host.show = [](void* record) {
        const auto* driver = reinterpret_cast<const unsigned char*>("Sample Driver");
        EXPECT_EQ(static_cast<OdbcIns*>(record)->jxSQLConfigDataSource(77, ODBC_ADD_DSN, driver, nullptr), 1);
        return 0;
    };
    EXPECT_EQ(SQLCreateDataSource(77, nullptr), TRUE);
}

TEST_F(DialogHost, AnswersFalseWhenTheSetupRoutineRefusedTheAdd) {
    const TestHome home;
    home.put(".odbcinst.ini", "[Sample Driver]\nSetup=" + setupLibrary("driver_refusing") + "\n");
    host.show = [](void* record) {
        const auto* driver = reinterpret_cast<const unsigned char*>("Sample Driver");
        EXPECT_EQ(static_cast<OdbcIns*>(record)->jxSQLConfigDataSource(77, ODBC_ADD_DSN, driver, nullptr), 0);
        return 1;
    };
    EXPECT_EQ(SQLCreateDataSource(77, nullptr), FALSE);
}

TEST_F(DialogHost, LetsTheUserChooseAnotherTranslator) {
    const std::string path = setupLibrary("translator_both");
    const TestHome home;
    home.put(".odbcinst.ini", "[Greek]\nSetup=" + path + "\n");
    host.show = [](void* record) {
        auto* choice = static_cast<TranslatorRecord*>(record);
        EXPECT_STREQ(choice->name, "Latin");
        EXPECT_EQ(choice->chosen, 0U);
        EXPECT_EQ(choice->installer->entryCount, 0U);
        std::memcpy(choice->name, "Greek", 6);
        return 0;
    };
    char name[100] = "Latin";
    char found[1000];
    WORD nameLength = 0;
    WORD pathLength = 0;
    DWORD option = 0;
    EXPECT_EQ(SQLGetTranslator(77, name, sizeof name, &nameLength, found, sizeof found, &pathLength, &option), TRUE);
    EXPECT_STREQ(name, "Greek");
    EXPECT_EQ(nameLength, 5);
    EXPECT_EQ(found, path);
    EXPECT_EQ(pathLength, path.size());
    EXPECT_EQ(option, 4711U);
    EXPECT_EQ(host.calls, (Lines{"jxDllDialog 77 143"}));
    EXPECT_EQ(host.procedure, &SelectTranslatorDlgProc);
}

TEST_F(DialogHost, TakesTheUsersNoTranslatorWithoutTouchingTheBuffers) {
    const TestHome home;
    MessageBoxScript boxes;
    host.show = [](void* record) {
        std::memcpy(static_cast<TranslatorRecord*>(record)->name, "<No Translator>", 16);
        return 1;
    };
    char name[100] = "Latin";
    char path[10] = "path";
    WORD nameLength = 9;
    WORD pathLength = 9;
    EXPECT_EQ(SQLGetTranslator(77, name, sizeof name, &nameLength, path, sizeof path, &pathLength, nullptr), TRUE);
    EXPECT_STREQ(name, "Latin");
    EXPECT_STREQ(path, "path");
    EXPECT_EQ(nameLength, 0);
    EXPECT_EQ(pathLength, 0);
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

TEST_F(DialogHost, SurvivesATranslatorNameThatFillsTheRecordsBufferWithoutAnEnd) {
    const TestHome home;
    MessageBoxScript boxes;
    host.show = [](void* record) {
        std::memset(static_cast<TranslatorRecord*>(record)->name, 'n', 256);
        return 1;
    };
    char name[100] = "Latin";
    EXPECT_EQ(SQLGetTranslator(77, name, sizeof name, nullptr, nullptr, 0, nullptr, nullptr), TRUE);
    EXPECT_STREQ(name, "Latin");
    EXPECT_EQ(boxes.boxes().size(), 1U);
}

TEST_F(DialogHost, HandsTheDialogAnEmptyNameForANullOne) {
    const TestHome home;
    host.show = [](void* record) {
        EXPECT_STREQ(static_cast<TranslatorRecord*>(record)->name, "");
        std::memcpy(static_cast<TranslatorRecord*>(record)->name, "<No Translator>", 16);
        return 1;
    };
    EXPECT_EQ(SQLGetTranslator(77, nullptr, 0, nullptr, nullptr, 0, nullptr, nullptr), TRUE);
    EXPECT_EQ(host.calls.size(), 1U);
}

TEST_F(DialogHost, ShowsNoTranslatorDialogWithoutAnOwnerOrForANameThatIsTooLong) {
    std::string longName(256, 'n');
    char name[] = "Latin";
    EXPECT_EQ(SQLGetTranslator(0, name, sizeof name, nullptr, nullptr, 0, nullptr, nullptr), FALSE);
    EXPECT_EQ(SQLGetTranslator(77, longName.data(), 257, nullptr, nullptr, 0, nullptr, nullptr), FALSE);
    EXPECT_EQ(host.calls, Lines{});
}

TEST_F(DialogHost, NeverUsesTheSecondStarter) {
    SQLManageDataSources(77);
    SQLCreateDataSource(77, nullptr);
    for (const std::string& call : host.calls)
        EXPECT_NE(call, "jxDllDialogReturnId");
}

}  // namespace jx::test
