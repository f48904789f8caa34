// Loading shared libraries: what loads, what does not, and the reason kept for each thread.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <thread>

#include <jxfiles.h>
#include "allocations.h"
#include "test_home.h"

namespace {

using jx::test::ShortMemory;

void* load(const std::string& path) {
    return bosLoadLibrary(reinterpret_cast<const unsigned char*>(path.c_str()), 0);
}

std::string reason() {
    return reinterpret_cast<const char*>(bosLastLoadError());
}

TEST(Libraries, AGoodLibraryLoadsAndAnswers) {
    void* library = load(JX_GOOD_LIBRARY);
    ASSERT_NE(library, nullptr) << reason();
    using Answer = int (*)();
    const auto answer = reinterpret_cast<Answer>(dlsym(library, "jxFixtureAnswer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(dlclose(library), 0);
}

TEST(Libraries, SymbolsStayPrivateToTheirLibrary) {
    void* library = load(JX_GOOD_LIBRARY);
    ASSERT_NE(library, nullptr) << reason();
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "jxFixtureAnswer"), nullptr);
    dlclose(library);
}

TEST(Libraries, AMissingSymbolIsFoundWhileLoading) {
    // With lazy binding it loads: only the missing symbol makes it fail below.
    void* unchecked = dlopen(JX_INCOMPLETE_LIBRARY, RTLD_LAZY | RTLD_LOCAL);
    ASSERT_NE(unchecked, nullptr) << dlerror();
    dlclose(unchecked);

    EXPECT_EQ(load(JX_INCOMPLETE_LIBRARY), nullptr);
    EXPECT_NE(reason().find("jxFixtureDefinedNowhere"), std::string::npos) << reason();
}

TEST(Libraries, NullAndEmptyPathsNeverNameTheProgram) {
    EXPECT_EQ(bosLoadLibrary(nullptr, 0), nullptr);
    EXPECT_EQ(reason(), "no library is named");
    EXPECT_EQ(load(""), nullptr);
    EXPECT_EQ(reason(), "no library is named");
}

TEST(Libraries, AFileThatWasCopiedInPartFailsAtEveryLength) {
    const jx::test::TestHome home;
    const std::string path = home.file("libhalf.so");
    std::filesystem::copy_file(JX_GOOD_LIBRARY, path);
    // What the loader maps ends somewhere before the end of the file, where the names of symbols for debuggers stand.
    bool hasFailed = false;
    for (std::uintmax_t size = std::filesystem::file_size(path); size > 0; size = size > 512 ? size - 512 : size / 2) {
        SCOPED_TRACE(size);
        std::filesystem::resize_file(path, size);
        void* library = load(path);
        EXPECT_FALSE(library != nullptr && hasFailed);
        hasFailed = library == nullptr;
        if (hasFailed)
            EXPECT_EQ(reason().substr(0, path.size() + 2), path + ": ");
        else
            dlclose(library);
    }
    EXPECT_TRUE(hasFailed);
}

TEST(Libraries, FilesThatAreNotLibrariesFailWithTheirName) {
    const jx::test::TestHome home{{"libtext.so", "This is a text.\n"},
                                  {"libempty.so", ""},
                                  {"libshort.so",
                                   "\x7f"
                                   "ELF"}};
    for (const std::string& path : {home.file("libtext.so"), home.file("libempty.so"), home.file("libshort.so"),
                                    home.file("libabsent.so"), home.path()}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(load(path), nullptr);
        EXPECT_NE(reason().find(path), std::string::npos) << reason();
    }
}

TEST(Libraries, ANameWithoutSlashIsLookedForByTheLoader) {
    void* library = load("libc.so.6");
    EXPECT_NE(library, nullptr) << reason();
    if (library != nullptr)
        dlclose(library);
}

TEST(Libraries, TheReasonIsGoneAfterASuccess) {
    EXPECT_EQ(load("/nowhere/lib.so"), nullptr);
    EXPECT_NE(reason(), "");
    void* library = load(JX_GOOD_LIBRARY);
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(reason(), "");
    dlclose(library);
}

TEST(Libraries, AThreadWithoutAFailedLoadHasNoReason) {
    std::thread([] { EXPECT_EQ(reason(), ""); }).join();
}

TEST(Libraries, EachThreadHasItsOwnReason) {
    EXPECT_EQ(load("/nowhere/first.so"), nullptr);
    std::thread([] {
        EXPECT_EQ(load("/nowhere/second.so"), nullptr);
        EXPECT_NE(reason().find("second"), std::string::npos);
    }).join();
    EXPECT_NE(reason().find("first"), std::string::npos);
}

// The fixture is linked with the shared library, so it is loaded through the functions of that library.
TEST(Libraries, AFailureInALibrarysStartUpCodeIsNotTheReason) {
    void* utilities = dlopen(JX_UTILITY_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(utilities, nullptr) << dlerror();
    const auto loads = reinterpret_cast<decltype(&bosLoadLibrary)>(dlsym(utilities, "bosLoadLibrary"));
    const auto tells = reinterpret_cast<decltype(&bosLastLoadError)>(dlsym(utilities, "bosLastLoadError"));
    void* library = loads(reinterpret_cast<const unsigned char*>(JX_NESTING_LIBRARY), 0);
    ASSERT_NE(library, nullptr) << tells();
    EXPECT_STREQ(reinterpret_cast<const char*>(tells()), "");
    dlclose(library);
    dlclose(utilities);
}

TEST(Libraries, ALoadAlsoFailsWithoutMemoryForTheReason) {
    const int failures = jx::test::failEachAllocationOfNewThread([](ShortMemory& memory) {
        const std::string path = "/nowhere/a-name-that-is-too-long-for-a-short-string.so";
        memory.begin();
        void* library = load(path);
        const bool failed = memory.end();
        EXPECT_EQ(library, nullptr);
        EXPECT_EQ(reason().empty(), failed) << reason();
    });
    EXPECT_GE(failures, 2);
}

TEST(Libraries, WithoutMemoryForTheReasonNoOldOneIsLeft) {
    EXPECT_GE(jx::test::failEachAllocationOfNewThread([](ShortMemory& memory) {
                  EXPECT_EQ(load("/nowhere/old.so"), nullptr);
                  const std::string path = "/nowhere/" + std::string(300, 'n') + ".so";
                  memory.begin();
                  const void* library = load(path);
                  const bool failed = memory.end();
                  EXPECT_EQ(library, nullptr);
                  EXPECT_EQ(reason().empty(), failed) << reason();
              }),
              1);
}

TEST(Libraries, AGoodLibraryNeedsNoMemoryOfOurs) {
    const std::string path = JX_GOOD_LIBRARY;
    EXPECT_EQ(jx::test::failEachAllocationOfNewThread([&path](ShortMemory& memory) {
                  memory.begin();
                  void* library = bosLoadLibrary(reinterpret_cast<const unsigned char*>(path.c_str()), 0);
                  memory.end();
                  EXPECT_NE(library, nullptr);
                  if (library != nullptr)
                      dlclose(library);
              }),
              0);
}

}  // namespace
