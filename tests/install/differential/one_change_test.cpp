// Installations as one change of each file leave what their writes one by one leave.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <jxini.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "random_installation.h"

namespace {

using jx::test::RandomInstallation;

bool runsAreOff = false;

// The library's definition of a function that this program has taken the place of.
template <typename Function>
Function* ofTheLibrary(Function*, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// The library calls these: a program's definitions are found before a library's.

JX_EXPORT JxIniRun* jxIniBeginRun(void) {
    static JxIniRun* const none = reinterpret_cast<JxIniRun*>(&runsAreOff);
    return runsAreOff ? none : ofTheLibrary(jxIniBeginRun, "jxIniBeginRun")();
}

JX_EXPORT int jxIniCommitRun(JxIniRun* run) {
    return runsAreOff ? 1 : ofTheLibrary(jxIniCommitRun, "jxIniCommitRun")(run);
}

JX_EXPORT void jxIniDiscardRun(JxIniRun* run) {
    if (!runsAreOff)
        ofTheLibrary(jxIniDiscardRun, "jxIniDiscardRun")(run);
}

JX_EXPORT int jxIniLockInRun(const char* file) {
    return runsAreOff ? 1 : ofTheLibrary(jxIniLockInRun, "jxIniLockInRun")(file);
}

namespace {

class InOneChange : public ::testing::Test {
protected:
    // In memory where possible: the writes one by one are many.
    void SetUp() override {
        if (std::getenv("TMPDIR") == nullptr && ::access("/dev/shm", W_OK) == 0)
            setenv("TMPDIR", "/dev/shm", 1);
    }
    void TearDown() override { runsAreOff = false; }
};

TEST_F(InOneChange, InstallationsLeaveWhatTheirWritesOneByOneLeave) {
    constexpr unsigned kInstallations = 1000;
    unsigned changed = 0;
    for (unsigned number = 0; number < kInstallations; ++number) {
        const RandomInstallation installation(number);
        runsAreOff = true;
        const std::string oneByOne = installation.outcome();
        runsAreOff = false;
        ASSERT_EQ(installation.outcome(), oneByOne) << number << ": " << installation.text();
        changed += installation.isUnchangedIn(oneByOne) ? 0 : 1;
    }
    EXPECT_GT(changed, kInstallations / 3) << "the others are refused, or their driver or file is absent";
}

}  // namespace
