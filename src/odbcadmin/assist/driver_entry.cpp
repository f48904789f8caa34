// Trying and writing a driver's entry.
#include "odbcadmin/assist/driver_entry.h"

#include <jxini.h>
#include <odbcinst.h>
#include <strings.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <string_view>

#include "odbcadmin/assist/entries.h"
#include "odbcadmin/doctor/child.h"
#include "odbcadmin/doctor/trial_load.h"

namespace jx::assist {

namespace {

constexpr std::chrono::seconds kPatience{10};
constexpr std::size_t kLongestName = 49;  // what the dialogs and SQLConfigDataSource carry
constexpr std::size_t kLongestPath = 1023;

bool same(std::string_view left, std::string_view right) {
    return left.size() == right.size() && strncasecmp(left.data(), right.data(), left.size()) == 0;
}

bool isReserved(std::string_view name) {
    const std::array<std::string_view, 5> reserved = {INS_ODBCINI_DRIVERS, INS_ODBCINST_TRANSLATORS, INS_ODBCINI_DS,
                                                      INS_ODBCINI_ODBC, INS_ODBCINI_DEFAULT};
    return std::any_of(reserved.begin(), reserved.end(), [&](std::string_view each) { return same(each, name); });
}

std::string whyNotName(const std::string& name) {
    if (name.empty())
        return "Give the driver a name.";
    if (name.size() > kLongestName)
        return "The name is too long: at most 49 bytes are possible.";
    if (name.find_first_of("[]{}(),;?*=!@\\#\"") != std::string::npos)
        return "A name may hold none of []{}(),;?*=!@\\#\".";
    return isReserved(name) ? "This name has another use in the file; choose another one." : "";
}

std::string whyNotPath(const char* what, const std::string& path) {
    if (path.size() > kLongestPath)
        return std::string("The path of the ") + what + " is too long.";
    if (path.find('/') != std::string::npos && path.front() != '/')
        return std::string("Give the whole path of the ") + what + ", beginning with /.";
    return {};
}

std::string lost(const doctor::TrialLoad& load) {
    using End = doctor::TrialLoad::End;
    switch (load.end) {
        case End::refused:
            return "cannot be loaded. The loader says:\n" + load.sentence;
        case End::crashed:
            return "crashes when it is loaded: " + doctor::signalText(load.code) + ".";
        case End::exited:
            return "ends the program that loads it, with code " + std::to_string(load.code) + ".";
        case End::timedOut:
            return "was not loaded within 10 seconds.";
        case End::notStarted:
            return "could not be tried: no process could be started.";
        case End::loaded:
            break;
    }
    return load.unloaded ? "" : "cannot be unloaded: " + load.unloadEnd + ".";
}

// names: functions of which the library must have at least one.
std::string tryOne(const char* what, const std::string& path, const std::vector<std::string>& names) {
    const doctor::TrialLoad load = doctor::tryLoading(path, names, kPatience);
    std::string trouble = lost(load);
    if (trouble.empty() && load.offered.empty())
        trouble = "can be loaded, but has no function " + names.front() + ": is it the right file?";
    return trouble.empty() ? "" : std::string("The ") + what + " " + trouble;
}

struct Discard {
    void operator()(JxIniChange* change) const { jxIniDiscard(change); }
};

std::string lastFailure() {
    std::array<char, 1024> text{};
    jxIniFailureText(text.data(), text.size());
    return std::string("The driver was not entered. ") + text.data();
}

}  // namespace

std::string whyNot(const DriverEntry& entry) {
    std::string why = whyNotName(entry.name);
    if (why.empty() && entry.library.empty())
        why = "Name the driver's library, such as /usr/lib/odbc/libsqlite3odbc.so.";
    if (why.empty())
        why = whyNotPath("driver's library", entry.library);
    return why.empty() ? whyNotPath("setup library", entry.setup) : why;
}

std::string tryLibraries(const DriverEntry& entry) {
    std::string trouble = tryOne("driver's library", entry.library,
                                 {"SQLConnect", "SQLConnectW", "SQLDriverConnect", "SQLDriverConnectW"});
    if (entry.setup.empty())
        return trouble;
    const std::string second = tryOne("setup library", entry.setup, {"ConfigDSN", "CONFIGDSN"});
    return trouble + (trouble.empty() || second.empty() ? "" : "\n\n") + second;
}

bool isRegistered(const std::string& name) {
    const std::vector<std::string> names = namesIn(INS_ODBCINST_FILENAME, INS_ODBCINI_DRIVERS);
    return std::any_of(names.begin(), names.end(), [&](const std::string& each) { return same(each, name); });
}

std::string enter(const DriverEntry& entry) {
    std::unique_ptr<JxIniChange, Discard> change(jxIniBegin(INS_ODBCINST_FILENAME));
    const char* setup = entry.setup.empty() ? nullptr : entry.setup.c_str();
    const bool isSet = change != nullptr &&
                       jxIniSet(change.get(), INS_ODBCINI_DRIVERS, entry.name.c_str(), "Installed") != 0 &&
                       jxIniSet(change.get(), entry.name.c_str(), INS_ODBCINI_DRIVER, entry.library.c_str()) != 0 &&
                       jxIniSet(change.get(), entry.name.c_str(), "Setup", setup) != 0;
    if (!isSet || jxIniCommit(change.release()) == 0)
        return lastFailure();
    return {};
}

}  // namespace jx::assist
