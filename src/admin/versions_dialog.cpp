// The Versions dialog: what the script says about its drivers' libraries.
#include <odbcinst.h>

#include <initializer_list>
#include <string>
#include <string_view>

#include "admin/dialog_procedure.h"
#include "admin/script_drivers.h"
#include "config/list_box.h"
#include "config/profile_value.h"
#include "install/bounded_text.h"
#include "install/script.h"
#include "install/script_line.h"

using namespace jx::admin;
using jx::asBytes;
using jx::install::_Install;
using jx::install::ScriptLine;

namespace {

constexpr char kDriverKey[] = "\"Driver\"";  // the script writes its keys in double quotes

// Shows the parts as one text. It fits, since it is not longer than the line it comes from.
void show(HWND dialog, unsigned short id, std::initializer_list<std::string_view> parts) {
    jx::install::BoundedText<jx::ProfileValue::kSize> text;
    for (const std::string_view part : parts)
        text.append(part);
    JXW_SetDlgItemText(dialog, id, jx::asChars(text.text()));
}

// Scripts write year-month-day. The dialog shows what follows the first "-", then the part before it.
void showDate(HWND dialog, std::string_view date) {
    const std::size_t dash = date.find('-');
    if (dash == std::string_view::npos)
        show(dialog, JxVersionDate, {date});
    else
        show(dialog, JxVersionDate, {date.substr(dash + 1), "-", date.substr(0, dash)});
}

void showLine(HWND dialog, const ScriptLine& line) {
    show(dialog, JxVersionFileName, {line.field(ScriptLine::kFileName)});
    show(dialog, JxVersionRole, {"Driver"});
    show(dialog, JxVersionNumber, {line.field(ScriptLine::kVersion)});
    showDate(dialog, line.field(ScriptLine::kDate));
    show(dialog, JxVersionSize, {line.field(ScriptLine::kNumber15)});
}

void clearLine(HWND dialog) {
    for (unsigned short id = JxVersionFileName; id <= JxVersionSize; ++id)
        JXW_SetDlgItemText(dialog, id, nullptr);
}

// For a driver without a line in the script the texts do not change.
void DisplayDriverVersion(HWND dialog, _Install& install) {
    const short row = jx::selectedRow(dialog, JxVersionsList);
    std::string driver;
    jx::ProfileValue value;
    if (row == -1 || !jx::readRow(dialog, JxVersionsList, row, driver))
        return;
    const unsigned char* section = asBytes(driver.c_str());
    if (!jx::install::Script(install.infFile).read(section, asBytes(kDriverKey), value))
        return;
    const ScriptLine line(value.view());
    if (line.isComplete())
        return showLine(dialog, line);
    // Deliberate: the number is one too high. A line without commas is reported with comma 2.
    jx::install::showMissingComma(dialog, line.fieldCount() + 2, install.infFile, section, asBytes(kDriverKey));
    clearLine(dialog);
}

void open(HWND dialog, _Install& install) {
    FillLB(dialog, JxVersionsList, &install);
    enableControl(dialog, IDOK, jx::selectFirstRow(dialog, JxVersionsList));
}

void close(HWND dialog, _Install& /*install*/) {
    endDialog(dialog);
}

// Deliberate: the dialog enables or greys IDOK when it opens, but the button does nothing. Cancel and a double click
// close the dialog.
constexpr Reaction<_Install> kReactions[] = {{JxVersionsList, DisplayDriverVersion, LBN_SELCHANGE},
                                             {JxVersionsList, close}};

constexpr DialogKind<_Install> kDialog{
    .open = open, .reactions = kReactions, .closing = IDCANCEL, .claimed = kNoCommand};

}  // namespace

unsigned int VersionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    return answer(kDialog, hwnd, message, wparam, lparam);
}
