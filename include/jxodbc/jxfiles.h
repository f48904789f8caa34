/* File names, files and shared libraries.
 *
 *     void* walk = NULL;
 *     const unsigned char* path;
 *     while ((path = bosFindFiles(&walk, (const unsigned char*)"/usr/lib/odbc/lib*.so")) != NULL)
 *         puts((const char*)path);
 *
 * Paths are bytes, used as spelled. All calls may be made from any thread. */
#ifndef JXFILES_H
#define JXFILES_H

#include <stddef.h>

#include "jxexport.h"

JX_EXTERN_C_BEGIN

/* The sizes in bytes of the two buffers that bosParseName fills, NUL included. */
enum { kBosBaseNameSize = 132, kBosExtensionSize = 4 };

/* Loads a shared library (RTLD_NOW, RTLD_LOCAL); flags is reserved, pass 0. A path without a slash is searched where
 * the loader looks for libraries. Returns a handle for dlsym and dlclose, which the caller owns, or null;
 * bosLastLoadError then gives the reason. A null or empty path fails: to the loader it means the program itself. A file
 * that ends before its segments, such as half a copy, fails too: the process would die in the loader. The library's
 * start-up code runs inside the call. */
JX_EXPORT void* bosLoadLibrary(const unsigned char* path, unsigned int flags);

/* The loader's error text for the calling thread's last bosLoadLibrary; empty when that call succeeded, none was made
 * or memory was too short to keep it. Never null; owned by the thread until its next bosLoadLibrary or its end. */
JX_EXPORT const unsigned char* bosLastLoadError(void);

/* Splits a path in place. path keeps the directory without trailing slashes ("/" stays "/", no directory leaves an
 * empty text); baseName (132 bytes) and extension (4 bytes) receive the file name before and after its last dot,
 * the dot itself dropped; no dot gives an empty extension. flag is reserved, pass 0.
 *   "/opt/a.b/libdrv.so"  "/opt/a.b"  "libdrv"     "so"
 *   "libdrv.so.1"         ""          "libdrv.so"  "1"
 *   "/odbc"               "/"         "odbc"       ""
 *   "dir//"               "dir"       ""           ""
 *   ".so"                 ""          ""           "so"
 * Returns 1, or 0 when the base name or the extension does not fit or an argument is null: nothing is changed then.
 * The buffers must not overlap. */
JX_EXPORT int bosParseName(unsigned char* path, unsigned char* baseName, unsigned char* extension, unsigned int flag);

/* Walks over the regular files, and symbolic links to such, that match pattern: a path whose last component may hold
 * "*" (any bytes) and "?" (one byte). A leading dot is matched only by a dot. Start with *cursor null. Each call
 * returns the next path, in byte order: the pattern's directory as spelled and the file's name. The cursor owns it; it
 * is valid until the next call. At the end the call returns null, the cursor is released and *cursor null again.
 * bosEndFind releases a walk before its end; null is allowed. Only the first call reads pattern, which it does not
 * change, and the directory. A directory that cannot be read has no files, a null pattern matches none, a null cursor
 * gives null. When memory is short the walk ends at once with errno ENOMEM. A walk belongs to one thread at a time. */
JX_EXPORT const unsigned char* bosFindFiles(void** cursor, const unsigned char* pattern);
JX_EXPORT void bosEndFind(void** cursor);

/* Deletes one regular file, or a symbolic link to one (the link only). Returns 0, or -1 with errno set and nothing
 * deleted:
 *   EISDIR  a directory
 *   EINVAL  anything else that is not a regular file; a null or empty path
 *   ENOENT  no such file; a link that leads nowhere
 *   EPERM   a library of this product beside the utility library, under any name or link: drivers share them
 *   else    the system's own reason */
JX_EXPORT int bosFileDelete(const unsigned char* path);

JX_EXTERN_C_END

#endif
