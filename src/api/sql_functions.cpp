// The exported SQL functions. Each makes an OdbcIns, calls one member and returns its result; only SQLInstallDriver and
// SQLInstallODBC are not members of OdbcIns.
#include <jxdialog.h>
#include <jxtasks.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <control_ids.h>
#include "config/data_source_entries.h"
#include "config/text_bytes.h"
#include "install/batch_installation.h"
#include "install/driver_installation.h"

using jx::asBytes;
using jx::asReadOnlyArgument;

namespace {

constexpr int kFirstUserMessage = WM_USER + 1;

// DialogTask: a task of the utility library for as long as a dialog runs. Its end also clears the list of the OdbcIns.
class DialogTask {
public:
    explicit DialogTask(OdbcIns& ins) : ins_(ins) { mdsPerTaskInit(); }
    ~DialogTask() {
        ins_.ResetData(ResetAll);
        mdsPerTaskTerm();
    }
    DialogTask(const DialogTask&) = delete;
    DialogTask& operator=(const DialogTask&) = delete;

private:
    OdbcIns& ins_;
};

// A dialog that an exception of its screen or the end of its thread closed did not clear its word.
void forgetClosed(uintptr_t& word) {
    if (word != 0 && JXW_IsWindow(static_cast<HWND>(word)) == 0)
        word = 0;
}

}  // namespace

int SQLGetPrivateProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszDefault, LPSTR lpszRetBuffer,
                               int cbRetBuffer, LPCSTR lpszFilename) {
    OdbcIns ins;
    // Deliberate: only the low 16 bits of the size count, as a signed number. Above 32767 nothing is copied.
    return ins.jxSQLGetPrivateProfileString(asBytes(lpszSection), asBytes(lpszEntry), asBytes(lpszDefault),
                                            asBytes(lpszRetBuffer), static_cast<short>(cbRetBuffer),
                                            asBytes(lpszFilename));
}

BOOL SQLWritePrivateProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszString, LPCSTR lpszFilename) {
    OdbcIns ins;
    return ins.jxSQLWritePrivateProfileString(asBytes(lpszSection), asBytes(lpszEntry), asBytes(lpszString),
                                              asBytes(lpszFilename));
}

BOOL SQLWriteDSNToIni(LPCSTR lpszDSN, LPCSTR lpszDriver) {
    // Without a driver there is no new entry, so the old one must stay.
    if (lpszDriver == nullptr)
        return FALSE;
    OdbcIns ins;
    return jx::replaceDataSource(ins, asReadOnlyArgument(lpszDSN), asReadOnlyArgument(lpszDriver));
}

BOOL SQLRemoveDSNFromIni(LPCSTR lpszDSN) {
    OdbcIns ins;
    return ins.jxSQLRemoveDSNFromIni(asReadOnlyArgument(lpszDSN));
}

BOOL SQLValidDSN(LPCSTR /*lpszDSN*/) {
    // Deliberate: accepts every name and does not call jxSQLValidDSN, which looks for it among the data sources.
    return TRUE;
}

BOOL SQLRemoveDefaultDataSource(void) {
    OdbcIns ins;
    return ins.SQLRemoveDefaultDataSource();
}

BOOL SQLConfigDataSource(HWND hwnd, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes) {
    OdbcIns ins;
    return ins.jxSQLConfigDataSource(hwnd, fRequest, asBytes(lpszDriver), asBytes(lpszAttributes));
}

BOOL SQLManageDataSources(HWND hwnd) {
    OdbcIns ins;
    forgetClosed(HWNDDSDLG);
    if (HWNDDSDLG != 0) {
        // Deliberate: the dialog ignores this message, but hosts may wait for it.
        JXW_SetFocus(static_cast<HWND>(HWNDDSDLG));
        JXW_PostMessage(static_cast<HWND>(HWNDDSDLG), kFirstUserMessage, 0, 0);
        return 0;
    }
    const DialogTask task(ins);
    return jxDllDialog(hwnd, JxDataSourcesDialog, DataSourcesDlgProc, &ins);
}

BOOL SQLCreateDataSource(HWND hwnd, LPCSTR /*lpszDS*/) {
    // Deliberate: the name is not used; the setup library asks for it.
    OdbcIns ins;
    if (hwnd == 0)
        return FALSE;
    forgetClosed(HWNDADDLG);
    jxDllDialog(hwnd, JxAddDataSourceDialog, AddDataSourceDlgProc, &ins);
    return ins.dataSourceAdded != 0 ? TRUE : FALSE;
}

BOOL SQLGetInstalledDrivers(LPSTR lpszBuf, WORD cbBufMax, WORD* pcbBufOut) {
    OdbcIns ins;
    return ins.jxSQLGetInstalledDrivers(asBytes(lpszBuf), cbBufMax, pcbBufOut);
}

BOOL SQLGetAvailableDrivers(LPCSTR lpszInfFile, LPSTR lpszBuf, WORD cbBufMax, WORD* pcbBufOut) {
    OdbcIns ins;
    return ins.jxSQLGetAvailableDrivers(asBytes(lpszInfFile), asBytes(lpszBuf), cbBufMax, pcbBufOut);
}

BOOL SQLGetTranslator(HWND hwnd, LPSTR lpszName, WORD cbNameMax, WORD* pcbNameOut, LPSTR lpszPath, WORD cbPathMax,
                      WORD* pcbPathOut, DWORD* pvOption) {
    OdbcIns ins;
    return ins.jxSQLGetTranslator(hwnd, asBytes(lpszName), cbNameMax, pcbNameOut, asBytes(lpszPath), cbPathMax,
                                  pcbPathOut, pvOption);
}

BOOL SQLInstallDriver(LPCSTR lpszInfFile, LPCSTR lpszDriver, LPSTR lpszPath, WORD cbPathMax, WORD* pcbPathOut) {
    return jx::install::installDriver(asBytes(lpszInfFile), asBytes(lpszDriver), asBytes(lpszPath), cbPathMax,
                                      pcbPathOut);
}

BOOL SQLInstallODBC(HWND hwndParent, LPCSTR lpszInfFile, LPCSTR lpszSrcPath, LPSTR lpszDrivers) {
    return jx::install::installOdbc(hwndParent, asBytes(lpszInfFile), asBytes(lpszSrcPath), asBytes(lpszDrivers));
}
