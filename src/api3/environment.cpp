// Goes over the environment once.
#include "api3/environment.h"

#include <sys/auxv.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>

namespace jx::api3 {

namespace {

// The text after name and = when that is what variable is, else null.
const char* valueOf(const char* variable, const char* name) {
    for (; *name != '\0'; ++name, ++variable)
        if (*variable != *name)
            return nullptr;
    return *variable == '=' ? variable + 1 : nullptr;
}

// Of several variables of one name the first counts.
bool take(const char*& value, const char* variable, const char* name) {
    const char* found = valueOf(variable, name);
    if (found != nullptr && value == nullptr)
        value = found;
    return found != nullptr;
}

void takeOdbc(Environment& found, const char* variable) {
    if (!take(found.dataSources, variable, "ODBCINI") && !take(found.systemDirectory, variable, "ODBCSYSINI"))
        take(found.drivers, variable, "ODBCINSTINI");
}

// Once the C library has told this program a variable, it is one whose environment counts.
std::atomic<bool> isTrusted = false;

bool isTrustedNow(const char* name) {
    if (!isTrusted.load(std::memory_order_relaxed)) {
        if (secure_getenv(name) == nullptr)
            return false;
        isTrusted.store(true, std::memory_order_relaxed);
    }
    return true;
}

// A variable that is there, for the C library to judge; null when there is none.
const char* anyName(const Environment& found) {
    if (found.home != nullptr)
        return "HOME";
    if (found.dataSources != nullptr)
        return "ODBCINI";
    if (found.systemDirectory != nullptr)
        return "ODBCSYSINI";
    if (found.drivers != nullptr)
        return "ODBCINSTINI";
    return found.log != nullptr ? "JXODBC_LOG" : nullptr;
}

}  // namespace

// One pass takes a third of what five calls of secure_getenv do; an unchanged file is read in less than that. It goes
// over the C library's environment: a program may have an environ of its own that setenv does not know.
Environment readEnvironment() {
    Environment found;
    if (__environ == nullptr)
        return found;
    for (char** at = __environ; const char* variable = *at; ++at) {
        if (*variable == 'H')
            take(found.home, variable, "HOME");
        else if (*variable == 'O')
            takeOdbc(found, variable);
        else if (*variable == 'J')
            take(found.log, variable, "JXODBC_LOG");
    }
    const char* name = anyName(found);
    return name == nullptr || isTrustedNow(name) ? found : Environment{};
}

const char* readVariable(const char* name) {
    return secure_getenv(name);
}

bool hasRaisedRights() {
    return getauxval(AT_SECURE) != 0;
}

}  // namespace jx::api3
