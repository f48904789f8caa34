/* Reading and changing INI files one key at a time.
 *
 * The file names ".odbc.ini" and ".odbcinst.ini" (spelled exactly so) mean the user's two configuration files,
 * wherever they live; every other name is used as spelled. Sizes are in bytes and include the final NUL. All calls
 * may be made from any thread and any process at the same time: writes take turns and none is lost. The promises are
 * written down in docs/ini-store.md. */
#ifndef JXPROFILE_H
#define JXPROFILE_H

#include "jxexport.h"

JX_EXTERN_C_BEGIN

/* 1 when the calling thread's last read of a profile failed (memory was short, the file could not be read), else 0. The
 * fallback that such a read gives tells nothing about the file: a program that changes something when an entry is
 * absent asks this first. An absent file, section or key is no failure. Ask before the next write, which puts its own
 * outcome in the same place; jxIniLastFailure of jxini.h tells more. */
JX_EXPORT int jxProfileReadFailed(void);

/* One file as named, between jxPrivateProfileInit and jxPrivateProfileTerm. */
typedef struct JxIniFileCache JxIniFileCache;

/* Begins work on the file as named (no name is special here); null for a null name or when memory is short. The file
 * need not exist. Release it with jxPrivateProfileTerm, which allows null and writes nothing: each write was final
 * when it returned. One object belongs to one thread at a time. */
JX_EXPORT JxIniFileCache* jxPrivateProfileInit(const unsigned char* file);
JX_EXPORT void jxPrivateProfileTerm(JxIniFileCache* cache);

JX_EXTERN_C_END

#ifdef __cplusplus

/* Copies the value of key in section into buffer, or fallback when there is none, cut at size - 1 bytes and ended with
 * NUL; returns the number of bytes before that NUL. A null key gives the list of the section's keys, a null section
 * the list of sections, each name ended with NUL and the list with a second NUL; its length counts the NULs between
 * and after the names but not the last one. A list that is cut is ended by one NUL only.
 * An absent section or file gives fallback; null fallback is the empty text. A size of 0 or less, a null buffer, a
 * null file or cache returns 0 and writes nothing. */
JX_EXPORT int jxGetPrivateProfileString(const unsigned char* section, const unsigned char* key,
                                        const unsigned char* fallback, unsigned char* buffer, int size,
                                        const unsigned char* file);
JX_EXPORT int jxGetPrivateProfileString(const unsigned char* section, const unsigned char* key,
                                        const unsigned char* fallback, unsigned char* buffer, int size,
                                        JxIniFileCache* cache);

/* Stores value under key in section; a null value deletes the key, a null key the whole section. Returns 1 when the
 * file holds that (also when it did before: it is then not touched), 0 when it could not be done and the file is as it
 * was; jxIniLastFailure of jxini.h tells why, and in its afterRename whether only the flush of the directory failed. */
JX_EXPORT int jxWritePrivateProfileString(const unsigned char* section, const unsigned char* key,
                                          const unsigned char* value, const unsigned char* file);
JX_EXPORT int jxWritePrivateProfileString(const unsigned char* section, const unsigned char* key,
                                          const unsigned char* value, JxIniFileCache* cache);

#endif

#endif
