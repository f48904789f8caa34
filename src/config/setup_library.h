// A driver's or translator's setup library while it is loaded.
#pragma once

#include <dlfcn.h>

#include <exception>

namespace jx {

// SetupLibrary: unloads a setup library at the end of its scope.
// Exceptions  when an exception leaves the scope the library stays loaded: the exception's own code may be in it.
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

// A setup library's entry point, under its upper-case name if it exports that, else under the other; null if it exports
// neither.
template <class Routine>
Routine findRoutine(void* library, const char* upperCaseName, const char* mixedCaseName) {
    void* address = dlsym(library, upperCaseName);
    if (address == nullptr)
        address = dlsym(library, mixedCaseName);
    return reinterpret_cast<Routine>(address);
}

}  // namespace jx
