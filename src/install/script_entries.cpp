// Turning an installation script into the components of a record: the files of one component.
#include <cstdio>

#include "config/message_box.h"
#include "config/named_profile.h"
#include "install/owned_text.h"
#include "install/profile_text.h"
#include "install/script_line.h"
#include "install/script_reader.h"

namespace jx::install {

namespace {

// Reads the keys of the component's section; an absent or unreadable one leaves an empty list.
void readKeys(const unsigned char* script, const unsigned char* section, ProfileText& keys) {
    const NamedProfile cache(script);
    if (!keys.read(section, nullptr, cache.get()))
        *keys.text() = 0;
}

// All entries at once: whatever ends the reading early, the count tells how many there are.
bool makeEntries(InstallItem& item, std::uint32_t count) {
    item.entries = static_cast<InfEntry*>(ramAllocZ(count * sizeof(InfEntry)));
    if (item.entries == nullptr)
        return false;
    item.entryCount = count;
    return true;
}

const char* orEmpty(const unsigned char* text) {
    return text == nullptr ? "" : viewOf(text).data();
}

// Tells which comma is missing; without memory for the text nothing is told.
void reportMissingComma(const _Install& install, const InstallItem& item, const InfEntry& entry, unsigned comma) {
    constexpr char kPattern[] = "Not able to find comma %u in File: %s Section: %s Entry: %s";
    const char* file = orEmpty(install.infFile);
    const char* section = orEmpty(item.name);
    const char* key = orEmpty(entry.key);
    const int length = std::snprintf(nullptr, 0, kPattern, comma, file, section, key);
    const std::size_t size = static_cast<std::size_t>(length < 0 ? 0 : length) + 1;
    const OwnedText text(static_cast<unsigned char*>(ramAllocZ(size)));
    if (text == nullptr)
        return;
    std::snprintf(reinterpret_cast<char*>(text.get()), size, kPattern, comma, file, section, key);
    showMessage(0, text.get(), MB_OK);
}

// Fills one entry from the line under key; a key without a line leaves it empty. A line that could not be read counts
// as a lack of memory, which it mostly is.
LineResult readEntry(const unsigned char* script, const InstallItem& item, unsigned char* key, InfEntry& entry) {
    constexpr LineResult kComplete{LineResult::Outcome::complete, 0};
    constexpr LineResult kMemoryShort{LineResult::Outcome::memoryShort, 0};
    ProfileText line;
    cutAtEquals(key);
    if (!line.read(item.name, key, script))
        return line.readFailed() ? kMemoryShort : kComplete;
    entry.key = copyOf(quotedName(key)).release();
    return entry.key == nullptr ? kMemoryShort : readLine(viewOf(line.text()), entry);
}

}  // namespace

unsigned int GetDataFromObdcInf(_Install* install, std::uint32_t index) {
    InstallItem& item = install->items[index];
    releaseEntries(item);
    ProfileText keys;
    readKeys(install->infFile, item.name, keys);
    const std::uint32_t count = countTexts(keys.text());
    if (count == 0 || !makeEntries(item, count))
        return 1;
    unsigned char* key = keys.text();
    for (InfEntry& entry : entriesOf(item)) {
        unsigned char* next = textAfter(key);
        const LineResult result = readEntry(install->infFile, item, key, entry);
        if (result.outcome == LineResult::Outcome::memoryShort) {
            releaseEntries(item);
            return 1;
        }
        if (result.outcome == LineResult::Outcome::commaMissing) {
            reportMissingComma(*install, item, entry, result.missingComma);
            return 1;
        }
        key = next;
    }
    return 0;
}

}  // namespace jx::install
