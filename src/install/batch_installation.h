// One batch installation: the order of its steps and its outcome.
#pragma once

#include "install/install_record.h"

namespace jx::install {

// Installs what the script infFile describes: the work behind SQLInstallODBC, whose comment in odbcinst.h says what it
// does. The list drivers is written into while it is read. Returns 1 or 0.
int installOdbc(unsigned int parent, const unsigned char* infFile, const unsigned char* sourcePath,
                unsigned char* drivers);

// Shows the user how a run ended. Shows nothing without a window, or when a run succeeded but installed no file.
void reportOutcome(unsigned int parent, bool succeeded, bool anyFileInstalled);

}  // namespace jx::install
