// The record of one batch installation: making it, adding components, releasing it.
#include "install/install_record.h"

#include <utility>

#include "install/owned_text.h"

namespace jx::install {

namespace {

void release(unsigned char*& text) {
    ramFree(std::exchange(text, nullptr));
}

void releaseItem(InstallItem& item) {
    release(item.name);
    for (unsigned char*& key : item.driverKeys)
        release(key);
    releaseEntries(item);
}

void releaseItems(_Install& install) {
    for (InstallItem& item : itemsOf(install))
        releaseItem(item);
    install.itemCount = 0;
    ramFree(std::exchange(install.items, nullptr));
}

void releaseProcessedFiles(_Install& install) {
    for (unsigned char*& file : std::span(install.processedFiles, install.processedCount))
        release(file);
    install.processedCount = 0;
    ramFree(std::exchange(install.processedFiles, nullptr));
}

}  // namespace

unsigned int InstallInit(unsigned int /*hwnd*/, _Install*& install, const unsigned char* /*infFile*/,
                         const unsigned char* /*srcPath*/) {
    install = static_cast<_Install*>(ramAllocZ(sizeof(_Install)));
    if (install == nullptr)
        return 1;
    install->reserved1 = 0;
    install->reserved2 = 0;
    return 0;
}

unsigned int DoTheTempDirectoryThing(unsigned int /*hwnd*/, _Install* /*install*/, unsigned char* /*path*/,
                                     TempDirectoryType /*kind*/) {
    return 0;
}

void InstallTerm(_Install* install) {
    if (install == nullptr)
        return;
    DoTheTempDirectoryThing(0, install, nullptr, TempDirectoryRemove);
    releaseItems(*install);
    releaseProcessedFiles(*install);
    for (unsigned char** text :
         {&install->auxString1, &install->infFile, &install->auxString2, &install->targetDir, &install->sourceDir})
        release(*text);
}

unsigned int appendItem(_Install* install, std::string_view name, ItemKind kind) {
    OwnedText ownName = copyOf(name);
    if (ownName == nullptr)
        return 1;
    void* grown = ramResize(install->items, (install->itemCount + std::size_t{1}) * sizeof(InstallItem));
    if (grown == nullptr)
        return 1;
    install->items = static_cast<InstallItem*>(grown);
    InstallItem& item = install->items[install->itemCount];
    item = InstallItem{};
    item.name = ownName.release();
    item.kind = kind;
    ++install->itemCount;
    return 0;
}

void releaseEntries(InstallItem& item) {
    for (InfEntry& entry : entriesOf(item)) {
        for (unsigned char** text : {&entry.key, &entry.fileName, &entry.text8, &entry.text14})
            release(*text);
    }
    item.entryCount = 0;
    ramFree(std::exchange(item.entries, nullptr));
}

}  // namespace jx::install
