// The list boxes of dialogs, and the members of OdbcIns that fill them and read their selection.
#include "config/list_box.h"

#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>

#include <control_ids.h>
#include "config/configuration_file.h"
#include "config/text_bytes.h"
#include "config/translators.h"

namespace jx {

short rowCount(HWND dialog, unsigned short listId) {
    return static_cast<short>(JXW_SendDlgItemMessage(dialog, listId, LB_GETCOUNT, 0, 0));
}

short selectedRow(HWND dialog, unsigned short listId) {
    return static_cast<short>(JXW_SendDlgItemMessage(dialog, listId, LB_GETCURSEL, 0, 0));
}

bool selectFirstRow(HWND dialog, unsigned short listId) {
    if (rowCount(dialog, listId) < 1)
        return false;
    JXW_SendDlgItemMessage(dialog, listId, LB_SETCURSEL, 0, 0);
    return true;
}

bool readRow(HWND dialog, unsigned short listId, int row, std::string& text) {
    // A list box that does not exist answers like an empty row.
    const int length =
        JXW_GetDlgItem(dialog, listId) != 0 ? JXW_SendDlgItemMessage(dialog, listId, LB_GETTEXTLEN, row, 0) : LB_ERR;
    if (length < 0)
        return false;
    try {
        text.assign(static_cast<std::size_t>(length), '\0');
    } catch (const std::bad_alloc&) {
        return false;
    }
    // The NUL that the message writes falls on the string's own.
    return JXW_SendDlgItemMessage(dialog, listId, LB_GETTEXT, row, reinterpret_cast<std::uintptr_t>(text.data())) >= 0;
}

void addRow(HWND dialog, unsigned short listId, const unsigned char* text) {
    JXW_SendDlgItemMessage(dialog, listId, LB_ADDSTRING, 0, reinterpret_cast<std::uintptr_t>(text));
}

void addRows(HWND dialog, unsigned short listId, KeyList& keys, unsigned char* (*nameIn)(unsigned char* key)) {
    for (unsigned char* key = keys.next(); key != nullptr; key = keys.next())
        addRow(dialog, listId, nameIn != nullptr ? nameIn(key) : key);
}

}  // namespace jx

using jx::asBytes;

namespace {

// Deliberate: filling the list of data sources enables or greys these two buttons, whatever dialog the list is in.
void enableDataSourceButtons(HWND dialog, bool enable) {
    for (const JxControlId button : {JxSetupButton, JxDeleteButton})
        JXW_EnableWindow(JXW_GetDlgItem(dialog, button), enable ? 1 : 0);
}

// Adds the keys of a section of the driver file; before those of the translators, the row for no translator.
void fillWithSection(HWND dialog, unsigned short listId, const unsigned char* section) {
    // With a null section the read would give the names of all sections.
    if (section == nullptr)
        return;
    jx::KeyList keys(section, "", jx::driverFile().name(), jx::LastKey::whole);
    jx::addRows(dialog, listId, keys);
    if (BUTSTCMP(section, asBytes(INS_ODBCINST_TRANSLATORS)) == 0)
        JXW_SendDlgItemMessage(dialog, listId, LB_INSERTSTRING, 0, reinterpret_cast<uintptr_t>(jx::kNoTranslator));
}

// The position of the "(" that matches the last ")" of a display text; npos without one.
std::size_t findDriver(std::string_view display) {
    int depth = 0;
    for (std::size_t at = display.size(); at-- > 0;) {
        if (display[at] == ')')
            ++depth;
        else if (display[at] == '(' && --depth == 0)
            return at;
    }
    return std::string_view::npos;
}

// Copies text into a field that is all zero; false when it does not fit.
template <std::size_t kSize>
bool store(std::string_view text, char (&field)[kSize]) {
    if (text.size() >= kSize)
        return false;
    text.copy(field, text.size());
    return true;
}

// Splits "name (driver)"; false when the text is not of that form or a part does not fit.
bool storeDataSource(std::string_view display, OdbcIns& ins) {
    const std::size_t open = findDriver(display);
    if (open == std::string_view::npos)
        return false;
    std::string_view name = display.substr(0, open);
    // A name of nothing but blanks keeps one of them.
    while (name.size() > 1 && name.back() == ' ')
        name.remove_suffix(1);
    const std::string_view rest = display.substr(open + 1);
    return store(name, ins.dataSourceName) && store(rest.substr(0, rest.rfind(')')), ins.driverName);
}

void clearNames(OdbcIns& ins) {
    std::memset(ins.dataSourceName, 0, sizeof ins.dataSourceName);
    std::memset(ins.driverName, 0, sizeof ins.driverName);
}

bool storeRow(const std::string& row, unsigned long mode, OdbcIns& ins) {
    if (mode == jx::kDriverRows)
        return store(row, ins.driverName);
    return mode == jx::kDataSourceRows && storeDataSource(row, ins);
}

}  // namespace

int OdbcIns::PopulateLB(unsigned int hwnd, short listId, unsigned long mode, const unsigned char* section) {
    const auto list = static_cast<unsigned short>(listId);
    JXW_SendDlgItemMessage(hwnd, list, LB_RESETCONTENT, 0, 0);
    if (mode != jx::kDataSourceRows) {
        FillLB(hwnd, listId, mode, section);
        return 0;
    }
    ResetData(ResetAll);
    GetDataSourceNames();
    GetDriverNames();
    ConcatenateNames();
    FillLB(hwnd, listId, mode, nullptr);
    enableDataSourceButtons(hwnd, jx::selectFirstRow(hwnd, list));
    return 0;
}

int OdbcIns::FillLB(unsigned int hwnd, short listId, unsigned long mode, const unsigned char* section) {
    const auto list = static_cast<unsigned short>(listId);
    if (mode == jx::kSectionKeyRows)
        fillWithSection(hwnd, list, section);
    if (mode != jx::kDataSourceRows)
        return 0;
    for (std::uint32_t row = 0; row < entryCount; ++row)
        jx::addRow(hwnd, list, entries[row].display);
    return 0;
}

unsigned int OdbcIns::SaveSelectedLBItem(unsigned int hwnd, short listId, unsigned long mode) {
    const auto list = static_cast<unsigned short>(listId);
    clearNames(*this);
    selectedIndex = jx::selectedRow(hwnd, list);
    std::string row;
    if (selectedIndex == -1 || !jx::readRow(hwnd, list, selectedIndex, row))
        return 1;
    if (storeRow(row, mode, *this))
        return 0;
    clearNames(*this);
    return 1;
}
