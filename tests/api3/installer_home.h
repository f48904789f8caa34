// The user's and the system's files of a test, and the words in which tests of libodbcinst.so.2 read.
#pragma once

#include <jxodbc3/odbcinst.h>

#include <cstddef>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "test_home.h"
#include "test_variable.h"

namespace jx::test {

// InstallerHome: a home directory with the system's files in "system", which ODBCSYSINI names. The mode is BOTH and the
// error queue empty at the beginning.
class InstallerHome {
public:
    InstallerHome() : system_("ODBCSYSINI", home_.file("system")), log_("JXODBC_LOG", nullptr) {
        std::filesystem::create_directory(home_.file("system"));
        SQLSetConfigMode(ODBC_BOTH_DSN);
    }
    InstallerHome(std::initializer_list<std::pair<std::string_view, std::string_view>> files) : InstallerHome() {
        for (const auto& [name, text] : files)
            put(name, text);
    }
    ~InstallerHome() { SQLSetConfigMode(ODBC_BOTH_DSN); }
    InstallerHome(const InstallerHome&) = delete;
    InstallerHome& operator=(const InstallerHome&) = delete;

    const std::string& path() const { return home_.path(); }
    std::string file(std::string_view name) const { return home_.file(name); }
    void put(std::string_view name, std::string_view text) const { home_.put(name, text); }
    std::string text(std::string_view name) const { return home_.text(name); }

private:
    TestHome home_;
    TestVariable system_;
    TestVariable log_;
};

// The names that the tests give to the files.
inline constexpr const char* kUserSources = ".odbc.ini";
inline constexpr const char* kUserDrivers = ".odbcinst.ini";
inline constexpr const char* kSystemSources = "system/odbc.ini";
inline constexpr const char* kSystemDrivers = "system/odbcinst.ini";

// Record number of the queue as "CODE: TEXT"; "" when there is none.
inline std::string record(WORD number) {
    DWORD code = 0;
    std::vector<char> text(65535);
    if (SQLInstallerError(number, &code, text.data(), static_cast<WORD>(text.size()), nullptr) == SQL_NO_DATA)
        return "";
    return std::to_string(code) + ": " + text.data();
}

// The code of the first record; 0 when there is none.
inline DWORD firstCode() {
    DWORD code = 0;
    return SQLInstallerError(1, &code, nullptr, 0, nullptr) == SQL_NO_DATA ? 0 : code;
}

// How many records the queue holds.
inline WORD recordCount() {
    WORD count = 0;
    while (SQLInstallerError(static_cast<WORD>(count + 1), nullptr, nullptr, 0, nullptr) != SQL_NO_DATA)
        ++count;
    return count;
}

// A look-up with room for anything; fallback as the default.
inline std::string value(const char* section, const char* key, const char* file = "odbc.ini",
                         const char* fallback = "(default)") {
    std::vector<char> room(100'000);
    const int length =
        SQLGetPrivateProfileString(section, key, fallback, room.data(), static_cast<int>(room.size()), file);
    return {room.data(), static_cast<std::size_t>(length)};
}

// A list of names with | behind each.
inline std::string listed(const char* section, const char* file = "odbc.ini") {
    std::string names = value(section, nullptr, file, "");
    for (char& byte : names)
        byte = byte == '\0' ? '|' : byte;
    return names;
}

// The two forms of SQLWCHAR texts.
inline const SQLWCHAR* wide(const char16_t* text) {
    return reinterpret_cast<const SQLWCHAR*>(text);
}
inline std::u16string fromWide(const SQLWCHAR* units, std::size_t count) {
    return {reinterpret_cast<const char16_t*>(units), count};
}

}  // namespace jx::test
