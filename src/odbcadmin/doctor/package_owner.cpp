// Asking the package managers.
#include "odbcadmin/doctor/package_owner.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <map>
#include <vector>

#include "odbcadmin/trial/owned_descriptor.h"

namespace jx::doctor {

namespace {

constexpr std::size_t kLongestAnswer = 4096;

std::string readAll(int descriptor) {
    std::string text;
    char room[512];
    while (text.size() < kLongestAnswer) {
        const ssize_t count = ::read(descriptor, room, sizeof room);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        text.append(room, static_cast<std::size_t>(count));
    }
    return text;
}

// What a program prints; empty when it is not there or fails.
std::string printedBy(std::vector<std::string> words) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return {};
    const trial::OwnedDescriptor reading(ends[0]);
    trial::OwnedDescriptor writing(ends[1]);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, writing.get(), STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t child = 0;
    const int error = ::posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    writing.reset();
    if (error != 0)
        return {};
    std::string text = readAll(reading.get());
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? text : "";
}

// "libssl3:amd64: /usr/lib/libssl.so.3"; the package's own name may hold a colon.
std::string byDpkg(const std::string& path) {
    const std::string line = printedBy({"dpkg-query", "-S", path});
    const std::size_t end = line.find(": ");
    return end == std::string::npos ? "" : line.substr(0, end);
}

// Where /lib is a link to /usr/lib, a package may know its file by either path.
std::string byDpkgAnyPath(const std::string& path) {
    std::string package = byDpkg(path);
    if (package.empty() && path.starts_with("/usr/lib"))
        package = byDpkg(path.substr(4));
    if (package.empty() && path.starts_with("/lib"))
        package = byDpkg("/usr" + path);
    return package;
}

std::string byRpm(const std::string& path) {
    const std::string text = printedBy({"rpm", "-qf", "--qf", "%{NAME}\\n", path});
    return text.substr(0, text.find('\n'));
}

}  // namespace

std::string packageOf(const std::string& path) {
    static std::map<std::string, std::string> known;
    const auto [place, isNew] = known.try_emplace(path);
    if (!isNew)
        return place->second;
    // A package knows the file itself; links to it are often made afterwards.
    std::error_code error;
    const std::string real = std::filesystem::canonical(path, error).string();
    for (const std::string& each : {path, real}) {
        if (place->second.empty() && !each.empty())
            place->second = byDpkgAnyPath(each);
        if (place->second.empty() && !each.empty())
            place->second = byRpm(each);
    }
    return place->second;
}

std::string withPackage(const std::string& path) {
    const std::string package = packageOf(path);
    return package.empty() ? path : path + " (package " + package + ")";
}

}  // namespace jx::doctor
