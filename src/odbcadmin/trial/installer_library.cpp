// Loading libodbcinst.so.1.
#include "odbcadmin/trial/installer_library.h"

#include <dlfcn.h>

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

std::string secondInstallerPath() {
    const std::filesystem::path directory = std::filesystem::path(installerPath()).parent_path();
    for (const char* folder : {"jxodbc", ""}) {
        const std::filesystem::path path = directory / folder / kSecondInstaller;
        std::error_code ignored;
        if (!directory.empty() && std::filesystem::exists(path, ignored))
            return path.string();
    }
    return {};
}

}  // namespace jx::trial
