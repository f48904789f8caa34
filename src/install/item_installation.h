// Walking the components of a run and their files.
#pragma once

#include "install/install_record.h"

namespace jx::install {

// Processes the files of the selected components: each file name once, whatever component names it. No file is copied;
// what a run leaves is in the configuration files, where every file is recorded under targetDir. An entry without a
// file name, or with paths of more than 1023 bytes, is passed over. The exported work buffers hold memory while the
// files are processed. Always 1.
unsigned int InstallItems(unsigned int hwnd, _Install* install);

}  // namespace jx::install
