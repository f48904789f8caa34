// What jxPrivateProfileInit hands out.
#pragma once

#include <string>

#include <jxprofile.h>

// JxIniFileCache: the name of one file as the program spelled it. The text is kept where every read of the thread keeps
// it; a read or write through this object is one of the file of that name.
struct JxIniFileCache {
    std::string file;
};
