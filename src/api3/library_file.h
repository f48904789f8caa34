// Whether a file can be loaded as a library at all.
//
//     if (isDamagedLibrary("/usr/lib/odbc/libmyodbcS.so")) ...   // do not hand it to the loader
#pragma once

#include <string>

namespace jx::api3 {

// Whether the file is an ELF file that ends before one of its loaded segments does, as after a copy that ran out of
// space: the loader maps it all the same, and the program dies of the first page that is missing. False for every
// other file, also for one that cannot be read: that the loader judges itself.
bool isDamagedLibrary(const std::string& path);

}  // namespace jx::api3
