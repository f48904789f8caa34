/* The exported interface of the ODBC installer library. Plain C can include it.
 *
 * Sizes are in bytes and include the final NUL. A list is NUL-terminated texts one after another, ended by an empty
 * text; a list that does not fit its buffer is cut at the size less 1. Failures show as FALSE or 0; a message box
 * appears only when a window was given. Functions may be called from any thread; the two configuration files are
 * shared safely with other threads and processes. No function throws of its own, but an exception thrown by a
 * driver's or translator's setup library passes through to the caller. Texts handed in are never kept. */
#ifndef ODBCINST_H
#define ODBCINST_H

#include <stddef.h>
#include <stdint.h>

#include "jxexport.h"
#include "jxtypes.h"

JX_EXTERN_C_BEGIN

/* Request codes of SQLConfigDataSource. */
enum { ODBC_ADD_DSN = 1, ODBC_CONFIG_DSN = 2, ODBC_REMOVE_DSN = 3 };

/* ---- names used in the configuration files; programs read them through these pointers ---- */

extern JX_EXPORT const char* INS_ODBCINI_ODBC;         /* "ODBC": trace settings in .odbc.ini */
extern JX_EXPORT const char* INS_ODBCINI_DS;           /* "ODBC Data Sources": the list in .odbc.ini */
extern JX_EXPORT const char* INS_ODBCINI_DRIVER;       /* "Driver": key naming a data source's driver */
extern JX_EXPORT const char* INS_ODBCINI_DRIVERS;      /* "ODBC Drivers": the list in .odbcinst.ini */
extern JX_EXPORT const char* INS_ODBCINI_DEFAULT;      /* "Default": the default data source */
extern JX_EXPORT const char* INS_ODBCINI_FILENAME;     /* ".odbc.ini": the data source file */
extern JX_EXPORT const char* INS_ODBCINST_FILENAME;    /* ".odbcinst.ini": the driver and translator file */
extern JX_EXPORT const char* INS_ODBCINST_TRANSLATORS; /* "ODBC Translators": the list in .odbcinst.ini */
extern JX_EXPORT const char* BJXHINST;                 /* "odbcinst": the module of this library's texts */

/* ---- words of the running program ---- */

extern JX_EXPORT uintptr_t HWNDDSDLG;  /* the open Data Sources dialog, 0 when none is open */
extern JX_EXPORT uintptr_t HWNDADDLG;  /* the open Add Data Source dialog, 0 when none is open */
extern JX_EXPORT unsigned char* inbuf; /* work buffers while a batch installation runs */
extern JX_EXPORT unsigned char* outbuf;
extern JX_EXPORT unsigned char* bigbuf;

/* ---- profile strings ---- */

/* Copies the value of lpszEntry in lpszSection of lpszFilename into lpszRetBuffer (cbRetBuffer bytes), or lpszDefault
 * when there is none; returns the number of bytes placed before the final NUL. The whole buffer is zeroed first. A
 * null entry gives the list of keys, a null section the list of sections. ".odbc.ini" and ".odbcinst.ini", in any
 * case, mean the user's own files; every other name is used as spelled.
 * cbRetBuffer is taken as its low 16 bits, signed: what is then 0 or less places nothing, touches nothing and returns
 * 0. So does a null buffer or a null file name. */
JX_EXPORT int SQLGetPrivateProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszDefault, LPSTR lpszRetBuffer,
                                         int cbRetBuffer, LPCSTR lpszFilename);

/* Stores lpszString under lpszEntry; a null string deletes the key, a null entry the section. TRUE when the file holds
 * it, and it then survives a power cut; FALSE when the file is as it was, or when only its directory could not be
 * flushed: then the new text is there. */
JX_EXPORT BOOL SQLWritePrivateProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszString,
                                            LPCSTR lpszFilename);

/* ---- data sources ---- */

/* Enters data source lpszDSN for the installed driver lpszDriver, replacing an old entry with all its keys. FALSE when
 * the driver has no "Driver" key in .odbcinst.ini (the old entry is gone then) or a file cannot be written. */
JX_EXPORT BOOL SQLWriteDSNToIni(LPCSTR lpszDSN, LPCSTR lpszDriver);

/* Removes data source lpszDSN and its section. TRUE also when there was none. "Default", spelled so, means the default
 * data source. */
JX_EXPORT BOOL SQLRemoveDSNFromIni(LPCSTR lpszDSN);

/* Always TRUE, whatever lpszDSN holds; null is allowed. */
JX_EXPORT BOOL SQLValidDSN(LPCSTR lpszDSN);

/* Writes an empty key into section "Default" of .odbc.ini, which the store takes as done: TRUE, and both files stay
 * as they are. */
