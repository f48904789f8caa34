// The exported data: names used in the configuration files, handles of open dialogs, work buffers.
#include <odbcinst.h>

#include "rules/sections.h"

const char* INS_ODBCINI_ODBC = jx::rules::kSettings;
const char* INS_ODBCINI_DS = jx::rules::kDataSourceList;
const char* INS_ODBCINI_DRIVER = jx::rules::kDriver;
const char* INS_ODBCINI_DRIVERS = jx::rules::kDriverList;
const char* INS_ODBCINI_DEFAULT = jx::rules::kDefault;
const char* INS_ODBCINI_FILENAME = jx::rules::kDataSourceFile;
const char* INS_ODBCINST_FILENAME = jx::rules::kDriverFile;
const char* INS_ODBCINST_TRANSLATORS = jx::rules::kTranslatorList;
const char* BJXHINST = "odbcinst";

uintptr_t HWNDDSDLG = 0;
uintptr_t HWNDADDLG = 0;
unsigned char* inbuf = nullptr;
unsigned char* outbuf = nullptr;
unsigned char* bigbuf = nullptr;
