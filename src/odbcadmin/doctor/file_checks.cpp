// The checks of files, one after the other.
#include "odbcadmin/doctor/file_checks.h"

#include <fcntl.h>
#include <jxini.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <unordered_map>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/file_rights.h"
#include "odbcadmin/model/system_files.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/trial/owned_descriptor.h"
#include "rules/secrets.h"
#include "rules/sections.h"

namespace jx::doctor {

namespace fs = std::filesystem;

namespace {

using model::Configuration;
using model::FileKind;

void checkVariable(const model::ConfigPlace& place, Findings& findings) {
    const Subject variable{place.variable, findings};
    const char* value = std::getenv(place.variable.c_str());
    if (value == nullptr)
        return;
    if (*value == '\0')
        variable.tell(check::kVariableEmpty,
                      place.variable + " is set to nothing, which counts as not set: " + place.path + " is the file.",
                      "Unset " + place.variable + ", or give it a full path.");
    else if (*value != '/')
        variable.tell(check::kVariableRelative,
                      place.variable + " is \"" + value +
                          "\", a path that means another file in every directory a program is started in.",
                      "Give " + place.variable + " a full path.");
}

// A file beside the right one, called like it but for the dot.
void checkWithoutDot(const model::ConfigPlace& place, Findings& findings) {
    const fs::path right(place.path);
    const fs::path wrong = right.parent_path() / place.file.substr(1);
    std::error_code ignored;
    if (right.filename() != place.file || !fs::is_regular_file(wrong, ignored))
        return;
    const bool isFree = !fs::exists(fs::symlink_status(right, ignored));
    findings.push_back(
        found(check::kWithoutDot, wrong.string(),
              wrong.string() + " is there and is not read: the name of the file begins with a dot.",
              isFree ? "Rename it: mv " + model::shellWord(wrong.string()) + " " + model::shellWord(right.string())
                     : "Enter what is needed from it in " + right.string() + "."));
}

void checkRivals(const model::ConfigPlace& place, Findings& findings) {
    for (const model::Candidate& each : place.candidates) {
        std::error_code ignored;
        if (each.wins || !each.exists || fs::equivalent(each.path, place.path, ignored))
            continue;
        findings.push_back(found(check::kFileShadowed, each.path,
                                 each.path + " is there and is not read: " + place.path + " counts instead.",
                                 "Look at odbcadmin paths for the reason."));
    }
}

bool isNamedBy(const std::string& variable, const std::string& path) {
    const char* named = variable.empty() ? nullptr : std::getenv(variable.c_str());
    return named != nullptr && path == named;
}

// A file of root in a user's own directory was made with sudo.
bool isInOwnDirectory(const std::string& path) {
    struct stat status {};
    return ::stat(fs::path(path).parent_path().c_str(), &status) == 0 && status.st_uid == ::geteuid();
}

void checkAbsent(const std::string& variable, int error, const Subject& file) {
    const std::string& path = file.name;
    std::error_code noLink;
    const fs::path target = fs::read_symlink(path, noLink);
    const std::string directory = fs::path(path).parent_path().string();
    std::error_code ignored;
    const bool isNamed = isNamedBy(variable, path);
    if (noLink && !directory.empty() && !fs::is_directory(directory, ignored))
        return file.tell(
            check::kNoDirectory,
            (isNamed ? variable + " names " + path : "The home directory is " + directory) + ", and " +
                (isNamed ? "there is no directory " + directory : "there is no such directory") +
                ": nothing can be read or written there.",
            "Make it: mkdir -p " + model::shellWord(directory) + ", or correct " + (isNamed ? variable : "HOME") + ".");
    if (!noLink)
        file.tell(check::kFileDanglingLink,
                  path + " is a symbolic link to " + target.string() +
                      (error == ELOOP ? ", which leads back to itself." : ", which is not there."),
                  "Make the link anew, or remove it.");
    else if (isNamed)
        file.tell(check::kNamedFileMissing, variable + " names " + path + ", which is not there.",
                  "Correct or unset " + variable + "; the first write makes the file.");
    else if (::access(directory.c_str(), W_OK) != 0)
        file.tell(check::kFileReadOnly,
                  path + " is not there, and " + thisUserText() + " cannot make it: " + directory + " (" +
                      rightsText(directory) + ") cannot be written to.",
                  "Set HOME to a directory of this user, or name another file with ODBCINI or ODBCINSTINI.");
    else
        file.tell(check::kFileMissing, path + " is not there: it is as if it were empty.",
                  "Nothing needs to be done; the first write makes it.");
}

// A file has few different keys: each is judged once.
class SecretKeys {
public:
    bool holdIn(std::string_view key, std::string_view value) {
        const auto [place, isNew] = known_.try_emplace(std::string(key));
        if (isNew)
            place->second = rules::isSecretKey(key);
        if (place->second || value.empty())
            return !value.empty();
        const bool mayHold = value.find('=') != std::string_view::npos || value.find("://") != std::string_view::npos;
        return mayHold && rules::masked(key, value) != value;
    }

private:
    std::unordered_map<std::string, bool> known_;
};

// What stands in a list are names, which may read like that of a secret.
bool holdsSecret(const JxIniText* text) {
    SecretKeys keys;
    bool isList = false;
    JxIniPiece piece;
    for (std::size_t i = 0; jxIniPieceAt(text, i, &piece) != 0; ++i) {
        if (piece.kind == JxIniSection)
            isList = rules::isListSection({piece.name, piece.nameLength});
        else if (!isList && piece.kind == JxIniEntry && piece.value != nullptr &&
                 keys.holdIn({piece.name, piece.nameLength}, {piece.value, piece.valueLength}))
            return true;
    }
    return false;
}

bool holdsSecret(const std::string& path, const Configuration& read) {
    for (const FileKind kind : {FileKind::dataSources, FileKind::drivers})
        for (const model::ConfigFile* file : read.files(kind))
            if (file->path == path && file->state == model::ConfigFile::State::read)
                return holdsSecret(file->view.text());
    const std::unique_ptr<JxIniText, void (*)(JxIniText*)> text(jxIniRead(path.c_str()), jxIniRelease);
    return holdsSecret(text.get());
}

void checkSecrets(mode_t mode, const Subject& file, const Configuration& read) {
    const std::string& path = file.name;
    if ((mode & (S_IRGRP | S_IROTH)) != 0 && holdsSecret(path, read))
        file.tell(check::kPasswordOpen,
                  path + " (" + rightsText(path) + ") holds a password and can be read by " + readersText(path) + ".",
                  "Let its owner alone read it: chmod 600 " + model::shellWord(path));
}

void checkWritable(const Subject& file) {
    const std::string& path = file.name;
    // A write replaces the file, so it is the directory that must be open for writing.
    std::error_code ignored;
    const fs::path real = fs::canonical(path, ignored);
    const std::string directory = (ignored ? fs::path(path) : real).parent_path().string();
    const int error = ::access(directory.empty() ? "." : directory.c_str(), W_OK) != 0 ? errno : 0;
    if (error != 0)
        file.tell(check::kFileReadOnly,
                  path + " cannot be changed by " + thisUserText() + ": its directory " + directory + " (" +
                      rightsText(directory) + ") cannot be written to: " + std::strerror(error) + ".",
                  "Change it as another user, or name another file with ODBCINI or ODBCINSTINI.");
}

// Whether the file, which is there, is one that can be opened.
bool isReadable(const std::string& variable, const Subject& file, const struct stat& status, bool isThere) {
    const std::string& path = file.name;
    const std::string rights = rightsText(path);
    if (isThere && !S_ISREG(status.st_mode)) {
        file.tell(check::kFileNotRegular, path + " (" + rights + ") is not a regular file: it is not read.",
                  isNamedBy(variable, path) ? "Let " + variable + " name a file."
                                            : "Move it away; the first write makes a file.");
        return false;
    }
    const trial::OwnedDescriptor opened(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    const int refused = errno;
    if (opened.isOpen())
        return true;
    file.tell(check::kFileUnreadable,
              path + (rights.empty() ? "" : " (" + rights + ")") + " cannot be read by " + thisUserText() + ": " +
                  std::strerror(refused) + ".",
              isInOwnDirectory(path)
                  ? "Make it yours: sudo chown " + std::to_string(::geteuid()) + " " + model::shellWord(path)
                  : "Ask its owner for the right, or name another file with ODBCINI or ODBCINSTINI.");
    return false;
}

void checkPresent(const std::string& variable, const Subject& file, const Configuration& read) {
    struct stat status {};
    const bool isThere = ::stat(file.name.c_str(), &status) == 0;
    const int error = isThere ? 0 : errno;
    if (!isThere && error != EACCES)
        return checkAbsent(variable, error, file);
    if (!isReadable(variable, file, status, isThere))
        return;
    checkSecrets(status.st_mode, file, read);
    checkWritable(file);
}

// The system's file: most machines have none, and most users may not change it.
void checkShared(const model::ConfigPlace& place, const Subject& file, const Configuration& read) {
    struct stat status {};
    const bool isThere = ::stat(file.name.c_str(), &status) == 0;
    if (!isThere && errno != EACCES)
        return;
    if (!isReadable("", file, status, isThere))
        return;
    checkSecrets(status.st_mode, file, read);
    file.tell(check::kSystemFileIgnored,
              file.name + " is there, the system's: programs that use libodbcinst.so.1 do not read it.",
              "Enter what those programs need from it in " + std::string(nameOf(place.kind)) + " of the user.");
}

// A service's user often has no home directory and needs none where the system's file answers.
bool needsNoHome(const model::ConfigPlace& place, const Subject& file) {
    const std::string directory = fs::path(place.path).parent_path().string();
    const std::string shared = model::systemPath(place.kind);
    std::error_code ignored;
    if (isNamedBy(place.variable, place.path) || fs::is_directory(directory, ignored) || !fs::exists(shared, ignored))
        return false;
    file.tell(
        check::kFileMissing,
        file.name + " is not there, nor is the home directory " + directory + ": only " + shared + " is read.",
        "Nothing needs to be done; a file of this user's own needs mkdir -p " + model::shellWord(directory) + ".");
    return true;
}

}  // namespace

Findings checkFiles(const std::vector<model::ConfigPlace>& places) {
    return checkFiles(places, Configuration({}));
}

Findings checkFiles(const std::vector<model::ConfigPlace>& places, const Configuration& read) {
    Findings findings;
    for (const model::ConfigPlace& place : places) {
        if (place.scope == model::Scope::system) {
            if (!model::isOneFile(place.kind))
                checkShared(place, {place.path, findings}, read);
            continue;
        }
        if (place.path.empty()) {
            findings.push_back(found(check::kNoPlace, place.file, "There is no home directory for " + place.file + ".",
                                     "Set HOME or " + place.variable + "."));
            continue;
        }
        if (needsNoHome(place, {place.path, findings}))
            continue;
        checkVariable(place, findings);
        checkPresent(place.variable, {place.path, findings}, read);
        checkWithoutDot(place, findings);
        checkRivals(place, findings);
    }
    return findings;
}

Findings checkFile(const std::string& path) {
    Findings findings;
    checkPresent("", {path, findings}, Configuration({}));
    return findings;
}

}  // namespace jx::doctor
