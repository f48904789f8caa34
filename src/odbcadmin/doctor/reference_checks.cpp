// Looking at the keys of a data source.
#include "odbcadmin/doctor/reference_checks.h"

#include <cstdlib>
#include <filesystem>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/file_rights.h"
#include "odbcadmin/doctor/installer_search.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/model/known_driver.h"
#include "odbcadmin/model/secret_reference.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/trial/installer_library.h"
#include "odbcadmin/trial/secret_look_up.h"
#include "rules/references.h"

namespace jx::doctor {

namespace {

using model::DataSource;
using model::IniEntry;
using rules::Reference;

// A reference of a data source: KEY@file=target.
struct Referring {
    std::string key;
    Reference kind;
    std::string target;
    std::string where;  // path and line
    std::string name;   // as it stands there
};

std::string whereOf(const DataSource& source, const IniEntry& entry) {
    return source.file->path + ":" + std::to_string(entry.line);
}

std::vector<Referring> referencesOf(const DataSource& source) {
    std::vector<Referring> references;
    for (const IniEntry& entry : source.section->entries)
        if (const std::string_view key = rules::referredKey(entry.key); !key.empty())
            references.push_back({std::string(key), rules::referenceOf(entry.key), std::string(entry.value),
                                  whereOf(source, entry), std::string(entry.key)});
    return references;
}

// True when what stands there can never work, or another key wins over it.
bool tellWhatShows(const DataSource& source, const Referring& each, const Subject& subject) {
    const std::string fact = each.where + ": " + each.name;
    if (!rules::mayBeReferred(each.key))
        subject.tell(check::kReferenceNeverFollowed,
                     fact + " is not followed: the value of " + each.key + " cannot lie elsewhere.",
                     "Write " + each.key + "=VALUE.");
    else if (const std::string why = model::whyNeverFollowed(each.kind, each.target); !why.empty())
        subject.tell(check::kReferenceNeverFollowed, fact + " is not followed: \"" + each.target + "\" " + why + ".",
                     each.kind == Reference::file ? "Give the full path." : "Correct the name.");
    else if (source.section->find(each.key) != nullptr)
        subject.tell(check::kReferenceHidden, fact + " is not followed: " + each.key + " itself is there and wins.",
                     "Remove one of them: " + model::commandOn(*source.file) + " dsn unset " +
                         model::shellWord(source.name) + " " + model::shellWord(each.key));
    else
        return false;
    return true;
}

void tellKey(const DataSource& source, const IniEntry& entry, const model::KnownDriver& known, const Subject& subject) {
    const auto mistake = mistakeIn(known, entry.key);
    if (!mistake)
        return;
    const bool isMisspelt = mistake->kind == model::KeyMistake::Kind::misspelt;
    subject.tell(isMisspelt ? check::kKeyMisspelt : check::kKeyNotAsked,
                 whereOf(source, entry) + ": " + mistake->fact + ".", mistake->advice);
}

// A variable and a credential are those of the program: here they may be others, or none.
bool isAnothersToSet(const Referring& each) {
    const char* variable = each.kind == Reference::variable     ? each.target.c_str()
                           : each.kind == Reference::credential ? "CREDENTIALS_DIRECTORY"
                                                                : nullptr;
    return variable != nullptr && std::getenv(variable) == nullptr;
}

void tellLookUp(const DataSource& source, const Referring& each, const Subject& subject) {
    if (isAnothersToSet(each))
        return subject.tell(check::kReferenceElsewhere,
                            each.where + ": " + each.name + " cannot be tried here: " +
                                (each.kind == Reference::variable ? each.target : "CREDENTIALS_DIRECTORY") +
                                " is not set.",
                            "It must be set where the program runs.");
    const trial::SecretLookUp found = trial::lookUpSecret(source.file->path, source.name, each.key);
    if (!found.isAsked)
        return;
    std::error_code ignored;
    const bool isFile = each.kind == Reference::file && std::filesystem::is_regular_file(each.target, ignored);
    if (!found.refusal.empty())
        return subject.tell(check::kReferenceRefused, each.where + ": " + found.refusal,
                            isFile
                                ? "Its rights are " + rightsText(each.target) + ", and this is " + thisUserText() + "."
                                : "The driver gets no value for " + each.key + ".");
    if (found.value.empty())
        return subject.tell(check::kReferenceEmpty, each.where + ": " + each.name + " leads to an empty value.",
                            "Write the value there.");
    if (found.value.ends_with('\n') || found.value.ends_with('\r'))
        subject.tell(check::kReferenceLineEnd,
                     each.where + ": what " + each.name + " leads to ends with more than one line end.",
                     "One is left out, the others belong to the value: remove them.");
}

}  // namespace

Findings checkKeys(const DataSource& source, const model::Configuration& configuration) {
    Findings findings;
    if (source.section == nullptr)
        return findings;
    const Subject subject{"data source " + source.name, findings};
    for (const Referring& each : referencesOf(source))
        tellWhatShows(source, each, subject);
    const auto& driver = configuration.driver(source.driver);
    const std::string library = driver && driver->library ? driver->library.text : source.library.text;
    if (const model::KnownDriver* known = model::knownDriverOf(library))
        for (const IniEntry& entry : source.section->entries)
            tellKey(source, entry, *known, subject);
    return findings;
}

Findings checkReferences(const DataSource& source, const model::Configuration& configuration,
                         const LoaderPlaces& places) {
    Findings findings;
    if (source.section == nullptr)
        return findings;
    const Subject subject{"data source " + source.name, findings};
    Findings shown;
    std::vector<Referring> followed;
    for (const Referring& each : referencesOf(source))
        if (!tellWhatShows(source, each, {"", shown}))
            followed.push_back(each);
    for (const Referring& each : followed)
        tellLookUp(source, each, subject);
    if (followed.empty())
        return findings;
    const LibraryFile driver = readLibraryFile(meantLibrary(source, configuration, places));
    const std::string answers = driver.isThere() ? searchInstaller(driver, places).path : "";
    if (!answers.empty() && !isSameFile(answers, trial::driversInstallerPath()))
        subject.tell(check::kReferenceOtherLibrary,
                     followed.front().where + ": " + followed.front().name + " is followed by this product's " +
                         trial::kDriversInstaller + " only, and the driver gets " + answers + ".",
                     "Start the program with odbcadmin run -- PROGRAM.");
    return findings;
}

}  // namespace jx::doctor
