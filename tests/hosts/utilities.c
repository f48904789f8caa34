/* The utility library's memory, texts, files, tasks, message boxes and text resources, called from C. */
#include <jxdialog.h>
#include <jxfiles.h>
#include <jxmemory.h>
#include <jxprofile.h>
#include <jxtasks.h>
#include <jxtext.h>
#include <string.h>

#include "host.h"

#define BYTES(text) ((const unsigned char*)(text))

void use_memory(void) {
    unsigned char* zeroed = ramAllocZ(4);
    unsigned char* copy = ramAllocStr(BYTES("text"));
    void* block = ramAlloc(16);
    CHECK(zeroed != NULL && zeroed[0] == 0 && zeroed[3] == 0);
    CHECK(copy != NULL && memcmp(copy, "text", 5) == 0);
    copy = ramResize(copy, 1000);
    CHECK(copy != NULL && memcmp(copy, "text", 5) == 0);
    CHECK(block != NULL);
    ramFree(zeroed);
    ramFree(copy);
    ramFree(block);
    ramFree(NULL);
}

void use_text(void) {
    unsigned char text[32] = "";
    CHECK(BUTSTLEN(BYTES("four")) == 4);
    CHECK(BUTSTCPY(text, BYTES("ab")) == text && BUTSTCAT(text, BYTES("cd")) == text);
    CHECK(BUTSTCMP(text, BYTES("abcd")) == 0 && BUTSTCMP(text, BYTES("ABCD")) > 0);
    CHECK(strCompareCi(text, BYTES("ABCD")) == 0);
    CHECK(BUTMEMCP(text, "xy", 2) == text && memcmp(text, "xycd", 5) == 0);
    CHECK(strFindReverse(BYTES("a/b/c"), '/') != NULL && strcmp((char*)strFindReverse(BYTES("a/b/c"), '/'), "/c") == 0);
    CHECK(strCopy(text, BYTES("longer"), 4) == 3 && memcmp(text, "lon", 4) == 0);
}

void use_files(void) {
    unsigned char path[] = "/opt/libsample.so", base[kBosBaseNameSize], extension[kBosExtensionSize];
    unsigned char pattern[512];
    void* cursor = NULL;
    void* library;
    const unsigned char* found;
    CHECK(bosParseName(path, base, extension, 0) != 0);
    CHECK(strcmp((char*)path, "/opt") == 0 && strcmp((char*)base, "libsample") == 0);
    CHECK(strcmp((char*)extension, "so") == 0);
    CHECK(bosLoadLibrary(BYTES(""), 0) == NULL && bosLastLoadError()[0] != '\0');
    library = bosLoadLibrary(BYTES(host_setup_library), 0);
    CHECK(library != NULL && bosLastLoadError()[0] == '\0');
    put_file("file.txt", "x");
    strCopy(pattern, BYTES(in_folder("*.txt")), sizeof pattern);
    found = bosFindFiles(&cursor, pattern);
    CHECK(found != NULL && strcmp((const char*)found, in_folder("file.txt")) == 0);
    bosEndFind(&cursor);
    CHECK(cursor == NULL);
    CHECK(bosFileDelete(BYTES(in_folder("file.txt"))) == 0);
    CHECK(bosFileDelete(BYTES(host_folder)) != 0);
}

void use_opened_profiles(void) {
    JxIniFileCache* const cache = jxPrivateProfileInit(BYTES(in_folder("own.ini")));
    CHECK(cache != NULL && jxPrivateProfileInit(NULL) == NULL);
    jxPrivateProfileTerm(cache);
    jxPrivateProfileTerm(NULL);
}

void use_tasks(void) {
    CHECK(mdsPerTaskInit() == 1);
    CHECK(mdsGetPerThreadData(PerThreadErrors) != NULL);
    CHECK(mdsPerTaskTerm() == 0);
}

static unsigned int answer_yes(void* context, HWND owner, const char* text, const char* title, unsigned int style) {
    CHECK(context == &host_failures && owner == 5);
    CHECK(strcmp(text, "Overwrite?") == 0 && strcmp(title, "Host") == 0 && style == 36);
    return IDYES;
}

void use_boxes(void) {
    static const JxwString texts[] = {{7, "seven"}, {0, NULL}};
    unsigned char text[256] = "";
    CHECK(JXW_RegisterModule("host", texts, NULL) == 1);
    CHECK(JXW_LoadString("host", 7, text, 0) == 5 && strcmp((char*)text, "seven") == 0);
    CHECK(JXW_SetMessageBoxHandler(answer_yes, &host_failures) == 1);
    CHECK(guiMessageBox(5, BYTES("Overwrite?"), BYTES("Host"), MB_YESNO | MB_ICONQUESTION) == IDYES);
    CHECK(JXW_SetMessageBoxHandler(NULL, NULL) == 1);
    CHECK(JXW_SetCursor(JXW_LoadCursor(0, kJxwWaitCursor)) == kJxwArrowCursor);
    CHECK(JXW_GetCursor() == kJxwWaitCursor && JXW_SetCursor(kJxwArrowCursor) == kJxwWaitCursor);
    CHECK(JXW_SetFocus(12345) == 0);
    CHECK(JXW_PostMessage(12345, 1025, 0, 0) == 0);
}
