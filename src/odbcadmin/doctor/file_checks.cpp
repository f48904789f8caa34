// The checks of files, one after the other.
#include "odbcadmin/doctor/file_checks.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/file_rights.h"
#include "odbcadmin/model/ini_view.h"
#include "odbcadmin/trial/owned_descriptor.h"
#include "rules/secrets.h"

namespace jx::doctor {

namespace fs = std::filesystem;

namespace {

void checkVariable(const model::ConfigPlace& place, Findings& findings) {
    const char* value = std::getenv(place.variable.c_str());
    if (value == nullptr)
        return;
    if (*value == '\0')
        findings.push_back(
            found(check::kVariableEmpty, place.variable,
                  place.variable + " is set to nothing, which counts as not set: " + place.path + " is the file.",
                  "Unset " + place.variable + ", or give it a full path."));
    else if (*value != '/')
        findings.push_back(found(check::kVariableRelative, place.variable,
                                 place.variable + " is \"" + value +
                                     "\", a path that means another file in every directory a program is started in.",
                                 "Give " + place.variable + " a full path."));
}

void checkRivals(const model::ConfigPlace& place, Findings& findings) {
    for (const model::Candidate& each : place.candidates) {
        std::error_code ignored;
        if (each.wins || !each.exists || fs::equivalent(each.path, place.path, ignored))
            continue;
        if (&each == &place.candidates.back())
            findings.push_back(found(check::kSystemFileIgnored, each.path,
                                     each.path + " is there; this library reads no file for all users.",
                                     "Enter what is needed from it in " + place.path + "."));
        else
            findings.push_back(found(check::kFileShadowed, each.path,
                                     each.path + " is there and is not read: " + place.path + " counts instead.",
                                     "Look at odbcadmin paths for the reason."));
    }
}

void checkAbsent(const std::string& path, const std::string& variable, int error, Findings& findings) {
    std::error_code noLink;
    const fs::path target = fs::read_symlink(path, noLink);
    const bool isNamed = !variable.empty() && std::getenv(variable.c_str()) != nullptr;
    if (!noLink)
        findings.push_back(found(check::kFileDanglingLink, path,
                                 path + " is a symbolic link to " + target.string() +
                                     (error == ELOOP ? ", which leads back to itself." : ", which is not there."),
                                 "Make the link anew, or remove it."));
    else if (isNamed && path == std::getenv(variable.c_str()))
        findings.push_back(found(check::kNamedFileMissing, path, variable + " names " + path + ", which is not there.",
                                 "Correct or unset " + variable + "; the first write makes the file."));
    else
        findings.push_back(found(check::kFileMissing, path, path + " is not there: it is as if it were empty.",
                                 "Nothing needs to be done; the first write makes it."));
}

bool holdsSecret(const std::string& path) {
    const std::optional<model::IniView> view = model::IniView::read(path);
    if (!view)
        return false;
    for (const model::IniSection& section : view->sections())
        for (const model::IniEntry& entry : section.entries)
            if (rules::masked(entry.key, entry.value) != entry.value)
                return true;
    return false;
}

void checkRights(const std::string& path, const struct stat& status, Findings& findings) {
    const bool isOpen = (status.st_mode & (S_IRGRP | S_IROTH)) != 0;
    if (isOpen && holdsSecret(path))
        findings.push_back(
            found(check::kPasswordOpen, path,
                  path + " (" + rightsText(path) + ") holds a password and can be read by " + readersText(path) + ".",
                  "Let its owner alone read it: chmod 600 " + path));
    // A write replaces the file, so it is the directory that must be open for writing.
    std::error_code ignored;
    const fs::path real = fs::canonical(path, ignored);
    const std::string directory = (ignored ? fs::path(path) : real).parent_path().string();
    if (::access(directory.empty() ? "." : directory.c_str(), W_OK) != 0)
        findings.push_back(found(check::kFileReadOnly, path,
                                 path + " cannot be changed by " + thisUserText() + ": its directory " + directory +
                                     " (" + rightsText(directory) + ") cannot be written to: " + std::strerror(errno) +
                                     ".",
                                 "Change it as another user, or name another file with ODBCINI or ODBCINSTINI."));
}

void checkPresent(const std::string& path, const std::string& variable, Findings& findings) {
    struct stat status {};
    const bool isThere = ::stat(path.c_str(), &status) == 0;
    const int error = isThere ? 0 : errno;
    if (!isThere && error != EACCES)
        return checkAbsent(path, variable, error, findings);
    if (isThere && !S_ISREG(status.st_mode)) {
        findings.push_back(found(check::kFileNotRegular, path,
                                 path + " (" + rightsText(path) + ") is no regular file: it is not read.",
                                 "Move it away; the first write makes a file."));
        return;
    }
    const trial::OwnedDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen()) {
        const std::string rights = rightsText(path);
        findings.push_back(found(check::kFileUnreadable, path,
                                 path + (rights.empty() ? "" : " (" + rights + ")") + " cannot be read by " +
                                     thisUserText() + ": " + std::strerror(errno) + ".",
                                 "Ask its owner for the right, or name another file with ODBCINI or ODBCINSTINI."));
        return;
    }
    checkRights(path, status, findings);
}

}  // namespace

Findings checkFiles(const std::vector<model::ConfigPlace>& places) {
    Findings findings;
    for (const model::ConfigPlace& place : places) {
        if (place.path.empty()) {
            findings.push_back(found(check::kNoPlace, place.file, "There is no home directory for " + place.file + ".",
                                     "Set HOME or " + place.variable + "."));
            continue;
        }
        checkVariable(place, findings);
        checkPresent(place.path, place.variable, findings);
        checkRivals(place, findings);
    }
    return findings;
}

Findings checkFile(const std::string& path) {
    Findings findings;
    checkPresent(path, "", findings);
    return findings;
}

}  // namespace jx::doctor