JX_EXPORT BOOL SQLRemoveDefaultDataSource(void);

/* Adds, changes or removes (fRequest) a data source through the setup library of the installed driver lpszDriver (at
 * most 49 bytes; a longer name is refused). lpszAttributes is a list of keyword=value texts of at most 1024 bytes in
 * all, with the name under "DSN"; with a window and ODBC_ADD_DSN it may be null or empty. An add removes a data source
 * of that name before it calls the setup library, whatever that then answers. "ODBC", "ODBC Data Sources", "ODBC
 * Drivers" and "ODBC Translators", in any case, are no data sources: none of them is ever found or removed. TRUE when
 * the setup library accepted, or when the removal of a data source whose setup library cannot be loaded was tried. */
JX_EXPORT BOOL SQLConfigDataSource(HWND hwnd, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes);

/* Runs the Data Sources dialog and returns what its starter returned: 0 without a host that shows dialogs, and 0 at
 * once when the dialog is open already (it gets the focus). */
JX_EXPORT BOOL SQLManageDataSources(HWND hwnd);

/* Runs the Add Data Source dialog; TRUE when a data source was added. FALSE at once without a window. lpszDS is not
 * used. */
JX_EXPORT BOOL SQLCreateDataSource(HWND hwnd, LPCSTR lpszDS);

/* ---- drivers and translators ---- */

/* The list of installed drivers. TRUE and the number of bytes placed (without the final NUL) in *pcbBufOut; FALSE,
 * with both outputs untouched, when no driver is installed, lpszBuf is null or cbBufMax is 0. A list that does not fit
 * is cut and still TRUE. pcbBufOut may be null. */
JX_EXPORT BOOL SQLGetInstalledDrivers(LPSTR lpszBuf, WORD cbBufMax, WORD* pcbBufOut);

/* The list of drivers that the installation script lpszInfFile offers; its name must be odbc.inf in any case. Results
 * as above. */
JX_EXPORT BOOL SQLGetAvailableDrivers(LPCSTR lpszInfFile, LPSTR lpszBuf, WORD cbBufMax, WORD* pcbBufOut);

/* Lets the user choose a translator (lpszName is the first choice on entry), runs its setup routine, which stores its
 * option in *pvOption, and returns its name and the path of its setup library, each cut to its buffer, with their
 * lengths. FALSE only without a window or when the first choice is longer than 255 bytes (cut, it would be another
 * translator). TRUE with both lengths 0 and the buffers untouched for "<No Translator>"; TRUE
 * with nothing written when the setup routine failed or could not be loaded (a message box tells). A buffer of size 0
 * is not written to; null outputs are skipped. */
JX_EXPORT BOOL SQLGetTranslator(HWND hwnd, LPSTR lpszName, WORD cbNameMax, WORD* pcbNameOut, LPSTR lpszPath,
                                WORD cbPathMax, WORD* pcbPathOut, DWORD* pvOption);

/* ---- installing drivers ---- */

/* Registers one driver in .odbcinst.ini and returns the directory of its files in lpszPath (cbPathMax bytes, more is
 * cut) and that text's length in *pcbPathOut, which may be null. No file is copied, and the driver is not entered in
 * "ODBC Drivers": write its name there with the value "Installed".
 * Without a script (lpszInfFile null) lpszDriver is a list of at most 1024 bytes: the driver's name, "Driver=" with the
 * path of its library, "Setup=" with that of its setup library, then further keyword=value texts, which are stored;
 * "CreateDSN=" with names between commas creates data sources. "Setup=" counts as the third text only; without it the
 * driver library is the setup library too. The directory is that of the "Driver=" path.
 * With a script, lpszDriver is the driver's name (at most 1023 bytes): its section holds the lines "Driver" and "Setup"
 * (with these double quotes), whose second field is the file's name, and the section with "-Keys" behind the name its
 * further keys. The directory is that of the library registered so far, "NOT AVAILABLE" when there is none.
 * Both libraries are registered in the directory as it was returned, cut or not: give 1024 bytes.
 * TRUE when the list or script was in order; a write that failed or was refused is not told: read the entry back. FALSE
 * with nothing written anywhere when lpszDriver or lpszPath is null, cbPathMax is 0, the list or name is too long, the
 * driver's file name has more than 131 bytes before its last dot or more than 3 behind it, the library registered so
 * far cannot be read, or the second text does not name a driver (a message box tells why); the script's line of the
 * driver being absent, useless or unreadable, or another keyword than "Driver" there, leaves lpszPath empty as well. A
 * useless or unreadable setup library is passed over, and so is a data source named like one of the lists "ODBC Data
 * Sources", "ODBC Drivers" and "ODBC Translators". */
