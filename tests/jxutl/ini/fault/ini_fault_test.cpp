// Every call that touches the disk fails, once and from then on: the file is old or new, and nothing is left behind.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

#include "../change_cases.h"
#include "../faulty_files.h"
#include "jxutl/thread/failure.h"

namespace jx::ini::test {
namespace {

struct Tally {
    int runs = 0;
    int faults = 0;
};

constexpr int kErrors[] = {EIO, ENOSPC, EACCES, EMFILE, EPERM, ENOMEM};

void expectOldOrNew(const CaseHome& home, bool written, int error) {
    const Failure& failure = lastFailure();
    if (written) {
        EXPECT_EQ(failure.step, JxIniStepNone);
        EXPECT_EQ(home.text(), home.after());
        return;
    }
    EXPECT_NE(failure.step, JxIniStepNone);
    EXPECT_EQ(failure.error, error);
    EXPECT_NE(failure.path, "");
    const bool mayBeInPlace = failure.step == JxIniStepFlushDirectory || failure.step == JxIniStepRename;
    EXPECT_TRUE(!failure.afterRename || mayBeInPlace);
    EXPECT_TRUE(failure.afterRename || failure.step != JxIniStepFlushDirectory);
    EXPECT_EQ(home.text(), failure.afterRename ? home.after() : home.before());
}

// Only what was there before, or what could not be removed, may be left: the next writer removes it.
void expectNoLitter(const ChangeCase& change, const CaseHome& home, const FaultyFiles& files, Fail style) {
    const std::vector<std::string> litter = home.litter();
    const bool removalFailed = style == Fail::fromThenOn || files.failedCall() == Call::remove;
    const bool lookFailed = files.failedCall() == Call::lookAtName || files.failedCall() == Call::lookAtOpen;
    for (const std::string& name : litter) {
        const bool wasThere = change.lockLeft != nullptr;
        if (name.ends_with(".jxlock"))
            EXPECT_TRUE(removalFailed || lookFailed || wasThere) << name;
        else
            EXPECT_TRUE((removalFailed || wasThere) && home.directory() + "/" + name == home.newFile()) << name;
    }
}

// One run with the nth call failing; false when the change needs fewer calls.
bool failAt(const ChangeCase& change, int n, Fail style, int error, Tally& tally) {
    SCOPED_TRACE(std::string(change.name) + ", call " + std::to_string(n) + ", errno " + std::to_string(error) +
                 (style == Fail::once ? ", once" : ", from then on"));
    const CaseHome home(change);
    const std::size_t descriptors = openDescriptors();
    FaultyFiles files(n, style, error);
    {
        const InUse inUse(files);
        expectOldOrNew(home, home.write(), error);
    }
    EXPECT_EQ(openDescriptors(), descriptors);
    if (files.fired()) {
        SCOPED_TRACE(nameOf(files.failedCall()));
        expectNoLitter(change, home, files, style);
        expectNextWriteSucceeds(home);
    }
    ++tally.runs;
    tally.faults += files.faults();
    return files.fired();
}

Tally failEverywhere() {
    Tally tally;
    for (const ChangeCase& change : kChangeCases) {
        if (!canSetUp(change))
            continue;
        for (const Fail style : {Fail::once, Fail::fromThenOn})
            for (const int error : kErrors)
                for (int n = 1; n < 100 && failAt(change, n, style, error, tally);)
                    ++n;
    }
    std::printf("%d injected faults in %d writes\n", tally.faults, tally.runs);
    EXPECT_GT(tally.faults, 1000);
    return tally;
}

TEST(IniFault, EveryCallFailsOnceAndFromThenOn) {
    const Tally tally = failEverywhere();
    RecordProperty("runs", tally.runs);
    RecordProperty("faults", tally.faults);
}

TEST(IniFault, EveryCallOfAnOrdinaryUserFailsOnceAndFromThenOn) {
    EXPECT_TRUE(passesAsNobody([] { failEverywhere(); }));
}

// Short counts and interrupted calls, which are not failures.
TEST(IniFault, ShortAndInterruptedCallsSucceed) {
    for (const ChangeCase& change : kChangeCases)
        for (const std::size_t mostBytes : {1U, 2U, 7U})
            for (const int interruptions : {0, 1, 5}) {
                if (!canSetUp(change))
                    continue;
                SCOPED_TRACE(change.name);
                const CaseHome home(change);
                ShortFiles files(mostBytes, interruptions);
                const InUse inUse(files);
                EXPECT_TRUE(home.write()) << describe(lastFailure());
                EXPECT_EQ(home.text(), home.after());
                EXPECT_EQ(home.litter(), std::vector<std::string>{});
            }
}

TEST(IniFault, EndlessInterruptionsEndTheWrite) {
    const ChangeCase& change = kChangeCases[1];
    for (int n = 1;; ++n) {
        SCOPED_TRACE(n);
        const CaseHome home(change);
        FaultyFiles files(n, Fail::fromThenOn, EINTR);
        {
            const InUse inUse(files);
            expectOldOrNew(home, home.write(), EINTR);
        }
        if (!files.fired())
            break;
        expectNextWriteSucceeds(home);
    }
}

TEST(IniFault, ADiskThatFillsUpAnywhereKeepsTheOldText) {
    const ChangeCase& change = kChangeCases[1];
    constexpr std::size_t kLockLine = 12;
    const std::size_t needed = kLockLine + std::string_view(change.after).size();
    for (std::size_t room = 0; room < needed; ++room) {
        SCOPED_TRACE(room);
        const CaseHome home(change);
        FullFiles files(room);
        const InUse inUse(files);
        EXPECT_FALSE(home.write());
        EXPECT_EQ(lastFailure().step, room < kLockLine ? JxIniStepLock : JxIniStepWrite);
        EXPECT_EQ(lastFailure().error, ENOSPC);
        EXPECT_EQ(home.text(), home.before());
        EXPECT_EQ(home.litter(), std::vector<std::string>{});
    }
    const CaseHome home(change);
    FullFiles files(needed);
    const InUse inUse(files);
    EXPECT_TRUE(home.write());
}

}  // namespace
}  // namespace jx::ini::test
