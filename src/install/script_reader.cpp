// Turning an installation script into the components of a record: which components there are.
#include "install/script_reader.h"

#include <jxtext.h>
#include <odbcinst.h>

#include "config/text_bytes.h"
#include "install/owned_text.h"
#include "install/profile_text.h"

namespace jx::install {

namespace {

constexpr unsigned char kQuote = '"';

// Reads the capabilities of one driver; false when memory is short or the script could not be read.
bool readDriverKeys(const unsigned char* script, InstallItem& item) {
    const OwnedText section = joined(viewOf(item.name), "-Keys");
    if (section == nullptr)
        return false;
    ProfileText value;
    if (!value.read(section.get(), nullptr, script))
        return !value.readFailed();
    for (std::size_t position = 0; position < kCapabilityKeys.size(); ++position) {
        if (!value.read(section.get(), asBytes(kCapabilityKeys[position]), script)) {
            if (value.readFailed())
                return false;
            continue;
        }
        ramFree(item.driverKeys[position]);
        item.driverKeys[position] = copyOf(viewOf(value.text())).release();
        if (item.driverKeys[position] == nullptr)
            return false;
    }
    return true;
}

}  // namespace

unsigned int PlaceDriversToBeInstalledInInstallStruct(_Install* install, unsigned char* drivers) {
    unsigned char* next = nullptr;
    for (unsigned char* text = drivers; *text != 0; text = next) {
        next = textAfter(text);
        cutAtEquals(text);
        // Deliberate: only the opening quote goes; callers that quote a name get it with its closing quote.
        const unsigned char* name = *text == kQuote ? text + 1 : text;
        if (appendItem(install, viewOf(name), DriverItem) != 0)
            return 1;
    }
    return 0;
}

unsigned int PlaceTranslatorsToBeInstalledInInstallStruct(_Install* install) {
    ProfileText list;
    if (!list.read(asBytes(INS_ODBCINST_TRANSLATORS), nullptr, install->infFile))
        return list.readFailed() ? 1 : 0;
    if (*list.text() == 0)
        return 1;
    unsigned char* next = nullptr;
    for (unsigned char* text = list.text(); *text != 0; text = next) {
        next = textAfter(text);
        cutAtEquals(text);
        if (appendItem(install, quotedName(text), TranslatorItem) != 0)
            return 1;
    }
    return 0;
}

unsigned int GetTheDriverKeys(_Install* install) {
    for (InstallItem& item : itemsOf(*install)) {
        if (item.kind == DriverItem && !readDriverKeys(install->infFile, item))
            return 1;
    }
    return 0;
}

unsigned int GetTheNonDriverItems(_Install* install) {
    ProfileText list;
    for (const char* section : {"ODBC Driver Manager", "ODBC Administrator", INS_ODBCINI_ODBC}) {
        const bool isThere = list.read(asBytes(section), nullptr, install->infFile);
        if (list.readFailed() || (isThere && appendItem(install, section, CoreItem) != 0))
            return 1;
    }
    return 0;
}

unsigned int GetTheOdbcInfEntriesForEachItem(_Install* install) {
    for (std::uint32_t index = 0; index < install->itemCount; ++index)
        GetDataFromObdcInf(install, index);
    return 0;
}

}  // namespace jx::install
