// The directories that this build of the library was configured with.
//
//     installed.path = pathIn == nullptr ? driverDirectory() : pathIn;
#pragma once

#include <array>

namespace jx::api3 {

// Where the driver manager's libraries belong.
const char* libraryDirectory();

// Where drivers are registered that name no directory, and where they are looked for first.
const char* driverDirectory();

// Where the system's own packages put drivers.
const char* systemDriverDirectory();

}  // namespace jx::api3
