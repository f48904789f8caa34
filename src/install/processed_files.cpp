// The files a run has processed, in the record's list.
#include "install/processed_files.h"

#include <algorithm>

#include "config/text_bytes.h"
#include "install/owned_text.h"

namespace jx::install {

unsigned int HasFileBeenProcessed(_Install* install, std::uint32_t item, std::uint32_t entry) {
    const std::string_view name = viewOf(install->items[item].entries[entry].fileName);
    const std::span<unsigned char*> files(install->processedFiles, install->processedCount);
    return std::any_of(files.begin(), files.end(), [&](const unsigned char* file) { return viewOf(file) == name; }) ? 1
                                                                                                                    : 0;
}

unsigned int AddFileToProcessedList(_Install* install, std::uint32_t item, std::uint32_t entry) {
    OwnedText name = copyOf(viewOf(install->items[item].entries[entry].fileName));
    if (name == nullptr)
        return 0;
    void* grown =
        ramResize(install->processedFiles, (install->processedCount + std::size_t{1}) * sizeof(unsigned char*));
    if (grown == nullptr)
        return 0;
    install->processedFiles = static_cast<unsigned char**>(grown);
    install->processedFiles[install->processedCount] = name.release();
    ++install->processedCount;
    return 1;
}

}  // namespace jx::install
