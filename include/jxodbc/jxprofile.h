/* Reading and changing INI files one key at a time, in C++. (jxini.h is for C, and for several changes at once.)
 *
 *     const auto text = [](const char* plain) { return reinterpret_cast<const unsigned char*>(plain); };
 *     unsigned char server[256];
 *     jxGetPrivateProfileString(text("Sales"), text("Server"), text(""), server, sizeof server, text(".odbc.ini"));
 *     jxWritePrivateProfileString(text("Sales"), text("Server"), text("db.example"), text(".odbc.ini"));
 *
 * The names ".odbc.ini" and ".odbcinst.ini", spelled exactly so, mean the user's two configuration files; every other
 * name is used as spelled. Sizes are in bytes and include the final NUL. All calls may be made from any thread and any
 * process at the same time: writers exclude each other and no change is lost. docs/ini-store.md describes the format
 * and the promises. */
#ifndef JXPROFILE_H
#define JXPROFILE_H

#include "jxexport.h"

JX_EXTERN_C_BEGIN

/* 1 when the calling thread's last read failed (memory was short, the file could not be read), else 0. An absent file,
 * section or key is not a failure. Call it before you act on a fallback: a failed read gives the fallback too. Call it
 * before the next write, which sets it as well. jxIniLastFailure of jxini.h gives the reason. */
JX_EXPORT int jxProfileReadFailed(void);

/* One file under the name it was given. */
typedef struct JxIniFileCache JxIniFileCache;

/* The object for a file, which need not exist; no name is special here. Null for a null name or when memory is short.
 * Release it with jxPrivateProfileTerm, which allows null and writes nothing: each write was final when it returned. An
 * object belongs to one thread at a time. */
JX_EXPORT JxIniFileCache* jxPrivateProfileInit(const unsigned char* file);
JX_EXPORT void jxPrivateProfileTerm(JxIniFileCache* cache);

JX_EXTERN_C_END

#ifdef __cplusplus

/* Copies the value of key in section into buffer, cut at size - 1 bytes and ended with NUL; returns the number of bytes
 * before that NUL. A null key gives the list of the section's keys, a null section the list of sections: each name
 * ended with NUL, the list with a second NUL that the result does not count. A list that is cut ends with one NUL only.
 * fallback is copied instead when the key, section or file is absent or the read failed; null is the empty text.
 * A size of 0 or less or a null buffer, file or cache returns 0 and writes nothing. */
JX_EXPORT int jxGetPrivateProfileString(const unsigned char* section, const unsigned char* key,
                                        const unsigned char* fallback, unsigned char* buffer, int size,
                                        const unsigned char* file);
JX_EXPORT int jxGetPrivateProfileString(const unsigned char* section, const unsigned char* key,
                                        const unsigned char* fallback, unsigned char* buffer, int size,
                                        JxIniFileCache* cache);

/* Stores value under key in section; a null value deletes the key, a null key the whole section. 1 when the file holds
 * the change; when it held it before, it is not touched. 0 when the file is as it was: jxIniLastFailure of jxini.h
 * gives the reason; if its afterRename is set, the change is in the file and only flushing the directory failed. */
JX_EXPORT int jxWritePrivateProfileString(const unsigned char* section, const unsigned char* key,
                                          const unsigned char* value, const unsigned char* file);
JX_EXPORT int jxWritePrivateProfileString(const unsigned char* section, const unsigned char* key,
                                          const unsigned char* value, JxIniFileCache* cache);

#endif

#endif
