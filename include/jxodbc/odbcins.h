/* The working state of one installer call or one running administrator dialog.
 *
 * Every exported function makes an OdbcIns, calls one member and destroys it; dialogs receive its address. Its layout
 * is part of the binary interface: hosts make objects of it. One object is used by one thread only. Members return 0
 * for success and 1 for failure where they have a status of their own, and the installer interface's result (TRUE 1,
 * FALSE 0, a count) where their name begins with jx or SQL. Allocation failures show as failures; of a
 * list of data sources, as entries whose texts are null. */
#ifndef ODBCINS_H
#define ODBCINS_H

#include <stdint.h>

#include "jxexport.h"
#include "jxtypes.h"

#ifdef __cplusplus

/* One row of the data source list; each text is a heap block owned by the list and may be null. */
struct DataSourceEntry {
    unsigned char* name;    /* a key of "ODBC Data Sources", or "Default" */
    unsigned char* driver;  /* its driver description */
    unsigned char* display; /* name, a blank, driver in parentheses */
};

/* What ResetData clears besides the selection, the names and the list. */
enum ResetDataType {
    ResetAll = 0,          /* dataSourceAdded too */
    ResetKeepAddedFlag = 1 /* nothing more */
};

/* Entry points of setup libraries. */
typedef BOOL (*ConfigDsnRoutine)(HWND hwnd, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes);
typedef BOOL (*ConfigTranslatorRoutine)(HWND hwnd, DWORD* pvOption);

class JX_EXPORT OdbcIns {
public:
    char dataSourceName[50];                     /* the data source being worked on */
    char driverName[50];                         /* its driver's description */
    ConfigDsnRoutine pfnConfigDSN;               /* set by LoadDriver */
    ConfigTranslatorRoutine pfnConfigTranslator; /* set by jxConfigTranslator */
    void* hSetupLib;                             /* the setup library loaded last */
    int16_t selectedIndex;                       /* selected list-box row, -1 for none */
    uint8_t dataSourceAdded;                     /* 1 once a setup routine accepted an add request */
    uint32_t entryCount;                         /* rows in entries; 0 means the list is empty whatever entries holds */
    DataSourceEntry* entries;                    /* the data source list */
    uint32_t hasDefault;                         /* nonzero when the last row is the default data source */

    /* An empty list and no data source added; every other field is set by the members that use it. */
    OdbcIns();

    /* Releases nothing: the list belongs to ResetData, a setup library to the member that loaded it. */
    ~OdbcIns();  // NOLINT(performance-trivially-destructible): hosts call it

    /* Clears the selection, both names and the list, releasing the rows; always 0. */
    unsigned int ResetData(ResetDataType type);

    /* Builds the display text of every row from its name and driver; always 0. */
    unsigned int ConcatenateNames();

    /* Builds the list's names from "ODBC Data Sources", and "Default" last when there is a default data source. 1 when
     * that section is empty (a default alone is not listed) or memory is short. */
    unsigned int GetDataSourceNames();

    /* Fills in the driver of every row; always 0. */
    unsigned int GetDriverNames();

    int jxSQLGetInstalledDrivers(unsigned char* lpszBuf, unsigned short cbBufMax, unsigned short* pcbBufOut);
    int jxSQLGetAvailableDrivers(const unsigned char* lpszInfFile, unsigned char* lpszBuf, unsigned short cbBufMax,
                                 unsigned short* pcbBufOut);

    int jxSQLRemoveDSNFromIni(unsigned char* dsn);
    int jxSQLWriteDSNToIni(unsigned char* dsn, unsigned char* driver);
    int jxSQLGetPrivateProfileString(const unsigned char* section, const unsigned char* entry,
                                     const unsigned char* fallback, unsigned char* buffer, short size,
                                     const unsigned char* file);
    int jxSQLWritePrivateProfileString(const unsigned char* section, const unsigned char* entry,
                                       const unsigned char* text, const unsigned char* file);

    /* 1 when dsn is a name of the data source list, in its exact spelling; else 0 and a message box. The list that was
     * built stays with the object. */
    int jxSQLValidDSN(const char* dsn);

    /* Writes an empty key into section "Default" of .odbc.ini; the result of that write. */
    short SQLRemoveDefaultDataSource();

    /* Loads the setup library of driverName into hSetupLib and finds its ConfigDSN; 0 when it was loaded, with or
     * without that entry point (pfnConfigDSN is then null). The caller releases hSetupLib with dlclose. */
    int LoadDriver();

    /* Calls the loaded ConfigDSN; 0 when it accepted. Without attributes, a change or removal names dataSourceName. */
    int ConfigDSN(unsigned int hwnd, unsigned long fRequest, unsigned char* lpszAttributes);

    int jxSQLConfigDataSource(unsigned int hwnd, unsigned short fRequest, const unsigned char* lpszDriver,
                              const unsigned char* lpszAttributes);

    /* Loads the setup library of translator lpszName and calls its ConfigTranslator; its result, or 0 with a message
     * box. lpszPath (at least 255 bytes) receives the library's path. The library stays loaded. */
    int jxConfigTranslator(unsigned int hwnd, unsigned char* lpszName, unsigned char* lpszPath, DWORD* pvOption);

    int jxSQLGetTranslator(unsigned int hwnd, unsigned char* lpszName, unsigned short cbNameMax,
                           unsigned short* pcbNameOut, unsigned char* lpszPath, unsigned short cbPathMax,
                           unsigned short* pcbPathOut, DWORD* pvOption);

    /* ---- list boxes and messages of the dialogs; hwnd is a dialog ---- */

    /* Fills list box listId anew. Mode 1: with the data sources, read from the files; the first is selected and the
     * dialog's buttons 105 and 106 are enabled, or greyed when there is none. Mode 2: with the keys of section of
     * .odbcinst.ini. Always 0; another mode only empties the list. */
    int PopulateLB(unsigned int hwnd, short listId, unsigned long mode, const unsigned char* section);

    /* Adds rows. Mode 1: the display texts of the list as it is. Mode 2: the keys of section, and "<No Translator>"
     * before those of "ODBC Translators". Always 0; another mode adds nothing. */
    int FillLB(unsigned int hwnd, short listId, unsigned long mode, const unsigned char* section);

    /* Takes the selected row. Mode 0: the whole row as driverName. Mode 1: a display text as dataSourceName and
     * driverName. 0, or 1 with both names empty when nothing is selected, the row is no display text or a name does
     * not fit its field: a cut one would be another's. */
    unsigned int SaveSelectedLBItem(unsigned int hwnd, short listId, unsigned long mode);

    /* Shows message 50 to 54 (53 asks about dataSourceName) and returns the button chosen; 0 for another number. */
    int DisplayMB(unsigned int hwnd, unsigned long messageId);
};

#endif

#endif
