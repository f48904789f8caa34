// One batch installation: the order of its steps and its outcome.
#pragma once

#include "install/install_record.h"

namespace jx::install {

// Installs what the script infFile describes: the work behind SQLInstallODBC, whose comment tells what it does. drivers
// is cut while it is read. 1 or 0.
int installOdbc(unsigned int parent, const unsigned char* infFile, const unsigned char* sourcePath,
                unsigned char* drivers);

// Tells the user how a run ended; nothing without a window, or when it succeeded without a file.
void reportOutcome(unsigned int parent, bool succeeded, bool anyFileInstalled);

}  // namespace jx::install
