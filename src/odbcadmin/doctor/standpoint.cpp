// Asking the accounts and /proc.
#include "odbcadmin/doctor/standpoint.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <optional>
#include <sstream>
#include <string_view>

namespace jx::doctor {

namespace {

using model::Reason;
using trial::OwnedDescriptor;

template <class Number>
std::optional<Number> numberIn(std::string_view text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

std::string userText(uid_t user) {
    const passwd* account = ::getpwuid(user);
    return "user " + (account != nullptr ? std::string(account->pw_name) + " (" + std::to_string(user) + ")"
                                         : std::to_string(user));
}

std::vector<gid_t> ownGroups() {
    const int count = std::max(::getgroups(0, nullptr), 0);
    std::vector<gid_t> groups(static_cast<std::size_t>(count));
    groups.resize(static_cast<std::size_t>(std::max(::getgroups(count, groups.data()), 0)));
    return groups;
}

std::vector<gid_t> groupsOf(const passwd& account) {
    int count = 64;
    std::vector<gid_t> groups(static_cast<std::size_t>(count));
    while (::getgrouplist(account.pw_name, account.pw_gid, groups.data(), &count) < 0)
        groups.resize(static_cast<std::size_t>(count));
    groups.resize(static_cast<std::size_t>(count));
    return groups;
}

Reason noProcess(const std::string& number) {
    return {Reason::Kind::notFound, "There is no process " + number, "Look for it: ps -e"};
}

// One process's files in /proc; those of its number's next owner are never taken for them.
class ProcessFiles {
public:
    explicit ProcessFiles(const std::string& number)
        : number_(number), directory_(::open(("/proc/" + number).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

    bool isThere() const { return directory_.isOpen(); }

    // The reason why it is not read in reason.
    std::string read(const char* name, Reason& reason) const {
        const OwnedDescriptor file(::openat(directory_.get(), name, O_RDONLY | O_CLOEXEC));
        std::string text;
        std::array<char, 4096> bytes{};
        ssize_t count = file.isOpen() ? 1 : -1;
        while (count > 0) {
            count = ::read(file.get(), bytes.data(), bytes.size());
            text.append(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        }
        if (count < 0)
            reason = unreadable(std::string("/proc/") + number_ + "/" + name, errno);
        return text;
    }

    OwnedDescriptor open(const char* name, int flags) const {
        return OwnedDescriptor(::openat(directory_.get(), name, flags | O_CLOEXEC));
    }

    // Whether name is another file than the same of this process; the reason why that is not known in reason.
    bool differs(const char* name, Reason& reason) const {
        struct stat theirs {};
        struct stat ours {};
        const std::string own = std::string("/proc/self/") + name;
        if (::fstatat(directory_.get(), name, &theirs, 0) != 0)
            reason = unreadable(std::string("/proc/") + number_ + "/" + name, errno);
        return !reason && ::stat(own.c_str(), &ours) == 0 &&
               (theirs.st_dev != ours.st_dev || theirs.st_ino != ours.st_ino);
    }

private:
    Reason unreadable(const std::string& path, int error) const {
        if (error == ESRCH || error == ENOENT)
            return {Reason::Kind::notFound, "Process " + number_ + " has ended, or is one of the kernel's", ""};
        return {Reason::Kind::fileTrouble, path + " cannot be read: " + std::strerror(error),
                "Only root and the process's own user may look at it."};
    }

    const std::string& number_;
    OwnedDescriptor directory_;
};

// The numbers behind a word of /proc/N/status: "Uid:\t33\t33\t33\t33".
std::vector<unsigned> numbersBehind(std::string_view word, const std::string& status) {
    std::istringstream lines(status);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(word))
            continue;
        std::istringstream rest(line.substr(word.size()));
        std::vector<unsigned> numbers;
        for (unsigned number = 0; rest >> number;)
            numbers.push_back(number);
        return numbers;
    }
    return {};
}

// Files are judged by the last of the four user and group numbers.
bool takeRights(const std::string& status, Standpoint& place) {
    const std::vector<unsigned> users = numbersBehind("Uid:", status);
    const std::vector<unsigned> groups = numbersBehind("Gid:", status);
    if (users.empty() || groups.empty())
        return false;
    place.user = users.back();
    place.group = groups.back();
    place.groups.clear();
    for (const unsigned each : numbersBehind("Groups:", status))
        place.groups.push_back(each);
    return true;
}

void takeEnvironment(std::string_view bytes, Standpoint& place) {
    while (!bytes.empty()) {
        const std::string_view variable = bytes.substr(0, bytes.find('\0'));
        if (variable.find('=') != std::string_view::npos)
            place.environment.emplace_back(variable);
        bytes.remove_prefix(std::min(variable.size() + 1, bytes.size()));
    }
}

Reason takeFiles(const ProcessFiles& files, Standpoint& place) {
    Reason reason;
    const bool hasMounts = files.differs("ns/mnt", reason);
    const bool hasRoot = !reason && files.differs("root", reason);
    if (reason)
        return reason;
    place.place = files.open("cwd", O_PATH | O_DIRECTORY);
    if (hasMounts)
        place.mounts = files.open("ns/mnt", O_RDONLY);
    if (hasMounts || hasRoot)
        place.root = files.open("root", O_PATH | O_DIRECTORY);
    return {};
}

}  // namespace

bool Standpoint::isOpenToThisUser() const {
    if (::geteuid() == 0)
        return true;
    std::vector<gid_t> own = ownGroups();
    std::vector<gid_t> wanted = groups;
    std::sort(own.begin(), own.end());
    std::sort(wanted.begin(), wanted.end());
    return ::geteuid() == user && ::getegid() == group && own == wanted && !hasFilesOfItsOwn();
}

Reason standpointOfAccount(const std::string& account, Standpoint& place) {
    const auto number = numberIn<uid_t>(account);
    const passwd* found = ::getpwnam(account.c_str());
    if (found == nullptr && number)
        found = ::getpwuid(*number);
    if (found == nullptr)
        return {Reason::Kind::notFound, "There is no user " + account, "Look for the name: getent passwd"};
    const std::string name = found->pw_name;
    const bool isThisUser = found->pw_uid == ::geteuid() && ::geteuid() != 0;
    place.user = found->pw_uid;
    place.group = isThisUser ? ::getegid() : found->pw_gid;
    place.directory = found->pw_dir;
    place.environment = {"HOME=" + place.directory, "USER=" + name, "LOGNAME=" + name,
                         "SHELL=" + std::string(*found->pw_shell != '\0' ? found->pw_shell : "/bin/sh"),
                         "PATH=/usr/local/bin:/usr/bin:/bin"};
    place.groups = isThisUser ? ownGroups() : groupsOf(*found);
    place.who = userText(place.user);
    return {};
}

Reason standpointOfProcess(const std::string& number, Standpoint& place) {
    if (!numberIn<unsigned>(number))
        return {Reason::Kind::incomplete, "--pid is not the number of a process: " + number, "Look for it: ps -e"};
    const ProcessFiles files(number);
    if (!files.isThere())
        return noProcess(number);
    Reason reason;
    const std::string status = files.read("status", reason);
    std::string name = reason ? "" : files.read("comm", reason);
    const std::string environment = reason ? "" : files.read("environ", reason);
    if (reason)
        return reason;
    if (!takeRights(status, place))
        return noProcess(number);
    name.erase(std::min(name.find('\n'), name.size()));
    place.who = "process " + number + " (" + name + ") of " + userText(place.user);
    takeEnvironment(environment, place);
    return takeFiles(files, place);
}

}  // namespace jx::doctor
