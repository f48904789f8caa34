// Deletes files, but not the libraries of this product.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <jxfiles.h>
#include "jxutl/ini/file_ops.h"

namespace {

// The libraries beside this one. A link to one of them is recognized by the file it leads to.
constexpr const char* kNames[] = {"libodbcinst.so.1", "libjxsetup.so"};

// OwnFile: the absolute path of this library, found when it is loaded: the loader may have a relative path, which is
// wrong once the program changes its directory. Empty when it cannot be found.
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
    return jx::ini::files().lookAt(path, &state) == 0 && state.st_dev == file.st_dev && state.st_ino == file.st_ino;
}

// Whether a file is, by device and inode, this library or one of the product's libraries beside it; links and other
// spellings of a path make no difference. A library that cannot be looked at counts as absent.
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

int refuse(int reason) {
    errno = reason;
    return -1;
}

}  // namespace

int bosFileDelete(const unsigned char* path) {
    if (path == nullptr || *path == 0)
        return refuse(EINVAL);
    const char* name = reinterpret_cast<const char*>(path);
    jx::ini::FileOps& files = jx::ini::files();
    struct stat state {};
    if (files.lookAtName(AT_FDCWD, name, &state) != 0)
        return -1;
    if (S_ISLNK(state.st_mode) && files.lookAt(name, &state) != 0)
        return -1;
    if (!S_ISREG(state.st_mode))
        return refuse(S_ISDIR(state.st_mode) ? EISDIR : EINVAL);
    if (isProductLibrary(state))
        return refuse(EPERM);
    return files.removeFile(AT_FDCWD, name) == 0 ? 0 : -1;
}
