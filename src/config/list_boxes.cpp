// The members of OdbcIns that fill list boxes, take what is selected there and show the standard messages.
#include <jxdialog.h>
#include <jxprofile.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "config/list_row.h"
#include "config/message_text.h"
#include "config/name_list.h"
#include "config/text_bytes.h"
#include "config/translator_choice.h"

using jx::asBytes;

namespace {

enum Mode : unsigned long { kDriverRow = 0, kDataSources = 1, kSectionKeys = 2 };

constexpr unsigned short kSetupButton = 105;
constexpr unsigned short kDeleteButton = 106;
constexpr unsigned long kConfirmRemoveText = 53;

// Deliberate: the list of data sources takes the buttons that work on a data source along, in whatever dialog it
// stands.
void enableDataSourceButtons(HWND dialog, bool enable) {
    for (const unsigned short button : {kSetupButton, kDeleteButton})
        JXW_EnableWindow(JXW_GetDlgItem(dialog, button), enable ? 1 : 0);
}

// Adds the keys of a section, as many as 1024 bytes hold whole.
void fillWithSection(HWND dialog, unsigned short listId, const unsigned char* section) {
    constexpr int kListSize = 1024;
    unsigned char keys[kListSize + 2] = {};  // the last byte ends a list that is cut
    // A null section would read the names of all sections.
    if (section == nullptr)
        return;
    jxGetPrivateProfileString(section, nullptr, asBytes(""), keys, kListSize + 1, asBytes(INS_ODBCINST_FILENAME));
    jx::dropCutName(keys, kListSize);
    jx::addKeyRows(dialog, listId, keys);
    if (BUTSTCMP(section, asBytes(INS_ODBCINST_TRANSLATORS)) == 0)
        JXW_SendDlgItemMessage(dialog, listId, LB_INSERTSTRING, 0, reinterpret_cast<uintptr_t>(jx::kNoTranslator));
}

// The place of the "(" that belongs to the last ")" of a display text; npos when there is none.
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

// Takes "name (driver)" apart; false when it is not of that form or a part does not fit.
bool storeDataSource(std::string_view display, OdbcIns& ins) {
    const std::size_t open = findDriver(display);
    if (open == std::string_view::npos)
        return false;
    std::string_view name = display.substr(0, open);
    // A name of blanks alone keeps its first one, as the display text began.
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
    if (mode == kDriverRow)
        return store(row, ins.driverName);
    return mode == kDataSources && storeDataSource(row, ins);
}

}  // namespace

int OdbcIns::PopulateLB(unsigned int hwnd, short listId, unsigned long mode, const unsigned char* section) {
    const auto list = static_cast<unsigned short>(listId);
    JXW_SendDlgItemMessage(hwnd, list, LB_RESETCONTENT, 0, 0);
    if (mode != kDataSources) {
        FillLB(hwnd, listId, mode, section);
        return 0;
    }
    ResetData(ResetAll);
    GetDataSourceNames();
    GetDriverNames();
    ConcatenateNames();
    FillLB(hwnd, listId, mode, nullptr);
    const bool hasRows = jx::rowCount(hwnd, list) >= 1;
    if (hasRows)
        JXW_SendDlgItemMessage(hwnd, list, LB_SETCURSEL, 0, 0);
    enableDataSourceButtons(hwnd, hasRows);
    return 0;
}

int OdbcIns::FillLB(unsigned int hwnd, short listId, unsigned long mode, const unsigned char* section) {
    const auto list = static_cast<unsigned short>(listId);
    if (mode == kSectionKeys)
        fillWithSection(hwnd, list, section);
    if (mode != kDataSources)
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

int OdbcIns::DisplayMB(unsigned int hwnd, unsigned long messageId) {
    if (messageId < 50 || messageId > 54)
        return 0;
    unsigned char pattern[255] = {};
    JXW_LoadString(BJXHINST, static_cast<unsigned short>(messageId), pattern, sizeof pattern);
    if (messageId != kConfirmRemoveText)
        return static_cast<std::uint16_t>(jx::showMessage(hwnd, pattern, MB_OK | MB_ICONEXCLAMATION));
    char question[255] = {};
    std::snprintf(question, sizeof question, jx::asChars(pattern), dataSourceName);
    return static_cast<std::uint16_t>(jx::showMessage(hwnd, asBytes(question), MB_YESNO | MB_ICONQUESTION));
}
