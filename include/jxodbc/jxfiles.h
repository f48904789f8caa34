/* File names, files and shared libraries. Paths are bytes, used as spelled; all calls may be made from any thread. */
#ifndef JXFILES_H
#define JXFILES_H

#include <stddef.h>

#include "jxexport.h"

JX_EXTERN_C_BEGIN

/* The sizes of the two buffers that bosParseName fills, NUL included. */
enum { kBosBaseNameSize = 132, kBosExtensionSize = 4 };

/* Loads a shared library with all its symbols resolved at once and not offered to libraries that are loaded later;
 * flags is reserved, pass 0. A path with no slash in it is looked for where the loader looks for libraries. Returns a
 * handle for dlsym and dlclose, which the caller owns, or null; bosLastLoadError then tells why. A null or empty path
 * fails: it would name the running program itself. The library's own start-up code runs inside the call. */
JX_EXPORT void* bosLoadLibrary(const unsigned char* path, unsigned int flags);

/* The loader's own sentence for the calling thread's last bosLoadLibrary; empty when that call succeeded, none was made
 * or memory was too short to keep it. Never null; owned by the thread, valid until its next bosLoadLibrary or its end.
 */
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

/* Walks over the regular files (symbolic links to such count) that match pattern: a path whose last component may hold
 * "*" (any bytes) and "?" (one byte); there is no other wildcard, and a leading dot must be matched by a dot. Start
 * with *cursor null; each call returns the next path, the pattern's directory as spelled and the file's name, in byte
 * order, owned by the cursor and valid until the next call, or null at the end, when the cursor is released and *cursor
 * is null again. The files are those of the first call, which alone reads pattern; it is not changed. A directory that
 * cannot be read has no files; so has a null pattern, and a null cursor gives null. When memory is short the walk ends
 * at once with errno ENOMEM. bosEndFind releases a walk that is given up early and allows null. A walk belongs to one
 * thread at a time. */
JX_EXPORT const unsigned char* bosFindFiles(void** cursor, const unsigned char* pattern);
JX_EXPORT void bosEndFind(void** cursor);

/* Deletes one regular file (a symbolic link to one loses the link only). Returns 0, or -1 with errno set and nothing
 * deleted. Refused are everything that is no regular file (EISDIR for a directory, else EINVAL), a link that leads
 * nowhere (ENOENT), a null or empty path (EINVAL) and, under whatever name or link, the libraries of this product that
 * lie beside the utility library (EPERM): other drivers share them. */
JX_EXPORT int bosFileDelete(const unsigned char* path);

JX_EXTERN_C_END

#endif
