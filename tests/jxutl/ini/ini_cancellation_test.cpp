// Threads that are cancelled in the middle of a call: the call is completed first, and nothing is left behind.
#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <jxfiles.h>
#include <jxini.h>
#include <jxprofile.h>
#include "child_process.h"
#include "disk_check.h"
#include "test_home.h"
#include "watched_files.h"

namespace jx::ini::test {
namespace {

using jx::test::TestHome;

const unsigned char* bytes(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

// Cancels the calling thread before its nth call, and makes every call a point where that can happen.
class CancellingFiles : public WatchedFiles {
public:
    explicit CancellingFiles(int n) : n_(n) {}

    bool reached() const { return calls_ >= n_; }

protected:
    int before(Call, std::string_view) override {
        if (++calls_ == n_)
            ::pthread_cancel(::pthread_self());
        ::pthread_testcancel();
        return 0;
    }

private:
    const int n_;
    int calls_ = 0;
};

struct Run {
    std::function<void()> body;
    bool completed = false;
};

void* perform(void* argument) {
    Run& run = *static_cast<Run*>(argument);
    run.body();
    run.completed = true;
    ::pthread_testcancel();
    return nullptr;
}

// Runs body in a thread; whether it was completed, and whether the thread was cancelled after it.
std::pair<bool, bool> performInThread(std::function<void()> body) {
    Run run{std::move(body)};
    pthread_t thread{};
    EXPECT_EQ(::pthread_create(&thread, nullptr, perform, &run), 0);
    void* result = nullptr;
    EXPECT_EQ(::pthread_join(thread, &result), 0);
    return {run.completed, result == PTHREAD_CANCELED};
}

// Cancels the thread at each call of body in turn.
void expectCompletedWhereverCancelled(const TestHome& home, const std::function<void(const std::string& file)>& body) {
    for (int n = 1;; ++n) {
        SCOPED_TRACE(n);
        home.put("x.ini", "[A]\nk=1\n");
        const std::size_t descriptors = openDescriptors();
        CancellingFiles files(n);
        const InUse inUse(files);
        const auto [completed, cancelled] = performInThread([&] { body(home.file("x.ini")); });
        EXPECT_TRUE(completed);
        EXPECT_EQ(cancelled, files.reached());
        EXPECT_EQ(openDescriptors(), descriptors);
        EXPECT_EQ(home.names(), std::vector<std::string>{"x.ini"});
        if (!files.reached()) {
            EXPECT_GT(n, 1);
            return;
        }
    }
}

TEST(IniCancellation, AWriteIsCompletedFirst) {
    EXPECT_TRUE(passesInChild([] {
        const TestHome home;
        expectCompletedWhereverCancelled(home, [](const std::string& file) {
            EXPECT_EQ(jxWritePrivateProfileString(bytes("A"), bytes("k"), bytes("2"), bytes(file)), 1);
        });
        EXPECT_EQ(home.text("x.ini"), "[A]\nk=2\n");
    }));
}

TEST(IniCancellation, AReadIsCompletedFirst) {
    EXPECT_TRUE(passesInChild([] {
        const TestHome home;
        // Its stat is no point of cancellation in the C library; that of the test's disk is one.
        class Reading : public CancellingFiles {
        public:
            using CancellingFiles::CancellingFiles;

        protected:
            int before(Call call, std::string_view path) override {
                return call == Call::look ? 0 : CancellingFiles::before(call, path);
            }
        };
        for (int n = 1; n < 10; ++n) {
            SCOPED_TRACE(n);
            home.put("x.ini", "[A]\nk=" + std::to_string(n) + "\n");
            const std::size_t descriptors = openDescriptors();
            Reading files(n);
            const InUse inUse(files);
            const auto [completed, cancelled] = performInThread([&] {
                unsigned char value[8];
                EXPECT_EQ(jxGetPrivateProfileString(bytes("A"), bytes("k"), nullptr, value, sizeof value,
                                                    bytes(home.file("x.ini"))),
                          1);
            });
            EXPECT_TRUE(completed);
            EXPECT_EQ(cancelled, files.reached());
            EXPECT_EQ(openDescriptors(), descriptors);
        }
    }));
}

TEST(IniCancellation, AChangeIsBegunEndedOrGivenUpFirst) {
    EXPECT_TRUE(passesInChild([] {
        const TestHome home;
        expectCompletedWhereverCancelled(home, [](const std::string& file) {
            int state = 0;
            // Between the calls the program decides itself where its thread may be cancelled.
            ASSERT_EQ(::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state), 0);
            JxIniChange* change = jxIniBegin(file.c_str());
            EXPECT_EQ(jxIniSet(change, "A", "k", "2"), 1);
            EXPECT_EQ(jxIniCommit(change), 1);
            ASSERT_EQ(::pthread_setcancelstate(state, nullptr), 0);
        });
        for (const char* what : {"preview", "read"}) {
            SCOPED_TRACE(what);
            expectCompletedWhereverCancelled(home, [what](const std::string& file) {
                if (std::string_view(what) == "preview")
                    jxIniDiscard(jxIniPreview(file.c_str()));
                else
                    jxIniRelease(jxIniRead(file.c_str()));
            });
        }
    }));
}

TEST(IniCancellation, TheStateOfTheThreadIsKept) {
    const TestHome home;
    for (const int wanted : {PTHREAD_CANCEL_DISABLE, PTHREAD_CANCEL_ENABLE}) {
        int state = -1;
        ASSERT_EQ(::pthread_setcancelstate(wanted, nullptr), 0);
        EXPECT_EQ(jxWritePrivateProfileString(bytes("A"), bytes("k"), bytes("2"), bytes(home.file("x.ini"))), 1);
        ASSERT_EQ(::pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, &state), 0);
        EXPECT_EQ(state, wanted);
    }
}

}  // namespace
}  // namespace jx::ini::test
