/* The INI store for programs that need more than the profile calls: the pieces of a file with their line numbers,
 * look-ups without a size limit, several changes committed at once, the text before and after, the last failure.
 *
 * File names: ".odbc.ini" and ".odbcinst.ini", spelled exactly so, mean the user's two files; every other name is used
 * as spelled. Texts are bytes; lengths are in bytes and count no NUL. Objects belong to one thread at a time; two
 * objects on one file take turns. Plain C can include this header. The promises are written down in docs/ini-store.md.
 */
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
    JxIniStepArgument, /* a section, key or value the file could not hold was refused */
    JxIniStepMemory,
    JxIniStepLocate, /* finding the home directory or following symbolic links */
    JxIniStepLook,   /* asking for the file's state */
    JxIniStepOpen,
    JxIniStepRead,
    JxIniStepTurn,  /* making or locking NAME.lock, or waiting for the turn (errno ETIMEDOUT) */
    JxIniStepEmpty, /* emptying NAME.lock */
    JxIniStepWrite,
    JxIniStepMode,
    JxIniStepOwner,
    JxIniStepFlush,
    JxIniStepRename,
    JxIniStepFlushDirectory, /* the new text is in place then */
    JxIniStepRemove
} JxIniStep;

typedef struct JxIniFailure {
    JxIniStep step;
    int error;        /* errno at that step */
    int afterRename;  /* 1 when the new text was already in place */
    const char* path; /* the file of that step; owned by the thread, valid until its next call into the store */
} JxIniFailure;

/* The calling thread's last failure; step is JxIniStepNone when its last read or write of a file succeeded. An absent
 * file is no failure of a read. */
JX_EXPORT JxIniFailure jxIniLastFailure(void);

/* One English sentence for that failure, such as "Cannot rename /home/a/.odbc.ini.lock: No space left on device", cut
 * to size bytes with its NUL; returns its full length. A refusal says which text and why, "/home/a/.odbc.ini: cannot
 * store the key "a=b": it holds =", and never repeats a value. An empty text when nothing failed. */
JX_EXPORT size_t jxIniFailureText(char* buffer, size_t size);

/* ---- where the files are ---- */

/* The path that file stands for at this moment, cut to size bytes with its NUL; returns its full length, or 0 when
 * there is none (a null or empty name, no home directory). */
JX_EXPORT size_t jxIniPath(const char* file, char* buffer, size_t size);

/* ---- reading ---- */

typedef enum JxIniKind {
    JxIniBlank,   /* nothing but blanks */
    JxIniComment, /* first non-blank is ; or # */
    JxIniSection, /* a section header */
    JxIniEntry,   /* a key, with or without = and value */
    JxIniOther    /* a byte order mark, an unclosed header, a key with no name */
} JxIniKind;

/* One line with its line end (the byte order mark is a piece of its own). The pieces of a text, joined, are the text.
 */
typedef struct JxIniPiece {
    JxIniKind kind;
    size_t begin, end; /* the bytes of the text it covers */
    size_t line;       /* counted from 1 */
    const char* name;  /* section name or key, trimmed, not NUL-terminated; null when the kind has none */
    size_t nameLength;
    const char* value; /* value, trimmed; null when there is no = */
    size_t valueLength;
} JxIniPiece;

/* A text that was read once and does not change; null from the calls below means see jxIniLastFailure. */
typedef struct JxIniText JxIniText;

/* Reads a file. An absent file is a failure here (step Look or Open, errno ENOENT). Release it with jxIniRelease, which
 * allows null. */
JX_EXPORT JxIniText* jxIniRead(const char* file);

/* Takes a copy of length bytes as the text. */
JX_EXPORT JxIniText* jxIniParse(const char* bytes, size_t length);
JX_EXPORT void jxIniRelease(JxIniText* text);

/* The whole text; owned by it. */
JX_EXPORT const char* jxIniBytes(const JxIniText* text, size_t* length);

JX_EXPORT size_t jxIniPieceCount(const JxIniText* text);

/* Fills *piece with piece number index (from 0); 1, or 0 outside the text. Its pointers are owned by the text. */
JX_EXPORT int jxIniPieceAt(const JxIniText* text, size_t index, JxIniPiece* piece);

/* Finds the entry that a look-up of key in section answers with and fills *piece (which may be null) with it; 1, or 0
 * when there is none. A null key finds the first header of the section. */
JX_EXPORT int jxIniFind(const JxIniText* text, const char* section, const char* key, JxIniPiece* piece);

/* Calls visit for every key that a list of section holds, in order, with its first piece; a null section visits the
 * first header of every section. A visit that returns 0 ends the walk. Returns the number of visits. Exceptions pass
 * through. */
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

/* Takes the turn, waiting at most 10 seconds, and reads the file (an absent one is empty). Null when that fails. While
 * the object lives, every other writer of the file waits: end it soon, with jxIniCommit or jxIniDiscard. */
JX_EXPORT JxIniChange* jxIniBegin(const char* file);

/* The same for a file that everybody reads: one that is made new gets the mode 0666 less the umask instead of 0600. */
JX_EXPORT JxIniChange* jxIniBeginShared(const char* file);

/* The same as jxIniBegin without the turn, to look at what a change would do: jxIniCommit refuses it. */
JX_EXPORT JxIniChange* jxIniPreview(const char* file);

/* Stores, or deletes with null as jxWritePrivateProfileString does; 1, or 0 when refused: the change is then as before
 * the call. Nothing reaches the disk. */
JX_EXPORT int jxIniSet(JxIniChange* change, const char* section, const char* key, const char* value);

/* The file's text when the turn was taken, and with the changes so far; owned by the change, the second valid until the
 * next jxIniSet. */
JX_EXPORT const char* jxIniBefore(const JxIniChange* change, size_t* length);
JX_EXPORT const char* jxIniAfter(const JxIniChange* change, size_t* length);

/* Writes the new text, unless nothing changed, gives the turn back and releases change; 1, or 0 with the file as it was
 * (except as JxIniFailure::afterRename tells). Null returns 0. */
JX_EXPORT int jxIniCommit(JxIniChange* change);

/* Gives the turn back and releases change; null is allowed. The file is as it was. */
JX_EXPORT void jxIniDiscard(JxIniChange* change);

JX_EXTERN_C_END

#endif
