// Following a name to the file that runs.
#include "odbcadmin/doctor/program.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "odbcadmin/trial/owned_descriptor.h"

namespace jx::doctor {

namespace {

using Obstacle = Program::Obstacle;

constexpr std::size_t kLongestFirstLine = 256;  // what the kernel reads of it
constexpr std::size_t kMostInterpreters = 5;

bool isRegular(const std::string& path) {
    struct stat state {};
    return ::stat(path.c_str(), &state) == 0 && S_ISREG(state.st_mode);
}

bool isExecutable(const std::string& path) {
    return isRegular(path) && ::access(path.c_str(), X_OK) == 0;
}

// The first file of that name that may be run; else the first of that name; else nothing.
std::string onSearchPath(const std::string& name) {
    const char* variable = std::getenv("PATH");
    std::istringstream directories(variable != nullptr ? variable : "/bin:/usr/bin");
    std::string closed;
    for (std::string directory; std::getline(directories, directory, ':');) {
        std::string path = (directory.empty() ? "." : directory) + "/" + name;
        if (isExecutable(path))
            return path;
        if (closed.empty() && isRegular(path))
            closed = path;
    }
    return closed;
}

std::string located(const std::string& name) {
    if (name.find('/') == std::string::npos)
        return name.empty() ? "" : onSearchPath(name);
    return ::access(name.c_str(), F_OK) == 0 ? name : "";
}

std::string firstLineOf(const std::string& path) {
    const trial::OwnedDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    std::string line(kLongestFirstLine, '\0');
    const ssize_t count = file.isOpen() ? ::pread(file.get(), line.data(), line.size(), 0) : 0;
    line.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return line.substr(0, line.find_first_of(std::string("\n\0", 2)));
}

// What env starts: the first of its words that is neither an option nor a variable.
std::string startedByEnv(std::istringstream& words) {
    for (std::string word; words >> word;)
        if (!word.starts_with('-') && word.find('=') == std::string::npos)
            return located(word);
    return {};
}

// The interpreter that the first line of a script names; a text without such a line is run by a shell.
std::string interpreterOf(const std::string& script) {
    const std::string line = firstLineOf(script);
    if (!line.starts_with("#!"))
        return "/bin/sh";
    std::istringstream words(line.substr(2));
    std::string interpreter;
    words >> interpreter;
    const bool isEnv = interpreter == "env" || interpreter.ends_with("/env");
    const std::string started = isEnv ? startedByEnv(words) : "";
    return started.empty() ? interpreter : started;
}

// Whether the kernel gives the program other rights than this process has.
bool hasRaisedRights(const std::string& path) {
    struct stat state {};
    if (::stat(path.c_str(), &state) != 0)
        return false;
    const bool setsUser = (state.st_mode & S_ISUID) != 0 && state.st_uid != ::geteuid();
    const bool setsGroup =
        (state.st_mode & S_ISGID) != 0 && (state.st_mode & S_IXGRP) != 0 && state.st_gid != ::getegid();
    const bool hasCapabilities = ::geteuid() != 0 && ::getxattr(path.c_str(), "security.capability", nullptr, 0) > 0;
    return setsUser || setsGroup || hasCapabilities;
}

bool isScript(const LibraryFile& file) {
    return file.state == LibraryFile::State::text || file.state == LibraryFile::State::linkerScript ||
           file.state == LibraryFile::State::other;
}

Obstacle obstacleOf(const LibraryFile& file, const std::string& path) {
    using FileState = LibraryFile::State;
    if (hasRaisedRights(path))
        return Obstacle::raisedRights;
    if (file.state == FileState::unreadable)
        return Obstacle::none;
    if (file.state != FileState::notShared && file.state != FileState::library)
        return Obstacle::notProgram;
    if (file.isForOtherSystem())
        return Obstacle::otherSystem;
    return file.loader.empty() ? Obstacle::linkedStatically : Obstacle::none;
}

Obstacle obstacleOfScript(const Program& program) {
    const std::string& last = program.interpreters.back();
    if (!isExecutable(last))
        return Obstacle::notProgram;
    return hasRaisedRights(last) ? Obstacle::raisedRights : Obstacle::none;
}

}  // namespace

Program findProgram(const std::string& name) {
    Program program;
    program.path = located(name);
    if (program.path.empty())
        program.obstacle = Obstacle::absent;
    else if (!isExecutable(program.path))
        program.obstacle = Obstacle::notExecutable;
    if (program.obstacle != Obstacle::none)
        return program;
    std::string running = program.path;
    program.file = readLibraryFile(running);
    while (isScript(program.file) && program.interpreters.size() < kMostInterpreters) {
        // What is neither a text nor a script is of a kind that nothing runs.
        if (program.file.state == LibraryFile::State::other && !firstLineOf(running).starts_with("#!"))
            break;
        running = interpreterOf(running);
        program.interpreters.push_back(running);
        program.file = readLibraryFile(running);
    }
    const bool isRunByOther = !program.interpreters.empty();
    program.obstacle = isRunByOther ? obstacleOfScript(program) : obstacleOf(program.file, running);
    return program;
}

}  // namespace jx::doctor
