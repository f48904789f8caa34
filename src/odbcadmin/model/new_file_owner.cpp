// Giving new files away.
#include "odbcadmin/model/new_file_owner.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>

#include "odbcadmin/model/config_file.h"

namespace jx::model {

namespace {

std::optional<Account> ownerOfDirectory(const std::string& path) {
    struct stat state {};
    if (::stat(std::filesystem::path(path).parent_path().c_str(), &state) != 0)
        return std::nullopt;
    return Account{state.st_uid, state.st_gid};
}

// Zero or the errno. The directory is another user's, who may have put something else in the file's place: only a plain
// file of root's with one name is given away.
int give(const std::string& path, const Account& account) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    struct stat state {};
    int error = descriptor < 0 || ::fstat(descriptor, &state) != 0 ? errno : 0;
    const bool isOurs = error == 0 && S_ISREG(state.st_mode) && state.st_nlink == 1 && state.st_uid == 0;
    if (isOurs && ::fchown(descriptor, account.user, account.group) != 0)
        error = errno;
    if (descriptor >= 0)
        ::close(descriptor);
    return error;
}

}  // namespace

std::optional<Account> accountOf(const std::string& name) {
    const passwd* account = ::getpwnam(name.c_str());
    uid_t number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (account == nullptr && error == std::errc() && end == name.data() + name.size())
        account = ::getpwuid(number);
    return account != nullptr ? std::optional(Account{account->pw_uid, account->pw_gid}) : std::nullopt;
}

NewFileOwner::NewFileOwner(std::optional<Account> chosen) : chosen_(chosen) {
    if (::geteuid() != 0)
        return;
    for (const FileKind kind : {FileKind::dataSources, FileKind::drivers}) {
        const std::string path = pathOf(nameOf(kind));
        struct stat state {};
        if (!path.empty() && ::lstat(path.c_str(), &state) != 0 && errno == ENOENT)
            absent_.push_back(path);
    }
}

Reason NewFileOwner::settle() const {
    for (const std::string& path : absent_) {
        const std::optional<Account> owner = chosen_ ? chosen_ : ownerOfDirectory(path);
        const int error = owner && owner->user != 0 ? give(path, *owner) : 0;
        if (error != 0 && error != ENOENT)
            return {Reason::Kind::fileTrouble, "Cannot give " + path + " to its user: " + std::strerror(error),
                    "It is written and belongs to root: give it away with chown."};
    }
    return {};
}

}  // namespace jx::model
