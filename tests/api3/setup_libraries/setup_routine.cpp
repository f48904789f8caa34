// A driver's setup library: it writes down in the file JX_SETUP_CALLS how it is called, and does what JX_SETUP_DOES
// says, a text of these commands with blanks between:
//
//     fail  post  fill  throw  valid (a nested call that succeeds)  nest (a nested SQLConfigDataSource)  mode=N
//     write (the data source, with its list of attributes)  remove  install (the driver once more)  message
#include <jxodbc3/odbcinst.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

void recordLine(const std::string& line) {
    if (const char* path = std::getenv("JX_SETUP_CALLS"))
        std::ofstream(path, std::ios::app) << line << '\n';
}

UWORD mode() {
    UWORD mode = 99;
    SQLGetConfigMode(&mode);
    return mode;
}

std::string orNull(const char* text) {
    return text == nullptr ? "(null)" : text;
}

std::vector<std::string> textsOf(const char* list) {
    std::vector<std::string> texts;
    for (; list != nullptr && *list != '\0'; list += texts.back().size() + 1)
        texts.emplace_back(list);
    return texts;
}

std::string nameIn(const std::vector<std::string>& attributes) {
    return attributes.empty() ? "" : attributes[0].substr(attributes[0].find('=') + 1);
}

// One command; false when it says that the routine failed.
bool obey(const std::string& command, const std::string& driver, const std::vector<std::string>& attributes) {
    const std::string name = nameIn(attributes);
    if (command == "fail")
        return false;
    if (command == "post")
        SQLPostInstallerError(ODBC_ERROR_INVALID_KEYWORD_VALUE, "the routine's own reason");
    if (command == "fill")
        for (int count = 0; count < 10; ++count)
            recordLine("posted " + std::to_string(SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, nullptr)));
    if (command == "throw")
        throw std::runtime_error("thrown by the routine");
    if (command == "valid")
        recordLine("valid " + std::to_string(SQLValidDSN("Sales")));
    if (command == "nest")
        recordLine("nested " + std::to_string(SQLConfigDataSource(nullptr, ODBC_ADD_SYS_DSN, "Plain", "DSN=Nested\0")) +
                   " mode " + std::to_string(mode()));
    if (command.starts_with("mode="))
        recordLine("set " + std::to_string(SQLSetConfigMode(static_cast<UWORD>(std::stoi(command.substr(5))))));
    if (command == "install") {
        const std::string list = driver + std::string("\0Driver=/opt/narrow.so\0", 23);
        char path[64];
        return SQLInstallDriverEx(list.c_str(), nullptr, path, sizeof path, nullptr, ODBC_INSTALL_COMPLETE, nullptr) !=
               FALSE;
    }
    if (command == "remove")
        return SQLRemoveDSNFromIni(name.c_str()) != FALSE;
    if (command != "write")
        return true;
    if (SQLWriteDSNToIni(name.c_str(), driver.c_str()) == FALSE)
        return false;
    for (std::size_t i = 1; i < attributes.size(); ++i) {
        const std::string keyword = attributes[i].substr(0, attributes[i].find('='));
        const std::string text = attributes[i].substr(keyword.size() + 1);
        if (SQLWritePrivateProfileString(name.c_str(), keyword.c_str(), text.c_str(), "odbc.ini") == FALSE)
            return false;
    }
    return true;
}

bool obeyAll(const std::string& driver, const std::vector<std::string>& attributes) {
    const char* commands = std::getenv("JX_SETUP_DOES");
    std::istringstream words(commands == nullptr ? "" : commands);
    bool done = true;
    for (std::string command; words >> command;)
        done = obey(command, driver, attributes) && done;
    return done;
}

[[maybe_unused]] BOOL configDsn(const char* routine, HWND window, WORD request, const char* driver, const char* list) {
    const std::vector<std::string> attributes = textsOf(list);
    std::string line = std::string(routine) + (window == nullptr ? "" : " window") + " " + std::to_string(request) +
                       " " + orNull(driver) + " mode " + std::to_string(mode()) + ":";
    for (const std::string& text : attributes)
        line += " " + text;
    recordLine(line);
    return obeyAll(orNull(driver), attributes) ? TRUE : FALSE;
}

[[maybe_unused]] BOOL configDriver(const char* routine, WORD request, const char* driver, const char* text) {
    recordLine(std::string(routine) + " " + std::to_string(request) + " " + orNull(driver) + " mode " +
               std::to_string(mode()) + ": " + orNull(text));
    return obeyAll(orNull(driver), {}) ? TRUE : FALSE;
}

[[maybe_unused]] bool isTold(const char* command) {
    const char* commands = std::getenv("JX_SETUP_DOES");
    return commands != nullptr && std::strstr(commands, command) != nullptr;
}

// ASCII is all that the tests put into these; anything else becomes ?.
[[maybe_unused]] std::string narrow(const SQLWCHAR* text) {
    std::string bytes;
    for (; text != nullptr && *text != 0; ++text)
        bytes += *text < 0x80 ? static_cast<char>(*text) : '?';
    return bytes;
}

[[maybe_unused]] std::string narrowList(const SQLWCHAR* list) {
    std::string bytes;
    while (list != nullptr && *list != 0) {
        const std::string text = narrow(list);
        bytes += text + '\0';
        list += text.size() + 1;
    }
    return bytes;
}

}  // namespace

#define JX_ENTRY_POINT extern "C" __attribute__((visibility("default")))

#if !defined(JX_SETUP_NONE)
JX_ENTRY_POINT BOOL ConfigDSN(HWND hwnd, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes) {
    return configDsn("ConfigDSN", hwnd, fRequest, lpszDriver, lpszAttributes);
}
#endif

#if defined(JX_SETUP_WIDE)
JX_ENTRY_POINT BOOL ConfigDSNW(HWND hwnd, WORD fRequest, const SQLWCHAR* lpszDriver, const SQLWCHAR* lpszAttributes) {
    return configDsn("ConfigDSNW", hwnd, fRequest, narrow(lpszDriver).c_str(), narrowList(lpszAttributes).c_str());
}

JX_ENTRY_POINT BOOL ConfigDriverW(HWND, WORD fRequest, const SQLWCHAR* lpszDriver, const SQLWCHAR* lpszArgs,
                                  SQLWCHAR* lpszMsg, WORD cchMsgMax, WORD* pcchMsgOut) {
    if (isTold("message") && cchMsgMax >= 3) {
        const SQLWCHAR text[] = {0x00E9, 'k', 0};
        std::memcpy(lpszMsg, text, sizeof text);
        *pcchMsgOut = 2;
    }
    return configDriver("ConfigDriverW", fRequest, narrow(lpszDriver).c_str(),
                        lpszArgs == nullptr ? nullptr : narrow(lpszArgs).c_str());
}
#endif

#if defined(JX_SETUP_NARROW)
JX_ENTRY_POINT BOOL ConfigDriver(HWND, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszArgs, LPSTR lpszMsg, WORD cbMsgMax,
                                 WORD* pcbMsgOut) {
    if (isTold("message") && cbMsgMax >= 4) {
        std::strncpy(lpszMsg, "\xC3\xA9k", cbMsgMax);
        *pcbMsgOut = 3;
    }
    return configDriver("ConfigDriver", fRequest, lpszDriver, lpszArgs);
}
#endif
