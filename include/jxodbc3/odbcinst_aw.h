/* The functions of odbcinst.h under their two other names: with A, which are the same as without, and with W.
 *
 *     const SQLWCHAR section[] = {'S', 'a', 'l', 'e', 's', 0};
 *     SQLGetPrivateProfileStringW(section, key, fallback, buffer, sizeof buffer / sizeof *buffer, file);
 *
 * The W functions take and give UTF-16 in the machine's byte order. Their sizes and lengths count units of 16 bits,
 * of which a character beyond U+FFFF takes two. Half of such a pair fails with ODBC_ERROR_INVALID_STR (a look-up gives
 * the default); bytes of a file that are not UTF-8 come out as U+FFFD. */
#ifndef JXODBC3_ODBCINST_AW_H
#define JXODBC3_ODBCINST_AW_H

#include "odbcinst_types.h"

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

int SQLGetPrivateProfileStringA(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszDefault, LPSTR lpszRetBuffer,
                                int cbRetBuffer, LPCSTR lpszFilename);
BOOL SQLWritePrivateProfileStringA(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszString, LPCSTR lpszFilename);
RETCODE SQLInstallerErrorA(WORD iError, DWORD* pfErrorCode, LPSTR lpszErrorMsg, WORD cbErrorMsgMax, WORD* pcbErrorMsg);
RETCODE SQLPostInstallerErrorA(DWORD fErrorCode, LPCSTR szErrorMsg);
BOOL SQLValidDSNA(LPCSTR lpszDSN);
BOOL SQLWriteDSNToIniA(LPCSTR lpszDSN, LPCSTR lpszDriver);
BOOL SQLRemoveDSNFromIniA(LPCSTR lpszDSN);
BOOL SQLConfigDataSourceA(HWND hwndParent, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes);
BOOL SQLReadFileDSNA(LPCSTR lpszFileName, LPCSTR lpszAppName, LPCSTR lpszKeyName, LPSTR lpszString, WORD cbString,
                     WORD* pcbString);
BOOL SQLWriteFileDSNA(LPCSTR lpszFileName, LPCSTR lpszAppName, LPCSTR lpszKeyName, LPCSTR lpszString);
BOOL SQLCreateDataSourceA(HWND hwndParent, LPCSTR lpszDSN);
BOOL SQLGetTranslatorA(HWND hwndParent, LPSTR lpszName, WORD cbNameMax, WORD* pcbNameOut, LPSTR lpszPath,
                       WORD cbPathMax, WORD* pcbPathOut, DWORD* pvOption);
BOOL SQLGetInstalledDriversA(LPSTR lpszBuf, WORD cbBufMax, WORD* pcbBufOut);
BOOL SQLInstallDriverExA(LPCSTR lpszDriver, LPCSTR lpszPathIn, LPSTR lpszPathOut, WORD cbPathOutMax, WORD* pcbPathOut,
                         WORD fRequest, DWORD* lpdwUsageCount);
BOOL SQLInstallTranslatorExA(LPCSTR lpszTranslator, LPCSTR lpszPathIn, LPSTR lpszPathOut, WORD cbPathOutMax,
                             WORD* pcbPathOut, WORD fRequest, DWORD* lpdwUsageCount);
BOOL SQLInstallTranslatorA(LPCSTR lpszInfFile, LPCSTR lpszTranslator, LPCSTR lpszPathIn, LPSTR lpszPathOut,
                           WORD cbPathOutMax, WORD* pcbPathOut, WORD fRequest, DWORD* lpdwUsageCount);
BOOL SQLRemoveDriverA(LPCSTR lpszDriver, BOOL fRemoveDSN, DWORD* lpdwUsageCount);
BOOL SQLRemoveTranslatorA(LPCSTR lpszTranslator, DWORD* lpdwUsageCount);
BOOL SQLInstallDriverManagerA(LPSTR lpszPath, WORD cbPathMax, WORD* pcbPathOut);
BOOL SQLConfigDriverA(HWND hwndParent, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszArgs, LPSTR lpszMsg, WORD cbMsgMax,
                      WORD* pcbMsgOut);

