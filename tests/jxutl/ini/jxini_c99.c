/* jxini.h as a program in plain C uses it. */
#include "jxini_c99.h"

#include <string.h>

#include <jxini.h>

#define NEED(condition)      \
    do {                     \
        if (!(condition))    \
            return __LINE__; \
    } while (0)

static const char kBefore[] = "; mine\n[A]\nb = c\n";
static const char kAfter[] = "; mine\n[A]\nb = 2\n";

static int holds(const char* bytes, size_t length, const char* text) {
    return bytes != NULL && length == strlen(text) && memcmp(bytes, text, length) == 0;
}

static int count(void* context, const JxIniPiece* piece) {
    *(size_t*)context += piece->nameLength;
    return 1;
}

static int look(const JxIniText* text) {
    JxIniPiece piece;
    size_t length = 0, names = 0;
    const char* bytes = jxIniBytes(text, &length);
    NEED(holds(bytes, length, kBefore));
    NEED(jxIniPieceCount(text) == 3);
    NEED(jxIniPieceAt(text, 2, &piece) == 1 && piece.kind == JxIniEntry && piece.line == 3);
    NEED(jxIniPieceAt(text, 3, &piece) == 0);
    NEED(jxIniFind(text, "a", "B", &piece) == 1);
    NEED(holds(piece.value, piece.valueLength, "c"));
    NEED(jxIniEach(text, "A", count, &names) == 1 && names == 1);
    return 0;
}

static int change(const char* file) {
    size_t length = 0;
    const char* bytes;
    JxIniChange* preview = jxIniPreview(file);
    JxIniChange* change = jxIniBegin(file);
    NEED(preview != NULL && change != NULL);
    NEED(jxIniSet(preview, "A", "b", "9") == 1 && jxIniCommit(preview) == 0);
    NEED(jxIniSet(change, "A", "b=", "2") == 0 && jxIniSet(change, "A", "b", "2") == 1);
    bytes = jxIniBefore(change, &length);
    NEED(holds(bytes, length, kBefore));
    bytes = jxIniAfter(change, &length);
    NEED(holds(bytes, length, kAfter));
    NEED(jxIniCommit(change) == 1 && jxIniLastFailure().step == JxIniStepNone);
    change = jxIniBegin(file);
    NEED(change != NULL && jxIniSet(change, "A", NULL, NULL) == 1);
    jxIniDiscard(change);
    return 0;
}

static int replace_text(const char* file) {
    const long wait = jxIniSetLockWait(0);
    JxIniChange* change = jxIniBegin(file);
    const JxIniSetting settings[] = {{"A", "b", "1"}, {"C", "d", NULL}};
    NEED(jxIniSetAll(change, settings, 1) == 1 && jxIniSetAll(change, settings, 2) == 0);
    NEED(wait == 10000 && jxIniReplace(change, "", 0) == 1 && jxIniReplace(NULL, "", 0) == 0);
    jxIniDiscard(change);
    NEED(jxIniSetLockWait(wait) == 0);
    return 0;
}

static int run(void) {
    JxIniRun* run = jxIniBeginRun();
    NEED(run != NULL && jxIniCommitRun(run) == 1);
    jxIniDiscardRun(jxIniBeginRun());
    NEED(jxIniLockInRun("x.ini") == 0);
    return 0;
}

int use_jxini(const char* file) {
    char room[64];
    int line;
    JxIniText* text = jxIniParse(kBefore, sizeof kBefore - 1);
    line = look(text);
    jxIniRelease(text);
    if (line != 0)
        return line;
    text = jxIniRead(file);
    line = look(text);
    jxIniRelease(text);
    if (line != 0)
        return line;
    NEED(replace_text(file) == 0);
    NEED(jxIniPath(file, room, sizeof room) == strlen(file));
    NEED(jxIniRead("") == NULL && jxIniFailureText(room, sizeof room) > 0);
    line = run();
    return line != 0 ? line : change(file);
}
