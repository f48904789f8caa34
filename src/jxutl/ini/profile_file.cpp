// Makes and releases the object for one named file.
#include "jxutl/ini/profile_file.h"

#include <cerrno>
#include <new>

#include "jxutl/thread/failure.h"

JxIniFileCache* jxPrivateProfileInit(const unsigned char* file) {
    if (file == nullptr)
        return nullptr;
    const char* name = reinterpret_cast<const char*>(file);
    try {
        return new JxIniFileCache{name};
    } catch (const std::bad_alloc&) {
        jx::ini::noteFailure(JxIniStepMemory, name, ENOMEM);
        return nullptr;
    }
}

void jxPrivateProfileTerm(JxIniFileCache* cache) {
    delete cache;
}
