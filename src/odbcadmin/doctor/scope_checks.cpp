// Comparing the two scopes.
#include "odbcadmin/doctor/scope_checks.h"

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string_view>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/model/config_places.h"
#include "odbcadmin/model/system_files.h"
#include "odbcadmin/model/text.h"

namespace jx::doctor {

namespace fs = std::filesystem;

namespace {

using model::Configuration;
using model::FileKind;
using model::Located;
using model::Scope;

std::string_view valueOf(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr ? value : "";
}

// Variables that these libraries do not know and other products read.
struct ForeignVariable {
    const char* name;
    const char* meaning;
};
constexpr ForeignVariable kForeign[] = {
    {"ODBCINST", "other products look for the file of drivers there; these libraries go by ODBCINSTINI"},
    {"FREETDS", "the FreeTDS driver reads it in place of its freetds.conf"},
    {"FREETDSCONF", "the FreeTDS driver reads it in place of its freetds.conf"},
    {"TDSVER", "the FreeTDS driver takes it for the protocol version of every data source that names none"},
    {"TDSPORT", "the FreeTDS driver takes it for the port of every data source that names none"},
    {"PGSERVICE", "PostgreSQL's client library takes the settings of that service"},
    {"PGHOST", "PostgreSQL's client library takes it for the server of every data source that names none"},
    {"PGPASSFILE", "PostgreSQL's client library takes passwords from it"},
    {"MDBOPTS", "the driver of MDB files takes options from it"},
};

void checkSystemDirectory(Findings& findings) {
    const char* value = std::getenv("ODBCSYSINI");
    if (value == nullptr)
        return;
    const Subject variable{"ODBCSYSINI", findings};
    const std::string named = value;
    std::error_code ignored;
    if (!named.starts_with('/'))
        return variable.tell(check::kVariableRelative,
                             "ODBCSYSINI is \"" + named +
                                 "\", which is no full path and counts as not set: the system's files are in /etc.",
                             "Give it a full path, or unset it.");
    if (!fs::is_directory(named, ignored))
        return variable.tell(check::kSystemMoved,
                             "ODBCSYSINI names " + named +
                                 ", where there is no directory: the system's files are not "
                                 "found.",
                             "Correct it, or unset it.");
    if (fs::exists(model::systemPath(FileKind::dataSources), ignored) ||
        fs::exists(model::systemPath(FileKind::drivers), ignored))
        variable.tell(check::kSystemMoved,
                      "ODBCSYSINI is set: the system's files are in " + named +
                          ", also for programs started from here; others read /etc.",
                      "Set it for every program that is to find them, or unset it.");
}

// The older library and the newer one do not agree whose file it names.
void checkDriversVariable(Findings& findings) {
    const std::string named(valueOf("ODBCINSTINI"));
    if (named.empty())
        return;
    const Subject variable{"ODBCINSTINI", findings};
    if (named.starts_with('/'))
        return variable.tell(
            check::kDriversMoved,
            "ODBCINSTINI names " + named +
                ": libodbcinst.so.1 takes it for the user's drivers, libodbcinst.so.2 for the system's, "
                "and reads " +
                model::homeDirectory() + "/.odbcinst.ini as well.",
            "Use ODBCSYSINI for the system's files, and ODBCINSTINI where all programs use one library.");
    if (named.find('/') == std::string::npos && named != "." && named != "..")
        return variable.tell(check::kDriversMoved,
                             "ODBCINSTINI is \"" + named + "\": libodbcinst.so.2 takes it for " +
                                 model::systemPath(FileKind::drivers) +
                                 ", libodbcinst.so.1 for a file where a program is started.",
                             "Give it a full path.");
}

void checkForeign(Findings& findings) {
    for (const ForeignVariable& each : kForeign)
        if (!valueOf(each.name).empty())
            findings.push_back(found(check::kForeignVariable, each.name,
                                     std::string(each.name) + " is set: " + each.meaning + ".",
                                     "Unset it if that is not meant."));
}

// The keys of the hidden section that the one in front of it lacks.
std::vector<std::string> lostKeys(const model::IniSection* front, const Located& hidden) {
    std::vector<std::string> lost;
    if (const model::IniSection* behind = hidden.file->view.section(hidden.text))
        for (const std::string& key : behind->keys())
            if (front == nullptr || front->find(key) == nullptr)
                lost.push_back(key);
    return lost;
}

void checkHidden(const Located& header, const model::IniSection* section, const Located& hides, const char* noun,
                 const Subject& subject) {
    if (!hides)
        return;
    const std::vector<std::string> lost = lostKeys(section, hides);
    const std::string both =
        header.where() + ": the user's [" + header.text + "] hides all of the system's (" + hides.where() + ")";
    const std::string remove = std::string("odbcadmin ") + noun + " remove " + model::shellWord(header.text);
    if (lost.empty())
        return subject.tell(check::kShadowed, both + ".", "If it is not meant to: " + remove);
    subject.tell(check::kSplit,
                 both + ", also what only that one says: " + model::joined(lost) + " " +
                     (lost.size() == 1 ? "is" : "are") + " not found.",
                 "Enter what is needed in the user's section, or remove it: " + remove);
}

bool isRegisteredFor(const std::optional<model::Registered>& driver, Scope scope) {
    return driver && (driver->file->scope == scope || (driver->hides && driver->hides.file->scope == scope));
}

}  // namespace

Findings checkVariables() {
    Findings findings;
    checkSystemDirectory(findings);
    checkDriversVariable(findings);
    checkForeign(findings);
    return findings;
}

Findings checkScopes(const model::DataSource& source, const Configuration& configuration) {
    Findings findings;
    const Subject subject{"data source " + source.name, findings};
    checkHidden(source.header, source.section, source.hides, "dsn", subject);
    if (source.section != nullptr && source.listed && !source.isDefault && source.listed.file != source.file)
        subject.tell(check::kListedElsewhere,
                     source.listed.where() + " lists it, and its section is in the file of the " +
                         scopeWord(source.file->scope) + " (" + source.header.where() +
                         "): programs that read only one of the files find half of it.",
                     "Bring both together with odbcadmin dsn move.");
    if (!source.listed || source.isDefault || source.section == nullptr)
        return findings;
    const auto& driver = configuration.driver(source.driver);
    const bool forUser = isRegisteredFor(driver, Scope::user);
    const bool forAll = isRegisteredFor(driver, Scope::system);
    if (source.file->scope == Scope::system && forUser && !forAll)
        subject.tell(check::kDriverOfUser,
                     source.listed.where() + ": its driver " + source.driver +
                         " is registered for this user only; other users have none of that name.",
                     "Register it for all: odbcadmin driver copy " + model::shellWord(source.driver) + " --to system");
    else if (source.file->scope == Scope::user && forAll && !forUser)
        subject.tell(
            check::kDriverOfSystem,
            source.listed.where() + ": its driver " + source.driver +
                " is registered for the system only, where libodbcinst.so.1 does not look.",
            "Where programs use that library: odbcadmin driver copy " + model::shellWord(source.driver) + " --to user");
    return findings;
}

Findings checkScopes(const model::Registered& driver) {
    Findings findings;
    checkHidden(driver.header, driver.section, driver.hides, "driver", {"driver " + driver.name, findings});
    return findings;
}

}  // namespace jx::doctor
