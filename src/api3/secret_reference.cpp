// Reads values from where references lead.
#include "api3/secret_reference.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

#include "api3/descriptor.h"
#include "api3/environment.h"

namespace jx::api3 {

namespace {

constexpr mode_t kGroupMayWrite = 0020;
constexpr mode_t kOthersMayWrite = 0002;

Secret refused(const std::string& place, const char* why) {
    return {{}, place + ": " + why};
}

Secret refusedByTheSystem(const std::string& place, int error) {
    const char* words = strerrordesc_np(error);
    return refused(place, words != nullptr ? words : "the system refuses it");
}

// Whether the group is the one that the account list gives to the owner.
bool isOwnGroup(uid_t owner, gid_t group) {
    std::vector<char> room(16384);
    passwd account{};
    passwd* found = nullptr;
    return getpwuid_r(owner, &account, room.data(), room.size(), &found) == 0 && found != nullptr &&
           account.pw_gid == group;
}

bool mayOthersWrite(const struct stat& state) {
    if ((state.st_mode & kOthersMayWrite) != 0)
        return true;
    return (state.st_mode & kGroupMayWrite) != 0 && !isOwnGroup(state.st_uid, state.st_gid);
}

// Why what lies there is not read; null when it is.
const char* whyNotRead(const struct stat& state) {
    if (!S_ISREG(state.st_mode))
        return "it is not a regular file";
    return mayOthersWrite(state) ? "others than its owner may write it" : nullptr;
}

ssize_t readSome(int fd, char* room, std::size_t size) {
    ssize_t count = 0;
    do
        count = read(fd, room, size);
    while (count < 0 && errno == EINTR);
    return count;
}

Secret readAll(int fd, const std::string& path) {
    Secret secret;
    secret.text.resize(kLongestSecret + 1);
    std::size_t filled = 0;
    while (filled < secret.text.size()) {
        const ssize_t count = readSome(fd, secret.text.data() + filled, secret.text.size() - filled);
        if (count < 0)
            return refusedByTheSystem(path, errno);
        if (count == 0)
            break;
        filled += static_cast<std::size_t>(count);
    }
    secret.text.resize(filled);
    return secret;
}

// Opened without waiting: what a FIFO or a device is shows before anything is read.
Secret readFile(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.get() < 0)
        return refusedByTheSystem(path, errno);
    struct stat state {};
    if (fstat(file.get(), &state) != 0)
        return refusedByTheSystem(path, errno);
    const char* why = whyNotRead(state);
    return why != nullptr ? refused(path, why) : readAll(file.get(), path);
}

Secret readAbsoluteFile(const std::string& path) {
    return path.starts_with('/') ? readFile(path) : refused(path, "it is not an absolute path");
}

Secret readVariableSecret(const std::string& name) {
    const char* value = readVariable(name.c_str());
    if (value == nullptr)
        return refused(name, "there is no such environment variable");
    return {std::string(value, strnlen(value, kLongestSecret + 1)), {}};
}

Secret readCredential(const std::string& name) {
    if (name.empty() || name.find('/') != std::string::npos || name == "." || name == "..")
        return refused(name, "it is not the name of a credential");
    const char* directory = readVariable("CREDENTIALS_DIRECTORY");
    if (directory == nullptr || *directory != '/')
        return refused(name, "CREDENTIALS_DIRECTORY holds no absolute path");
    return readFile(std::string(directory) + "/" + name);
}

Secret readWhole(Reference reference, const std::string& target) {
    switch (reference) {
        case Reference::file:
            return readAbsoluteFile(target);
        case Reference::variable:
            return readVariableSecret(target);
        case Reference::credential:
            return readCredential(target);
    }
    return {};
}

void dropLineEnd(std::string& text) {
    if (text.ends_with('\n'))
        text.pop_back();
    else
        return;
    if (text.ends_with('\r'))
        text.pop_back();
}

}  // namespace

Secret readSecret(Reference reference, const std::string& target) {
    if (hasRaisedRights())
        return refused(target, "a program with raised rights does not follow it");
    Secret secret = readWhole(reference, target);
    if (!secret.refusal.empty())
        return secret;
    if (secret.text.size() > kLongestSecret)
        return refused(target, "it holds more than 64 KiB");
    if (secret.text.find('\0') != std::string::npos)
        return refused(target, "it holds a NUL");
    dropLineEnd(secret.text);
    return secret;
}

}  // namespace jx::api3
