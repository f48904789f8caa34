/* The ODBC installer library: reads and changes a user's ODBC drivers and data sources.
 *
 *     char database[256];
 *     if (SQLConfigDataSource(0, ODBC_ADD_DSN, "SQLite3", "DSN=Sales\0Database=/tmp/sales.db\0"))
 *         SQLGetPrivateProfileString("Sales", "Database", "", database, sizeof database, ".odbc.ini");
 *
 * Texts    single bytes ended by NUL. Texts handed in are not kept. Plain C can include this header.
 * Sizes    in bytes, the final NUL included.
 * Lists    texts one after another, ended by an empty text. A list that does not fit its buffer is cut at the size
 *          less 1, perhaps inside a name.
 * Failure  FALSE or 0. Message boxes appear only when a window was given, except two about bad input, which
 *          SQLInstallDriver and SQLInstallODBC always show; without a host they go to standard error (guiMessageBox).
 * Changes  an installation, or the entry or removal of a data source, is one change of each file, .odbcinst.ini first:
 *          when it fails or is killed, that file and .odbc.ini are as they were. jxIniLastFailure (jxini.h) says why.
 * Throws   nothing, but an exception of a driver's or translator's setup library passes through to the caller.
 * Threads  any. The two configuration files are shared safely with other threads and processes; docs/ini-store.md
 *          and the man pages odbc.ini(5) and odbcinst.ini(5) describe their format. */
#ifndef ODBCINST_H
#define ODBCINST_H

#include <stddef.h>
#include <stdint.h>

#include "jxexport.h"
#include "jxtypes.h"

JX_EXTERN_C_BEGIN

/* Request codes of SQLConfigDataSource. */
enum { ODBC_ADD_DSN = 1, ODBC_CONFIG_DSN = 2, ODBC_REMOVE_DSN = 3 };

/* ---- names in the configuration files; read them through these pointers and do not change them ---- */

extern JX_EXPORT const char* INS_ODBCINI_ODBC;         /* "ODBC": trace settings in .odbc.ini */
extern JX_EXPORT const char* INS_ODBCINI_DS;           /* "ODBC Data Sources": the list in .odbc.ini */
extern JX_EXPORT const char* INS_ODBCINI_DRIVER;       /* "Driver": key naming a data source's driver */
extern JX_EXPORT const char* INS_ODBCINI_DRIVERS;      /* "ODBC Drivers": the list in .odbcinst.ini */
extern JX_EXPORT const char* INS_ODBCINI_DEFAULT;      /* "Default": the default data source */
extern JX_EXPORT const char* INS_ODBCINI_FILENAME;     /* ".odbc.ini": the data source file */
extern JX_EXPORT const char* INS_ODBCINST_FILENAME;    /* ".odbcinst.ini": the driver and translator file */
extern JX_EXPORT const char* INS_ODBCINST_TRANSLATORS; /* "ODBC Translators": the list in .odbcinst.ini */
extern JX_EXPORT const char* BJXHINST;                 /* "odbcinst": the module of this library's texts */

/* ---- state of the process; written by the library only, without a lock ----
 * The dialog functions belong to one thread. A word that names no living window counts as 0: a dialog that was closed
 * by an exception or by the end of its thread does not clear its own. */
extern JX_EXPORT uintptr_t HWNDDSDLG;  /* the open Data Sources dialog, 0 when none is open */
extern JX_EXPORT uintptr_t HWNDADDLG;  /* the open Add Data Source dialog, 0 when none is open */
extern JX_EXPORT unsigned char* inbuf; /* work buffers during SQLInstallODBC; not valid after it */
extern JX_EXPORT unsigned char* outbuf;
extern JX_EXPORT unsigned char* bigbuf;

/* ---- profile strings ---- */

/* Copies the value of lpszEntry in lpszSection of lpszFilename into lpszRetBuffer (cbRetBuffer bytes), or lpszDefault
 * when there is none; returns the number of bytes before the final NUL. The whole buffer is zeroed first. A null entry
 * gives the list of keys, a null section the list of sections. ".odbc.ini" and ".odbcinst.ini", in any case, mean the
 * user's own files; every other name is used as spelled. A file that cannot be read gives lpszDefault
 * (jxProfileReadFailed of jxprofile.h shows it).
 * Only the low 16 bits of cbRetBuffer count, as a signed number: give at most 32767. A size of 0 or less, a null buffer
 * or a null file name returns 0 and writes nothing. */
