// The paths a batch installation works with.
#pragma once

#include "install/install_record.h"

namespace jx::install {

// Stores the paths of a run in the record: the script, the directory its files come from (sourcePath, or the script's
// directory when that is null or empty), and the directory they are registered in. Relative directories are made
// absolute. False when memory is short, or when the current directory is needed and cannot be found out or is too long.
bool takePaths(_Install& install, const unsigned char* infFile, const unsigned char* sourcePath);

}  // namespace jx::install
