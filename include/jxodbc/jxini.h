/* The INI store for programs that need more than the profile calls: several changes at once, the lines of a file,
 * values of any length, the reason of a failure.
 *
 *     char reason[1024];
 *     JxIniChange* change = jxIniBegin(".odbc.ini");
 *     if (!jxIniSet(change, "Sales", "Timeout", "30") || !jxIniSet(change, "Sales", "Password", NULL)) {
 *         jxIniDiscard(change);
 *     } else if (!jxIniCommit(change)) {
 *         jxIniFailureText(reason, sizeof reason);
 *         fprintf(stderr, "%s\n", reason);
 *     }
 *
 * The names ".odbc.ini" and ".odbcinst.ini", spelled exactly so, mean the user's two files; every other name is used as
 * spelled. Texts are bytes; lengths are in bytes without a NUL. An object belongs to one thread at a time; only one
 * change of a file can be open. A thread that is cancelled inside a call completes it first. Plain C can include this
 * header. docs/ini-store.md describes the format and the promises. */
#ifndef JXINI_H
#define JXINI_H

#include <stddef.h>

#include "jxexport.h"
#include "jxprofile.h"

JX_EXTERN_C_BEGIN

/* ---- failures ---- */

/* What was being done when it failed. */
typedef enum JxIniStep {
    JxIniStepNone = 0, /* nothing failed */
    JxIniStepArgument, /* a section, key or value that cannot be stored, a null argument, the commit of a preview */
    JxIniStepMemory,
    JxIniStepLocate, /* finding the home directory or following symbolic links (EACCES: one is not to be trusted) */
    JxIniStepLook,   /* asking for the file's state */
    JxIniStepOpen,
    JxIniStepRead,
    JxIniStepLock,      /* making or locking .NAME.jxlock, waiting for it (ETIMEDOUT), another file there (EEXIST) */
    JxIniStepWrite = 9, /* making or writing the new file */
    JxIniStepMode,
    JxIniStepOwner,
    JxIniStepFlush,
    JxIniStepRename,         /* putting it in place (ESTALE: another program put its own there meanwhile) */
    JxIniStepFlushDirectory, /* the new text is in place then */
    JxIniStepRemove
} JxIniStep;

typedef struct JxIniFailure {
    JxIniStep step;
    int error;        /* errno at that step */
    int afterRename;  /* 1 when the new text was already in place */
    const char* path; /* the file of that step; owned by the thread, valid until its next call into the store */
} JxIniFailure;

/* The calling thread's last failure; step is JxIniStepNone when its last read or write of a file succeeded. For a
 * profile read an absent file is not a failure. */
JX_EXPORT JxIniFailure jxIniLastFailure(void);

/* One English sentence for that failure, cut to size bytes with its NUL; returns its full length, 0 when nothing
 * failed: Cannot replace /home/a/.odbc.ini: Device or resource busy /home/a/.odbc.ini: cannot store the key "a=b":
 * it holds = It never holds a value, which could be a password. */
JX_EXPORT size_t jxIniFailureText(char* buffer, size_t size);

/* ---- where the files are ---- */

/* The path that file stands for at this moment, cut to size bytes with its NUL; returns its full length. 0 and an empty
 * text for a null or empty name, without a home directory, or when memory is short. */
JX_EXPORT size_t jxIniPath(const char* file, char* buffer, size_t size);

/* ---- reading ---- */

typedef enum JxIniKind {
    JxIniBlank,   /* nothing but blanks */
    JxIniComment, /* first non-blank is ; or # */
    JxIniSection, /* a section header */
    JxIniEntry,   /* a key, with or without = and value */
    JxIniOther    /* a byte order mark, an unclosed header, a key with no name */
} JxIniKind;

/* One line with its line end; a byte order mark is a piece of its own. The pieces of a text, joined, are the text. */
typedef struct JxIniPiece {
    JxIniKind kind;
    size_t begin, end; /* the bytes of the text it covers */
    size_t line;       /* counted from 1 */
    const char* name;  /* section name or key, trimmed, not NUL-terminated; null for the other kinds */
    size_t nameLength;
    const char* value; /* value, trimmed; null when there is no = */
    size_t valueLength;
} JxIniPiece;

/* A text that does not change. When a call below returns null for it, jxIniLastFailure gives the reason. */
typedef struct JxIniText JxIniText;

