// The shared memory and what stands in it.
#include "odbcadmin/trial/helper/report.h"

#include <errno.h>
#include <stdatomic.h>
#include <stddef.h>
#include <stdio.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

enum { kRoom = 1 << 20 };

typedef struct {
    atomic_size_t used;  // of complete records
    bool isFull;
    char text[kRoom];
} Shared;

static Shared* shared;

bool openReport(void) {
    void* memory = mmap(NULL, sizeof *shared, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        return false;
    shared = memory;
    return true;
}

// False when there is no room for it.
static bool add(size_t* at, char letter) {
    if (*at >= kRoom)
        return false;
    shared->text[(*at)++] = letter;
    return true;
}

static bool addText(size_t* at, const char* text) {
    for (; *text != '\0'; ++text) {
        const bool isEscaped = *text == '\\' || *text == '\n';
        if (isEscaped && !add(at, '\\'))
            return false;
        if (!add(at, (char)(*text == '\n' ? 'n' : *text)))
            return false;
    }
    return true;
}

void report(const char* word, const char* text) {
    size_t at = atomic_load(&shared->used);
    if (shared->isFull || at > kRoom)
        return;
    if (addText(&at, word) && add(&at, ' ') && addText(&at, text) && add(&at, '\n'))
        atomic_store(&shared->used, at);
    else
        shared->isFull = true;
}

void reportNumber(const char* word, long number) {
    char text[32];
    snprintf(text, sizeof text, "%ld", number);
    report(word, text);
}

void writeReport(int descriptor) {
    size_t length = atomic_load(&shared->used);
    if (length > kRoom)
        length = kRoom;
    for (size_t written = 0; written < length;) {
        const ssize_t count = write(descriptor, shared->text + written, length - written);
        if (count < 0 && errno != EINTR)
            return;
        written += count > 0 ? (size_t)count : 0;
    }
}
