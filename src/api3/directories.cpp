// Says what CMake was told.
#include "api3/directories.h"

namespace jx::api3 {

const char* libraryDirectory() {
    return JX_LIBRARY_DIRECTORY;
}

const char* driverDirectory() {
    return JX_LIBRARY_DIRECTORY "/odbc";
}

const char* systemDriverDirectory() {
    return JX_SYSTEM_DRIVER_DIRECTORY;
}

}  // namespace jx::api3
