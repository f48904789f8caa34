// What all dialog procedures share: they find their record wherever in memory it is, and can be closed without one.
#include <sys/mman.h>

#include <iostream>
#include <new>

#include "dialog_fixture.h"
#include "message_box_script.h"

namespace jx::test {

namespace {

// Pages at an address; null when the system gives none there.
void* pageNear(std::uintptr_t address) {
    void* wanted = reinterpret_cast<void*>(address);  // NOLINT(performance-no-int-to-ptr): an address is the point
    void* page =
        mmap(wanted, 4096 * 32, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    return page == MAP_FAILED ? nullptr : page;
}

class DialogRecord : public DialogTest {};

TEST_F(DialogRecord, IsFoundWhereverItLies) {
    putDrivers({{"Both", setupLibrary("driver_both")}});
    const std::uintptr_t places[] = {0x10000, 0x7FFF0000, 0xA0000000U, static_cast<std::uintptr_t>(0x7E0080000000ULL)};
    for (const std::uintptr_t place : places) {
        auto* page = static_cast<unsigned char*>(pageNear(place));
        if (page == nullptr) {
            std::cout << "not tried, the system maps nothing near 0x" << std::hex << place << std::dec << "\n";
            continue;
        }
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(page) >> 31,
                  place >> 31);  // on the side of 2 GiB that was asked for
        // One with the top bit of its low half set, one without.
        for (const std::uintptr_t low : {std::uintptr_t{0x8000}, std::uintptr_t{0x10}}) {
            const auto base = reinterpret_cast<std::uintptr_t>(page);
            auto* storage = page + ((low - (base & 0xFFFF)) & 0xFFFF);
            SCOPED_TRACE(reinterpret_cast<std::uintptr_t>(storage));
            auto* ins = new (storage) OdbcIns;
            const HWND dialog = JXW_CreateDialog(BJXHINST, JxAddDataSourceDialog, 0, AddDataSourceDlgProc, ins);
            EXPECT_EQ(JXW_GetProp(dialog, "Segm"), reinterpret_cast<std::uintptr_t>(storage) >> 16);
            EXPECT_EQ(JXW_GetProp(dialog, "Offset"), low);
            JXW_SendDlgItemMessage(dialog, JxAddDataSourceList, LB_SETCURSEL, 0, 0);
            EXPECT_EQ(JXW_UserCommand(dialog, IDOK), 1);
            EXPECT_EQ(ins->dataSourceAdded, 1);
            JXW_DestroyDialog(dialog);
        }
        munmap(page, 4096 * 32);
    }
}

// The result of a dialog is always the same.
TEST_F(DialogRecord, HoldsTheOutcomeSinceEveryClosingPathEndsAlike) {
    struct Row {
        unsigned short dialog;
        JxDialogProcedure procedure;
        int command;
        std::uintptr_t notification;
    };
    putDrivers({{"Lost", "/nowhere/setup.so"}});
    const Row rows[] = {{JxDataSourcesDialog, DataSourcesDlgProc, JxCloseButton, 0},
                        {JxAddDataSourceDialog, AddDataSourceDlgProc, IDOK, 0},
                        {JxAddDataSourceDialog, AddDataSourceDlgProc, JxAddDataSourceList, LBN_DBLCLK},
                        {JxAddDataSourceDialog, AddDataSourceDlgProc, IDCANCEL, 0},
                        {JxDriversDialog, OdbcDriversDlgProc, JxCloseButton, 0},
                        {JxOptionsDialog, OdbcOptionsDlgProc, IDOK, 0},
                        {JxOptionsDialog, OdbcOptionsDlgProc, IDCANCEL, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.dialog) + " " + std::to_string(row.command));
        OdbcIns ins;
        MessageBoxScript boxes;
        const HWND dialog = JXW_CreateDialog(BJXHINST, row.dialog, 0, row.procedure, &ins);
        JXW_SendDlgItemMessage(dialog, JxAddDataSourceList, LB_SETCURSEL, 0, 0);
        EXPECT_EQ(JXW_SendMessage(dialog, WM_COMMAND, row.command, row.notification << 16), 0);
        int result = 0;
        EXPECT_EQ(JXW_IsDialogEnded(dialog, &result), 1);
        EXPECT_EQ(result, 1);
        JXW_DestroyDialog(dialog);
    }
}

TEST_F(DialogRecord, ThatIsMissingLeavesEveryProcedureWithNothingToDo) {
    const JxDialogProcedure procedures[] = {
        DataSourcesDlgProc, AddDataSourceDlgProc,    OdbcDriversDlgProc,
        OdbcOptionsDlgProc, SelectTranslatorDlgProc, AboutDlgProc,
        AddDriverDlgProc,   InstallDriversDlgProc,   AdvancedInstallationOptionsDlgProc,
        VersionsDlgProc};
    OdbcIns ins;
    ScriptedUser user;
    for (const JxDialogProcedure procedure : procedures) {
        EXPECT_EQ(procedure(77, WM_INITDIALOG, 0, reinterpret_cast<uintptr_t>(&ins)), 0U);  // on no window
        for (int id = 0; id < 160; ++id) {
            for (const uintptr_t notification : {0U, 1U, 2U, 3U}) {
                if (id != JxClaimedCommand) {
                    EXPECT_EQ(procedure(77, WM_COMMAND, id, notification << 16), 0U) << id;
                }
            }
        }
        for (const int message : {-1, 0, 16, 274, 513, 1024, 1025, 1026})
            EXPECT_EQ(procedure(77, message, 0, 0), 0U) << message;
    }
    EXPECT_TRUE(user.boxes.empty());
}

TEST_F(DialogRecord, ThatIsMissingLeavesADialogThatCanBeClosed) {
    struct Row {
        unsigned short dialog;
        JxDialogProcedure procedure;
        int closing;           // what Escape presses
        unsigned int claimed;  // the answer to JxClaimedCommand
    };
    const Row rows[] = {{JxAddDataSourceDialog, AddDataSourceDlgProc, IDCANCEL, 1},
                        {JxDataSourcesDialog, DataSourcesDlgProc, JxCloseButton, 1},
                        {JxOptionsDialog, OdbcOptionsDlgProc, IDCANCEL, 1},
                        {JxDriversDialog, OdbcDriversDlgProc, JxCloseButton, 1},
                        {JxAdvancedOptionsDialog, AdvancedInstallationOptionsDlgProc, IDCANCEL, 1},
                        {JxInstallDriversDialog, InstallDriversDlgProc, IDCANCEL, 1},
                        {JxAddDriverDialog, AddDriverDlgProc, IDCANCEL, 1},
                        {JxVersionsDialog, VersionsDlgProc, IDCANCEL, 0},
                        {JxSelectTranslatorDialog, SelectTranslatorDlgProc, IDCANCEL, 1},
                        {JxAboutDialog, AboutDlgProc, IDOK, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.dialog);
        MessageBoxScript boxes;
        const HWND dialog = JXW_CreateDialog(BJXHINST, row.dialog, 0, row.procedure, nullptr);
        ASSERT_NE(dialog, 0U);
        EXPECT_EQ(JXW_SendMessage(dialog, WM_COMMAND, JxClaimedCommand, 0), static_cast<int>(row.claimed));
        for (int id = 0; id < 160; ++id) {
            if (id != JxClaimedCommand && id != row.closing) {
                EXPECT_EQ(JXW_SendMessage(dialog, WM_COMMAND, id, LBN_SELCHANGE << 16), 0) << id;
            }
        }
        EXPECT_EQ(JXW_IsDialogEnded(dialog, nullptr), 0);
        EXPECT_EQ(JXW_UserKey(dialog, JXW_KEY_ESCAPE), 1);
        int result = 0;
        EXPECT_EQ(JXW_IsDialogEnded(dialog, &result), 1);
        EXPECT_EQ(result, 1);
        EXPECT_EQ(boxes.boxes(), Boxes{});
        JXW_DestroyDialog(dialog);
    }
}

}  // namespace

}  // namespace jx::test
