// The drivers of an installation script in list boxes.
#pragma once

#include "install/install_record.h"

namespace jx::admin {

// Adds the drivers that the record's script lists, by name and in its order; 0, or 1 when it lists none.
int FillLB(unsigned int hwnd, short listId, install::_Install* install);

// Appends the selected driver to the record, once for every row of the list; 0.
int SaveSelectedLBItems(unsigned int hwnd, short listId, install::_Install* install);

// Shows the selected driver of list listId in the texts of the Versions dialog hwnd, whose own record it uses, whatever
// install is; 0. A driver without a line of its own leaves them as they are, a malformed line is reported.
int DisplayDriverVersion(unsigned int hwnd, install::_Install* install, unsigned long listId);

}  // namespace jx::admin
