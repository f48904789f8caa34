// Starting the editor, and waiting for it.
#include "odbcadmin/cli/editor.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "odbcadmin/cli/end_signals.h"

namespace jx::cli {

namespace {

using model::Reason;

std::string chosenEditor() {
    for (const char* variable : {"VISUAL", "EDITOR"})
        if (const char* value = std::getenv(variable); value != nullptr && *value != '\0')
            return value;
    return {};
}

bool isTyped(int number) {
    return number == SIGINT || number == SIGQUIT;
}

// The editor has the signals as any program.
int start(const std::string& script, const std::string& path, pid_t& child) {
    sigset_t ends;
    sigemptyset(&ends);
    for (const int number : EndSignals::kNumbers)
        sigaddset(&ends, number);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigdefault(&attributes, &ends);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    std::string texts[] = {"sh", "-c", script, "editor", path};
    char* const arguments[] = {texts[0].data(), texts[1].data(), texts[2].data(),
                               texts[3].data(), texts[4].data(), nullptr};
    const int error = ::posix_spawn(&child, "/bin/sh", nullptr, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    return error;
}

int waitFor(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR)
        if (const int number = EndSignals::arrived(); number != 0 && !isTyped(number))
            ::kill(child, number);
    if (isTyped(EndSignals::arrived()))
        EndSignals::forget();
    return status;
}

}  // namespace

Reason runEditor(const std::string& path) {
    std::string editor = chosenEditor();
    if (editor.empty() && ::isatty(STDIN_FILENO) != 1)
        return {Reason::Kind::incomplete, "There is no terminal for an editor",
                "Name in EDITOR a command that changes the file it is given."};
    if (editor.empty())
        editor = "$(command -v editor || echo vi)";
    pid_t child = 0;
    if (const int error = start(editor + " \"$@\"", path, child))
        return {Reason::Kind::failed, std::string("Cannot start an editor: ") + std::strerror(error), ""};
    const int status = waitFor(child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return {};
    return {Reason::Kind::failed,
            "The editor ended with " + (WIFEXITED(status) ? "exit code " + std::to_string(WEXITSTATUS(status))
                                                          : "signal " + std::to_string(WTERMSIG(status))),
            "Nothing was changed. VISUAL and EDITOR name the editor."};
}

}  // namespace jx::cli