JX_EXPORT int SQLGetPrivateProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszDefault, LPSTR lpszRetBuffer,
                                         int cbRetBuffer, LPCSTR lpszFilename);

/* Stores lpszString under lpszEntry; a null string deletes the key, a null entry the section. File names as above.
 * TRUE when the file holds the change, which then survives a power cut. FALSE when the file is as it was, or when only
 * its directory could not be flushed: the change is then in the file. jxIniLastFailure of jxini.h gives the reason. */
JX_EXPORT BOOL SQLWritePrivateProfileString(LPCSTR lpszSection, LPCSTR lpszEntry, LPCSTR lpszString,
                                            LPCSTR lpszFilename);

/* ---- data sources ---- */

/* Enters data source lpszDSN for the installed driver lpszDriver, replacing an old entry with all its keys. "Default",
 * in any case, is entered as the default data source. FALSE when a name is null (nothing is changed), when the driver
 * has no "Driver" key in .odbcinst.ini (the old entry is removed) or when a file cannot be read or written. */
JX_EXPORT BOOL SQLWriteDSNToIni(LPCSTR lpszDSN, LPCSTR lpszDriver);

/* Removes data source lpszDSN and its section; TRUE also when there was none. "Default", in exactly this case, means
 * the default data source. FALSE for a null name or when a file cannot be written. */
JX_EXPORT BOOL SQLRemoveDSNFromIni(LPCSTR lpszDSN);

/* Always TRUE; lpszDSN is not read and may be null. */
JX_EXPORT BOOL SQLValidDSN(LPCSTR lpszDSN);

/* Returns TRUE and changes nothing: it writes an empty key, which stores nothing. */
JX_EXPORT BOOL SQLRemoveDefaultDataSource(void);

/* Adds, changes or removes a data source through the setup library of the installed driver lpszDriver, which gets the
 * whole attribute list.
 *   fRequest        ODBC_ADD_DSN, ODBC_CONFIG_DSN or ODBC_REMOVE_DSN.
 *   lpszDriver      at most 49 bytes.
 *   lpszAttributes  a list of keyword=value texts of at most 1024 bytes, the data source's name under "DSN" (in this
 *                   case). For ODBC_ADD_DSN with a window it may be null or empty, or hold no DSN.
 * ODBC_ADD_DSN first removes a data source of that name, and does not restore it when the setup library then fails;
 * with a window the user is asked before. The sections "ODBC", "ODBC Data Sources", "ODBC Drivers" and "ODBC
 * Translators", in any case, are not treated as data sources and never removed. When the setup library cannot be
 * loaded, ODBC_REMOVE_DSN removes the data source itself; with a window the user is asked before.
 * TRUE when the setup library returned TRUE, or when ODBC_REMOVE_DSN tried to remove it itself. FALSE for everything
 * else: an argument that is null, too long or not as above, no such data source, an answer of No, no setup library. */
JX_EXPORT BOOL SQLConfigDataSource(HWND hwnd, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes);

/* Runs the Data Sources dialog and returns what jxDllDialog returned: 0 without a host that shows dialogs. When the
 * dialog is open already, gives it the focus and returns 0. hwnd may be 0. */
JX_EXPORT BOOL SQLManageDataSources(HWND hwnd);

/* Runs the Add Data Source dialog; TRUE when a data source was added, FALSE otherwise and without a window. lpszDS is
 * not used. */
JX_EXPORT BOOL SQLCreateDataSource(HWND hwnd, LPCSTR lpszDS);

/* ---- drivers and translators ---- */

/* The list of installed drivers, at most 1023 bytes of it. TRUE, with the number of bytes before the list's final NUL
 * in *pcbBufOut (which may be null), also when the list was cut. FALSE with both outputs untouched when no driver is
 * installed, the file cannot be read, lpszBuf is null or cbBufMax is 0. */
JX_EXPORT BOOL SQLGetInstalledDrivers(LPSTR lpszBuf, WORD cbBufMax, WORD* pcbBufOut);

/* The list of drivers that the installation script lpszInfFile offers. Results as above; FALSE also when the path is
 * null, has 1024 bytes or more, or the file's name is not odbc.inf (in any case). */
