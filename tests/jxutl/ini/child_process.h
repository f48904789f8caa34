// Parts of a test that run in a child process, also as a user without any rights.
#pragma once

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace jx::ini::test {

inline constexpr uid_t kNobody = 65534;

// Runs body in a child process; returns its wait status.
template <typename Body>
int statusOfChild(Body body) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        body();
        std::fflush(nullptr);
        ::_exit(::testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    if (child < 0 || ::waitpid(child, &status, 0) != child)
        return -1;
    return status;
}

template <typename Body>
bool passesInChild(Body body) {
    const int status = statusOfChild(body);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Runs body, which may contain expectations, as a user that owns nothing and is in no group; root would pass every
// check of rights. True when all expectations held.
template <typename Body>
bool passesAsNobody(Body body) {
    return passesInChild([&body] {
        const bool isRoot = ::geteuid() == 0;
        const bool dropped =
            !isRoot || (::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
        ASSERT_TRUE(dropped);
        ASSERT_NE(::geteuid(), 0U);
        body();
    });
}

}  // namespace jx::ini::test
