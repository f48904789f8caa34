// The common setup routine: what it does for a driver that brings none of its own.
//
//     const SetupUser nobody;
//     return configureDataSource(usersFiles(), nobody, {1, "SQLite3", "DSN=Sales\0Database=/tmp/sales.db\0"});
#pragma once

#include <cstdint>

#include "setup/setup_files.h"

namespace jx::setup {

// The requests, as both installer interfaces number them.
inline constexpr unsigned short kAdd = 1;
inline constexpr unsigned short kChange = 2;
inline constexpr unsigned short kRemove = 3;

// SetupUser: whether there may be someone to ask, and the window that the dialog belongs to, 0 for none of the dialog
// layer's.
struct SetupUser {
    bool mayBeAsked = false;
    std::uint32_t window = 0;
};

struct SetupRequest {
    unsigned short request;
    const char* driver;
    const char* attributes;  // keyword=value texts, ended by an empty one; null is an empty list
};

enum class SetupOutcome : std::uint8_t {
    done,
    failed,  // nothing was stored: a list or a value that cannot be stored as it was given, or a file that was not
             // written
    givenUp  // nor was it here: the user did not want it
};

// Adds, changes or removes the data source that the attributes name. Where a user may be asked and the thread has a
// screen, he adds and changes in a dialog, which begins with the attributes given. std::bad_alloc may be thrown; what a
// screen throws passes through.
SetupOutcome configureDataSource(const SetupFiles& files, const SetupUser& user, const SetupRequest& request);

}  // namespace jx::setup
