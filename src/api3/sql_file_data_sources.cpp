// The exported calls that read and write file data sources.
#include <jxodbc3/odbcinst.h>
#include "api3/ansi_name.h"
#include "api3/arguments.h"
#include "api3/call.h"
#include "api3/file_data_source.h"

using namespace jx::api3;

BOOL SQLReadFileDSN(LPCSTR lpszFileName, LPCSTR lpszAppName, LPCSTR lpszKeyName, LPSTR lpszString, WORD cbString,
                    WORD* pcbString) {
    return answerCall([&](ThreadState& state) {
        return areUtf8({lpszFileName, lpszAppName, lpszKeyName}) &&
               readFileDataSource(state, {lpszFileName, lpszAppName, lpszKeyName}, {lpszString, cbString}, pcbString);
    });
}

JX_ALSO_WITH_A(SQLReadFileDSN);

BOOL SQLReadFileDSNW(const SQLWCHAR* lpszFileName, const SQLWCHAR* lpszAppName, const SQLWCHAR* lpszKeyName,
                     SQLWCHAR* lpszString, WORD cchString, WORD* pcchString) {
    return answerCall([&](ThreadState& state) {
        const WideTexts texts{lpszFileName, lpszAppName, lpszKeyName};
        return texts.areWhole() &&
               readFileDataSource(state, {texts[0], texts[1], texts[2]}, {lpszString, cchString}, pcchString);
    });
}

BOOL SQLWriteFileDSN(LPCSTR lpszFileName, LPCSTR lpszAppName, LPCSTR lpszKeyName, LPCSTR lpszString) {
    return answerCall([&](ThreadState& state) {
        return areUtf8({lpszFileName, lpszAppName, lpszKeyName, lpszString}) &&
               writeFileDataSource(state, {lpszFileName, lpszAppName, lpszKeyName}, lpszString);
    });
}

JX_ALSO_WITH_A(SQLWriteFileDSN);

BOOL SQLWriteFileDSNW(const SQLWCHAR* lpszFileName, const SQLWCHAR* lpszAppName, const SQLWCHAR* lpszKeyName,
                      const SQLWCHAR* lpszString) {
    return answerCall([&](ThreadState& state) {
        const WideTexts texts{lpszFileName, lpszAppName, lpszKeyName, lpszString};
        return texts.areWhole() && writeFileDataSource(state, {texts[0], texts[1], texts[2]}, texts[3]);
    });
}
