// An INI file opened under the name a caller gave.
#pragma once

#include <jxprofile.h>

namespace jx {

// NamedProfile: opens a file of the utility library by its name as spelled, and closes it at the end of its scope.
// Failure  get returns null when memory is short; reads and writes through null return 0.
class NamedProfile {
public:
    explicit NamedProfile(const unsigned char* file) : cache_(jxPrivateProfileInit(file)) {}
    ~NamedProfile() { jxPrivateProfileTerm(cache_); }
    NamedProfile(const NamedProfile&) = delete;
    NamedProfile& operator=(const NamedProfile&) = delete;

    JxIniFileCache* get() const { return cache_; }

private:
    JxIniFileCache* cache_;
};

}  // namespace jx
