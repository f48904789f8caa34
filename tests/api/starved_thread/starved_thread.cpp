// A program with a thread for which every allocation fails at its first calls of the library, which the program links
// (JX_LINKS) or loads from the given path. Exit code 0 when the calls failed, and worked once there was memory again.
#include <dlfcn.h>
#include <odbcinst.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

extern "C" {

// The C library's own allocator, under the names it has for programs that replace malloc.
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);

thread_local bool starved = false;

// The loader and the C library use these, too.
JX_EXPORT void* malloc(size_t size) {
    return starved ? nullptr : __libc_malloc(size);
}

JX_EXPORT void* calloc(size_t count, size_t size) {
    return starved ? nullptr : __libc_calloc(count, size);
}

JX_EXPORT void* realloc(void* block, size_t size) {
    return starved ? nullptr : __libc_realloc(block, size);
}
}

namespace {

using Read = decltype(&SQLGetPrivateProfileString);
using Write = decltype(&SQLWritePrivateProfileString);

struct Functions {
    Read read;
    Write write;
};

#ifdef JX_LINKS
Functions functions(const char*) {
    return {SQLGetPrivateProfileString, SQLWritePrivateProfileString};
}
#else
Functions functions(const char* library) {
    void* loaded = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    if (loaded == nullptr)
        return {nullptr, nullptr};
    return {reinterpret_cast<Read>(dlsym(loaded, "SQLGetPrivateProfileString")),
            reinterpret_cast<Write>(dlsym(loaded, "SQLWritePrivateProfileString"))};
}
#endif

bool reads(const Functions& call, const char* expected) {
    char value[32] = "";
    call.read("S", "k", "default", value, sizeof value, ".odbc.ini");
    return std::strcmp(value, expected) == 0;
}

bool survives(const Functions& call) {
    starved = true;
    const bool wrote = call.write("S", "k", "never", ".odbc.ini") != 0;
    const bool defaulted = reads(call, "default") || reads(call, "stored");
    starved = false;
    return !wrote && defaulted && reads(call, "stored");
}

}  // namespace

int main(int count, char** arguments) {
    const Functions call = functions(count == 2 ? arguments[1] : "");
    char home[] = "/tmp/jxodbc-starved-XXXXXX";
    if (call.read == nullptr || call.write == nullptr || mkdtemp(home) == nullptr || setenv("HOME", home, 1) != 0)
        return 2;
    unsetenv("ODBCINI");
    bool fine = false;
    if (call.write("S", "k", "stored", ".odbc.ini") != 0)
        std::thread([&] { fine = survives(call); }).join();
    char file[sizeof home + 16];
    std::snprintf(file, sizeof file, "%s/.odbc.ini", home);
    fine = std::remove(file) == 0 && std::remove(home) == 0 && fine;
    return fine ? 0 : 1;
}
