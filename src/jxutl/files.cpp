// Deleting files.
#include <sys/stat.h>

#include <cerrno>

#include <jxfiles.h>
#include "ini/file_ops.h"
#include "jxutl/product_libraries.h"

namespace {

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
    if (files.lookAtLink(name, &state) != 0)
        return -1;
    if (S_ISLNK(state.st_mode) && files.lookAt(name, &state) != 0)
        return -1;
    if (!S_ISREG(state.st_mode))
        return refuse(S_ISDIR(state.st_mode) ? EISDIR : EINVAL);
    if (jx::isProductLibrary(state))
        return refuse(EPERM);
    return files.removeFile(name) == 0 ? 0 : -1;
}
