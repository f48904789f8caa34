// The action "setup".
#include <dlfcn.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include "odbcadmin/trial/helper/actions.h"
#include "odbcadmin/trial/helper/library.h"
#include "odbcadmin/trial/helper/report.h"

typedef int (*Routine)(void* window, unsigned short request, const char* driver, const char* attributes);

// The error list of libodbcinst.so.1, by the names that its C++ functions have for the loader: JxErrorKeeper::count(),
// JxErrorKeeper::errorAt(unsigned long), JxError::text() const.
typedef unsigned long (*CountErrors)(void);
typedef const void* (*ErrorAt)(unsigned long position);
typedef const char* (*ErrorText)(const void* error);

// The error queue of libodbcinst.so.2.
typedef short (*InstallerError)(unsigned short number, uint32_t* code, char* text, unsigned short size,
                                unsigned short* length);

enum { kMostErrors = 8, kTextSize = 1024 };

// One item after the other, each ended by a NUL, and one more at the end; released by the caller.
static char* attributeList(const Request* request) {
    char* list = malloc(kLongestRequest);
    size_t length = 0;
    size_t at = 0;
    for (const char* item = nextText(request, "attribute", &at); list != NULL && item != NULL;
         item = nextText(request, "attribute", &at)) {
        const size_t size = strlen(item) + 1;
        memcpy(list + length, item, size);
        length += size;
    }
    if (list != NULL)
        list[length] = '\0';
    return list;
}

// What the names mean to the library: its own functions and those of the libraries that it needs.
static void reportErrors(void* library) {
    const CountErrors countErrors = (CountErrors)dlsym(library, "_ZN13JxErrorKeeper5countEv");
    const ErrorAt errorAt = (ErrorAt)dlsym(library, "_ZN13JxErrorKeeper7errorAtEm");
    const ErrorText textOf = (ErrorText)dlsym(library, "_ZNK7JxError4textEv");
    if (countErrors != NULL && errorAt != NULL && textOf != NULL) {
        const unsigned long count = countErrors();
        for (unsigned long i = 0; i < count && i < kMostErrors; ++i)
            report("error", textOf(errorAt(i)));
    }
    const InstallerError installerError = (InstallerError)dlsym(library, "SQLInstallerError");
    for (unsigned short number = 1; installerError != NULL && number <= kMostErrors; ++number) {
        char text[kTextSize + 1] = "";
        uint32_t code = 0;
        unsigned short length = 0;
        const short result = installerError(number, &code, text, kTextSize, &length);
        if (result != 0 && result != 1)
            break;
        report("error", text);
    }
}

void callSetupRoutine(const Request* request) {
    void* library = openLibrary(requestText(request, "library"));
    if (library == NULL) {
        report("refused", openFailure());
        return;
    }
    const char* name = dlsym(library, "CONFIGDSN") != NULL ? "CONFIGDSN" : "ConfigDSN";
    const Routine routine = (Routine)dlsym(library, name);
    char* attributes = attributeList(request);
    if (routine == NULL || attributes == NULL) {
        report("missing", name);
        free(attributes);
        return;
    }
    const unsigned short code = (unsigned short)strtoul(requestText(request, "request"), NULL, 10);
    report("calls", name);
    const int agreed = routine(NULL, code, requestText(request, "driver"), attributes);
    reportErrors(library);
    report(agreed != 0 ? "agreed" : "declined", "");
    free(attributes);
}
