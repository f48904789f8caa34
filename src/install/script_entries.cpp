// The files of an installation's components, as the script lists them.
#include "install/script_entries.h"

#include "config/text_bytes.h"
#include "install/owned_text.h"
#include "install/script.h"
#include "install/script_line.h"

namespace jx::install {

namespace {

enum class Outcome { done, commaMissing, failed };

// Makes all entries at once, so that their number is right when reading ends early.
bool makeEntries(InstallItem& item, std::size_t count) {
    item.entries = static_cast<InfEntry*>(ramAllocZ(count * sizeof(InfEntry)));
    if (item.entries == nullptr)
        return false;
    item.entryCount = static_cast<std::uint32_t>(count);
    return true;
}

// Fills one entry from the line of key, which is cut to its name. The entry of a key without a line stays empty.
Outcome readEntry(const unsigned char* infFile, const InstallItem& item, unsigned char* key, InfEntry& entry) {
    const Script script(infFile);
    ProfileValue value;
    if (!script.read(item.name, key, value))
        return value.readFailed() ? Outcome::failed : Outcome::done;
    entry.key = copyOf(viewOf(quotedName(key))).release();
    const ScriptLine line(value.view());
    if (entry.key == nullptr || !line.fill(entry))
        return Outcome::failed;
    if (line.isComplete())
        return Outcome::done;
    showMissingComma(0, line.fieldCount() + 1, infFile, item.name, entry.key);
    return Outcome::commaMissing;
}

}  // namespace

unsigned int GetTheOdbcInfEntriesForEachItem(_Install* install) {
    for (std::uint32_t index = 0; index < install->itemCount; ++index)
        GetDataFromObdcInf(install, index);
    return 0;
}

unsigned int GetDataFromObdcInf(_Install* install, std::uint32_t index) {
    InstallItem& item = install->items[index];
    releaseEntries(item);
    KeyList keys = Script(install->infFile).fileKeys(item.name);
    const std::size_t count = keys.isThere() ? keys.names().count() : 0;
    if (count == 0 || !makeEntries(item, count))
        return 1;
    for (InfEntry& entry : entriesOf(item)) {
        const Outcome outcome = readEntry(install->infFile, item, keys.next(), entry);
        if (outcome == Outcome::failed)
            releaseEntries(item);
        if (outcome != Outcome::done)
            return 1;
    }
    return 0;
}

}  // namespace jx::install
