// Several installations at the same time in one process.
#include <gtest/gtest.h>
#include <odbcinst.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <vector>

#include "test_home.h"

namespace {

using jx::test::TestHome;

constexpr int kThreads = 4;
constexpr int kRounds = 3;

std::string driverOf(int thread, int round) {
    return "Driver " + std::to_string(thread) + std::to_string(round);
}

// A script with the drivers of every thread and a core component, which writes nothing.
std::string script() {
    std::string text = "[ODBC]\n\"x\"=1,core,,,,,,,,,,,,,,,,,,,\n";
    for (int thread = 0; thread < kThreads; ++thread) {
        for (int round = 0; round < kRounds; ++round) {
            const std::string name = driverOf(thread, round);
            text.append("[").append(name).append("]\n\"Driver\"=1,").append(name).append(",,,,,,,,,,,,,,,,,,,\n");
        }
    }
    return text;
}

// Whether .odbcinst.ini lists the driver and holds its library.
bool isInstalled(const std::string& text, const std::string& name) {
    return text.find("\n" + name + "=Installed\n") != std::string::npos &&
           text.find("[" + name + "]\nDriver=/l/" + name + "\n") != std::string::npos;
}

TEST(InstallationsAtATime, LoseNoDriverAndEachReleaseTheirOwnBuffers) {
    const TestHome home({{"odbc.inf", script()}});
    const std::string file = home.file("odbc.inf");
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&file, thread] {
            for (int round = 0; round < kRounds; ++round) {
                std::string list = driverOf(thread, round) + std::string(2, '\0');
                SQLInstallODBC(0, file.c_str(), "/l", list.data());
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    const std::string text = home.text(".odbcinst.ini");
    for (int thread = 0; thread < kThreads; ++thread) {
        for (int round = 0; round < kRounds; ++round)
            EXPECT_TRUE(isInstalled(text, driverOf(thread, round))) << driverOf(thread, round) << " in\n" << text;
    }
}

TEST(InstallationsAtATime, OfSingleDriversLoseNone) {
    const TestHome home;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([thread] {
            for (int round = 0; round < kRounds; ++round) {
                const std::string name = driverOf(thread, round);
                const std::string list = name + '\0' + "Driver=/l/d.so" + std::string(2, '\0');
                char path[64];
                EXPECT_EQ(SQLInstallDriver(nullptr, list.c_str(), path, sizeof path, nullptr), TRUE);
                EXPECT_STREQ(path, "/l");
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    const std::string text = home.text(".odbcinst.ini");
    for (int thread = 0; thread < kThreads; ++thread) {
        for (int round = 0; round < kRounds; ++round)
            EXPECT_NE(text.find("[" + driverOf(thread, round) + "]\nDriver=/l/d.so\nSetup=/l/d.so\n"),
                      std::string::npos);
    }
}

// A driver and its data sources, in both files. The second call has its first write in .odbc.ini.
void installBoth(int process) {
    for (int round = 0; round < 50; ++round) {
        const std::string name = driverOf(process, round);
        const std::string list = name + '\0' + "Driver=/l/d.so" + '\0' + "CreateDSN=" + name + std::string(2, '\0');
        char path[64];
        EXPECT_EQ(SQLInstallDriver(nullptr, list.c_str(), path, sizeof path, nullptr), TRUE);
        EXPECT_EQ(SQLWriteDSNToIni("default", name.c_str()), TRUE);
    }
}

TEST(InstallationsAtATime, OfBothFilesByTwoProcessesAllSucceed) {
    const TestHome home;
    const pid_t child = fork();
    if (child == 0) {
        installBoth(1);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    installBoth(2);
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "two that wait for each other give up after 10 seconds";
    const std::string text = home.text(".odbc.ini");
    for (const int process : {1, 2})
        for (int round = 0; round < 50; ++round)
            EXPECT_NE(text.find("\n[" + driverOf(process, round) + "]\nDriver=/l/d.so\n"), std::string::npos);
}

}  // namespace
