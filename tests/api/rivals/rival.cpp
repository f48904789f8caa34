// Wrong definitions of our functions, as another library in the process might have them.
#include "rival.h"

#include <odbcins.h>
#include <odbcinst.h>

namespace {

int calls = 0;

int counted() {
    ++calls;
    return 0;
}

}  // namespace

int rivalCalls() {
    return calls;
}

BOOL SQLRemoveDSNFromIni(LPCSTR) {
    return counted();
}
BOOL SQLWritePrivateProfileString(LPCSTR, LPCSTR, LPCSTR, LPCSTR) {
    return counted();
}
int SQLGetPrivateProfileString(LPCSTR, LPCSTR, LPCSTR, LPSTR, int, LPCSTR) {
    return counted();
}
unsigned short winGetString(unsigned char*, unsigned short) {
    return static_cast<unsigned short>(counted());
}

OdbcIns::OdbcIns() {
    counted();
}
OdbcIns::~OdbcIns() {
    counted();
}
unsigned int OdbcIns::ResetData(ResetDataType) {
    return static_cast<unsigned int>(counted());
}
unsigned int OdbcIns::GetDataSourceNames() {
    return static_cast<unsigned int>(counted());
}
int OdbcIns::jxSQLRemoveDSNFromIni(unsigned char*) {
    return counted();
}
int OdbcIns::jxSQLWriteDSNToIni(unsigned char*, unsigned char*) {
    return counted();
}
int OdbcIns::LoadDriver() {
    return counted();
}
int OdbcIns::ConfigDSN(unsigned int, unsigned long, unsigned char*) {
    return counted();
}
int OdbcIns::jxSQLConfigDataSource(unsigned int, unsigned short, const unsigned char*, const unsigned char*) {
    return counted();
}
int OdbcIns::jxConfigTranslator(unsigned int, unsigned char*, unsigned char*, DWORD*) {
    return counted();
}
