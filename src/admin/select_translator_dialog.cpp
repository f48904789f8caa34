// The Select Translator dialog: one of the installed translators, or none.
#include <jxerrors.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstddef>
#include <string>

#include <control_ids.h>
#include <text_ids.h>
#include "admin/dialog_record.h"
#include "config/list_box.h"
#include "config/message_box.h"
#include "config/text_bytes.h"
#include "config/translators.h"

using namespace jx::admin;
using jx::TranslatorChoice;

namespace {

constexpr unsigned long kSectionKeys = 2;  // the mode of a list of keys

// The first row with this text; 0, which is no translator, when there is none.
int rowOf(HWND dialog, const unsigned char* name) {
    const short count = jx::rowCount(dialog, JxTranslatorsList);
    std::string row;
    for (short at = 0; at < count && *name != 0; ++at) {
        if (jx::readRow(dialog, JxTranslatorsList, at, row) && row == jx::asChars(name))
            return at;
    }
    return 0;
}

unsigned int open(HWND dialog, uintptr_t lparam) {
    auto* choice = takeRecord<TranslatorChoice>(dialog, lparam);
    if (choice == nullptr)
        return 0;
    choice->chosen = 0;
    choice->installer->PopulateLB(dialog, JxTranslatorsList, kSectionKeys, jx::asBytes(INS_ODBCINST_TRANSLATORS));
    JXW_SendDlgItemMessage(dialog, JxTranslatorsList, LB_SETCURSEL, rowOf(dialog, choice->name), 0);
    winCenterBox(dialog);
    return 1;
}

void chooseNone(TranslatorChoice& choice) {
    BUTSTCPY(choice.name, jx::asBytes(jx::kNoTranslator));
}

void refuseName(HWND dialog) {
    jx::showMessage(dialog,
                    jx::asBytes("The translator was not taken: its name has more than 255 characters. Choose another "
                                "one, or shorten the name in section ODBC Translators of .odbcinst.ini."),
                    MB_OK | MB_ICONEXCLAMATION);
}

// Makes the selected row the choice; false when its name does not fit: a cut one would be another translator's.
bool chooseRow(HWND dialog, TranslatorChoice& choice) {
    const short row = jx::selectedRow(dialog, JxTranslatorsList);
    std::string name;
    if (row <= 0) {
        chooseNone(choice);
        return true;
    }
    if (!jx::readRow(dialog, JxTranslatorsList, row, name))
        return false;
    if (name.size() >= jx::kTranslatorNameSize) {
        refuseName(dialog);
        return false;
    }
    BUTSTCPY(choice.name, jx::asBytes(name.c_str()));
    return true;
}

unsigned int confirm(HWND dialog, TranslatorChoice& choice) {
    if (!chooseRow(dialog, choice))
        return 0;
    choice.chosen = 1;
    return endDialog(dialog);
}

// Deliberate: cancelling does not keep the translator that was current, it answers with none.
unsigned int cancel(HWND dialog) {
    if (auto* choice = recordOf<TranslatorChoice>(dialog))
        chooseNone(*choice);
    return endDialog(dialog);
}

unsigned int hearList(HWND dialog, TranslatorChoice& choice, int notification) {
    if (notification == LBN_SELCHANGE)
        enableControl(dialog, IDOK, jx::selectedRow(dialog, JxTranslatorsList) != -1);
    return notification == LBN_DBLCLK ? confirm(dialog, choice) : 0;
}

unsigned int act(HWND dialog, TranslatorChoice& choice, int id, int notification) {
    switch (id) {
        case JxTranslatorsList:
            return hearList(dialog, choice, notification);
        case IDOK:
            return confirm(dialog, choice);
        default:
            return 0;
    }
}

// What needs no record comes first, so that a dialog without one can be closed.
unsigned int command(HWND dialog, int id, int notification) {
    if (id == JxClaimedCommand)
        return 1;
    if (id == IDCANCEL)
        return cancel(dialog);
    auto* choice = recordOf<TranslatorChoice>(dialog);
    return choice != nullptr ? act(dialog, *choice, id, notification) : 0;
}

}  // namespace

unsigned int SelectTranslatorDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    switch (message) {
        case WM_INITDIALOG:
            return open(hwnd, lparam);
        case WM_COMMAND:
            return command(hwnd, wparam, notificationOf(lparam));
        default:
            return 0;
    }
}
