/* The INI store's own interface, called from C. */
#include <jxini.h>
#include <jxprofile.h>
#include <string.h>

#include "host.h"

static const char before[] = "; mine\n[A]\nb=c\n";

static int count_keys(void* context, const JxIniPiece* piece) {
    *(int*)context += piece->nameLength == 1 && piece->name[0] == 'b';
    return 1;
}

static void look_at(const JxIniText* text) {
    JxIniPiece piece;
    size_t length = 0;
    int keys = 0;
    CHECK(memcmp(jxIniBytes(text, &length), before, sizeof before - 1) == 0 && length == sizeof before - 1);
    CHECK(jxIniPieceCount(text) == 3);
    CHECK(jxIniPieceAt(text, 0, &piece) == 1 && piece.kind == JxIniComment && piece.line == 1);
    CHECK(jxIniFind(text, "a", "B", &piece) == 1 && piece.line == 3);
    CHECK(piece.valueLength == 1 && piece.value[0] == 'c');
    CHECK(jxIniEach(text, "A", count_keys, &keys) == 1 && keys == 1);
}

static void change(const char* file) {
    size_t length = 0;
    JxIniChange* preview = jxIniPreview(file);
    JxIniChange* change = jxIniBegin(file);
    CHECK(jxIniSet(preview, "A", "x", "1") == 1);
    CHECK(jxIniCommit(preview) == 0);
    CHECK(jxIniSet(change, "A", "b", "2") == 1);
    CHECK(memcmp(jxIniBefore(change, &length), before, sizeof before - 1) == 0);
    CHECK(memcmp(jxIniAfter(change, &length), "; mine\n[A]\nb=2\n", sizeof before - 1) == 0);
    CHECK(jxIniCommit(change) == 1);
    CHECK(file_holds("own.ini", "; mine\n[A]\nb=2\n"));
    change = jxIniBegin(file);
    CHECK(jxIniSet(change, "A", NULL, NULL) == 1);
    jxIniDiscard(change);
    CHECK(file_holds("own.ini", "; mine\n[A]\nb=2\n"));
}

static void replace_text(const char* file) {
    const long wait = jxIniSetLockWait(0);
    JxIniChange* change = jxIniBegin(file);
    size_t length = 0;
    const JxIniSetting settings[] = {{"A", "b", "1"}, {"C", "d", "2"}};
    CHECK(jxIniSetAll(change, settings, 2) == 1);
    CHECK(memcmp(jxIniAfter(change, &length), "; mine\n[A]\nb=1\n\n[C]\nd=2\n", 26) == 0 && length == 26);
    CHECK(jxIniReplace(change, "[B]\n", 4) == 1);
    CHECK(memcmp(jxIniAfter(change, &length), "[B]\n", 4) == 0 && length == 4);
    jxIniDiscard(change);
    CHECK(jxIniSetLockWait(wait) == 0);
}

static void ask(const char* file) {
    JxIniFileCache* opened = jxPrivateProfileInit((const unsigned char*)file);
    JxIniView* view = jxIniLook(opened);
    JxIniPart part;
    CHECK(jxIniAsk(view, "A", "b", &part) == JxIniFound && part.length == 1 && part.text[0] == 'c');
    CHECK(jxIniAsk(view, "A", "x", &part) == JxIniNoKey);
    CHECK(jxIniAsk(view, "B", "x", &part) == JxIniNoSection);
    CHECK(jxIniLine(view, "A", "b") == 3);
    jxPrivateProfileTerm(opened);
}

static void begin_shared(const char* file) {
    JxIniChange* change = jxIniBeginShared(file);
    CHECK(jxIniSet(change, "A", "b", "3") == 1);
    jxIniDiscard(change);
}

static void run(const char* file) {
    JxIniRun* run = jxIniBeginRun();
    JxIniChange* change = jxIniBegin(file);
    CHECK(jxIniSet(change, "A", "b", "3") == 1 && jxIniCommit(change) == 1);
    CHECK(file_holds("own.ini", "; mine\n[A]\nb=2\n"));
    CHECK(jxIniLockInRun(file) == 1);
    CHECK(jxIniCommitRun(run) == 1);
    CHECK(jxIniLockInRun(file) == 0);
    CHECK(file_holds("own.ini", "; mine\n[A]\nb=3\n"));
    run = jxIniBeginRun();
    change = jxIniBegin(file);
    CHECK(jxIniSet(change, "A", "b", "4") == 1 && jxIniCommit(change) == 1);
    jxIniDiscardRun(run);
    CHECK(file_holds("own.ini", "; mine\n[A]\nb=3\n"));
}

void use_ini_store(void) {
    char path[512], sentence[512] = "";
    JxIniText* text;
    put_file("own.ini", before);
    CHECK(jxIniPath(".odbc.ini", path, sizeof path) == strlen(path) && strcmp(path, in_folder(".odbc.ini")) == 0);
    text = jxIniParse(before, sizeof before - 1);
    look_at(text);
    jxIniRelease(text);
    snprintf(path, sizeof path, "%s", in_folder("own.ini"));
    text = jxIniRead(path);
    look_at(text);
    jxIniRelease(text);
    ask(path);
    begin_shared(path);
    replace_text(path);
    change(path);
    run(path);
    CHECK(jxIniRead(in_folder("none.ini")) == NULL);
    CHECK(jxIniLastFailure().step != JxIniStepNone && jxIniLastFailure().error != 0);
    CHECK(jxIniFailureText(sentence, sizeof sentence) == strlen(sentence) && sentence[0] != '\0');
    CHECK(jxProfileReadFailed() == 1);
    jxIniRelease(jxIniRead(path));
    CHECK(jxProfileReadFailed() == 0);
}
