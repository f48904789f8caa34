// Filling a list box with the drivers of an installation script.
#include "admin/script_drivers.h"

#include <odbcinst.h>

#include "config/list_box.h"
#include "install/script.h"

namespace jx::admin {

int FillLB(unsigned int hwnd, short listId, install::_Install* install) {
    if (install == nullptr)
        return 1;
    KeyList keys = install::Script(install->infFile).wholeKeys(asBytes(INS_ODBCINI_DRIVERS));
    if (!keys.isThere() || keys.names().count() == 0)
        return 1;
    addRows(hwnd, static_cast<unsigned short>(listId), keys, install::quotedName);
    return 0;
}

}  // namespace jx::admin
