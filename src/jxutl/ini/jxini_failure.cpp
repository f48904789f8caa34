// The part of jxini.h that tells where a file is and what failed.
#include <new>

#include <jxini.h>
#include "jxutl/ini/copy_out.h"
#include "jxutl/ini/ini_location.h"
#include "jxutl/thread/failure.h"

namespace ini = jx::ini;

JxIniFailure jxIniLastFailure(void) {
    const ini::Failure& last = ini::lastFailure();
    return {last.step, last.error, last.afterRename ? 1 : 0, last.path.c_str()};
}

size_t jxIniFailureText(char* buffer, size_t size) {
    try {
        return ini::copyOut(ini::describe(ini::lastFailure()), buffer, size);
    } catch (const std::bad_alloc&) {
        return ini::copyOut("Cannot find memory for the description of a failure", buffer, size);
    }
}

size_t jxIniPath(const char* file, char* buffer, size_t size) {
    try {
        return ini::copyOut(file == nullptr ? std::string() : ini::locate(file).path, buffer, size);
    } catch (const std::bad_alloc&) {
        return ini::copyOut({}, buffer, size);
    }
}
