// The dialog starters of this program, which replace the library's own: they run dialogs on the thread's screen and
// check the results of the procedures.
#include <gtest/gtest.h>
#include <jxscreen.h>
#include <jxwindow.h>
#include <odbcinst.h>

#include <map>

#include <control_ids.h>

namespace {

std::map<unsigned short, JxDialogProcedure>& procedures() {
    thread_local std::map<unsigned short, JxDialogProcedure> shown;
    return shown;
}

// A procedure returns 1 for WM_INITDIALOG and 0 for everything else but the claimed command.
unsigned int watched(HWND dialog, int message, int wparam, uintptr_t lparam) {
    JxwDialogInfo info{};
    EXPECT_EQ(JXW_GetDialogInfo(dialog, &info), 1);
    const unsigned int answer = procedures().at(info.templateId)(dialog, message, wparam, lparam);
    if (message != WM_COMMAND || wparam != JxClaimedCommand) {
        EXPECT_EQ(answer, message == WM_INITDIALOG ? 1U : 0U)
            << "dialog " << info.templateId << ", message " << message << ", command " << wparam;
    }
    return answer;
}

}  // namespace

int32_t jxDllDialog(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record) {
    procedures()[templateId] = procedure;
    return JXW_DialogBox(BJXHINST, templateId, owner, watched, record);
}

int32_t jxDllDialogReturnId(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record) {
    return jxDllDialog(owner, templateId, procedure, record);
}
