/* The working state of one installer call or one administrator dialog, for hosts that show the dialogs.
 *
 *     OdbcIns ins;
 *     jxDllDialog(0, JxDriversDialog, OdbcDriversDlgProc, &ins);
 *     ins.ResetData(ResetAll);
 *
 * Every exported function makes an OdbcIns, calls one member and destroys it; dialogs work on one. Its layout is part
 * of the binary interface. C++ only; in C this header is empty.
 * Results  jx... and SQL... members: as the exported function of that name in odbcinst.h, with the same arguments. The
 *          others: 0 for success, 1 for failure, unless their comment says otherwise.
 * Memory   too little is a failure; in a list of data sources it shows as null texts.
 * Threads  one object is used by one thread. */
#ifndef ODBCINS_H
#define ODBCINS_H

#include <stdint.h>

#include "jxexport.h"
#include "jxtypes.h"

#ifdef __cplusplus

/* One row of the data source list. Its texts are heap blocks (jxmemory.h) owned by the list; each may be null. */
struct DataSourceEntry {
    unsigned char* name;    /* a key of "ODBC Data Sources", or "Default" */
    unsigned char* driver;  /* its driver description */
    unsigned char* display; /* name, a blank, driver in parentheses */
};

/* What ResetData clears besides selectedIndex, the names and the list. */
enum ResetDataType {
    ResetAll = 0,          /* dataSourceAdded too */
    ResetKeepAddedFlag = 1 /* nothing more */
};

/* Entry points of setup libraries, as the ODBC standard defines them. */
typedef BOOL (*ConfigDsnRoutine)(HWND hwnd, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes);
typedef BOOL (*ConfigTranslatorRoutine)(HWND hwnd, DWORD* pvOption);

class JX_EXPORT OdbcIns {
public:
    char dataSourceName[50];                     /* the data source being worked on */
    char driverName[50];                         /* its driver's description */
    ConfigDsnRoutine pfnConfigDSN;               /* set by LoadDriver */
    ConfigTranslatorRoutine pfnConfigTranslator; /* set by jxConfigTranslator */
    void* hSetupLib;                             /* the setup library loaded last; may be unloaded already */
    int16_t selectedIndex;                       /* selected list-box row, -1 for none */
    uint8_t dataSourceAdded;                     /* 1 once a setup routine accepted an add request */
    uint32_t entryCount;                         /* rows in entries; 0 means the list is empty whatever entries holds */
    DataSourceEntry* entries;                    /* the data source list */
    uint32_t hasDefault;                         /* nonzero when the last row is the default data source */

    /* Every field is 0 or empty. */
    OdbcIns();

    /* Releases nothing: call ResetData to release the list, dlclose to release a setup library. */
    ~OdbcIns();  // NOLINT(performance-trivially-destructible): hosts call it

    /* Releases the list and sets selectedIndex, entryCount and both names to 0 or empty; always 0. entries and
     * hasDefault keep their old values. */
    unsigned int ResetData(ResetDataType type);

    /* Builds the display text of every row from its name and driver; always 0. Older display texts are not released. */
    unsigned int ConcatenateNames();

    /* Builds the list's names from "ODBC Data Sources" (at most 1023 bytes of it), and "Default" last when there is a
     * default data source. 1, with an empty list, when that section is empty (a default alone is not listed) or memory
     * is short. Call ResetData before: an older list is not released. */
    unsigned int GetDataSourceNames();

    /* Fills in the driver of every row; always 0. Call it after GetDataSourceNames. */
    unsigned int GetDriverNames();

    int jxSQLGetInstalledDrivers(unsigned char* lpszBuf, unsigned short cbBufMax, unsigned short* pcbBufOut);
    int jxSQLGetAvailableDrivers(const unsigned char* lpszInfFile, unsigned char* lpszBuf, unsigned short cbBufMax,
                                 unsigned short* pcbBufOut);

    int jxSQLRemoveDSNFromIni(unsigned char* dsn);
    int jxSQLWriteDSNToIni(unsigned char* dsn, unsigned char* driver); /* does not remove an old entry before */
    int jxSQLGetPrivateProfileString(const unsigned char* section, const unsigned char* entry,
                                     const unsigned char* fallback, unsigned char* buffer, short size,
                                     const unsigned char* file);
    int jxSQLWritePrivateProfileString(const unsigned char* section, const unsigned char* entry,
                                       const unsigned char* text, const unsigned char* file);

    /* 1 when dsn is the name of a data source, in exactly this spelling; else 0 and a message box. The list it builds
     * stays with the object. (The exported SQLValidDSN does not call it.) */
    int jxSQLValidDSN(const char* dsn);

    short SQLRemoveDefaultDataSource();

    /* Loads the setup library of driverName into hSetupLib and finds its CONFIGDSN or ConfigDSN; 0 when it was loaded,
     * even without that entry point (pfnConfigDSN is then null). The caller releases hSetupLib with dlclose. */
    int LoadDriver();

    /* Calls pfnConfigDSN; 0 when it returned TRUE, 1 otherwise and for a request other than 1 to 3. When lpszAttributes
     * is null, an add hands on an empty list, the others the list "DSN=" with dataSourceName. */
    int ConfigDSN(unsigned int hwnd, unsigned long fRequest, unsigned char* lpszAttributes);

    int jxSQLConfigDataSource(unsigned int hwnd, unsigned short fRequest, const unsigned char* lpszDriver,
                              const unsigned char* lpszAttributes);

    /* Loads the setup library of translator lpszName, calls its CONFIGTRANSLATOR or ConfigTranslator and returns what
     * that returned; 0 and a message box when either was not found, 0 when lpszName or lpszPath is null. lpszPath (at
     * least 255 bytes) receives the library's path. The library stays loaded. */
    int jxConfigTranslator(unsigned int hwnd, unsigned char* lpszName, unsigned char* lpszPath, DWORD* pvOption);

    int jxSQLGetTranslator(unsigned int hwnd, unsigned char* lpszName, unsigned short cbNameMax,
                           unsigned short* pcbNameOut, unsigned char* lpszPath, unsigned short cbPathMax,
                           unsigned short* pcbPathOut, DWORD* pvOption);

    /* ---- list boxes and messages of the dialogs; hwnd is a dialog ---- */

    /* Fills list box listId again; always 0. Mode 1: with the data sources, read from the files; the first is selected
     * and the dialog's buttons 105 and 106 are enabled, or greyed when there is none. Mode 2: as FillLB. Any other mode
     * only empties the list box. */
    int PopulateLB(unsigned int hwnd, short listId, unsigned long mode, const unsigned char* section);

    /* Adds rows to list box listId; always 0. Mode 1: the display texts of the list as it is. Mode 2: the keys of
     * section of .odbcinst.ini, as many as 1024 bytes hold, with "<No Translator>" first for "ODBC Translators". Any
     * other mode adds nothing. */
    int FillLB(unsigned int hwnd, short listId, unsigned long mode, const unsigned char* section);

    /* Takes over the selected row. Mode 0: the whole row as driverName. Mode 1: a display text as dataSourceName and
     * driverName. 0, or 1 with both names empty when nothing is selected, the row is not a display text or a name does
     * not fit its field. */
    unsigned int SaveSelectedLBItem(unsigned int hwnd, short listId, unsigned long mode);

    /* Shows text messageId, 50 to 54 (text_ids.h), as a message box and returns the button chosen; 53 asks about
     * dataSourceName. 0 for any other number. */
    int DisplayMB(unsigned int hwnd, unsigned long messageId);
};

#endif

#endif
