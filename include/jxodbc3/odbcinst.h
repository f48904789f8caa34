/* The ODBC installer functions, version 3: what drivers, their setup libraries and programs call to read and change the
 * ODBC configuration. This is the header of libodbcinst.so.2; libodbcinst.so.1 has jxodbc/odbcinst.h.
 *
 *     char server[256];
 *     DWORD code;
 *     char why[SQL_MAX_MESSAGE_LENGTH];
 *     if (SQLConfigDataSource(NULL, ODBC_ADD_DSN, "SQLite3", "DSN=Sales\0Database=/tmp/sales.db\0"))
 *         SQLGetPrivateProfileString("Sales", "Database", "", server, sizeof server, "odbc.ini");
 *     else if (SQLInstallerError(1, &code, why, sizeof why, NULL) != SQL_NO_DATA)
 *         fprintf(stderr, "%u: %s\n", code, why);
 *
 * Texts end with NUL and are UTF-8, whatever the locale; a text that is not fails with ODBC_ERROR_INVALID_STR. Sizes
 * and lengths are in bytes; a size includes the NUL, a length does not. The functions with A are the same as those
 * without; those with W take and give UTF-16 and count its units. A result is never cut inside a character. A list is
 * texts one after another, ended by an empty text. Pointers for lengths and counts may be null.
 *
 * BOOL functions return 1, or 0 with one or more error records for SQLInstallerError; each begins with an empty queue,
 * and so does SQLGetPrivateProfileString. All may be called from any thread; records belong to the thread. Changes of
 * a file are whole or not made, and processes that change the same file wait for each other. No function throws an
 * exception of its own; one that a driver's setup library throws passes through to the caller. Texts handed in are
 * never kept. docs/odbc3.md compares each function with the public reference. Plain C can include this header. */
#ifndef JXODBC3_ODBCINST_H
#define JXODBC3_ODBCINST_H

#include "odbcinst_types.h"

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* ---- reading and writing one key ---- */

/* Copies the value of lpszEntry in lpszSection into lpszRetBuffer, cut to cbRetBuffer bytes with its NUL, or
 * lpszDefault (null counts as empty) when there is none; returns the bytes before the NUL. lpszFilename is "odbc.ini"
 * or "odbcinst.ini", with or without a dot before it and in any case: the user's file and the system's, of which the
 * first that has the section answers; or an absolute path. Any other name gives the default.
 * A null entry gives the list of the section's keys, a null section that of the sections; a list that does not fit is
 * cut, ended with two NULs, and the result is cbRetBuffer - 2. For an absent KEY that the section has as KEY@file,
 * KEY@env or KEY@credential the value is what that file or variable holds.
 * A null buffer or a size of 0 or less: 0, nothing written. With the default there is an error record when the reason
 * is not plain absence: ODBC_ERROR_REQUEST_FAILED for a file that is there but cannot be read or a reference that is
 * refused, ODBC_ERROR_INVALID_STR. */
int SQLGetPrivateProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszDefault, LPSTR lpszRetBuffer,
                               int cbRetBuffer, LPCSTR lpszFilename);

/* Stores lpszString under lpszEntry; a null string deletes the key and its references, a null entry the section. Files
 * as above: data sources are written in the user's file unless the mode is ODBC_SYSTEM_DSN, drivers in the file whose
 * section answers look-ups, else in the system's. ODBC_ERROR_INVALID_NAME for a null or empty file name, INVALID_PATH
 * for a relative one, REQUEST_FAILED when the text cannot be stored, the file cannot be written, or only the system's
 * file has this data source and the mode is ODBC_BOTH_DSN. */
BOOL SQLWritePrivateProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszString, LPCSTR lpszFilename);

/* ---- errors and mode ---- */

/* Record iError (1 to 8) of the thread's queue: SQL_SUCCESS with its code and text; SQL_SUCCESS_WITH_INFO when the text
 * was cut (*pcbErrorMsg is its full length); SQL_NO_DATA when there is no such record (an empty text, length 0);
 * SQL_ERROR for record 0. A null lpszErrorMsg asks for code and length only. The queue stays as it is. */
RETCODE SQLInstallerError(WORD iError, DWORD* pfErrorCode, LPSTR lpszErrorMsg, WORD cbErrorMsgMax, WORD* pcbErrorMsg);

