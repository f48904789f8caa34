// Opening libraries.
#include "odbcadmin/trial/helper/library.h"

#include <dlfcn.h>
#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

typedef ElfW(Ehdr) FileHeader;
typedef ElfW(Phdr) Segment;

// Whether a segment reaches beyond the end of its file. The loader maps it all the same and dies when it looks there.
static bool isCut(int descriptor) {
    struct stat status;
    FileHeader header;
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) ||
        pread(descriptor, &header, sizeof header, 0) != sizeof header || memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
        header.e_phentsize != sizeof(Segment))
        return false;
    const uint64_t size = (uint64_t)status.st_size;
    for (unsigned i = 0; i < header.e_phnum; ++i) {
        Segment segment;
        const off_t at = (off_t)(header.e_phoff + i * sizeof segment);
        if (pread(descriptor, &segment, sizeof segment, at) != sizeof segment)
            return false;
        if (segment.p_type == PT_LOAD && (segment.p_offset > size || segment.p_filesz > size - segment.p_offset))
            return true;
    }
    return false;
}

static bool isCutFile(const char* path) {
    const int descriptor = strchr(path, '/') != NULL ? open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK) : -1;
    if (descriptor < 0)
        return false;
    const bool result = isCut(descriptor);
    close(descriptor);
    return result;
}

static char failure[5000];

static void* fail(const char* path, const char* why) {
    snprintf(failure, sizeof failure, "%s%s", path, why);
    return NULL;
}

static const char* installer = "";

void useInstaller(const char* path) {
    installer = path;
}

// As a program has it that was started with this product's library in front. Where another one is found, that answers:
// what is tried here is what programs get.
static void* openWithInstaller(const char* path) {
    const bool lacksIt = strncmp(failure, "libodbcinst.so.2:", strlen("libodbcinst.so.2:")) == 0;
    if (!lacksIt || *installer == '\0' || dlopen(installer, RTLD_NOW | RTLD_LOCAL) == NULL)
        return NULL;
    return dlopen(path, RTLD_NOW | RTLD_LOCAL);
}

void* openLibrary(const char* path) {
    // The loader would take it for the program itself.
    if (*path == '\0')
        return fail(path, "no library is named");
    if (isCutFile(path))
        return fail(path, ": file too short");
    void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library != NULL)
        return library;
    fail("", dlerror());
    return openWithInstaller(path);
}

const char* openFailure(void) {
    return failure;
}
