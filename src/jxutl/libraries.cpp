// Loading shared libraries, and why the last load failed.
#include <dlfcn.h>

#include <cstring>
#include <new>

#include <jxfiles.h>
#include "jxutl/library_file.h"
#include "jxutl/thread/thread_data.h"

namespace {

// Without memory for the sentence the load has failed all the same.
void keepLoadError(const char* sentence, const char* more = "") {
    jx::ThreadData* data = jx::threadData();
    if (data == nullptr || sentence == nullptr)
        return;
    try {
        data->loadError = sentence;
        data->loadError += more;
    } catch (const std::bad_alloc&) {
        data->loadError.clear();
    }
}

void forgetLoadError() {
    if (jx::ThreadData* data = jx::existingThreadData())
        data->loadError.clear();
}

}  // namespace

void* bosLoadLibrary(const unsigned char* path, unsigned int /*flags*/) {
    if (path == nullptr || *path == 0) {
        keepLoadError("no library is named");
        return nullptr;
    }
    const char* name = reinterpret_cast<const char*>(path);
    if (std::strchr(name, '/') != nullptr && jx::endsBeforeItsSegments(name)) {
        keepLoadError(name, ": file too short");
        return nullptr;
    }
    void* library = dlopen(name, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        keepLoadError(dlerror());
    else
        forgetLoadError();
    return library;
}

const unsigned char* bosLastLoadError() {
    const jx::ThreadData* data = jx::existingThreadData();
    return reinterpret_cast<const unsigned char*>(data != nullptr ? data->loadError.c_str() : "");
}
