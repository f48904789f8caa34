// The Options dialog: the driver manager's call tracing.
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <control_ids.h>
#include "admin/dialog_record.h"
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

// Deliberate: only the low 16 bits of the stored number count, so 65536 shows as off.
void showBox(HWND dialog, unsigned short id, OdbcIns& ins, const char* key) {
    unsigned char text[kTextSize];
    unsigned long value = 0;
    readSetting(ins, key, "0", text);
    convert(text, &value);
    JXW_CheckDlgButton(dialog, id, static_cast<short>(value & 0xFFFF));
}

void storeBox(HWND dialog, unsigned short id, OdbcIns& ins, const char* key) {
    unsigned char text[kTextSize] = {};
    convert(text, kTextSize - 1, static_cast<unsigned long>(JXW_IsDlgButtonChecked(dialog, id)), 1);
    text[1] = 0;
    writeSetting(ins, key, text);
}

// This dialog alone is not centered.
unsigned int open(HWND dialog, uintptr_t lparam) {
    auto* ins = takeRecord<OdbcIns>(dialog, lparam);
    if (ins == nullptr)
        return 0;
    unsigned char traceFile[kTextSize];
    showBox(dialog, JxTraceBox, *ins, "Trace");
    showBox(dialog, JxTraceAutoStopBox, *ins, "TraceAutoStop");
    readSetting(*ins, "TraceFile", "sql.log", traceFile);
    JXW_SetDlgItemText(dialog, JxTraceFileEdit, jx::asChars(traceFile));
    return 1;
}

// All three are written, changed or not, and the dialog closes whether that succeeded or not.
unsigned int save(HWND dialog) {
    auto* ins = recordOf<OdbcIns>(dialog);
    if (ins == nullptr)
        return 0;
    storeBox(dialog, JxTraceBox, *ins, "Trace");
    storeBox(dialog, JxTraceAutoStopBox, *ins, "TraceAutoStop");
    char traceFile[kTextSize];
    JXW_GetDlgItemText(dialog, JxTraceFileEdit, traceFile, kTextSize);
    writeSetting(*ins, "TraceFile", asBytes(traceFile));
    return endDialog(dialog);
}

// Deliberate: there is no file chooser; the button's caption says so.
void SelectTraceFileName(HWND /*dialog*/) {}

unsigned int chooseTraceFile(HWND dialog) {
    SelectTraceFileName(dialog);
    return 0;
}

unsigned int command(HWND dialog, int id) {
    switch (id) {
        case JxClaimedCommand:
            return 1;
        case JxTraceFileButton:
            return chooseTraceFile(dialog);
        case IDOK:
            return save(dialog);
        case IDCANCEL:
            return endDialog(dialog);
        default:
            return 0;
    }
}

}  // namespace

unsigned int OdbcOptionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    switch (message) {
        case WM_INITDIALOG:
            return open(hwnd, lparam);
        case WM_COMMAND:
            return command(hwnd, wparam);
        default:
            return 0;
    }
}
