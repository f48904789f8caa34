// An INI file that is opened under the name a caller spelled.
#pragma once

#include <jxprofile.h>

namespace jx {

// ProfileCache: owns the utility library's access to one file as named and releases it.
// Failure  get gives null when memory is short; reads and writes through null answer 0.
class ProfileCache {
public:
    explicit ProfileCache(const unsigned char* file) : cache_(jxPrivateProfileInit(file)) {}
    ~ProfileCache() { jxPrivateProfileTerm(cache_); }
    ProfileCache(const ProfileCache&) = delete;
    ProfileCache& operator=(const ProfileCache&) = delete;

    JxIniFileCache* get() const { return cache_; }

private:
    JxIniFileCache* cache_;
};

}  // namespace jx
