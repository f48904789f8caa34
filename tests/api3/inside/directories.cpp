// Where drivers lie as the tests say: below the folder JX_TEST_LIBRARIES.
#include "api3/directories.h"

#include <cstdlib>
#include <string>

namespace jx::api3 {

namespace {

// Kept, since callers hold on to the pointer.
const char* below(std::string& path, const char* name) {
    const char* folder = std::getenv("JX_TEST_LIBRARIES");
    path.assign(folder == nullptr ? "/nowhere" : folder).append(name);
    return path.c_str();
}

// Long enough that a test in which memory is short takes none here.
std::string room() {
    std::string path;
    path.reserve(1024);
    return path;
}

}  // namespace

const char* libraryDirectory() {
    static std::string path = room();
    return below(path, "");
}

const char* driverDirectory() {
    static std::string path = room();
    return below(path, "/odbc");
}

const char* systemDriverDirectory() {
    static std::string path = room();
    return below(path, "/multiarch");
}

}  // namespace jx::api3
