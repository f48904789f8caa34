// The exported calls that would show a dialog.
#include <string>

#include <jxodbc3/odbcinst.h>
#include "api3/ansi_name.h"
#include "api3/call.h"

using namespace jx::api3;

namespace {

// Each needs a window, and a host that shows dialogs. This library has no way for a program to be one.
BOOL refuseScreen(HWND window, const char* what) {
    return answerCall([&](ThreadState&) {
        if (window == nullptr)
            return refuse(ODBC_ERROR_INVALID_HWND, std::string(what) + " need a window.");
        return refuse(ODBC_ERROR_REQUEST_FAILED, std::string(what) + " need a host that shows dialogs; there is none.");
    });
}

constexpr char kDataSources[] = "The dialogs for data sources";
constexpr char kTranslator[] = "The dialogs for translators";

}  // namespace

BOOL SQLCreateDataSource(HWND hwndParent, LPCSTR /*lpszDSN*/) {
    return refuseScreen(hwndParent, kDataSources);
}

JX_ALSO_WITH_A(SQLCreateDataSource);

BOOL SQLCreateDataSourceW(HWND hwndParent, const SQLWCHAR* /*lpszDSN*/) {
    return refuseScreen(hwndParent, kDataSources);
}

BOOL SQLManageDataSources(HWND hwndParent) {
    return refuseScreen(hwndParent, kDataSources);
}

BOOL SQLGetTranslator(HWND hwndParent, LPSTR /*lpszName*/, WORD /*cbNameMax*/, WORD* /*pcbNameOut*/, LPSTR /*lpszPath*/,
                      WORD /*cbPathMax*/, WORD* /*pcbPathOut*/, DWORD* /*pvOption*/) {
    return refuseScreen(hwndParent, kTranslator);
}

JX_ALSO_WITH_A(SQLGetTranslator);

BOOL SQLGetTranslatorW(HWND hwndParent, SQLWCHAR* /*lpszName*/, WORD /*cchNameMax*/, WORD* /*pcchNameOut*/,
                       SQLWCHAR* /*lpszPath*/, WORD /*cchPathMax*/, WORD* /*pcchPathOut*/, DWORD* /*pvOption*/) {
    return refuseScreen(hwndParent, kTranslator);
}
