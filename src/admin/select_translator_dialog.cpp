// The Select Translator dialog: the user picks one of the installed translators, or none.
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <string>

#include "admin/dialog_procedure.h"
#include "config/list_box.h"
#include "config/message_box.h"
#include "config/text_bytes.h"
#include "config/translators.h"

using namespace jx::admin;
using jx::TranslatorChoice;

namespace {

// The first row with this text; without one row 0, which means no translator.
int rowOf(HWND dialog, const unsigned char* name) {
    const short count = jx::rowCount(dialog, JxTranslatorsList);
    std::string row;
    for (short at = 0; at < count && *name != 0; ++at) {
        if (jx::readRow(dialog, JxTranslatorsList, at, row) && row == jx::asChars(name))
            return at;
    }
    return 0;
}

void open(HWND dialog, TranslatorChoice& choice) {
    choice.chosen = 0;
    choice.installer->PopulateLB(dialog, JxTranslatorsList, jx::kSectionKeyRows, jx::asBytes(INS_ODBCINST_TRANSLATORS));
    JXW_SendDlgItemMessage(dialog, JxTranslatorsList, LB_SETCURSEL, rowOf(dialog, choice.name), 0);
}

void chooseNone(TranslatorChoice& choice) {
    BUTSTCPY(choice.name, jx::asBytes(jx::kNoTranslator));
}

void refuseName(HWND dialog) {
    jx::showMessage(dialog,
                    jx::asBytes("This translator cannot be used: its name is longer than 255 bytes. Choose another "
                                "one, or shorten the name in section ODBC Translators of .odbcinst.ini."),
                    MB_OK | MB_ICONEXCLAMATION);
}

// Takes the selected row. False when its name does not fit: cut, it could be another translator's.
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

void enableOk(HWND dialog, TranslatorChoice& /*choice*/) {
    enableControl(dialog, IDOK, jx::selectedRow(dialog, JxTranslatorsList) != -1);
}

void confirm(HWND dialog, TranslatorChoice& choice) {
    if (!chooseRow(dialog, choice))
        return;
    choice.chosen = 1;
    endDialog(dialog);
}

// Deliberate: cancelling does not keep the current translator. The result is no translator. A Cancel that comes behind
// an OK changes nothing any more.
void cancel(HWND /*dialog*/, TranslatorChoice& choice) {
    if (choice.chosen == 0)
        chooseNone(choice);
}

constexpr Reaction<TranslatorChoice> kReactions[] = {
    {JxTranslatorsList, enableOk, LBN_SELCHANGE}, {JxTranslatorsList, confirm, LBN_DBLCLK}, {IDOK, confirm}};

constexpr DialogKind<TranslatorChoice> kDialog{
    .open = open, .reactions = kReactions, .closing = IDCANCEL, .close = cancel};

}  // namespace

unsigned int SelectTranslatorDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    return answer(kDialog, hwnd, message, wparam, lparam);
}