JX_EXPORT BOOL SQLInstallDriver(LPCSTR lpszInfFile, LPCSTR lpszDriver, LPSTR lpszPath, WORD cbPathMax,
                                WORD* pcbPathOut);

/* Installs from the script lpszInfFile the drivers of the list lpszDrivers, every translator the script lists and its
 * core components: enters them with their libraries and capabilities in .odbcinst.ini, replacing older sections, and
 * creates the data sources that drivers ask for. No file is copied: they are registered where they lie, which is
 * lpszSrcPath, or the script's directory when that is null or empty; a relative directory is made absolute. Components
 * and data sources named like a list ("ODBC Drivers" and its like) are passed over.
 * Let one installation at a time begin a new file: each clears a list that it does not find, and two that begin the
 * same list at once can lose an entry. Once a list is there, any number may add to it.
 * lpszDrivers is written into while it is read (its texts are cut at "="): it must be writable and end with an empty
 * text. With a window and no list the user chooses the drivers; that dialog needs a host (see jxDllDialog), and without
 * one, or when it is cancelled, nothing is installed and no message shown.
 * The result is always FALSE, and with a window the message of an aborted installation comes with it, unless the script
 * is null or the choice was cancelled: what was installed is seen in the two files. A line of the script with too few
 * fields is told in a message box; a component with a line that cannot be read is not installed. */
JX_EXPORT BOOL SQLInstallODBC(HWND hwndParent, LPCSTR lpszInfFile, LPCSTR lpszSrcPath, LPSTR lpszDrivers);

/* ---- dialogs ---- */

/* A dialog procedure: 1 when it handled the message, else 0. lparam is the record's address in the first message. */
typedef unsigned int (*JxDialogProcedure)(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* The procedures of the library's dialogs, for a host that shows them: each runs on its template (jxwindow.h) of module
 * "odbcinst" and gets the address of its record with the first message. On a window that is none, or without a record,
 * they do nothing. */
JX_EXPORT unsigned int DataSourcesDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);   /* 102: OdbcIns */
JX_EXPORT unsigned int AddDataSourceDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam); /* 100: OdbcIns */
JX_EXPORT unsigned int OdbcDriversDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);   /* 115: OdbcIns */
JX_EXPORT unsigned int OdbcOptionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);   /* 110: OdbcIns */

/* Select Translator (template 143). The record: a buffer of 256 bytes with the first choice, which receives the name
 * chosen, or "<No Translator>", also when the dialog is cancelled; an OdbcIns; an unsigned int, 1 when it was
 * confirmed. */
JX_EXPORT unsigned int SelectTranslatorDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* About (template 145, or one of the caller's with text controls 146 to 153 and a button IDOK). The record: eight texts
 * made by ramAllocStr, null for "Not Available". Pressing IDOK releases the texts, so do not use them afterwards; a
 * dialog that is closed in any other way leaves them to the caller. */
JX_EXPORT unsigned int AboutDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* The dialogs of a batch installation, on records of its own (templates 132, 129, 120, 136). */
JX_EXPORT unsigned int AddDriverDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);
JX_EXPORT unsigned int InstallDriversDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);
JX_EXPORT unsigned int AdvancedInstallationOptionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);
JX_EXPORT unsigned int VersionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* The library's dialog starters. They show nothing and return 0. Every dialog that the library starts goes through
 * jxDllDialog by way of the dynamic symbol table, so a program that defines and exports these two functions itself
 * takes their place and can show the dialogs. */
JX_EXPORT int32_t jxDllDialog(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record);
JX_EXPORT int32_t jxDllDialogReturnId(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record);

/* The file transfer of a batch installation: does nothing and returns 1. */
JX_EXPORT unsigned int Decompress(unsigned int hwnd, unsigned char* source, unsigned char* target);

/* ---- texts ---- */

/* Copies text id of this library into buffer (256 bytes) and returns its length; 0 and an untouched buffer when there
 * is no such text. */
JX_EXPORT unsigned short winGetString(unsigned char* buffer, unsigned short id);

JX_EXTERN_C_END

#ifdef __cplusplus
class JxError;

/* ---- the calling thread's error list (jxerrors.h reads it) ---- */

/* Record an error or a warning under number id with the text of that number, or with the given text. Return the
 * recorded object, which the list owns; null when memory was short. */
JX_EXPORT JxError* addError(unsigned short id);
JX_EXPORT JxError* addError(unsigned short id, const unsigned char* text);
JX_EXPORT JxError* addWarning(unsigned short id);

/* Append text id to the newest entry, or to the one at position pos (0 is the oldest), and return it; null when there
 * is none. */
JX_EXPORT JxError* appendTextToLastError(unsigned short id);
JX_EXPORT JxError* appendTextToErrorAtPos(unsigned short id, unsigned long pos);
#endif

#endif