/* Reads a file; an absent one is a failure (step Open, errno ENOENT). Release the text with jxIniRelease, which allows
 * null. */
JX_EXPORT JxIniText* jxIniRead(const char* file);

/* A text from a copy of length bytes; bytes may be null when length is 0. */
JX_EXPORT JxIniText* jxIniParse(const char* bytes, size_t length);
JX_EXPORT void jxIniRelease(JxIniText* text);

/* The whole text, followed by a NUL, and its length (length may be null). The text owns it. Null and 0 for null. */
JX_EXPORT const char* jxIniBytes(const JxIniText* text, size_t* length);

/* The number of pieces; 0 for null. */
JX_EXPORT size_t jxIniPieceCount(const JxIniText* text);

/* Fills *piece with piece number index (from 0); 1, or 0 outside the text. The text owns what piece points to. */
JX_EXPORT int jxIniPieceAt(const JxIniText* text, size_t index, JxIniPiece* piece);

/* Finds the entry whose value a profile read of key in section gives and fills *piece (which may be null) with it; 1,
 * or 0 when there is none. A null key finds the first header of the section. */
JX_EXPORT int jxIniFind(const JxIniText* text, const char* section, const char* key, JxIniPiece* piece);

/* Calls visit for every key that a profile read lists for section, in order, with the key's first piece; for a null
 * section, with the first header of every section. Ends when visit returns 0. Returns the number of visits; 0 also when
 * memory is short. An exception of visit passes through. */
typedef int (*JxIniVisit)(void* context, const JxIniPiece* piece);
JX_EXPORT size_t jxIniEach(const JxIniText* text, const char* section, JxIniVisit visit, void* context);

/* ---- asking a file that seldom changes ---- */

/* What a file holds, for a program that asks it many things and often:
 *
 *     JxIniFileCache* file = jxPrivateProfileInit((const unsigned char*)"/etc/odbc.ini");
 *     JxIniView* view = jxIniLook(file);
 *     JxIniPart server;
 *     if (view != NULL && jxIniAsk(view, "Sales", "Server", &server) == JxIniFound)
 *         fwrite(server.text, 1, server.length, stdout);
 *
 * It is the text that the thread's profile reads keep, so a file that did not change is neither opened nor read again.
 */
typedef struct JxIniView JxIniView;

/* Looks at the file once, and reads it when it is another than before. Null when it is absent (jxIniLastFailure then
 * has step JxIniStepNone) or cannot be read. The view belongs to the calling thread; it is valid until that thread
 * looks at this file again or at ten other files, here or with a profile read. */
JX_EXPORT JxIniView* jxIniLook(JxIniFileCache* file);

typedef enum JxIniAnswer {
    JxIniFound,
    JxIniNoKey,     /* the section is there, the key is not */
    JxIniNoSection, /* also for a name that nobody can ask for: an empty one */
    JxIniAskFailed  /* memory was short */
} JxIniAnswer;

/* Bytes of a view, not ended with NUL; valid until the view is asked again. */
typedef struct JxIniPart {
    const char* text;
    size_t length;
} JxIniPart;

/* Finds the value that a profile read of key in section gives, and fills *part with it. A null key asks for the list of
 * the section's keys, a null section for the list of sections, each name ended with NUL. With JxIniNoKey *part has no
 * text, and its length is the number of the section's keys that hold an @, as those do whose value lies elsewhere; with
 * the other answers it stays as it is. No memory is taken for a key of a section that was asked for before. */
JX_EXPORT JxIniAnswer jxIniAsk(JxIniView* view, const char* section, const char* key, JxIniPart* part);

/* The line, counted from 1, on which that value stands; of the section's first header for a null key; 0 when there is
 * none. It goes over the text, and takes as long. */
JX_EXPORT size_t jxIniLine(JxIniView* view, const char* section, const char* key);

/* ---- changing ---- */

/* Several changes of one file that happen together or not at all. */
typedef struct JxIniChange JxIniChange;

/* How long the calling thread's writes wait for the lock of a file, whatever function they go through: 10000
 * milliseconds, until it sets another time here. 0: they fail at once when another writer has the lock. Returns the
 * time that was set before; or -1, and changes nothing, when milliseconds is negative or memory is short. */
JX_EXPORT long jxIniSetLockWait(long milliseconds);

/* Locks the file, waiting at most 10 seconds (or as jxIniSetLockWait says), and reads it; an absent one is empty. Null
 * when that fails. Every other writer of the file waits until jxIniCommit or jxIniDiscard, so end the change soon. */
