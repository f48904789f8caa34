// The paths a batch installation works with.
#pragma once

#include "install/install_record.h"

namespace jx::install {

// Takes the paths of a run into the record: the script, where its files come from (sourcePath, or the script's
// directory when that is null or empty), and where they are registered. Directories are made full paths. False when
// memory is short, or when the current directory is needed and unknown or too long for a registered path.
bool takePaths(_Install& install, const unsigned char* infFile, const unsigned char* sourcePath);

}  // namespace jx::install
