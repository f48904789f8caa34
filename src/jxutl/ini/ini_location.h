// The path for a file name.
#pragma once

#include <cstdint>
#include <string>

namespace jx::ini {

// IniLocation: a path, and which mode a new file there gets. An empty path is a failure with errno set.
struct IniLocation {
    std::string path;
    bool shared = false;  // the place ODBCINSTINI names: 0666 less the umask instead of 0600
};

// The user's two files through ODBCINI, ODBCINSTINI, HOME and the account, read at each call; in a program with raised
// rights through the account only. Every other name is its own path.
IniLocation locate(const char* file);

// The name as its own path; no name is special.
IniLocation locateAsSpelled(const char* file);

// IniLocator: locate for frequent reads. It reads the environment at each call too, but keeps the path while HOME stays
// the same.
// Threads  one at a time.
class IniLocator {
public:
    struct Found {
        const std::string* path = nullptr;  // valid until the next call; null, with errno set, when there is none
        std::uint64_t number = 0;           // one that this locator gives to no other path, or 0
    };

    // The path that file stands for.
    Found find(const char* file);

private:
    struct Place {
        std::string home;
        std::string path;  // home and the file's name
        std::uint64_t number = 0;
    };

    Place places_[2];  // of the user's two files
    std::string other_;
    std::uint64_t numbersGiven_ = 0;
};

}  // namespace jx::ini
