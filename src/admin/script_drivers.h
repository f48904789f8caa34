// The drivers of an installation script in list boxes.
#pragma once

#include "install/install_record.h"

namespace jx::admin {

// Adds the drivers that the record's script lists, by name and in its order; 0, or 1 when it lists none.
int FillLB(unsigned int hwnd, short listId, install::_Install* install);

}  // namespace jx::admin
