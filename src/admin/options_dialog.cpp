// The Options dialog: the driver manager's call tracing.
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include "admin/dialog_procedure.h"
#include "config/text_bytes.h"

using namespace jx::admin;
using jx::asBytes;

namespace {

constexpr short kTextSize = 1024;

void readSetting(OdbcIns& ins, const char* key, const char* fallback, unsigned char (&text)[kTextSize]) {
    ins.jxSQLGetPrivateProfileString(asBytes(INS_ODBCINI_ODBC), asBytes(key), asBytes(fallback), text, kTextSize,
                                     asBytes(INS_ODBCINI_FILENAME));
}

void writeSetting(OdbcIns& ins, const char* key, const unsigned char* text) {
    ins.jxSQLWritePrivateProfileString(asBytes(INS_ODBCINI_ODBC), asBytes(key), text, asBytes(INS_ODBCINI_FILENAME));
}

// Deliberate: only the low 16 bits of the stored number count, so 65536 is shown as off.
void showBox(HWND dialog, unsigned short id, OdbcIns& ins, const char* key) {
    unsigned char text[kTextSize];
    unsigned long value = 0;
    readSetting(ins, key, "0", text);
    convert(text, &value);
    JXW_CheckDlgButton(dialog, id, static_cast<short>(value));
}

void storeBox(HWND dialog, unsigned short id, OdbcIns& ins, const char* key) {
    unsigned char text[kTextSize] = {};
    convert(text, kTextSize - 1, static_cast<unsigned long>(JXW_IsDlgButtonChecked(dialog, id)), 1);
    text[1] = 0;
    writeSetting(ins, key, text);
}

void open(HWND dialog, OdbcIns& ins) {
    unsigned char traceFile[kTextSize];
    showBox(dialog, JxTraceBox, ins, "Trace");
    showBox(dialog, JxTraceAutoStopBox, ins, "TraceAutoStop");
    readSetting(ins, "TraceFile", "sql.log", traceFile);
    JXW_SetDlgItemText(dialog, JxTraceFileEdit, jx::asChars(traceFile));
}

// Writes all three settings, changed or not. The dialog closes even when a write fails.
void save(HWND dialog, OdbcIns& ins) {
    storeBox(dialog, JxTraceBox, ins, "Trace");
    storeBox(dialog, JxTraceAutoStopBox, ins, "TraceAutoStop");
    char traceFile[kTextSize];
    JXW_GetDlgItemText(dialog, JxTraceFileEdit, traceFile, kTextSize);
    writeSetting(ins, "TraceFile", asBytes(traceFile));
    endDialog(dialog);
}

// Deliberate: does nothing. There is no file chooser, as the button's caption says.
void SelectTraceFileName(HWND /*dialog*/, OdbcIns& /*ins*/) {}

constexpr Reaction<OdbcIns> kReactions[] = {{JxTraceFileButton, SelectTraceFileName}, {IDOK, save}};

// The only dialog that is not centered.
constexpr DialogKind<OdbcIns> kDialog{
    .open = open, .reactions = kReactions, .closing = IDCANCEL, .place = Place::unchanged};

}  // namespace

unsigned int OdbcOptionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    return answer(kDialog, hwnd, message, wparam, lparam);
}
