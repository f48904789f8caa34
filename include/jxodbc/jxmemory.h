/* Heap blocks that cross the library's edge.
 *
 * Blocks are compatible with malloc and free: either side may release what the other made. All calls may be made
 * from any thread. Where memory is short the answer is null: nothing is thrown, reported or ended. Sizes are in
 * bytes. */
#ifndef JXMEMORY_H
#define JXMEMORY_H

#include <stddef.h>

#include "jxexport.h"

JX_EXTERN_C_BEGIN

/* A block of sizeInBytes bytes with undefined content; null when memory is short. A size of 0 gives a block that
 * may be released but holds nothing. */
JX_EXPORT void* ramAlloc(size_t sizeInBytes);

/* The same, filled with zero bytes. */
JX_EXPORT void* ramAllocZ(size_t sizeInBytes);

/* A copy of text with its NUL; null when memory is short or text is null. The caller releases it with ramFree. */
JX_EXPORT unsigned char* ramAllocStr(const unsigned char* text);

/* Changes a block's size, keeping its content up to the smaller size; block may be null. Null when memory is short:
 * the old block is then untouched and still owned by the caller; else the old pointer is no longer valid. New bytes
 * have undefined content. A size of 0 is treated as 1. */
JX_EXPORT void* ramResize(void* block, size_t sizeInBytes);

/* Releases a block; null is allowed. errno stays as it was. */
JX_EXPORT void ramFree(void* block);

JX_EXTERN_C_END

#endif
