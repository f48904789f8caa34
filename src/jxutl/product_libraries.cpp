// Finds the libraries that lie beside this one.
#include "jxutl/product_libraries.h"

#include <dlfcn.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "ini/file_ops.h"

namespace jx {

namespace {

// Links to them, such as the one that developers link with, are found by what they lead to.
constexpr const char* kNames[] = {"libodbcinst.so.1", "libjxsetup.so"};

// OwnFile: the absolute path of the file that holds this code, found while it is loaded: the loader may know it by a
// relative path, which means another place once the program changes its directory. Empty when it cannot be found.
class OwnFile {
public:
    OwnFile() {
        Dl_info info{};
        if (dladdr(this, &info) == 0 || info.dli_fname == nullptr || realpath(info.dli_fname, path_) == nullptr)
            path_[0] = 0;
    }

    const char* path() const { return path_; }
    int directoryLength() const {
        const char* slash = std::strrchr(path_, '/');
        return slash != nullptr ? static_cast<int>(slash - path_) : 0;
    }

private:
    char path_[PATH_MAX] = {};
};

const OwnFile ownFile;

bool isSameFile(const char* path, const struct stat& file) {
    struct stat state {};
    return ini::files().lookAt(path, &state) == 0 && state.st_dev == file.st_dev && state.st_ino == file.st_ino;
}

}  // namespace

bool isProductLibrary(const struct stat& file) {
    if (ownFile.path()[0] == 0)
        return false;
    if (isSameFile(ownFile.path(), file))
        return true;
    for (const char* name : kNames) {
        char path[PATH_MAX + 32];
        std::snprintf(path, sizeof path, "%.*s/%s", ownFile.directoryLength(), ownFile.path(), name);
        if (isSameFile(path, file))
            return true;
    }
    return false;
}

}  // namespace jx
