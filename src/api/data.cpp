// The exported data: the names used in the configuration files and the words of the running program.
#include <odbcinst.h>

const char* INS_ODBCINI_ODBC = "ODBC";
const char* INS_ODBCINI_DS = "ODBC Data Sources";
const char* INS_ODBCINI_DRIVER = "Driver";
const char* INS_ODBCINI_DRIVERS = "ODBC Drivers";
const char* INS_ODBCINI_DEFAULT = "Default";
const char* INS_ODBCINI_FILENAME = ".odbc.ini";
const char* INS_ODBCINST_FILENAME = ".odbcinst.ini";
const char* INS_ODBCINST_TRANSLATORS = "ODBC Translators";
const char* BJXHINST = "odbcinst";

uintptr_t HWNDDSDLG = 0;
uintptr_t HWNDADDLG = 0;
unsigned char* inbuf = nullptr;
unsigned char* outbuf = nullptr;
unsigned char* bigbuf = nullptr;
