// Shows what an installation script says about a driver's library.
#include <jxdialog.h>
#include <jxtext.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <string>
#include <string_view>

#include <control_ids.h>
#include "admin/dialog_record.h"
#include "admin/script_drivers.h"
#include "config/list_box.h"
#include "config/message_box.h"
#include "config/text_bytes.h"
#include "install/profile_text.h"

namespace jx::admin {

namespace {

using install::_Install;

constexpr char kDriverKey[] = "\"Driver\"";  // the script writes its keys in double quotes
constexpr unsigned kCommas = 20;

unsigned countCommas(std::string_view line) {
    unsigned commas = 0;
    for (const char character : line)
        commas += character == ',' ? 1U : 0U;
    return commas;
}

// Field number of a line that has it, counted from 0, without the blanks before it.
std::string_view field(std::string_view line, unsigned number) {
    for (; number > 0; --number)
        line.remove_prefix(line.find(',') + 1);
    line = line.substr(0, line.find(','));
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    return line;
}

// The script writes year-month-day; shown is what follows the first "-", then what stands before it.
std::string rearranged(std::string_view date) {
    const std::size_t dash = date.find('-');
    if (dash == std::string_view::npos)
        return std::string(date);
    return std::string(date.substr(dash + 1)) + "-" + std::string(date.substr(0, dash));
}

void showFields(HWND dialog, std::string_view line) {
    JXW_SetDlgItemText(dialog, JxVersionFileName, std::string(field(line, 1)).c_str());
    JXW_SetDlgItemText(dialog, JxVersionRole, "Driver");
    JXW_SetDlgItemText(dialog, JxVersionNumber, std::string(field(line, 19)).c_str());
    JXW_SetDlgItemText(dialog, JxVersionDate, rearranged(field(line, 5)).c_str());
    JXW_SetDlgItemText(dialog, JxVersionSize, std::string(field(line, 15)).c_str());
}

void clearFields(HWND dialog) {
    for (unsigned short id = JxVersionFileName; id <= JxVersionSize; ++id)
        JXW_SetDlgItemText(dialog, id, nullptr);
}

// Deliberate: the number is one more than that of the missing comma; a line without any tells of comma 2.
void reportMissingComma(HWND dialog, unsigned commas, const unsigned char* script, const char* driver) {
    std::array<char, 4096> text{};
    std::snprintf(text.data(), text.size(), "Not able to find comma %u in File: %s Section: %s Entry: %s", commas + 2,
                  asChars(script), driver, kDriverKey);
    showMessage(dialog, asBytes(text.data()), MB_OK);
}

// Shows the line; false when memory is short.
bool showLine(HWND dialog, std::string_view line) {
    try {
        showFields(dialog, line);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace

int DisplayDriverVersion(unsigned int hwnd, _Install* /*install*/, unsigned long listId) {
    const auto* own = recordOf<_Install>(hwnd);
    const short row = selectedRow(hwnd, JxVersionsList);
    std::string driver;
    install::ProfileText value;
    if (own == nullptr || row == -1 || !readRow(hwnd, static_cast<unsigned short>(listId), row, driver))
        return 0;
    if (!value.read(asBytes(driver.c_str()), asBytes(kDriverKey), own->infFile))
        return 0;
    const std::string_view line = asChars(value.text());
    const unsigned commas = countCommas(line);
    if (commas < kCommas)
        reportMissingComma(hwnd, commas, own->infFile, driver.c_str());
    if (commas < kCommas || !showLine(hwnd, line))
        clearFields(hwnd);
    return 0;
}

}  // namespace jx::admin
