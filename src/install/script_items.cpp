// The components of an installation: those a caller lists, and those a script does.
#include "install/script_items.h"

#include <jxtext.h>
#include <odbcinst.h>

#include "config/text_bytes.h"
#include "install/owned_text.h"
#include "install/script.h"

namespace jx::install {

namespace {

constexpr unsigned char kQuote = '"';

// Cuts a text of a list at its first "="; returns the next text.
unsigned char* cutAtEquals(unsigned char* text) {
    unsigned char* next = text + BUTSTLEN(text) + 1;
    if (unsigned char* equals = strFind(text, static_cast<unsigned char>('=')); equals != nullptr)
        *equals = 0;
    return next;
}

// Keeps one capability of a driver; false when memory is short.
bool keepCapability(InstallItem& item, std::size_t place, const ProfileValue& value) {
    ramFree(item.driverKeys[place]);
    item.driverKeys[place] = copyOf(value.view()).release();
    return item.driverKeys[place] != nullptr;
}

}  // namespace

unsigned int PlaceDriversToBeInstalledInInstallStruct(_Install* install, unsigned char* drivers) {
    unsigned char* next = nullptr;
    for (unsigned char* text = drivers; *text != 0; text = next) {
        next = cutAtEquals(text);
        // Deliberate: only the opening quote is dropped. A name that the caller puts in quotes keeps the closing one.
        const unsigned char* name = *text == kQuote ? text + 1 : text;
        if (appendItem(install, viewOf(name), DriverItem) != 0)
            return 1;
    }
    return 0;
}

unsigned int PlaceTranslatorsToBeInstalledInInstallStruct(_Install* install) {
    KeyList keys = Script(install->infFile).wholeKeys(asBytes(INS_ODBCINST_TRANSLATORS));
    if (!keys.isThere())
        return keys.readFailed() ? 1 : 0;
    if (keys.names().count() == 0)
        return 1;
    for (unsigned char* key = keys.next(); key != nullptr; key = keys.next()) {
        if (appendItem(install, viewOf(quotedName(key)), TranslatorItem) != 0)
            return 1;
    }
    return 0;
}

unsigned int GetTheDriverKeys(_Install* install) {
    const Script script(install->infFile);
    for (InstallItem& item : itemsOf(*install)) {
        if (item.kind != DriverItem)
            continue;
        const bool isRead = script.readCapabilities(
            viewOf(item.name),
            [&](std::size_t place, const ProfileValue& value) { return keepCapability(item, place, value); });
        if (!isRead)
            return 1;
    }
    return 0;
}

unsigned int GetTheNonDriverItems(_Install* install) {
    for (const char* section : {"ODBC Driver Manager", "ODBC Administrator", INS_ODBCINI_ODBC}) {
        const KeyList keys = Script(install->infFile).keys(asBytes(section));
        if (keys.readFailed() || (keys.isThere() && appendItem(install, section, CoreItem) != 0))
            return 1;
    }
    return 0;
}

}  // namespace jx::install
