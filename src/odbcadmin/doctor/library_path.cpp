// Finding the step at which a path breaks.
#include "odbcadmin/doctor/library_path.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include "odbcadmin/doctor/directory.h"
#include "odbcadmin/doctor/file_rights.h"
#include "odbcadmin/doctor/loader_places.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/text.h"

namespace jx::doctor {

namespace fs = std::filesystem;

namespace {

std::vector<std::string> namesIn(const std::string& directory) {
    std::vector<std::string> names;
    for (const fs::path& path : entriesOf(directory))
        names.push_back(path.filename().string());
    return names;
}

// " Beside it: libfoo.so.2, libfo.so.", from what is in directory and resembles name; "" when nothing does.
std::string besideText(const std::string& directory, const std::string& name) {
    std::vector<std::string> near = otherVersions(name, {directory}, {});
    for (std::string& each : near)
        each.erase(0, each.rfind('/') + 1);
    if (near.empty())
        near = model::nearMatches(name, namesIn(directory));
    return near.empty() ? "" : " Beside it: " + model::joined(near) + ".";
}

std::string place(const fs::path& parent) {
    return parent.empty() ? "." : parent.string();
}

void tellMissing(const fs::path& parent, const fs::path& step, bool isLast, const Subject& subject) {
    const std::string beside = besideText(place(parent), step.filename().string());
    if (isLast)
        subject.tell(check::kLibraryMissing, "There is no " + step.string() + "; its directory is there." + beside,
                     "Install the library there, or correct the path.");
    else
        subject.tell(check::kDirectoryMissing,
                     "There is no directory " + step.string() + "; " + place(parent) + " is there." + beside,
                     "Install the library, or correct the path from that directory on.");
}

void tellDanglingLink(const fs::path& step, int error, const Subject& subject) {
    std::error_code ignored;
    const std::string target = fs::read_symlink(step, ignored).string();
    const std::string where = error == ELOOP ? ", which leads back to itself" : ", which is not there";
    subject.tell(check::kLibraryDanglingLink, step.string() + " is a symbolic link to " + target + where + ".",
                 "Make the link anew to the library that is installed, or install what it points to.");
}

void tellClosed(const fs::path& parent, const Subject& subject) {
    const std::string directory = place(parent);
    subject.tell(
        check::kDirectoryClosed,
        "The directory " + directory + " (" + rightsText(directory) + ") may not be entered by " + thisUserText() + ".",
        "Let its users enter it: chmod a+x " + model::shellWord(directory) + ", or install the library elsewhere.");
}

void tellOther(const fs::path& parent, const fs::path& step, int error, const Subject& subject) {
    const std::string fact = error == ENOTDIR ? place(parent) + " is not a directory"
                                              : "Cannot look at " + step.string() + ": " + std::strerror(error);
    subject.tell(check::kDirectoryMissing, fact + ".", "Correct the path.");
}

// False, with a finding, when the way ends here.
bool passes(const fs::path& parent, const fs::path& step, bool isLast, const Subject& subject) {
    struct stat status {};
    if (::stat(step.c_str(), &status) == 0)
        return true;
    const int error = errno;
    struct stat link {};
    const bool isLink = ::lstat(step.c_str(), &link) == 0 && S_ISLNK(link.st_mode);
    if (error == EACCES)
        tellClosed(isLink ? step.parent_path() : parent, subject);
    else if (isLink)
        tellDanglingLink(step, error, subject);
    else if (error == ENOENT)
        tellMissing(parent, step, isLast, subject);
    else
        tellOther(parent, step, error, subject);
    return false;
}

}  // namespace

void checkLibraryPath(const std::string& path, const Subject& subject) {
    const fs::path whole(path);
    fs::path walked;
    for (auto part = whole.begin(); part != whole.end(); ++part) {
        const fs::path parent = walked;
        walked /= *part;
        if (!passes(parent, walked, std::next(part) == whole.end(), subject))
            return;
    }
}

}  // namespace jx::doctor