JX_EXPORT JxIniChange* jxIniBegin(const char* file);

/* The same for a file that everybody reads: a new file gets the mode 0666 less the umask instead of 0600. */
JX_EXPORT JxIniChange* jxIniBeginShared(const char* file);

/* As jxIniBegin, but without the lock, to see what a change would do: jxIniCommit refuses it. */
JX_EXPORT JxIniChange* jxIniPreview(const char* file);

/* Stores value under key in section; a null value deletes the key, a null key the section. Nothing reaches the disk
 * yet. 1, or 0 when the text cannot be stored, memory is short or change is null: the change is then as before. */
JX_EXPORT int jxIniSet(JxIniChange* change, const char* section, const char* key, const char* value);

/* A value to store; none of the three may be null. */
typedef struct JxIniSetting {
    const char* section;
    const char* key;
    const char* value;
} JxIniSetting;

/* As jxIniSet for each of count settings in order, but all of them or none, and in time that grows with the text and
 * the settings, not with both multiplied. 1, or 0 as jxIniSet; settings may be null when count is 0. */
JX_EXPORT int jxIniSetAll(JxIniChange* change, const JxIniSetting* settings, size_t count);

/* Makes length bytes the file's whole text, as an editor does; bytes may be null when length is 0. Nothing reaches the
 * disk yet. 1, or 0 when memory is short, change is null, or bytes is null for another length. */
JX_EXPORT int jxIniReplace(JxIniChange* change, const char* bytes, size_t length);

/* The file's text as it was read, and with the changes so far, each followed by a NUL; length may be null. The change
 * owns them; the second is valid until the next jxIniSet. Null and 0 for null. */
JX_EXPORT const char* jxIniBefore(const JxIniChange* change, size_t* length);
JX_EXPORT const char* jxIniAfter(const JxIniChange* change, size_t* length);

/* Writes the new text, unless nothing changed, unlocks and releases change. 1, and the new text survives a power cut;
 * or 0 with the file as it was, unless afterRename of jxIniLastFailure is set. Null returns 0. */
JX_EXPORT int jxIniCommit(JxIniChange* change);

/* Unlocks and releases change; the file is as it was. Null is allowed. */
JX_EXPORT void jxIniDiscard(JxIniChange* change);

/* ---- several writes as one ---- */

/* A run: from its beginning to its end the calling thread's writes, of whatever function, are kept back, and its reads
 * see what it has written so far. Then each file is written once, in the order in which the files were first written.
 *
 *     JxIniRun* run = jxIniBeginRun();
 *     ... jxWritePrivateProfileString(...), jxIniBegin(...) and jxIniCommit(...), as often as needed ...
 *     if (!jxIniCommitRun(run))
 *         ... jxIniLastFailure() says why ...
 *
 * A file is locked from its first write to the end of the run, so other threads and processes that write it wait, and
 * give up after 10 seconds: end the run before anything that waits for a user or for another process. Inside a run
 * jxIniCommit adds to the run. A run that is begun inside another is part of it, and ends before it. If the thread
 * ends, its run is given up. */
typedef struct JxIniRun JxIniRun;

/* Null when memory is short. Touches no file. */
JX_EXPORT JxIniRun* jxIniBeginRun(void);

/* Writes the files and releases run. 1, and all of it survives a power cut; or 0: when one of the writes failed,
 * because its file could not be locked or read or memory was short, no file is written; when a file cannot be written
 * now, it and the files after it are as they were. A write whose text was refused does not count as failed. For a run
 * inside another it only releases run. Null returns 0. */
JX_EXPORT int jxIniCommitRun(JxIniRun* run);

/* Gives up all writes of the run and releases it; the files are as they were. Of a run inside another: the commit of
 * the outer one then fails, and writes nothing; the reason is the thread's last failure, or ECANCELED. Null is allowed.
 */
JX_EXPORT void jxIniDiscardRun(JxIniRun* run);

/* Locks file for the calling thread's run, as its first write would. Two runs that write the same two files in opposite
 * orders would wait for each other: lock them in one order before. 1, or 0 when the thread has no run or the file
 * cannot be locked or read; the run goes on then, and fails with the first write that would change the file. */
JX_EXPORT int jxIniLockInRun(const char* file);

JX_EXTERN_C_END

#endif
