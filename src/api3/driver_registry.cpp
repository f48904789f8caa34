// Looks for drivers in the joined list and in the sections.
#include "api3/driver_registry.h"

#include <utility>

#include "api3/call.h"
#include "api3/name_list.h"
#include "api3/profile_lookup.h"
#include "api3/quoted.h"
#include "rules/sections.h"
#include "rules/valid_names.h"

namespace jx::api3 {

namespace {

Sources driverFiles(ThreadState& state) {
    return {state, "odbcinst.ini", readEnvironment()};
}

bool isDriversName(std::string_view name) {
    return rules::whyNoName(name, rules::kAnyDriver) == nullptr;
}

std::string orEmpty(const Answer& answer) {
    return answer.isFound() ? std::string(answer.text()) : std::string();
}

// Adds those of the names that a driver can have.
void addNames(NameList& names, const std::string& list) {
    for (const std::string_view name : NamesIn(list))
        if (isDriversName(name))
            names.add(name);
}

bool hasLibrary(const Sources& files, const std::string& section) {
    return lookUpWritten(files, {section.c_str(), rules::kDriver}).isFound();
}

// Those of the sections that have a library and are not listed.
void addSections(NameList& names, const Sources& files, const std::string& sections) {
    for (const std::string_view section : NamesIn(sections))
        if (isDriversName(section) && !names.holds(section) && hasLibrary(files, std::string(section)))
            names.add(section);
}

}  // namespace

DriverFinding findDriver(ThreadState& state, const std::string& name) {
    if (!isDriversName(name))
        return {};
    const Sources files = driverFiles(state);
    const Answer library = lookUpWritten(files, {name.c_str(), rules::kDriver});
    if (library.outcome == Outcome::notRead)
        return {Registration::notRead};
    DriverFinding finding{library.isFound() ? Registration::found : Registration::absent};
    finding.driver = {name, orEmpty(library), {}};
    finding.driver.setup = orEmpty(lookUpWritten(files, {name.c_str(), rules::kSetup}));
    if (finding.outcome == Registration::absent && lookUpWritten(files, {rules::kDriverList, name.c_str()}).isFound())
        finding.outcome = Registration::found;
    return finding;
}

std::optional<RegisteredDriver> needDriver(ThreadState& state, const char* name, DWORD code) {
    if (name == nullptr || *name == '\0') {
        refuse(ODBC_ERROR_INVALID_NAME, "No driver is named.");
        return std::nullopt;
    }
    DriverFinding finding = findDriver(state, name);
    if (finding.outcome == Registration::absent)
        refuse(code, "Driver " + quoted(name) + " is not registered: neither the user's nor the system's " +
                         "odbcinst.ini has it.");
    if (finding.outcome != Registration::found)
        return std::nullopt;
    return std::move(finding.driver);
}

std::optional<std::string> driverNames(ThreadState& state) {
    const Sources files = driverFiles(state);
    const Answer listed = lookUpWritten(files, {rules::kDriverList, nullptr});
    if (listed.outcome == Outcome::notRead)
        return std::nullopt;
    NameList names;
    addNames(names, orEmpty(listed));
    addSections(names, files, orEmpty(lookUpWritten(files, {nullptr, nullptr})));
    return std::move(names).text();
}

std::string driverValue(const RegisteredDriver& driver) {
    return driver.library.find('/') != std::string::npos ? driver.library : driver.name;
}

}  // namespace jx::api3
