// The dialog functions in a program that shows no dialogs.
#include <gtest/gtest.h>
#include <jxtasks.h>
#include <odbcinst.h>

#include "message_box_script.h"
#include "test_home.h"

namespace jx::test {

namespace {

unsigned int neverCalled(HWND, int, int, uintptr_t) {
    ADD_FAILURE() << "a dialog procedure was called";
    return 1;
}

constexpr int kMessages[] = {0, 272, 273, 513, 1025, -1};

}  // namespace

TEST(DialogStarters, ShowNothingAndAnswer0) {
    int record = 5;
    EXPECT_EQ(jxDllDialog(77, 102, neverCalled, &record), 0);
    EXPECT_EQ(jxDllDialogReturnId(77, 102, neverCalled, &record), 0);
    EXPECT_EQ(jxDllDialog(0, 0, nullptr, nullptr), 0);
    EXPECT_EQ(jxDllDialogReturnId(0, 65535, nullptr, nullptr), 0);
    EXPECT_EQ(record, 5);
}

TEST(ManageDataSources, ReturnsAtOnceWithTheTaskEnded) {
    const TestHome home{{".odbc.ini", "[ODBC Data Sources]\nA=B\n"}};
    const int depth = mdsPerTaskInit();
    EXPECT_EQ(SQLManageDataSources(77), 0);
    EXPECT_EQ(SQLManageDataSources(0), 0);
    EXPECT_EQ(mdsPerTaskTerm(), depth - 1);
    EXPECT_EQ(HWNDDSDLG, 0U);
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nA=B\n");
}

TEST(ManageDataSources, AWordThatNamesNoWindowCountsAsZero) {
    HWNDDSDLG = 4711;
    HWNDADDLG = 4711;
    EXPECT_EQ(SQLManageDataSources(77), 0);
    EXPECT_EQ(HWNDDSDLG, 0U);
    EXPECT_EQ(SQLCreateDataSource(77, nullptr), FALSE);
    EXPECT_EQ(HWNDADDLG, 0U);
}

TEST(CreateDataSource, AnswersFalseWithAndWithoutAWindow) {
    MessageBoxScript boxes;
    EXPECT_EQ(SQLCreateDataSource(0, "Sales"), FALSE);
    EXPECT_EQ(SQLCreateDataSource(77, "Sales"), FALSE);
    EXPECT_EQ(SQLCreateDataSource(77, nullptr), FALSE);
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

TEST(DialogProcedures, LeaveEveryMessageToTheDialogLayer) {
    for (const JxDialogProcedure procedure : {&DataSourcesDlgProc, &AddDataSourceDlgProc, &SelectTranslatorDlgProc}) {
        for (const int message : kMessages)
            EXPECT_EQ(procedure(77, message, 0, 0), 0U);
    }
}

}  // namespace jx::test
