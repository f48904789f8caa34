// Finds and loads setup libraries.
#include "api3/setup_routines.h"

#include <sys/stat.h>

#include <string_view>

#include <jxfiles.h>
#include "api3/directories.h"
#include "api3/driver_registry.h"

namespace jx::api3 {

namespace {

constexpr std::string_view kOwnSetupLibrary = "libjxsetup.so";

bool isFile(const std::string& path) {
    struct stat state {};
    return stat(path.c_str(), &state) == 0 && S_ISREG(state.st_mode);
}

bool isPath(const std::string& name) {
    return name.find('/') != std::string::npos;
}

bool isOwn(const std::string& file) {
    const std::size_t slash = file.rfind('/');
    return file.substr(slash == std::string::npos ? 0 : slash + 1) == kOwnSetupLibrary;
}

// A file's name as a path, where it lies in a directory of drivers; else as it is, for the loader.
std::string inDriverDirectory(const std::string& name) {
    for (const char* directory : {driverDirectory(), systemDriverDirectory()}) {
        std::string path = std::string(directory) + "/" + name;
        if (isFile(path))
            return path;
    }
    return name;
}

// The file that "Setup" means.
std::string fileOf(ThreadState& state, const std::string& setup) {
    if (isPath(setup))
        return setup;
    const DriverFinding driver = findDriver(state, setup);
    const std::string& file = driver.driver.library.empty() ? setup : driver.driver.library;
    return isPath(file) ? file : inDriverDirectory(file);
}

}  // namespace

SetupRoutines::SetupRoutines(ThreadState& state, const std::string& setup) {
    if (setup.empty())
        return;
    const std::string file = fileOf(state, setup);
    if (!isOwn(file))
        load(file);
}

void SetupRoutines::load(const std::string& file) {
    if (isPath(file) && !file.starts_with('/'))
        whyNot_ = "The setup library " + file + " is named by a relative path.";
    else if (void* handle = bosLoadLibrary(reinterpret_cast<const unsigned char*>(file.c_str()), 0))
        library_.emplace(handle_ = handle);
    else
        whyNot_ =
            "The setup library was not loaded: " + std::string(reinterpret_cast<const char*>(bosLastLoadError())) + ".";
}

}  // namespace jx::api3
