// Runs a check without the rights of root, who would be refused nothing.
#pragma once

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace jx::test {

// Runs check in a child process that is not root and returns its result (0 to 255); -1 when the child did not exit.
// check reports by its result only: expectations that fail inside are lost.
inline int asNobody(const std::function<int()>& check) {
    const pid_t child = fork();
    if (child == 0) {
        constexpr int kStillRoot = 99;
        constexpr unsigned int kNobody = 65534;
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0))
            _exit(kStillRoot);
        _exit(check());
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

}  // namespace jx::test
