// Finding the step at which a path breaks.
#include "odbcadmin/doctor/library_path.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/text.h"
#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/file_rights.h"
#include "odbcadmin/doctor/loader_places.h"

namespace jx::doctor {

namespace fs = std::filesystem;

namespace {

std::vector<std::string> namesIn(const std::string& directory) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator each(directory, error), end; !error && each != end; each.increment(error))
        names.push_back(each->path().filename().string());
    return names;
}

std::string place(const fs::path& parent) {
    return parent.empty() ? "." : parent.string();
}

Finding missingStep(const std::string& subject, const fs::path& parent, const fs::path& step, bool isLast) {
    const std::string beside = besideText(place(parent), step.filename().string());
    if (isLast)
        return found(
            check::kLibraryMissing, subject,
            "There is no " + step.string() + "; its directory is there." + (beside.empty() ? "" : " ") + beside,
            "Install the library there, or correct the path.");
    return found(check::kDirectoryMissing, subject,
                 "There is no directory " + step.string() + "; " + place(parent) + " is there." +
                     (beside.empty() ? "" : " ") + beside,
                 "Install the library, or correct the path from that directory on.");
}

Finding danglingLink(const std::string& subject, const fs::path& step, int error) {
    std::error_code ignored;
    const std::string target = fs::read_symlink(step, ignored).string();
    const std::string where = error == ELOOP ? ", which leads back to itself" : ", which is not there";
    return found(check::kLibraryDanglingLink, subject, step.string() + " is a symbolic link to " + target + where + ".",
                 "Make the link anew to the library that is installed, or install what it points to.");
}

Finding closedDirectory(const std::string& subject, const fs::path& parent) {
    const std::string directory = place(parent);
    return found(
        check::kDirectoryClosed, subject,
        "The directory " + directory + " (" + rightsText(directory) + ") may not be entered by " + thisUserText() + ".",
        "Give the right to enter it, as with chmod a+x on the directory, or install the library elsewhere.");
}

Finding otherTrouble(const std::string& subject, const fs::path& parent, const fs::path& step, int error) {
    const std::string fact = error == ENOTDIR ? place(parent) + " is not a directory"
                                              : "Cannot look at " + step.string() + ": " + std::strerror(error);
    return found(check::kDirectoryMissing, subject, fact + ".", "Correct the path.");
}

// What is wrong with one step; nothing when the way goes on.
Findings checkStep(const std::string& subject, const fs::path& parent, const fs::path& step, bool isLast) {
    struct stat status {};
    if (::stat(step.c_str(), &status) == 0)
        return {};
    const int error = errno;
    struct stat link {};
    const bool isLink = ::lstat(step.c_str(), &link) == 0 && S_ISLNK(link.st_mode);
    if (error == EACCES)
        return {closedDirectory(subject, isLink ? fs::path(step).parent_path() : parent)};
    if (isLink)
        return {danglingLink(subject, step, error)};
    if (error == ENOENT)
        return {missingStep(subject, parent, step, isLast)};
    return {otherTrouble(subject, parent, step, error)};
}

}  // namespace

std::string besideText(const std::string& directory, const std::string& name) {
    std::vector<std::string> near = otherVersions(name, {directory}, {});
    for (std::string& each : near)
        each.erase(0, each.rfind('/') + 1);
    if (near.empty())
        near = admin::nearMatches(name, namesIn(directory));
    return near.empty() ? "" : "Beside it: " + admin::joined(near) + ".";
}

Findings checkLibraryPath(const std::string& subject, const std::string& path) {
    const fs::path whole(path);
    fs::path walked;
    for (auto part = whole.begin(); part != whole.end(); ++part) {
        const fs::path parent = walked;
        walked /= *part;
        const bool isLast = std::next(part) == whole.end();
        Findings trouble = checkStep(subject, parent, walked, isLast);
        if (!trouble.empty())
            return trouble;
    }
    return {};
}

}  // namespace jx::doctor
