// Which path a file name stands for.
#pragma once

#include <cstdint>
#include <string>

namespace jx::ini {

// IniLocation: a path, and the mode a new file there gets. A path is empty when there is none (errno tells why).
struct IniLocation {
    std::string path;
    bool shared = false;  // the place ODBCINSTINI names: 0666 less the umask instead of 0600
};

// Finds the user's files through ODBCINI, ODBCINSTINI, HOME and the account, read at each call; in a program with
// raised rights only the account counts. Every other name is its own path.
IniLocation locate(const char* file);

// A file name as a program spelled it, never special.
IniLocation locateAsSpelled(const char* file);

// IniLocator: locate for the path of frequent reads, which mostly finds what it found before. It asks at each call like
// locate and only spares itself putting the path together again.
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