/* For setup routines: adds a record with one of the codes above and a text, null for the code's own sentence. SQL_ERROR
 * with nothing added for another code, a text that is not UTF-8, and when the queue holds 8 records. */
RETCODE SQLPostInstallerError(DWORD fErrorCode, LPCSTR szErrorMsg);

/* The process's mode, ODBC_BOTH_DSN until it is set; in a setup routine that SQLConfigDataSource called, the mode of
 * that call. ODBC_ERROR_INVALID_PARAM_SEQUENCE for null and for any other mode. */
BOOL SQLGetConfigMode(UWORD* pwConfigMode);
BOOL SQLSetConfigMode(UWORD wConfigMode);

/* ---- data sources ---- */

/* Whether a new data source can be called so: 1 to 32 characters, none of []{}(),;?*=!@\ and no control character, no
 * blank at either end, no # at the beginning, no section that has another use. FALSE adds no record. */
BOOL SQLValidDSN(LPCSTR lpszDSN);

/* Enters data source lpszDSN with the library of the registered driver lpszDriver, replacing an older one.
 * ODBC_ERROR_INVALID_DSN, INVALID_NAME (no such driver), REQUEST_FAILED as SQLWritePrivateProfileString. */
BOOL SQLWriteDSNToIni(LPCSTR lpszDSN, LPCSTR lpszDriver);

/* Removes a data source from list and file; TRUE also when there was none. ODBC_ERROR_INVALID_DSN for a name that no
 * data source can have, REQUEST_FAILED. The default data source is called "Default". */
BOOL SQLRemoveDSNFromIni(LPCSTR lpszDSN);
BOOL SQLRemoveDefaultDataSource(void);

/* Adds, changes or removes a data source of the registered driver lpszDriver through its setup library; a driver
 * without one that can be called gets the common routine. lpszAttributes is a list of keyword=value texts with the name
 * under DSN. The SYS requests work on the system's file, the others on the user's; afterwards the mode is
 * ODBC_BOTH_DSN. ODBC_ERROR_INVALID_REQUEST_TYPE, INVALID_NAME (no driver given), COMPONENT_NOT_FOUND (not registered),
 * REQUEST_FAILED (also when the routine added no record); of the common routine INVALID_KEYWORD_VALUE for a bad list
 * and INVALID_DSN for a name that is missing or bad. ODBC_REMOVE_DEFAULT_DSN takes no other argument. */
BOOL SQLConfigDataSource(HWND hwndParent, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes);

/* One value of a file data source: FILE.dsn, by an absolute path, or below ODBCDataSources in the system's directory. A
 * null key gives the section's keys, a null section and key the sections, with semicolons between. The texts are cut to
 * cbString bytes with the NUL, with ODBC_ERROR_OUTPUT_STRING_TRUNCATED and the full length. INVALID_PATH,
 * INVALID_BUFF_LEN for no buffer, INVALID_REQUEST_TYPE for a key without a section, REQUEST_FAILED when there is none.
 */
BOOL SQLReadFileDSN(LPCSTR lpszFileName, LPCSTR lpszAppName, LPCSTR lpszKeyName, LPSTR lpszString, WORD cbString,
                    WORD* pcbString);

/* Writes one value of at most 32767 bytes there; a null value deletes the key, a null key the section. A new file is
 * private (0600). ODBC_ERROR_INVALID_PATH, INVALID_REQUEST_TYPE without a section, INVALID_STR, REQUEST_FAILED. */
BOOL SQLWriteFileDSN(LPCSTR lpszFileName, LPCSTR lpszAppName, LPCSTR lpszKeyName, LPCSTR lpszString);

/* These three need a window (ODBC_ERROR_INVALID_HWND) and a host that shows their dialogs, which this library has none
 * for: ODBC_ERROR_REQUEST_FAILED. */
BOOL SQLCreateDataSource(HWND hwndParent, LPCSTR lpszDSN);
BOOL SQLManageDataSources(HWND hwndParent);
BOOL SQLGetTranslator(HWND hwndParent, LPSTR lpszName, WORD cbNameMax, WORD* pcbNameOut, LPSTR lpszPath, WORD cbPathMax,
                      WORD* pcbPathOut, DWORD* pvOption);

