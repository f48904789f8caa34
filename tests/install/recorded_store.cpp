// The store as an installation sees it: which calls it is given, in which order.
#include "recorded_store.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <jxprofile.h>

#include <algorithm>

#include "config/text_bytes.h"

namespace jx::test {

namespace {

RecordedStore* storeRecorder = nullptr;

std::string textOf(const unsigned char* text) {
    return text == nullptr ? "(null)" : "'" + std::string(asChars(text)) + "'";
}

std::string nameOf(const unsigned char* file) {
    const std::string path = file == nullptr ? "(null)" : asChars(file);
    return path.substr(path.rfind('/') + 1);
}

std::string nameOf(JxIniFileCache* /*cache*/) {
    return "cache";
}

void noteCall(const std::string& call) {
    if (storeRecorder != nullptr)
        storeRecorder->calls.push_back(call);
}

// The library's own function of that name, which this program's stands before.
template <typename Function>
Function* original(const char* mangledName) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, mangledName));
}

template <typename File>
int get(const char* mangledName, const unsigned char* section, const unsigned char* key, const unsigned char* fallback,
        unsigned char* buffer, int size, File file) {
    if (storeRecorder != nullptr) {
        noteCall("get " + nameOf(file) + " " + textOf(section) + " " + textOf(key) + " " + textOf(fallback) + " " +
                 std::to_string(size));
        EXPECT_TRUE(std::all_of(buffer, buffer + size, [](unsigned char byte) { return byte == 0; }))
            << "a buffer that was not cleared";
    }
    return original<int(const unsigned char*, const unsigned char*, const unsigned char*, unsigned char*, int, File)>(
        mangledName)(section, key, fallback, buffer, size, file);
}

template <typename File>
int put(const char* mangledName, const unsigned char* section, const unsigned char* key, const unsigned char* value,
        File file) {
    noteCall("put " + nameOf(file) + " " + textOf(section) + " " + textOf(key) + " " + textOf(value));
    return original<int(const unsigned char*, const unsigned char*, const unsigned char*, File)>(mangledName)(
        section, key, value, file);
}

}  // namespace

RecordedStore::RecordedStore() {
    storeRecorder = this;
}

RecordedStore::~RecordedStore() {
    storeRecorder = nullptr;
}

}  // namespace jx::test

int jxGetPrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* fallback,
                              unsigned char* buffer, int size, const unsigned char* file) {
    return jx::test::get("_Z25jxGetPrivateProfileStringPKhS0_S0_PhiS0_", section, key, fallback, buffer, size, file);
}

int jxGetPrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* fallback,
                              unsigned char* buffer, int size, JxIniFileCache* cache) {
    return jx::test::get("_Z25jxGetPrivateProfileStringPKhS0_S0_PhiP14JxIniFileCache", section, key, fallback, buffer,
                         size, cache);
}

int jxWritePrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* value,
                                const unsigned char* file) {
    return jx::test::put("_Z27jxWritePrivateProfileStringPKhS0_S0_S0_", section, key, value, file);
}

int jxWritePrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* value,
                                JxIniFileCache* cache) {
    return jx::test::put("_Z27jxWritePrivateProfileStringPKhS0_S0_P14JxIniFileCache", section, key, value, cache);
}

JxIniFileCache* jxPrivateProfileInit(const unsigned char* file) {
    jx::test::noteCall("open " + jx::test::nameOf(file));
    return jx::test::original<JxIniFileCache*(const unsigned char*)>("jxPrivateProfileInit")(file);
}

void jxPrivateProfileTerm(JxIniFileCache* cache) {
    jx::test::noteCall("close");
    jx::test::original<void(JxIniFileCache*)>("jxPrivateProfileTerm")(cache);
}
