// Following names from list to section to driver.
#include "odbcadmin/doctor/name_checks.h"

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/doctor/unknown_name.h"
#include "odbcadmin/doctor/value_checks.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/text.h"
#include "rules/sections.h"
#include "rules/valid_names.h"

namespace jx::doctor {

namespace {

using model::Configuration;
using model::DataSource;
using model::Located;
using model::Registered;

std::string bracketed(const std::string& name) {
    return "[" + name + "]";
}

void checkName(const Located& where, const std::string& name, const Subject& subject) {
    constexpr rules::NameRules kRules = rules::kNewDataSource;
    const std::size_t at = name.find_first_of(kRules.forbidden);
    if (at != std::string::npos)
        subject.tell(check::kForbiddenCharacter,
                     where.where() + ": the name holds \"" + name[at] +
                         "\", which the standard forbids in names of data sources.",
                     "Rename it: " + model::commandOn(*where.file) + " dsn rename " + model::shellWord(name) + " NEW");
    if (name.size() > kRules.longest)
        subject.tell(check::kTooLong,
                     where.where() + ": the name has " + std::to_string(name.size()) + " bytes; the standard allows " +
                         std::to_string(kRules.longest) + ".",
                     "Rename it: " + model::commandOn(*where.file) + " dsn rename " + model::shellWord(name) + " NEW");
    if (rules::isReservedSection(name))
        subject.tell(check::kReserved,
                     where.where() + ": the section " + bracketed(name) + " has a meaning of its own.",
                     "Delete the line, and choose another name for the data source.");
}

// "odbcadmin dsn ensure Sales --driver Small": lists a data source and gives it its driver's library.
std::string ensureCommand(const DataSource& source, const std::string& driver) {
    return model::commandOn(*source.file) + " dsn ensure " + model::shellWord(source.name) + " --driver " +
           (driver.empty() ? "DRIVER" : model::shellWord(driver));
}

// "odbcadmin driver ensure Small --lib /opt/libsmall.so": the same for what is registered.
std::string ensureCommand(const Registered& entry, const model::RegisteredKind& kind) {
    return model::commandOn(*entry.file) + " " + kind.word + " ensure " + model::shellWord(entry.name) + " --lib " +
           (entry.library ? model::shellWord(entry.library.text) : "PATH");
}

// The name of the driver that a data source outside the list has, by its Driver; empty when none is registered so.
std::string driverMeant(const DataSource& source, const Configuration& configuration) {
    for (const Registered& each : configuration.drivers())
        if (source.library && (rules::sameName(each.name, source.library.text) ||
                               (each.library && each.library.text == source.library.text)))
            return each.name;
    return {};
}

// The names that are refused when something is added are those that are reported here.
void checkRegisteredName(const Registered& entry, const model::RegisteredKind& kind, const Subject& subject) {
    const rules::Why why = rules::whyNoName(entry.name, rules::kNewDriver);
    if (why == nullptr)
        return;
    const Check& what = why == rules::kNewDriver.whyTooLong    ? check::kTooLong
                        : rules::isReservedSection(entry.name) ? check::kReserved
                                                               : check::kForbiddenCharacter;
    const std::string command = model::commandOn(*entry.file) + " " + kind.word;
    subject.tell(what,
                 (entry.listed ? entry.listed : entry.header).where() + ": a new " + kind.word +
                     " cannot have this name: " + why + ".",
                 "Add it under another name, then: " + command + " remove " + model::shellWord(entry.name));
}

// The line as it should be.
std::string lineText(const std::string& key, const std::string& value) {
    return "Write the line as: " + key + "=" + value;
}

void checkPath(const char* key, const Located& library, const Subject& subject) {
    if (const auto mistake = mistakeIn(library.text))
        return subject.tell(*mistake->check, library.where() + ": the value of " + key + " " + mistake->fact + ".",
                            mistake->advice(key));
    if (library.text.front() == '/')
        return;
    if (const std::string path = inDriverDirectories(library.text, loaderPlaces()); !path.empty())
        return subject.tell(check::kRelativePath,
                            library.where() + ": " + key + " is \"" + library.text + "\", which is taken for " + path +
                                " here and may be another file, or none, for other programs.",
                            lineText(key, path));
    const bool hasSlash = library.text.find('/') != std::string::npos;
    subject.tell(check::kRelativePath,
                 library.where() + ": " + key + " is \"" + library.text + "\", which " +
                     (hasSlash ? "means another file in every directory a program is started in."
                               : "the loader looks for where it looks for libraries."),
                 hasSlash ? "Give the full path of the library."
                          : "Give the full path of the library; odbcadmin driver scan shows those that are there.");
}

void checkDriverOf(const DataSource& source, const Configuration& configuration, const std::string& systemFolder,
                   const Subject& subject) {
    if (!source.listed)
        return;
    if (source.driver.empty())
        return subject.tell(check::kDriverUnknown, source.listed.where() + ": the list names no driver for it.",
                            "Name its driver: " + ensureCommand(source, driverMeant(source, configuration)));
    const auto& driver = configuration.driver(source.driver);
    if (!driver || !driver->header)
        return subject.tell(check::kDriverUnknown,
                            source.listed.where() + ": its driver is \"" + source.driver + "\", and " +
                                configuration.file(model::FileKind::drivers).path + " has no such section.",
                            adviceForDriver(configuration, source.driver, systemFolder));
    const bool isByName = source.library && rules::sameName(source.library.text, driver->name);
    if (source.library && driver->library && source.library.text != driver->library.text && !isByName &&
        !mistakeIn(source.library.text))
        subject.tell(check::kStalePath,
                     source.library.where() + ": Driver is " + source.library.text + "; the driver " + driver->name +
                         " has " + driver->library.text + " (" + driver->library.where() + ").",
                     "Unless the other is meant, enter the driver's: " + ensureCommand(source, driver->name));
}

void checkListed(const DataSource& source, const Configuration& configuration, const Subject& subject) {
    if (source.listed)
        return;
    if (source.isDefault)
        subject.tell(check::kNotListed,
                     source.header.where() + " has its section, and [Default] of " +
                         configuration.file(model::FileKind::drivers).path + " names no driver for it.",
                     "Make it a copy of another data source: odbcadmin dsn default NAME");
    else
        subject.tell(check::kNotListed,
                     source.header.where() +
                         " has its section, and [ODBC Data Sources] does not list it: programs that offer a choice "
                         "leave it out.",
                     "List it: " + ensureCommand(source, driverMeant(source, configuration)));
}

// Keys in which other systems look for libraries of one word size.
void tellNoLibrary(const Located& header, const model::IniSection* section, const std::string& key,
                   const std::string& command, const Subject& subject) {
    const std::string other = section != nullptr ? section->value(key + "64") : "";
    if (other.empty())
        return subject.tell(check::kNoLibraryKey, header.where() + ": the section has no value for " + key + ".",
                            "Enter the full path of the library there: " + command);
    subject.tell(check::kNoLibraryKey,
                 header.where() + ": the section has no value for " + key + ", and " + key + "64 is not read here.",
                 lineText(key, other));
}

// A driver's name where a path is meant: many drivers' examples have it so.
void checkDriverValue(const DataSource& source, const Configuration& configuration, const Subject& subject) {
    const bool isPath = source.library.text.find('/') != std::string::npos;
    const auto driver = isPath ? std::nullopt : configuration.driver(source.library.text);
    if (!driver || !driver->library)
        return checkPath("Driver", source.library, subject);
    subject.tell(check::kDriverByName,
                 source.library.where() + ": Driver names the driver " + driver->name + ", whose library is " +
                     driver->library.text + "; some programs take a path there only.",
                 "For those, write the line as: Driver=" + driver->library.text);
}

void checkSection(const DataSource& source, const Configuration& configuration, const Subject& subject) {
    if (!source.header)
        return subject.tell(check::kNoSection,
                            source.listed.where() + " lists it, and " + source.file->path + " has no section " +
                                bracketed(source.name) + ".",
                            model::adviceFor(source.name, configuration.sectionNames(model::FileKind::dataSources),
                                             "Add the section: " + ensureCommand(source, source.driver) +
                                                 ", or take it off the list: " + model::commandOn(*source.file) +
                                                 " dsn remove " + model::shellWord(source.name)));
    checkListed(source, configuration, subject);
    checkValues(source, subject);
    if (source.library)
        checkDriverValue(source, configuration, subject);
    else
        tellNoLibrary(source.header, source.section, "Driver",
                      ensureCommand(source, source.listed ? source.driver : ""), subject);
}

void checkLists(const Registered& entry, const model::RegisteredKind& kind, const Configuration& configuration,
                const Subject& subject) {
    if (!entry.header)
        subject.tell(check::kNoSection,
                     entry.listed.where() + " lists it, and there is no section " + bracketed(entry.name) + ".",
                     model::adviceFor(entry.name, configuration.sectionNames(model::FileKind::drivers),
                                      "Add it anew: " + ensureCommand(entry, kind) +
                                          ", or take it off the list: " + model::commandOn(*entry.file) + " " +
                                          kind.word + " remove " + model::shellWord(entry.name)));
    else if (!entry.listed)
        subject.tell(check::kNotListed,
                     entry.header.where() + " has its section, and " + bracketed(kind.list) +
                         " does not list it: programs that offer a choice leave it out.",
                     "List it: " + ensureCommand(entry, kind));
}

}  // namespace

Findings checkDataSourceNames(const DataSource& source, const Configuration& configuration,
                              const std::string& systemFolder) {
    Findings findings;
    const Subject subject{"data source " + source.name, findings};
    checkName(source.listed ? source.listed : source.header, source.name, subject);
    if (rules::isReservedSection(source.name))
        return findings;
    checkSection(source, configuration, subject);
    checkDriverOf(source, configuration, systemFolder, subject);
    return findings;
}

Findings checkRegisteredNames(const Registered& entry, const model::RegisteredKind& kind,
                              const Configuration& configuration) {
    Findings findings;
    const std::string word = kind.word;
    const Subject subject{word + " " + entry.name, findings};
    checkRegisteredName(entry, kind, subject);
    checkLists(entry, kind, configuration, subject);
    const Findings keys = checkLibraryKeys(entry, kind);
    findings.insert(findings.end(), keys.begin(), keys.end());
    if (entry.header && !entry.setup)
        subject.tell(
            check::kNoSetupKey,
            entry.header.where() +
                ": the section has no value for Setup, so programs cannot add or change its data sources.",
            "Name its setup library; if it brings none: " + ensureCommand(entry, kind) + " --setup libjxsetup.so");
    return findings;
}

Findings checkLibraryKeys(const Registered& entry, const model::RegisteredKind& kind) {
    Findings findings;
    const Subject subject{std::string(kind.word) + " " + entry.name, findings};
    if (!entry.header)
        return findings;
    if (entry.library)
        checkPath(kind.key, entry.library, subject);
    else
        tellNoLibrary(entry.header, entry.section, kind.key, ensureCommand(entry, kind), subject);
    if (entry.setup)
        checkPath("Setup", entry.setup, subject);
    return findings;
}

}  // namespace jx::doctor
