// Speaks to list boxes in their messages.
#include "config/list_row.h"

#include <jxtext.h>

#include <cstddef>
#include <cstdint>
#include <new>

namespace jx {

short rowCount(HWND dialog, unsigned short listId) {
    return static_cast<short>(JXW_SendDlgItemMessage(dialog, listId, LB_GETCOUNT, 0, 0));
}

short selectedRow(HWND dialog, unsigned short listId) {
    return static_cast<short>(JXW_SendDlgItemMessage(dialog, listId, LB_GETCURSEL, 0, 0));
}

bool readRow(HWND dialog, unsigned short listId, int row, std::string& text) {
    // No list answers as an empty row does.
    const int length =
        JXW_GetDlgItem(dialog, listId) != 0 ? JXW_SendDlgItemMessage(dialog, listId, LB_GETTEXTLEN, row, 0) : LB_ERR;
    if (length < 0)
        return false;
    try {
        text.assign(static_cast<std::size_t>(length), '\0');
    } catch (const std::bad_alloc&) {
        return false;
    }
    // The message's own NUL lands on the one behind the string.
    return JXW_SendDlgItemMessage(dialog, listId, LB_GETTEXT, row, reinterpret_cast<std::uintptr_t>(text.data())) >= 0;
}

void addRow(HWND dialog, unsigned short listId, const unsigned char* text) {
    JXW_SendDlgItemMessage(dialog, listId, LB_ADDSTRING, 0, reinterpret_cast<std::uintptr_t>(text));
}

void addKeyRows(HWND dialog, unsigned short listId, unsigned char* list) {
    while (*list != 0) {
        unsigned char* next = list + BUTSTLEN(list) + 1;
        if (unsigned char* equals = strFind(list, static_cast<unsigned char>('=')); equals != nullptr)
            *equals = 0;
        addRow(dialog, listId, list);
        list = next;
    }
}

}  // namespace jx
