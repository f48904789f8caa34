/* Heap blocks that the libraries and programs hand to each other.
 *
 *     unsigned char* name = ramAllocStr((const unsigned char*)"Sales");
 *     ramFree(name);
 *
 * Blocks are those of malloc and free: either side may release what the other made. Sizes are in bytes. All calls may
 * be made from any thread. When memory is short they return null; nothing is thrown. */
#ifndef JXMEMORY_H
#define JXMEMORY_H

#include <stddef.h>

#include "jxexport.h"

JX_EXTERN_C_BEGIN

/* A block of sizeInBytes bytes with undefined content; null when memory is short. A size of 0 gives a block that may
 * only be released. */
JX_EXPORT void* ramAlloc(size_t sizeInBytes);

/* The same, filled with zero bytes. */
JX_EXPORT void* ramAllocZ(size_t sizeInBytes);

/* A copy of text with its NUL; null when memory is short or text is null. The caller releases it with ramFree. */
JX_EXPORT unsigned char* ramAllocStr(const unsigned char* text);

/* Changes a block's size and keeps its content up to the smaller size; new bytes have undefined content. block may be
 * null. A size of 0 is treated as 1. Returns the block, and the old pointer is no longer valid; or null when memory is
 * short: the old block is then unchanged and still the caller's. */
JX_EXPORT void* ramResize(void* block, size_t sizeInBytes);

/* Releases a block; null is allowed. errno stays as it was. */
JX_EXPORT void ramFree(void* block);

JX_EXTERN_C_END

#endif
