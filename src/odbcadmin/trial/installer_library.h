// This product's installer library, loaded so that nobody else in the process sees its functions.
//
//     const auto manage = installerFunction<decltype(&SQLManageDataSources)>("SQLManageDataSources");
//
// The programs are not linked with it: a setup library that was built for another installer library has references of
// the same names, which must reach that one. One that names libodbcinst.so.1 still gets this one.
#pragma once

#include <string>

namespace jx::trial {

// What the library calls the module of its texts and dialogs.
inline constexpr const char* kInstallerModule = "odbcinst";

// A function of libodbcinst.so.1, which is loaded by the first call and stays. Null when the library cannot be loaded:
// installerTrouble says why. Call it from one thread.
void* findInstallerFunction(const char* name);

template <class Function>
Function installerFunction(const char* name) {
    return reinterpret_cast<Function>(findInstallerFunction(name));
}

// The loader's sentence; empty when nothing failed.
const std::string& installerTrouble();

// Where the library lies; empty when it cannot be loaded.
std::string installerPath();

// libjxsetup.so beside it, the setup library that works for any driver, by its full path; empty when it is not there.
std::string generalSetupLibrary();

// The installer library that today's drivers ask for, by its name, and the path of the one that this product has beside
// its own; empty when it has none.
inline constexpr const char* kDriversInstaller = "libodbcinst.so.2";
std::string driversInstallerPath();

}  // namespace jx::trial
