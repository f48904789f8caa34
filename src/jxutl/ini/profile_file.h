// The object that jxPrivateProfileInit makes.
#pragma once

#include <string>

#include <jxprofile.h>

// JxIniFileCache: the name of one file, as the program spelled it. It caches nothing: reads use the thread's
// ProfileCache.
struct JxIniFileCache {
    std::string file;
};