/* ---- drivers and translators; no file is copied or deleted ---- */

/* The list of registered drivers; *pcbBufOut is the length of the whole list without its last NUL. A list that does not
 * fit is cut. ODBC_ERROR_COMPONENT_NOT_FOUND without any driver, INVALID_BUFF_LEN without a buffer. */
BOOL SQLGetInstalledDrivers(LPSTR lpszBuf, WORD cbBufMax, WORD* pcbBufOut);

/* Registers a driver in the system's file. lpszDriver is a list: its name, Driver=FILE, if it has one Setup=FILE, and
 * keyword=value texts. FILE without a directory lies in lpszPathIn, null for the configured directory of drivers, or
 * where the driver was installed before; lpszPathOut tells which. ODBC_INSTALL_COMPLETE writes, and counts in
 * *lpdwUsageCount who installed it; ODBC_INSTALL_INQUIRY only tells. ODBC_ERROR_INVALID_REQUEST_TYPE,
 * INVALID_PARAM_SEQUENCE (no list), INVALID_KEYWORD_VALUE (a bad one), INVALID_NAME, INVALID_PATH (relative),
 * INVALID_BUFF_LEN (the path was cut), USAGE_UPDATE_FAILED (the file cannot be written): then nothing has changed. */
BOOL SQLInstallDriverEx(LPCSTR lpszDriver, LPCSTR lpszPathIn, LPSTR lpszPathOut, WORD cbPathOutMax, WORD* pcbPathOut,
                        WORD fRequest, DWORD* lpdwUsageCount);

/* The same for a translator: its name, Translator=FILE, and so on. lpszInfFile of the second must be null or empty
 * (ODBC_ERROR_INVALID_INF): scripts are not read. */
BOOL SQLInstallTranslatorEx(LPCSTR lpszTranslator, LPCSTR lpszPathIn, LPSTR lpszPathOut, WORD cbPathOutMax,
                            WORD* pcbPathOut, WORD fRequest, DWORD* lpdwUsageCount);
BOOL SQLInstallTranslator(LPCSTR lpszInfFile, LPCSTR lpszTranslator, LPCSTR lpszPathIn, LPSTR lpszPathOut,
                          WORD cbPathOutMax, WORD* pcbPathOut, WORD fRequest, DWORD* lpdwUsageCount);

/* Counts an installation less. The last one calls ConfigDriver of the driver's setup library, removes with fRemoveDSN
 * its data sources, and then the driver. TRUE with one ODBC_ERROR_REMOVE_DSN_FAILED a file in which data sources were
 * left. ODBC_ERROR_INVALID_NAME, COMPONENT_NOT_FOUND (not in the system's file), USAGE_UPDATE_FAILED,
 * REQUEST_FAILED (the setup library refused: nothing is removed). */
BOOL SQLRemoveDriver(LPCSTR lpszDriver, BOOL fRemoveDSN, DWORD* lpdwUsageCount);
BOOL SQLRemoveTranslator(LPCSTR lpszTranslator, DWORD* lpdwUsageCount);

/* Counts an installation of the driver manager more or less; the first tells where its libraries belong.
 * ODBC_ERROR_INVALID_BUFF_LEN when that does not fit, COMPONENT_NOT_FOUND without a count, USAGE_UPDATE_FAILED. */
BOOL SQLInstallDriverManager(LPSTR lpszPath, WORD cbPathMax, WORD* pcbPathOut);
BOOL SQLRemoveDriverManager(DWORD* lpdwUsageCount);

/* ODBC_CONFIG_DRIVER stores "CPTimeout=seconds"; the other requests up to ODBC_REMOVE_DRIVER, and the driver's own from
 * 101 on, go to ConfigDriver of its setup library with lpszArgs, one text; without one they succeed. lpszMsg gets its
 * message. ODBC_ERROR_INVALID_REQUEST_TYPE, INVALID_NAME, COMPONENT_NOT_FOUND, LOAD_LIB_FAILED, INVALID_KEYWORD_VALUE,
 * REQUEST_FAILED. */
BOOL SQLConfigDriver(HWND hwndParent, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszArgs, LPSTR lpszMsg, WORD cbMsgMax,
                     WORD* pcbMsgOut);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#include "odbcinst_aw.h"

#endif
