// The exported calls that list, install, configure and remove drivers.
#include <jxodbc3/odbcinst.h>
#include "api3/ansi_name.h"
#include "api3/arguments.h"
#include "api3/call.h"
#include "api3/component_install.h"
#include "api3/driver_configuration.h"
#include "api3/driver_list.h"
#include "api3/driver_removal.h"

using namespace jx::api3;

namespace {

// prepare makes the texts while memory may run short; what follows calls setup routines outside of that.
template <class Prepare, class Work>
BOOL callWithRoutine(Prepare prepare, Work work) {
    ThreadState* state = beginCall();
    if (state == nullptr)
        return FALSE;
    return guarded(prepare) && work(*state) ? TRUE : FALSE;
}

WithDataSources asked(BOOL removeDataSources) {
    return removeDataSources == FALSE ? WithDataSources::no : WithDataSources::yes;
}

}  // namespace

BOOL SQLGetInstalledDrivers(LPSTR lpszBuf, WORD cbBufMax, WORD* pcbBufOut) {
    return answerCall([&](ThreadState& state) { return giveDriverList(state, {lpszBuf, cbBufMax}, pcbBufOut); });
}

JX_ALSO_WITH_A(SQLGetInstalledDrivers);

BOOL SQLGetInstalledDriversW(SQLWCHAR* lpszBuf, WORD cchBufMax, WORD* pcchBufOut) {
    return answerCall([&](ThreadState& state) { return giveDriverList(state, {lpszBuf, cchBufMax}, pcchBufOut); });
}

BOOL SQLInstallDriverEx(LPCSTR lpszDriver, LPCSTR lpszPathIn, LPSTR lpszPathOut, WORD cbPathOutMax, WORD* pcbPathOut,
                        WORD fRequest, DWORD* lpdwUsageCount) {
    return answerCall([&](ThreadState& state) {
        return isUtf8List(lpszDriver) && areUtf8({lpszPathIn}) &&
               installComponent(
                   state, kDrivers,
                   {lpszDriver, lpszPathIn, fRequest, {lpszPathOut, cbPathOutMax}, pcbPathOut, lpdwUsageCount});
    });
}

JX_ALSO_WITH_A(SQLInstallDriverEx);

BOOL SQLInstallDriverExW(const SQLWCHAR* lpszDriver, const SQLWCHAR* lpszPathIn, SQLWCHAR* lpszPathOut,
                         WORD cchPathOutMax, WORD* pcchPathOut, WORD fRequest, DWORD* lpdwUsageCount) {
    return answerCall([&](ThreadState& state) {
        const WideList list(lpszDriver);
        const WideTexts path{lpszPathIn};
        return list.isWhole() && path.areWhole() &&
               installComponent(
                   state, kDrivers,
                   {list.list(), path[0], fRequest, {lpszPathOut, cchPathOutMax}, pcchPathOut, lpdwUsageCount});
    });
}

BOOL SQLRemoveDriver(LPCSTR lpszDriver, BOOL fRemoveDSN, DWORD* lpdwUsageCount) {
    return callWithRoutine(
        [&] { return areUtf8({lpszDriver}); },
        [&](ThreadState& state) { return removeDriver(state, lpszDriver, asked(fRemoveDSN), lpdwUsageCount); });
}

JX_ALSO_WITH_A(SQLRemoveDriver);

BOOL SQLRemoveDriverW(const SQLWCHAR* lpszDriver, BOOL fRemoveDSN, DWORD* lpdwUsageCount) {
    WideTexts texts;
    return callWithRoutine(
        [&] {
            texts = WideTexts{lpszDriver};
            return texts.areWhole();
        },
        [&](ThreadState& state) { return removeDriver(state, texts[0], asked(fRemoveDSN), lpdwUsageCount); });
}

BOOL SQLConfigDriver(HWND hwndParent, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszArgs, LPSTR lpszMsg, WORD cbMsgMax,
                     WORD* pcbMsgOut) {
    return callWithRoutine(
        [&] {
            return areUtf8({lpszDriver, lpszArgs});
        },
        [&](ThreadState& state) {
            return configureDriver(state, {hwndParent, fRequest, lpszArgs}, lpszDriver,
                                   {{lpszMsg, cbMsgMax}, pcbMsgOut});
        });
}

JX_ALSO_WITH_A(SQLConfigDriver);

BOOL SQLConfigDriverW(HWND hwndParent, WORD fRequest, const SQLWCHAR* lpszDriver, const SQLWCHAR* lpszArgs,
                      SQLWCHAR* lpszMsg, WORD cchMsgMax, WORD* pcchMsgOut) {
    WideTexts texts;
    return callWithRoutine(
        [&] {
            texts = WideTexts{lpszDriver, lpszArgs};
            return texts.areWhole();
        },
        [&](ThreadState& state) {
            return configureDriver(state, {hwndParent, fRequest, texts[1]}, texts[0],
                                   {{lpszMsg, cchMsgMax}, pcchMsgOut});
        });
}
