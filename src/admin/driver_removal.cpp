// Removes an installed driver from the disk and from both configuration files.
#include "admin/driver_removal.h"

#include <jxfiles.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <text_ids.h>
#include "config/configuration_file.h"
#include "config/message_box.h"
#include "config/text_bytes.h"
#include "rules/sections.h"

namespace jx::admin {

namespace {

constexpr short kValueSize = 199;

// A path that fills it was cut.
constexpr short kPathSize = kValueSize + 1;

using Value = std::array<unsigned char, kPathSize>;

void readValue(OdbcIns& ins, const char* section, const char* key, const char* file, Value& value, short size) {
    ins.jxSQLGetPrivateProfileString(asBytes(section), asBytes(key), nullptr, value.data(), size, asBytes(file));
}

// Shows that a file was not deleted, and why.
void reportKept(HWND dialog, const unsigned char* path, int reason) {
    std::array<char, 512> file{};
    std::snprintf(file.data(), file.size(), "%s: %s", asChars(path), std::strerror(reason));
    showText(dialog, JxTextFileNotDeleted, asBytes(file.data()), JxTextFileNotDeletedTitle, MB_OK);
}

// 0, or the error number of the failure.
int deleteFile(const unsigned char* path) {
    if (BUTSTLEN(path) >= kPathSize - 1)
        return ENAMETOOLONG;
    return bosFileDelete(path) == 0 ? 0 : errno;
}

void deleteNamedFile(HWND dialog, OdbcIns& ins, const unsigned char* driverName, const char* key, short quiet) {
    Value path{};
    readValue(ins, asChars(driverName), key, INS_ODBCINST_FILENAME, path, kPathSize);
    DeleteTheDriver(dialog, path.data(), quiet);
}

void removeDataSource(OdbcIns& ins, const unsigned char* name) {
    const unsigned char* file = asBytes(INS_ODBCINI_FILENAME);
    ins.jxSQLWritePrivateProfileString(asBytes(INS_ODBCINI_DS), name, nullptr, file);
    ins.jxSQLWritePrivateProfileString(name, nullptr, nullptr, file);
}

// Deliberate: the driver's name may be part of a longer one. So the data sources of every driver whose name contains
// this name are removed too.
bool usesDriver(OdbcIns& ins, const unsigned char* dataSource, const unsigned char* driverName) {
    Value driver{};
    readValue(ins, INS_ODBCINI_DS, asChars(dataSource), INS_ODBCINI_FILENAME, driver, kValueSize);
    return strFind(driver.data(), driverName) != nullptr;
}

}  // namespace

int DeleteTheDriver(unsigned int hwnd, unsigned char* path, short quiet) {
    if (path == nullptr || *path == 0)
        return 0;
    const int reason = deleteFile(path);
    if (reason != 0 && quiet == 0)
        reportKept(hwnd, path, reason);
    return 0;
}

void FixODBCINIFile(unsigned int /*hwnd*/, const unsigned char* driverName, OdbcIns* ins) {
    KeyList names(asBytes(INS_ODBCINI_DS), "", dataSourceFile().name(), LastKey::whole, kShortListSize);
    for (const unsigned char* name = names.next(); name != nullptr; name = names.next()) {
        if (*name != 0 && !rules::isReservedSection(asChars(name)) && usesDriver(*ins, name, driverName))
            removeDataSource(*ins, name);
    }
}

void removeDriver(unsigned int hwnd, const unsigned char* driverName, OdbcIns& ins) {
    const unsigned char* file = asBytes(INS_ODBCINST_FILENAME);
    // The section of that name is a list or holds settings: only the entry that calls it a driver goes.
    if (rules::isReservedSection(asChars(driverName))) {
        ins.jxSQLWritePrivateProfileString(asBytes(INS_ODBCINI_DRIVERS), driverName, nullptr, file);
        return;
    }
    deleteNamedFile(hwnd, ins, driverName, "Driver", 0);
    deleteNamedFile(hwnd, ins, driverName, "Setup", 1);
    ins.jxSQLWritePrivateProfileString(asBytes(INS_ODBCINI_DRIVERS), driverName, nullptr, file);
    ins.jxSQLWritePrivateProfileString(driverName, nullptr, nullptr, file);
    FixODBCINIFile(hwnd, driverName, &ins);
}

}  // namespace jx::admin
