// One request to add, change or remove a data source through its driver's setup library.
#include <jxdialog.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "config/attribute_list.h"
#include "config/configuration_file.h"
#include "config/key_list.h"
#include "config/message_box.h"
#include "config/setup_library.h"
#include "config/text_bytes.h"
#include "rules/sections.h"

using jx::asBytes;
using jx::asChars;

namespace {

constexpr unsigned int kQuestion = MB_YESNO | MB_ICONQUESTION;

// ConfigurationRequest: what a caller asked for. dataSource is null when an add leaves the name to the setup library.
struct ConfigurationRequest {
    HWND hwnd;
    unsigned short request;
    const unsigned char* dataSource;

    bool adds() const { return request == ODBC_ADD_DSN; }

    // Shows a message about the data source and returns the button chosen. Only for requests with a window.
    unsigned int show(std::string_view before, std::string_view after, unsigned int style) const {
        return jx::showMessage(hwnd, jx::MessageText(before, asChars(dataSource), after).text(), style);
    }
};

// A reserved section is not a data source. Replacing or removing it would lose a whole list or the settings.
bool dataSourceExists(const unsigned char* name) {
    return !jx::rules::isReservedSection(asChars(name)) &&
           jx::KeyList(name, jx::kNotAvailable, jx::dataSourceFile().name()).isThere();
}

// Only an add with a window needs no name: the setup library asks the user for it.
bool goesOnWithoutName(const ConfigurationRequest& asked) {
    if (asked.adds())
        return asked.hwnd != 0;
    if (asked.hwnd != 0)
        jx::showMessage(asked.hwnd, asBytes("DSN attribute was not found"), MB_OK);
    return false;
}

// An add replaces a data source of the same name. With a window the user is asked first.
bool goesOnWithAdd(const ConfigurationRequest& asked) {
    if (!dataSourceExists(asked.dataSource))
        return true;
    if (asked.hwnd != 0 && asked.show("DSN - ", " already exists Do you want to overwrite it?", kQuestion) == IDNO)
        return false;
    SQLRemoveDSNFromIni(asChars(asked.dataSource));
    return true;
}

bool goesOnWithChange(const ConfigurationRequest& asked) {
    if (asked.request != ODBC_CONFIG_DSN && asked.request != ODBC_REMOVE_DSN)
        return true;
    if (dataSourceExists(asked.dataSource))
        return true;
    if (asked.hwnd != 0)
        asked.show("DSN - ", " does not exist", MB_OK | MB_ICONEXCLAMATION);
    return false;
}

bool goesOn(const ConfigurationRequest& asked) {
    if (asked.dataSource == nullptr)
        return goesOnWithoutName(asked);
    return asked.adds() ? goesOnWithAdd(asked) : goesOnWithChange(asked);
}

// Without its driver's setup library, a data source can only be removed.
int finishWithoutDriver(const ConfigurationRequest& asked) {
    if (asked.request != ODBC_REMOVE_DSN)
        return FALSE;
    if (asked.hwnd != 0 && asked.show("Not able to load the driver corresponding to DSN - ",
                                      ".\n Do you want it deleted anyway?", kQuestion) != IDYES)
        return FALSE;
    SQLRemoveDSNFromIni(asChars(asked.dataSource));
    return TRUE;
}

}  // namespace

int OdbcIns::jxSQLConfigDataSource(unsigned int hwnd, unsigned short fRequest, const unsigned char* lpszDriver,
                                   const unsigned char* lpszAttributes) {
    // A description that is too long is refused: cut, it could be the name of another driver.
    const std::size_t driverLength = BUTSTLEN(lpszDriver);
    if (lpszDriver == nullptr || driverLength >= sizeof driverName)
        return FALSE;
    ConfigurationRequest asked{hwnd, fRequest, nullptr};
    jx::AttributeList attributes;
    if (jx::AttributeList::isEmpty(lpszAttributes)) {
        if (hwnd == 0 || !asked.adds())
            return FALSE;
    } else {
        if (!attributes.take(lpszAttributes))
            return FALSE;
        asked.dataSource = attributes.dataSource();
        if (!goesOn(asked))
            return FALSE;
    }
    BUTMEMCP(driverName, lpszDriver, driverLength);  // lpszDriver may be this field
    std::memset(driverName + driverLength, 0, sizeof driverName - driverLength);
    if (LoadDriver() != 0)
        return finishWithoutDriver(asked);
    const jx::SetupLibrary library(hSetupLib);
    return ConfigDSN(hwnd, fRequest, const_cast<unsigned char*>(lpszAttributes)) == 0 ? TRUE : FALSE;
}
