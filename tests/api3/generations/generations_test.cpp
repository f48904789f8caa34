// libodbcinst.so.1 and libodbcinst.so.2 in one process: each driver reaches the one it was linked with.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "test_home.h"

namespace {

using jx::test::TestHome;
using LookUpServer = int(char*, int);
using AddSource = int(const char*);

// The system's file has Sales; the user has none. Only the second generation knows the system's file.
void prepare(const TestHome& home) {
    std::filesystem::create_directory(home.file("system"));
    home.put("system/odbc.ini", "[Sales]\nServer=second\n");
    home.put("system/odbcinst.ini", "[Plain]\nDriver=/opt/plain2.so\n");
    home.put(".odbcinst.ini", "[Plain]\nDriver=/opt/plain.so\n");
    home.put(".odbc.ini.first", "[Sales]\nServer=first\n");
    setenv("ODBCSYSINI", home.file("system").c_str(), 1);
}

void* load(const char* path, int flags) {
    void* handle = dlopen(path, RTLD_NOW | flags);
    EXPECT_NE(handle, nullptr) << dlerror();
    return handle;
}

std::string serverOf(void* driver) {
    const auto lookUp = reinterpret_cast<LookUpServer*>(dlsym(driver, "lookUpServer"));
    char server[32] = "";
    if (lookUp != nullptr)
        lookUp(server, sizeof server);
    return server;
}

// Loading cannot be undone in a process, so each case runs in one of its own; true when all went well in it.
bool inProcess(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
}

// Each in its own generation, also in threads.
void expectEachItsOwn(void* first, void* second) {
    EXPECT_EQ(serverOf(first), "none");
    EXPECT_EQ(serverOf(second), "second");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([=] {
            for (int round = 0; round < 100; ++round) {
                EXPECT_EQ(serverOf(first), "none");
                EXPECT_EQ(serverOf(second), "second");
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

TEST(Generations, LoadedLocallyInEitherOrderEachDriverReachesItsOwn) {
    const TestHome home;
    prepare(home);
    EXPECT_TRUE(inProcess([] {
        void* first = load(JX_DRIVER1, RTLD_LOCAL);
        expectEachItsOwn(first, load(JX_DRIVER2, RTLD_LOCAL));
    }));
    EXPECT_TRUE(inProcess([] {
        void* second = load(JX_DRIVER2, RTLD_LOCAL);
        expectEachItsOwn(load(JX_DRIVER1, RTLD_LOCAL), second);
    }));
}

// The loader looks in the global scope first: there the first library answers for both.
TEST(Generations, AGenerationThatIsLoadedGloballyAnswersForDriversOfBoth) {
    const TestHome home;
    prepare(home);
    EXPECT_TRUE(inProcess([] {
        load(JX_LIBRARY1, RTLD_GLOBAL);
        EXPECT_EQ(serverOf(load(JX_DRIVER1, RTLD_LOCAL)), "none");
        EXPECT_EQ(serverOf(load(JX_DRIVER2, RTLD_LOCAL)), "none") << "an undotted name is a file of the first";
    }));
    EXPECT_TRUE(inProcess([] {
        load(JX_LIBRARY2, RTLD_GLOBAL);
        EXPECT_EQ(serverOf(load(JX_DRIVER2, RTLD_LOCAL)), "second");
        EXPECT_EQ(serverOf(load(JX_DRIVER1, RTLD_LOCAL)), "second");
    }));
}

TEST(Generations, ADriverThatWasBoundBeforeTheOtherCameGloballyKeepsItsOwn) {
    const TestHome home;
    prepare(home);
    EXPECT_TRUE(inProcess([] {
        void* second = load(JX_DRIVER2, RTLD_LOCAL);
        load(JX_LIBRARY1, RTLD_GLOBAL);
        expectEachItsOwn(load(JX_DRIVER1, RTLD_LOCAL), second);
    }));
    EXPECT_TRUE(inProcess([] {
        void* first = load(JX_DRIVER1, RTLD_LOCAL);
        load(JX_LIBRARY2, RTLD_GLOBAL);
        expectEachItsOwn(first, load(JX_DRIVER2, RTLD_LOCAL));
    }));
}

TEST(Generations, NeitherCapturesTheCallsThatTheOtherMakesOfItsOwnFunctions) {
    const TestHome home;
    prepare(home);
    EXPECT_TRUE(inProcess([] {
        void* library1 = load(JX_LIBRARY1, RTLD_GLOBAL);
        void* library2 = load(JX_LIBRARY2, RTLD_LOCAL);
        const auto add1 = reinterpret_cast<int (*)(const char*, const char*)>(dlsym(library1, "SQLWriteDSNToIni"));
        const auto add2 = reinterpret_cast<int (*)(const char*, const char*)>(dlsym(library2, "SQLWriteDSNToIniA"));
        EXPECT_EQ(add1("One", "Plain"), 1);
        EXPECT_EQ(add2("Two", "Plain"), 1);
        const auto valid2 = reinterpret_cast<int (*)(const char*)>(dlsym(library2, "SQLValidDSNA"));
        EXPECT_EQ(valid2("a;b"), 0);
    }));
    EXPECT_NE(home.text(".odbc.ini").find("[Two]"), std::string::npos);
    EXPECT_NE(home.text(".odbc.ini").find("[One]"), std::string::npos);
}

// A program that finds the second by name alone would find the first's names, were they the same library.
TEST(Generations, NeitherPullsTheOtherIn) {
    EXPECT_TRUE(inProcess([] {
        load(JX_LIBRARY2, RTLD_LOCAL);
        EXPECT_EQ(dlopen("libodbcinst.so.1", RTLD_NOW | RTLD_NOLOAD), nullptr);
    }));
    EXPECT_TRUE(inProcess([] {
        load(JX_LIBRARY1, RTLD_LOCAL);
        EXPECT_EQ(dlopen("libodbcinst.so.2", RTLD_NOW | RTLD_NOLOAD), nullptr);
    }));
}

}  // namespace
