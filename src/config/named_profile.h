// An INI file that is opened under the name a caller spelled.
#pragma once

#include <jxprofile.h>

namespace jx {

// NamedProfile: owns the utility library's access to one file as named and releases it.
// Failure  get gives null when memory is short; reads and writes through null answer 0.
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
