// Loading libodbcinst.so.1.
#include "odbcadmin/trial/installer_library.h"

#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>

#include <filesystem>

namespace jx::trial {

namespace {

struct Installer {
    void* library = ::dlopen("libodbcinst.so.1", RTLD_NOW | RTLD_LOCAL);
    std::string trouble = library != nullptr ? "" : ::dlerror();
};

const Installer& installer() {
    static const Installer loaded;
    return loaded;
}

}  // namespace

void* findInstallerFunction(const char* name) {
    return installer().library != nullptr ? ::dlsym(installer().library, name) : nullptr;
}

const std::string& installerTrouble() {
    return installer().trouble;
}

std::string installerPath() {
    void* function = findInstallerFunction("SQLConfigDataSource");
    Dl_info place{};
    return function != nullptr && ::dladdr(function, &place) != 0 ? place.dli_fname : "";
}

std::string generalSetupLibrary() {
    const std::string installer = installerPath();
    if (installer.empty())
        return {};
    std::array<char, PATH_MAX> resolved{};
    std::string path = ::realpath(installer.c_str(), resolved.data()) != nullptr ? resolved.data() : installer;
    path.replace(path.rfind('/') + 1, std::string::npos, "libjxsetup.so");
    return ::access(path.c_str(), R_OK) == 0 ? path : "";
}

std::string driversInstallerPath() {
    const std::filesystem::path own(installerPath());
    const std::filesystem::path path = own.parent_path() / "jxodbc" / kDriversInstaller;
    std::error_code ignored;
    return !own.empty() && std::filesystem::exists(path, ignored) ? path.string() : "";
}

}  // namespace jx::trial
