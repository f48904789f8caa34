// Lists the drivers of an installation script and takes the user's choice over.
#include "admin/script_drivers.h"

#include <jxtext.h>
#include <odbcinst.h>

#include <string>

#include "config/list_box.h"
#include "config/text_bytes.h"
#include "install/profile_text.h"

namespace jx::admin {

namespace {

using install::_Install;

// Adds the name in a quoted key; the key is whole again afterwards.
void addQuotedRow(HWND dialog, unsigned short listId, unsigned char* key) {
    unsigned char* name = key + 1;
    unsigned char* quote = strFind(name, static_cast<unsigned char>('"'));
    if (quote != nullptr)
        *quote = 0;
    addRow(dialog, listId, name);
    if (quote != nullptr)
        *quote = '"';
}

}  // namespace

int FillLB(unsigned int hwnd, short listId, _Install* install) {
    install::ProfileText keys;
    if (install == nullptr || !keys.readWholeKeys(asBytes(INS_ODBCINI_DRIVERS), install->infFile))
        return 1;
    unsigned char* key = keys.text();
    if (*key == 0)
        return 1;
    for (unsigned char* next = nullptr; *key != 0; key = next) {
        next = install::textAfter(key);
        install::cutAtEquals(key);
        if (*key != 0)
            addQuotedRow(hwnd, static_cast<unsigned short>(listId), key);
    }
    return 0;
}

// Deliberate: the selection is asked for anew for every row, so the one selected driver is appended as often as the
// list has rows.
int SaveSelectedLBItems(unsigned int hwnd, short listId, _Install* install) {
    const auto list = static_cast<unsigned short>(listId);
    const short count = rowCount(hwnd, list);
    for (short pass = 0; pass < count; ++pass) {
        const short row = selectedRow(hwnd, list);
        std::string name;
        if (row == -1 || !readRow(hwnd, list, row, name))
            break;
        appendItem(install, name, install::DriverItem);
    }
    return 0;
}

}  // namespace jx::admin
