// Heap blocks from malloc, so that the library and its callers can release each other's.
#include <jxmemory.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

// malloc(0) may return null, which callers would take for a failure.
std::size_t atLeastOne(std::size_t sizeInBytes) {
    return sizeInBytes != 0 ? sizeInBytes : 1;
}

}  // namespace

void* ramAlloc(std::size_t sizeInBytes) {
    return std::malloc(atLeastOne(sizeInBytes));
}

void* ramAllocZ(std::size_t sizeInBytes) {
    return std::calloc(1, atLeastOne(sizeInBytes));
}

unsigned char* ramAllocStr(const unsigned char* text) {
    if (text == nullptr)
        return nullptr;
    const std::size_t size = std::strlen(reinterpret_cast<const char*>(text)) + 1;
    void* copy = std::malloc(size);
    if (copy != nullptr)
        std::memcpy(copy, text, size);
    return static_cast<unsigned char*>(copy);
}

void* ramResize(void* block, std::size_t sizeInBytes) {
    return std::realloc(block, atLeastOne(sizeInBytes));
}

void ramFree(void* block) {
    const int before = errno;  // older C libraries change it when they give memory back to the system
    std::free(block);
    errno = before;
}
