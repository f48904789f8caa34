// Loading the built setup library; the build says where it is.
#include "setup_library.h"

namespace jx::test {

std::string installedDriver() {
    return std::string(
               "[ODBC Drivers]\nSample Driver=Installed\n\n[Sample Driver]\nDriver=/opt/sample/libsample.so\n") +
           "Setup=" + JX_SETUP_LIBRARY + "\n";
}

SetupLibrary::SetupLibrary() : library_(dlopen(JX_SETUP_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {
    home.put(".odbcinst.ini", installedDriver());
}

SetupLibrary::~SetupLibrary() {
    if (library_ != nullptr)
        dlclose(library_);
}

BOOL SetupLibrary::configure(WORD request, const std::string& attributes, const char* driver, HWND window) const {
    return routine<BOOL(HWND, WORD, LPCSTR, LPCSTR)>("ConfigDSN")(window, request, driver, attributes.c_str());
}

}  // namespace jx::test
