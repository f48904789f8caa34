// Installing the files of a run, component by component.
#include "install/item_installation.h"

#include <jxdialog.h>
#include <odbcinst.h>

#include <cstring>
#include <span>
#include <string_view>

#include "config/configuration_run.h"
#include "config/text_bytes.h"
#include "install/bounded_text.h"
#include "install/configuration_update.h"
#include "install/owned_text.h"
#include "install/processed_files.h"
#include "install/transfer_hooks.h"

namespace jx::install {

namespace {

constexpr std::size_t kPathSize = 1024;
constexpr std::size_t kInputSize = 16384;
constexpr std::size_t kOutputSize = 32768;
constexpr std::size_t kSpareSize = 2048;

// One of the exported work buffers. Several threads may install at once and overwrite the exported pointer, so each run
// keeps its own pointer and releases its own memory.
class WorkBuffer {
public:
    WorkBuffer(unsigned char*& exported, void* block, std::size_t size)
        : block_(static_cast<unsigned char*>(block)), size_(size) {
        __atomic_store_n(&exported, block_.get(), __ATOMIC_RELAXED);
    }

    bool isThere() const { return block_ != nullptr; }
    void clear() { std::memset(block_.get(), 0, size_); }

private:
    // Deliberate: the exported pointer is not reset when the memory is released.
    OwnedText block_;
    std::size_t size_;
};

struct WorkBuffers {
    WorkBuffer input{inbuf, ramAllocZ(kInputSize), kInputSize};
    WorkBuffer output{outbuf, ramAlloc(kOutputSize), kOutputSize};
    WorkBuffer spare{bigbuf, ramAlloc(kSpareSize), kSpareSize};
    NameFilter processed;

    bool areThere() const { return input.isThere() && output.isThere() && spare.isThere() && processed.isThere(); }
    void clear() {
        input.clear();
        output.clear();
        spare.clear();
    }
};

// Whether versions are checked for a file of this role.
bool hasVersion(const InfEntry& entry) {
    const std::string_view role = viewOf(entry.key);
    return role == "Driver" || role == "Windows00" || role == "CPanel" || role == "Translator";
}

// Calls visit(item number, entry number) for every file of the components that accept returns true for. Stops when
// visit returns false.
template <typename Accept, typename Visit>
bool everyFile(const _Install& install, Accept accept, Visit visit) {
    for (std::uint32_t item = 0; item < install.itemCount; ++item) {
        if (!accept(install.items[item]))
            continue;
        for (std::uint32_t entry = 0; entry < install.items[item].entryCount; ++entry) {
            if (!visit(item, entry))
                return false;
        }
    }
    return true;
}

void checkVersions(unsigned int hwnd, _Install* install) {
    everyFile(
        *install, [](const InstallItem&) { return true; },
        [&](std::uint32_t item, std::uint32_t entry) {
            if (hasVersion(install->items[item].entries[entry])) {
                VersionCheck(hwnd, install, item, entry);
                JXW_SetCursor(JXW_LoadCursor(0, kJxwWaitCursor));
            }
            return true;
        });
}

bool copyDisks(unsigned int hwnd, _Install* install) {
    return everyFile(
        *install, [](const InstallItem& item) { return item.selected == 1; },
        [&](std::uint32_t item, std::uint32_t entry) { return CopyDisk(hwnd, install, item, entry) == 0; });
}

using FilePath = BoundedText<kPathSize>;

// Builds the file's path on its medium, where the last character is an underscore, and the path it is registered with.
// False when one is too long.
bool buildPaths(const _Install& install, const InfEntry& entry, FilePath& source, FilePath& target) {
    const std::string_view name = viewOf(entry.fileName);
    const bool fits = source.append(viewOf(install.sourceDir)) && source.append("/") && source.append(name) &&
                      target.append(viewOf(install.targetDir)) && target.append(name);
    source.replaceLast('_');
    return fits;
}

// False when memory is short: the next component that has the file would process it again.
bool processFile(unsigned int hwnd, _Install* install, std::uint32_t item, std::uint32_t entry, WorkBuffers& buffers) {
    const InfEntry& file = install->items[item].entries[entry];
    FilePath source;
    FilePath target;
    if (file.fileName == nullptr)
        return true;
    const std::string_view name = viewOf(file.fileName);
    const bool isProcessed = buffers.processed.mayHold(name) && HasFileBeenProcessed(install, item, entry) != 0;
    if (isProcessed || !buildPaths(*install, file, source, target))
        return true;
    buffers.clear();
    Decompress(hwnd, source.text(), target.text());
    install->anyFileInstalled = 1;
    UpdateOdbcIniAndOdbcInstIni(install, item, entry, target.text());
    buffers.processed.note(name);
    return AddFileToProcessedList(install, item, entry) != 0;
}

// All files are entered, or none.
void processFiles(unsigned int hwnd, _Install* install) {
    WorkBuffers buffers;
    ConfigurationRun run;
    if (!buffers.areThere() || !run.hasBegun())
        return;
    for (const unsigned char* name : std::span(install->processedFiles, install->processedCount))
        buffers.processed.note(viewOf(name));
    const bool isComplete = everyFile(
        *install,
        // Deliberate: here any value but 0 counts as selected; for the disks only 1 does.
        [](const InstallItem& item) { return item.selected != 0; },
        [&](std::uint32_t item, std::uint32_t entry) { return processFile(hwnd, install, item, entry, buffers); });
    if (!isComplete || !run.commit())
        install->anyFileInstalled = 0;
}

}  // namespace

unsigned int InstallItems(unsigned int hwnd, _Install* install) {
    checkVersions(hwnd, install);
    if (copyDisks(hwnd, install))
        processFiles(hwnd, install);
    // Deliberate: always 1, which the caller takes as failure. The outcome is in the files.
    return 1;
}

}  // namespace jx::install