JX_EXPORT BOOL SQLGetAvailableDrivers(LPCSTR lpszInfFile, LPSTR lpszBuf, WORD cbBufMax, WORD* pcbBufOut);

/* Lets the user choose a translator (lpszName holds the first choice, null or empty for none), runs its setup routine,
 * which stores its option in *pvOption, and returns its name and the path of its setup library, each cut to its buffer,
 * with their lengths. Without a host that shows dialogs the first choice is taken. The setup library stays loaded.
 *   TRUE   and everything written when the setup routine returned 1;
 *   TRUE   and both lengths 0, the buffers untouched, for "<No Translator>";
 *   TRUE   and nothing written when the setup routine returned anything else or was not found (a message box says why);
 *   FALSE  without a window, or when the first choice has more than 255 bytes.
 * A buffer that is null or of size 0 is not written to, its length is 0; null lengths are skipped. */
JX_EXPORT BOOL SQLGetTranslator(HWND hwnd, LPSTR lpszName, WORD cbNameMax, WORD* pcbNameOut, LPSTR lpszPath,
                                WORD cbPathMax, WORD* pcbPathOut, DWORD* pvOption);

/* ---- installing drivers ---- */

/* Registers one driver in .odbcinst.ini. No file is copied. It does not enter the driver in section "ODBC Drivers":
 * write its name there with the value "Installed".
 *
 * lpszInfFile null: lpszDriver is a list of at most 1024 bytes, in this order:
 *   1. the driver's name, which must not hold "="
 *   2. "Driver=" and the path of its library
 *   3. "Setup=" and the path of its setup library; anywhere else it is ignored. Without it the driver library is the
 *      setup library too.
 *   4. further keyword=value texts, which are stored; "CreateDSN=" and names between commas creates data sources.
 *      A text without "=" is ignored.
 * lpszInfFile names a script (see odbc.inf(5)): lpszDriver is the driver's name, at most 1023 bytes.
 *   - Section NAME holds the keys "Driver" and "Setup", with these double quotes; the second field of their value is
 *     the library's file name.
 *   - Of section NAME-Keys the keys APILevel, CreateDSN, ConnectFunctions, DriverODBCVer, FileUsage, FileExtns and
 *     SQLLevel are stored. CreateDSN creates no data source, but a value "CreateDSN" of any of them creates one so
 *     called instead of being stored.
 *
 * lpszPath (cbPathMax bytes) gets the directory, cut to fit, and *pcbPathOut (which may be null) its length:
 *   - with a list, the directory of the "Driver=" path;
 *   - with a script, that of the library registered so far, or "NOT AVAILABLE" when there is none.
 * Both libraries are registered in that directory, cut or not, so give 1024 bytes.
 *
 * TRUE when list or script were in order, even if .odbcinst.ini cannot be opened or locked: read the entry back. A
 * setup library whose line or name is bad is left out, and so is a data source called "ODBC", "ODBC Data Sources",
 * "ODBC Drivers" or "ODBC Translators".
 * FALSE, lpszPath empty, when anything else cannot be read or written. FALSE, and no file changed, when
 *   - lpszDriver or lpszPath is null, cbPathMax is 0, or the list or name is too long;
 *   - the library's file name has more than 131 bytes before its last dot or more than 3 after it;
 *   - the library registered so far cannot be read;
 *   - the second text does not begin with "Driver" or holds no "=" (a message box says which);
 *   - the second text's keyword is longer than "Driver", or the script's "Driver" line is missing, unreadable, has
 *     fewer than two commas or a bad file name: lpszPath is then empty and the length 0. */
JX_EXPORT BOOL SQLInstallDriver(LPCSTR lpszInfFile, LPCSTR lpszDriver, LPSTR lpszPath, WORD cbPathMax,
                                WORD* pcbPathOut);

/* Installs drivers, translators and core components from the script lpszInfFile (see odbc.inf(5)): enters them with
 * their libraries and capabilities in .odbcinst.ini, replacing older sections, and creates the data sources that
 * drivers ask for. No file is copied: the libraries are registered where they are.
 *   lpszSrcPath  their directory; the script's own when null or empty. A relative one is made absolute.
 *   lpszDrivers  the list of drivers to install; the script's translators and core components are always installed.
 *                It must be writable: each text is cut at its first "=". With a window and no list the user chooses in
 *                a dialog, which needs a host (see jxDllDialog); without one, or after Cancel, nothing is installed and
 *                no message is shown.
 * Always FALSE. With a window a message box then says that the installation was aborted, unless lpszInfFile is null or
 * the choice was cancelled. Read the two files to see what was installed.
 * A script line with too few fields is reported in a message box. Left out are a component with a line that cannot be
 * read, and components and data sources called "ODBC", "ODBC Data Sources", "ODBC Drivers" or "ODBC Translators". */
