// The exported calls that install and remove translators.
#include <jxodbc3/odbcinst.h>
#include "api3/ansi_name.h"
#include "api3/arguments.h"
#include "api3/call.h"
#include "api3/component_install.h"
#include "api3/driver_removal.h"

using namespace jx::api3;

namespace {

// Installation scripts are read by libodbcinst.so.1.
template <class Unit>
bool namesNoScript(const Unit* script) {
    return script == nullptr || *script == 0 ||
           refuse(ODBC_ERROR_INVALID_INF, "Installation scripts are not read: the script's path must be null.");
}

bool install(ThreadState& state, const InstallRequest& request) {
    return isUtf8List(request.list) && areUtf8({request.pathIn}) && installComponent(state, kTranslators, request);
}

struct WideRequest {
    const SQLWCHAR* list;
    const SQLWCHAR* pathIn;
};

bool installWide(ThreadState& state, const WideRequest& texts, InstallRequest request) {
    const WideList list(texts.list);
    const WideTexts path{texts.pathIn};
    request.list = list.list();
    request.pathIn = path[0];
    return list.isWhole() && path.areWhole() && installComponent(state, kTranslators, request);
}

}  // namespace

BOOL SQLInstallTranslatorEx(LPCSTR lpszTranslator, LPCSTR lpszPathIn, LPSTR lpszPathOut, WORD cbPathOutMax,
                            WORD* pcbPathOut, WORD fRequest, DWORD* lpdwUsageCount) {
    const TextOutput output(lpszPathOut, cbPathOutMax);
    return answerCall([&](ThreadState& state) {
        return install(state, {lpszTranslator, lpszPathIn, fRequest, output, pcbPathOut, lpdwUsageCount});
    });
}

JX_ALSO_WITH_A(SQLInstallTranslatorEx);

BOOL SQLInstallTranslatorExW(const SQLWCHAR* lpszTranslator, const SQLWCHAR* lpszPathIn, SQLWCHAR* lpszPathOut,
                             WORD cchPathOutMax, WORD* pcchPathOut, WORD fRequest, DWORD* lpdwUsageCount) {
    const TextOutput output(lpszPathOut, cchPathOutMax);
    return answerCall([&](ThreadState& state) {
        return installWide(state, {lpszTranslator, lpszPathIn},
                           {nullptr, nullptr, fRequest, output, pcchPathOut, lpdwUsageCount});
    });
}

BOOL SQLInstallTranslator(LPCSTR lpszInfFile, LPCSTR lpszTranslator, LPCSTR lpszPathIn, LPSTR lpszPathOut,
                          WORD cbPathOutMax, WORD* pcbPathOut, WORD fRequest, DWORD* lpdwUsageCount) {
    const TextOutput output(lpszPathOut, cbPathOutMax);
    return answerCall([&](ThreadState& state) {
        return namesNoScript(lpszInfFile) &&
               install(state, {lpszTranslator, lpszPathIn, fRequest, output, pcbPathOut, lpdwUsageCount});
    });
}

JX_ALSO_WITH_A(SQLInstallTranslator);

BOOL SQLInstallTranslatorW(const SQLWCHAR* lpszInfFile, const SQLWCHAR* lpszTranslator, const SQLWCHAR* lpszPathIn,
                           SQLWCHAR* lpszPathOut, WORD cchPathOutMax, WORD* pcchPathOut, WORD fRequest,
                           DWORD* lpdwUsageCount) {
    const TextOutput output(lpszPathOut, cchPathOutMax);
    return answerCall([&](ThreadState& state) {
        return namesNoScript(lpszInfFile) &&
               installWide(state, {lpszTranslator, lpszPathIn},
                           {nullptr, nullptr, fRequest, output, pcchPathOut, lpdwUsageCount});
    });
}

BOOL SQLRemoveTranslator(LPCSTR lpszTranslator, DWORD* lpdwUsageCount) {
    return answerCall([&](ThreadState& state) {
        return areUtf8({lpszTranslator}) && removeTranslator(state, lpszTranslator, lpdwUsageCount);
    });
}

JX_ALSO_WITH_A(SQLRemoveTranslator);

BOOL SQLRemoveTranslatorW(const SQLWCHAR* lpszTranslator, DWORD* lpdwUsageCount) {
    return answerCall([&](ThreadState& state) {
        const WideTexts texts{lpszTranslator};
        return texts.areWhole() && removeTranslator(state, texts[0], lpdwUsageCount);
    });
}
