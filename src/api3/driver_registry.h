// The drivers that are registered, as programs see them: the user's file and the system's.
//
//     const std::optional<RegisteredDriver> driver = needDriver(state, lpszDriver, ODBC_ERROR_COMPONENT_NOT_FOUND);
//     if (!driver) return false;   // with its record
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <jxodbc3/odbcinst.h>

namespace jx::api3 {

struct ThreadState;

// RegisteredDriver: what its section says; empty texts for what it does not say.
struct RegisteredDriver {
    std::string name;  // as it was asked for
    std::string library;
    std::string setup;
};

enum class Registration : std::uint8_t {
    found,
    absent,
    notRead  // a file cannot be read; a record says why
};

struct DriverFinding {
    Registration outcome = Registration::absent;
    RegisteredDriver driver{};
};

// A driver is a key of the list, or a section with a library, in any case; no section that is reserved, and not the
// default data source's. std::bad_alloc may be thrown by all of these.
DriverFinding findDriver(ThreadState& state, const std::string& name);

// The same, with a record when there is no such driver: ODBC_ERROR_INVALID_NAME for a null or empty name, else code.
std::optional<RegisteredDriver> needDriver(ThreadState& state, const char* name, DWORD code);

// The names of all drivers, each with its NUL: the listed ones, then those that have a section only; the user's before
// the system's. Nothing, with a record, when a file cannot be read.
std::optional<std::string> driverNames(ThreadState& state);

// What "Driver" of a data source of that driver says: the path that is registered, else the driver's name, which every
// reader understands too.
std::string driverValue(const RegisteredDriver& driver);

}  // namespace jx::api3