JX_EXPORT BOOL SQLInstallODBC(HWND hwndParent, LPCSTR lpszInfFile, LPCSTR lpszSrcPath, LPSTR lpszDrivers);

/* ---- dialogs ---- */

/* A dialog procedure: returns 1 when it handled the message, else 0. In the first message (WM_INITDIALOG of jxdialog.h)
 * lparam is the address of the dialog's record. */
typedef unsigned int (*JxDialogProcedure)(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* The procedures of the library's dialogs, for a host that shows them with JXW_DialogBox (jxwindow.h). Each works on a
 * template of module "odbcinst" and on a record; both are given here. A handle that is not a window, or a window
 * without a record, is ignored. The record belongs to the caller and must outlive the dialog. */
JX_EXPORT unsigned int DataSourcesDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);   /* 102: OdbcIns */
JX_EXPORT unsigned int AddDataSourceDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam); /* 100: OdbcIns */
JX_EXPORT unsigned int OdbcDriversDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);   /* 115: OdbcIns */
JX_EXPORT unsigned int OdbcOptionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);   /* 110: OdbcIns */

/* Select Translator (template 143). The record is a struct of
 *   unsigned char*  256 bytes: the first choice, then the name chosen, or "<No Translator>", also after Cancel
 *   OdbcIns*
 *   unsigned int    set to 1 when the choice was confirmed */
JX_EXPORT unsigned int SelectTranslatorDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* About (template 145, or one of the caller's with text controls 146 to 153 and a button IDOK). The record is an array
 * of eight texts made by ramAllocStr, null for "Not Available". IDOK releases them and leaves the pointers in the
 * record; closed in any other way, the dialog leaves them to the caller. */
JX_EXPORT unsigned int AboutDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* The dialogs of a batch installation (templates 132, 129, 120, 136). Their records are the library's own: a host only
 * passes them on. */
JX_EXPORT unsigned int AddDriverDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);
JX_EXPORT unsigned int InstallDriversDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);
JX_EXPORT unsigned int AdvancedInstallationOptionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);
JX_EXPORT unsigned int VersionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* The library's dialog starters. They show nothing and return 0. The library starts every dialog through jxDllDialog,
 * looked up in the dynamic symbol table: a program that defines and exports both functions replaces them and can show
 * the dialogs. docs/dialogs.md has an example. */
JX_EXPORT int32_t jxDllDialog(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record);
JX_EXPORT int32_t jxDllDialogReturnId(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record);

/* The file transfer of a batch installation: does nothing and returns 1. */
JX_EXPORT unsigned int Decompress(unsigned int hwnd, unsigned char* source, unsigned char* target);

/* ---- texts ---- */

/* Copies text id of this library (text_ids.h) into buffer, which must have 256 bytes, and returns its length; 0 and an
 * untouched buffer when there is no such text or buffer is null. */
JX_EXPORT unsigned short winGetString(unsigned char* buffer, unsigned short id);

JX_EXTERN_C_END

#ifdef __cplusplus
class JxError;

/* ---- the calling thread's error list; jxerrors.h reads it. The library itself adds nothing to it. ---- */

/* Record an error or a warning under number id, with the text of that number (empty when there is none) or with the
 * given text, which is copied (null: empty). Return the recorded object, which the list owns; null when memory was
 * short. */
JX_EXPORT JxError* addError(unsigned short id);
JX_EXPORT JxError* addError(unsigned short id, const unsigned char* text);
JX_EXPORT JxError* addWarning(unsigned short id);

/* Append text id to the newest entry, or to the one at position pos (0 is the oldest), and return that entry, which the
 * list owns; null when there is none. */
JX_EXPORT JxError* appendTextToLastError(unsigned short id);
JX_EXPORT JxError* appendTextToErrorAtPos(unsigned short id, unsigned long pos);
#endif

#endif
