// Filling a list box with the drivers of an installation script.
#pragma once

#include "install/install_record.h"

namespace jx::admin {

// Adds the names of the drivers that the record's script lists, in its order. Returns 0, or 1 when it lists none.
int FillLB(unsigned int hwnd, short listId, install::_Install* install);

}  // namespace jx::admin
