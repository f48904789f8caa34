// A driver's or translator's setup library while it is loaded.
#pragma once

#include <dlfcn.h>

#include <exception>

namespace jx {

// SetupLibrary: owns one load of a setup library and unloads it when its scope is left.
// Exceptions  a scope left by an exception that began inside it keeps the library loaded: the exception's own code
//             lies in there and is still needed by whoever catches it.
class SetupLibrary {
public:
    explicit SetupLibrary(void* handle) : handle_(handle), exceptionsBefore_(std::uncaught_exceptions()) {}
    ~SetupLibrary() {
        if (std::uncaught_exceptions() == exceptionsBefore_)
            dlclose(handle_);
    }
    SetupLibrary(const SetupLibrary&) = delete;
    SetupLibrary& operator=(const SetupLibrary&) = delete;

private:
    void* handle_;
    int exceptionsBefore_;
};

// Finds a setup library's entry point under its upper-case name or, only when that is not exported, under the other;
// null when it has neither.
template <class Routine>
Routine findRoutine(void* library, const char* upperCaseName, const char* mixedCaseName) {
    void* address = dlsym(library, upperCaseName);
    if (address == nullptr)
        address = dlsym(library, mixedCaseName);
    return reinterpret_cast<Routine>(address);
}

}  // namespace jx
