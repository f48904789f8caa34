// Installing the files of a run, component by component.
#pragma once

#include "install/install_record.h"

namespace jx::install {

// Installs the files of the selected components, a file that several components name only once. No file is copied: each
// is recorded in the configuration files with its path in targetDir. An entry without a file name, or with a path of
// more than 1023 bytes, is skipped. The exported work buffers point to memory while the files are processed. All
// entries are one change of each configuration file; anyFileInstalled is 0 when it failed. Always returns 1.
unsigned int InstallItems(unsigned int hwnd, _Install* install);

}  // namespace jx::install
