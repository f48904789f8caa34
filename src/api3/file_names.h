// What a file name that a program passes stands for.
//
//     switch (fileKindOf(lpszFilename)) ...
#pragma once

#include <cstdint>

namespace jx::api3 {

enum class FileKind : std::uint8_t {
    dataSources,  // odbc.ini: the user's and the system's
    drivers,      // odbcinst.ini: likewise
    path,         // an absolute path
    none          // a relative one would be a file of whatever directory the program happens to be in
};

// With or without a dot before it and in any case, the two names mean the configuration; null and empty mean none.
FileKind fileKindOf(const char* name);

}  // namespace jx::api3