int SQLGetPrivateProfileStringW(const SQLWCHAR* lpszSection, const SQLWCHAR* lpszEntry, const SQLWCHAR* lpszDefault,
                                SQLWCHAR* lpszRetBuffer, int cchRetBuffer, const SQLWCHAR* lpszFilename);
BOOL SQLWritePrivateProfileStringW(const SQLWCHAR* lpszSection, const SQLWCHAR* lpszEntry, const SQLWCHAR* lpszString,
                                   const SQLWCHAR* lpszFilename);
RETCODE SQLInstallerErrorW(WORD iError, DWORD* pfErrorCode, SQLWCHAR* lpszErrorMsg, WORD cchErrorMsgMax,
                           WORD* pcchErrorMsg);
RETCODE SQLPostInstallerErrorW(DWORD fErrorCode, const SQLWCHAR* szErrorMsg);
BOOL SQLValidDSNW(const SQLWCHAR* lpszDSN);
BOOL SQLWriteDSNToIniW(const SQLWCHAR* lpszDSN, const SQLWCHAR* lpszDriver);
BOOL SQLRemoveDSNFromIniW(const SQLWCHAR* lpszDSN);
BOOL SQLConfigDataSourceW(HWND hwndParent, WORD fRequest, const SQLWCHAR* lpszDriver, const SQLWCHAR* lpszAttributes);
BOOL SQLReadFileDSNW(const SQLWCHAR* lpszFileName, const SQLWCHAR* lpszAppName, const SQLWCHAR* lpszKeyName,
                     SQLWCHAR* lpszString, WORD cchString, WORD* pcchString);
BOOL SQLWriteFileDSNW(const SQLWCHAR* lpszFileName, const SQLWCHAR* lpszAppName, const SQLWCHAR* lpszKeyName,
                      const SQLWCHAR* lpszString);
BOOL SQLCreateDataSourceW(HWND hwndParent, const SQLWCHAR* lpszDSN);
BOOL SQLGetTranslatorW(HWND hwndParent, SQLWCHAR* lpszName, WORD cchNameMax, WORD* pcchNameOut, SQLWCHAR* lpszPath,
                       WORD cchPathMax, WORD* pcchPathOut, DWORD* pvOption);
BOOL SQLGetInstalledDriversW(SQLWCHAR* lpszBuf, WORD cchBufMax, WORD* pcchBufOut);
BOOL SQLInstallDriverExW(const SQLWCHAR* lpszDriver, const SQLWCHAR* lpszPathIn, SQLWCHAR* lpszPathOut,
                         WORD cchPathOutMax, WORD* pcchPathOut, WORD fRequest, DWORD* lpdwUsageCount);
BOOL SQLInstallTranslatorExW(const SQLWCHAR* lpszTranslator, const SQLWCHAR* lpszPathIn, SQLWCHAR* lpszPathOut,
                             WORD cchPathOutMax, WORD* pcchPathOut, WORD fRequest, DWORD* lpdwUsageCount);
BOOL SQLInstallTranslatorW(const SQLWCHAR* lpszInfFile, const SQLWCHAR* lpszTranslator, const SQLWCHAR* lpszPathIn,
                           SQLWCHAR* lpszPathOut, WORD cchPathOutMax, WORD* pcchPathOut, WORD fRequest,
                           DWORD* lpdwUsageCount);
BOOL SQLRemoveDriverW(const SQLWCHAR* lpszDriver, BOOL fRemoveDSN, DWORD* lpdwUsageCount);
BOOL SQLRemoveTranslatorW(const SQLWCHAR* lpszTranslator, DWORD* lpdwUsageCount);
BOOL SQLInstallDriverManagerW(SQLWCHAR* lpszPath, WORD cchPathMax, WORD* pcchPathOut);
BOOL SQLConfigDriverW(HWND hwndParent, WORD fRequest, const SQLWCHAR* lpszDriver, const SQLWCHAR* lpszArgs,
                      SQLWCHAR* lpszMsg, WORD cchMsgMax, WORD* pcchMsgOut);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
