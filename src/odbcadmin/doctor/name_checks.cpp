// Following names from list to section to driver.
#include "odbcadmin/doctor/name_checks.h"

#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/text.h"
#include "odbcadmin/doctor/checks.h"
#include "rules/names.h"
#include "rules/sections.h"

namespace jx::doctor {

namespace {

// What the standard forbids in the names of data sources, and how long they may be.
constexpr std::string_view kForbidden = "[]{}(),;?*=!@\\";
constexpr std::size_t kLongest = 32;

std::string bracketed(const std::string& name) {
    return "[" + name + "]";
}

void checkName(const std::string& subject, const Located& where, const std::string& name, Findings& findings) {
    const std::size_t at = name.find_first_of(kForbidden);
    if (at != std::string::npos)
        findings.push_back(found(check::kForbiddenCharacter, subject,
                                 where.where() + ": the name holds \"" + name[at] +
                                     "\", which the standard forbids in names of data sources.",
                                 "Rename it: odbcadmin dsn rename"));
    if (name.size() > kLongest)
        findings.push_back(found(check::kTooLong, subject,
                                 where.where() + ": the name has " + std::to_string(name.size()) +
                                     " bytes; the standard allows " + std::to_string(kLongest) + ".",
                                 "Rename it: odbcadmin dsn rename"));
    if (rules::isReservedSection(name))
        findings.push_back(found(check::kReserved, subject,
                                 where.where() + ": the section " + bracketed(name) + " has a meaning of its own.",
                                 "Choose another name for the data source."));
}

void checkPath(const std::string& subject, const char* key, const Located& library, Findings& findings) {
    if (library.text.front() == '/')
        return;
    const bool hasSlash = library.text.find('/') != std::string::npos;
    findings.push_back(found(check::kRelativePath, subject,
                             library.where() + ": " + key + " is \"" + library.text + "\", which " +
                                 (hasSlash ? "means another file in every directory a program is started in."
                                           : "the loader looks for where it looks for libraries."),
                             "Give the full path of the library."));
}

void checkDriverOf(const std::string& subject, const DataSourceRecord& record, const Records& records,
                   Findings& findings) {
    if (!record.listed)
        return;
    const Located& listed = *record.listed;
    if (listed.text.empty()) {
        findings.push_back(found(check::kDriverUnknown, subject, listed.where() + ": no driver stands behind the name.",
                                 "Write the name of its driver there, as odbcadmin driver list shows it."));
        return;
    }
    const DriverRecord* driver = records.driver(listed.text);
    if (driver == nullptr || !driver->section) {
        findings.push_back(found(
            check::kDriverUnknown, subject,
            listed.where() + ": its driver is \"" + listed.text + "\", and " + records.odbcinstPath +
                " has no such section.",
            admin::adviceFor(listed.text, namesOf(records.drivers), "Add the driver with odbcadmin driver add.")));
        return;
    }
    if (record.library && driver->library && record.library->text != driver->library->text)
        findings.push_back(found(check::kStalePath, subject,
                                 record.library->where() + ": Driver is " + record.library->text + "; the driver " +
                                     driver->name + " has " + driver->library->text + " (" + driver->library->where() +
                                     ").",
                                 "Enter the driver's path, unless the other is meant."));
}

void checkSection(const std::string& subject, const DataSourceRecord& record, const Records& records,
                  Findings& findings) {
    if (!record.section) {
        findings.push_back(
            found(check::kNoSection, subject,
                  record.listed->where() + " lists it, and " + records.odbcPath + " has no section " +
                      bracketed(record.name) + ".",
                  admin::adviceFor(record.name, records.dataSourceSections,
                                   "Add the section, or remove it from the list: odbcadmin dsn remove")));
        return;
    }
    const bool isDefault = rules::sameName(record.name, "Default");
    if (!record.listed)
        findings.push_back(
            found(check::kNotListed, subject,
                  record.section->where() + " has its section, and " +
                      (isDefault ? "[Default] of " + records.odbcinstPath + " names no driver for it."
                                 : "[ODBC Data Sources] does not list it: programs that offer a choice leave it out."),
                  isDefault ? "Enter it with odbcadmin dsn default." : "List it with the name of its driver."));
    if (!record.library)
        findings.push_back(found(check::kNoLibraryKey, subject,
                                 record.section->where() + ": the section has no value for Driver.",
                                 "Enter the full path of the driver's library there."));
    else
        checkPath(subject, "Driver", *record.library, findings);
}

void checkLists(const std::string& subject, const DriverRecord& record, bool isDriver, const Records& records,
                Findings& findings) {
    const std::string verb = isDriver ? "odbcadmin driver" : "odbcadmin translator";
    if (!record.section)
        findings.push_back(found(
            check::kNoSection, subject,
            record.listed->where() + " lists it, and there is no section " + bracketed(record.name) + ".",
            admin::adviceFor(record.name, records.driverSections, "Add it anew with " + verb + " add, or remove it.")));
    else if (!record.listed)
        findings.push_back(found(check::kNotListed, subject,
                                 record.section->where() + " has its section, and " +
                                     (isDriver ? "[ODBC Drivers]" : "[ODBC Translators]") +
                                     " does not list it: programs that offer a choice leave it out.",
                                 "List it: " + record.name + "=Installed"));
}

}  // namespace

Findings checkDataSourceNames(const DataSourceRecord& record, const Records& records) {
    Findings findings;
    const std::string subject = "data source " + record.name;
    checkName(subject, record.listed ? *record.listed : *record.section, record.name, findings);
    checkSection(subject, record, records, findings);
    checkDriverOf(subject, record, records, findings);
    return findings;
}

Findings checkDriverNames(const DriverRecord& record, DriverKind kind, const Records& records) {
    Findings findings;
    const bool isDriver = kind == DriverKind::driver;
    const char* key = isDriver ? "Driver" : "Translator";
    const std::string subject = (isDriver ? "driver " : "translator ") + record.name;
    checkLists(subject, record, isDriver, records, findings);
    if (!record.section)
        return findings;
    if (record.library)
        checkPath(subject, key, *record.library, findings);
    else
        findings.push_back(found(
            check::kNoLibraryKey, subject, record.section->where() + ": the section has no value for " + key + ".",
            std::string("Enter the full path of the ") + (isDriver ? "driver's" : "translator's") + " library there."));
    if (record.setup)
        checkPath(subject, "Setup", *record.setup, findings);
    else
        findings.push_back(found(check::kNoSetupKey, subject,
                                 record.section->where() + ": the section has no value for Setup, so programs cannot "
                                                           "add or change its data sources.",
                                 "Name its setup library there; libjxsetup.so does for drivers that bring none."));
    return findings;
}

}  // namespace jx::doctor
