// The exported calls that count the driver manager's installations.
#include <jxodbc3/odbcinst.h>
#include "api3/ansi_name.h"
#include "api3/call.h"
#include "api3/driver_manager.h"

using namespace jx::api3;

BOOL SQLInstallDriverManager(LPSTR lpszPath, WORD cbPathMax, WORD* pcbPathOut) {
    return answerCall([&](ThreadState& state) {
        return installDriverManager(state, {lpszPath, cbPathMax}, pcbPathOut);
    });
}

JX_ALSO_WITH_A(SQLInstallDriverManager);

BOOL SQLInstallDriverManagerW(SQLWCHAR* lpszPath, WORD cchPathMax, WORD* pcchPathOut) {
    return answerCall([&](ThreadState& state) {
        return installDriverManager(state, {lpszPath, cchPathMax}, pcchPathOut);
    });
}

BOOL SQLRemoveDriverManager(DWORD* lpdwUsageCount) {
    return answerCall([&](ThreadState& state) { return removeDriverManager(state, lpdwUsageCount); });
}
