// A driver's setup library: where it is, and what it offers.
//
//     const SetupRoutines routines(state, driver.setup);
//     if (auto* configDsn = routines.find<ConfigDsn>("ConfigDSN")) ...
#pragma once

#include <dlfcn.h>

#include <optional>
#include <string>

#include <jxodbc3/odbcinst.h>
#include "config/setup_library.h"

namespace jx::api3 {

struct ThreadState;

// The routines that a setup library may export.
using ConfigDsn = BOOL(HWND, WORD, LPCSTR, LPCSTR);
using ConfigDsnW = BOOL(HWND, WORD, const SQLWCHAR*, const SQLWCHAR*);
using ConfigDriver = BOOL(HWND, WORD, LPCSTR, LPCSTR, LPSTR, WORD, WORD*);
using ConfigDriverW = BOOL(HWND, WORD, const SQLWCHAR*, const SQLWCHAR*, SQLWCHAR*, WORD, WORD*);

// SetupRoutines: keeps loaded what the "Setup" of a driver's section names, for as long as it lives.
// Where    a text with a slash is an absolute path; else a registered driver's name, which stands for its library; else
// a
//          file in the directories of drivers; else what the loader finds. A relative path with a slash is not loaded:
//          it would be a file of whatever directory the program happens to be in. Nor is a damaged file.
// Own      libjxsetup.so is not loaded: its routine is this library's own, and works in both scopes here.
// Exceptions  what a routine throws lies in the library, which then stays loaded.
// Calls    of the library while it is loaded and unloaded are its own: make a RoutineScope first.
class SetupRoutines {
public:
    SetupRoutines(ThreadState& state, const std::string& setup);

    bool isLoaded() const { return library_.has_value(); }

    // Why it is not, as a sentence; empty when there is none to load.
    const std::string& whyNot() const { return whyNot_; }

    template <class Routine>
    Routine* find(const char* name) const {
        return library_ ? reinterpret_cast<Routine*>(dlsym(handle_, name)) : nullptr;
    }

private:
    void load(const std::string& file);

    std::string whyNot_;
    void* handle_ = nullptr;
    std::optional<SetupLibrary> library_;
};

}  // namespace jx::api3
