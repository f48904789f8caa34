// UsageCount, changed by several processes at once.
#include <gtest/gtest.h>
#include <jxini.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <string>
#include <vector>

#include "installer_home.h"

using namespace jx::test;

namespace {

constexpr int kProcesses = 8;
constexpr int kRounds = 100;
constexpr long kNoHurry = 600'000;

bool install() {
    char path[512];
    return SQLInstallDriverEx("PG\0Driver=/opt/pg.so\0", nullptr, path, sizeof path, nullptr, ODBC_INSTALL_COMPLETE,
                              nullptr) == TRUE;
}

bool remove() {
    return SQLRemoveDriver("PG", FALSE, nullptr) == TRUE;
}

pid_t start(const std::function<bool()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        jxIniSetLockWait(kNoHurry);  // how busy the machine is must not decide
        _exit(work() ? 0 : 1);
    }
    return child;
}

// Waits for the end of each.
void expectSuccess(const std::vector<pid_t>& children) {
    for (const pid_t child : children) {
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
}

TEST(UsageCount, EightProcessesThatInstallAndRemoveAHundredTimesEndWhereTheyBegan) {
    const InstallerHome home{
        {kSystemDrivers, "; kept\n[ODBC Drivers]\nPG=Installed\n\n[PG]\nDriver=/opt/pg.so\nUsageCount=5\n"}};
    const std::string before = home.text(kSystemDrivers);
    std::vector<pid_t> children;
    for (int i = 0; i < kProcesses; ++i)
        children.push_back(start([] {
            for (int round = 0; round < kRounds; ++round)
                if (!install() || !remove())
                    return false;
            return true;
        }));
    expectSuccess(children);
    EXPECT_EQ(home.text(kSystemDrivers), before);
}

TEST(UsageCount, TwoProcessesThatOnlyInstallLoseNone) {
    const InstallerHome home;
    std::vector<pid_t> children;
    for (int i = 0; i < 2; ++i)
        children.push_back(start([] {
            for (int round = 0; round < kRounds; ++round)
                if (!install())
                    return false;
            return true;
        }));
    expectSuccess(children);
    EXPECT_EQ(value("PG", "UsageCount", "odbcinst.ini"), "200");
}

TEST(UsageCount, KilledProcessesLeaveAWholeFileAndAPlausibleCount) {
    const InstallerHome home{
        {kSystemDrivers, "[ODBC Drivers]\nPG=Installed\n\n[PG]\nDriver=/opt/pg.so\nUsageCount=100\n"}};
    constexpr int kKilled = 20;
    for (int i = 0; i < kKilled; ++i) {
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        const pid_t child = start([&] {
            for (;;) {
                if (!install() || !remove())
                    return false;
                (void)!write(ready[1], "x", 1);
            }
        });
        char byte = 0;
        ASSERT_EQ(read(ready[0], &byte, 1), 1);
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << "it had no failure of its own";
        close(ready[0]);
        close(ready[1]);
    }
    // One that was killed between installing and removing leaves one more.
    const int count = std::stoi(value("PG", "UsageCount", "odbcinst.ini"));
    EXPECT_GE(count, 100);
    EXPECT_LE(count, 100 + kKilled);
    EXPECT_EQ(home.text(kSystemDrivers),
              "[ODBC Drivers]\nPG=Installed\n\n[PG]\nDriver=/opt/pg.so\nUsageCount=" + std::to_string(count) + "\n");
    EXPECT_TRUE(install()) << record(1);
}

}  // namespace
