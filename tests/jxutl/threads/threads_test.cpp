// Several threads at once: per-thread data, and shared data.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <jxdialog.h>
#include <jxerrors.h>
#include <jxfiles.h>
#include <jxtasks.h>

namespace {

const unsigned char* bytes(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.c_str());
}

std::string chars(const unsigned char* text) {
    return reinterpret_cast<const char*>(text);
}

// CountedError: counts how many of its kind were released.
class CountedError : public JxError {
public:
    explicit CountedError(std::atomic<int>& released)
        : JxError(1, nullptr, ErrorTypeError, 0, 0), released_(released) {}
    ~CountedError() override { ++released_; }
    CountedError(const CountedError&) = delete;
    CountedError& operator=(const CountedError&) = delete;

private:
    std::atomic<int>& released_;
};

TEST(Threads, EachHasItsOwnErrors) {
    constexpr int kThreads = 4;
    static constexpr unsigned short kErrors = 200;
    std::barrier allStarted(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([i, &allStarted] {
            allStarted.arrive_and_wait();
            const std::string mine = "thread " + std::to_string(i);
            for (unsigned short n = 0; n < kErrors; ++n) {
                JxErrorKeeper::add(new JxError(n, bytes(mine), ErrorTypeError, 0, i));
                JxErrorKeeper::appendToLastError(bytes("!"));
            }
            ASSERT_EQ(JxErrorKeeper::count(), kErrors);
            for (unsigned short n = 0; n < kErrors; ++n) {
                const JxError* error = JxErrorKeeper::errorAt(n);
                EXPECT_EQ(error->number(), n);
                EXPECT_EQ(error->value(), i);
                EXPECT_EQ(chars(error->text()), mine + "!");
            }
            if (i % 2 == 0)
                JxErrorKeeper::clear();
            allStarted.arrive_and_wait();
            EXPECT_EQ(JxErrorKeeper::count(), i % 2 == 0 ? 0U : kErrors);
        });
    for (std::thread& thread : threads)
        thread.join();
}

TEST(Threads, ErrorsEndWithTheirThread) {
    std::atomic<int> released{0};
    std::thread([&released] {
        for (int i = 0; i < 3; ++i)
            JxErrorKeeper::add(new CountedError(released));
        EXPECT_EQ(released, 0);
    }).join();
    EXPECT_EQ(released, 3);
}

// LateError: its release records another error on the thread that is ending.
class LateError : public JxError {
public:
    explicit LateError(std::atomic<int>& released) : JxError(2, nullptr, ErrorTypeError, 0, 0), released_(released) {}
    ~LateError() override { JxErrorKeeper::add(new CountedError(released_)); }
    LateError(const LateError&) = delete;
    LateError& operator=(const LateError&) = delete;

private:
    std::atomic<int>& released_;
};

TEST(Threads, AnErrorRecordedWhileTheThreadEndsIsReleasedToo) {
    std::atomic<int> released{0};
    std::thread([&released] { JxErrorKeeper::add(new LateError(released)); }).join();
    EXPECT_EQ(released, 1);
}

TEST(Threads, LoadFailuresDoNotMix) {
    constexpr int kThreads = 4;
    std::barrier allStarted(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([i, &allStarted] {
            const std::string path = "/nowhere/lib" + std::to_string(i) + ".so";
            allStarted.arrive_and_wait();
            for (int n = 0; n < 50; ++n) {
                EXPECT_EQ(bosLoadLibrary(bytes(path), 0), nullptr);
                EXPECT_NE(chars(bosLastLoadError()).find(path), std::string::npos);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

// The functions of a library loaded with dlopen.
struct Late {
    explicit Late(const char* path) : library(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
        if (library == nullptr)
            return;
        begin = reinterpret_cast<decltype(begin)>(dlsym(library, "mdsPerTaskInit"));
        slot = reinterpret_cast<decltype(slot)>(dlsym(library, "mdsGetPerThreadData"));
    }

    void* library;
    decltype(&mdsPerTaskInit) begin = nullptr;
    decltype(&mdsGetPerThreadData) slot = nullptr;
};

// The thread is older than the library, and ends after the program closed it.
TEST(Threads, OneThatBeganBeforeTheLibraryAndEndsAfterItIsServed) {
    std::atomic<int> released{0};
    std::barrier step(2);
    std::unique_ptr<Late> late;
    std::thread thread([&] {
        step.arrive_and_wait();  // loaded
        EXPECT_EQ(late->begin(), 1);
        auto* errors = static_cast<JxList*>(late->slot(PerThreadErrors));
        EXPECT_NE(errors, nullptr);
        if (errors != nullptr)
            errors->append(new CountedError(released));
        step.arrive_and_wait();  // used
        step.arrive_and_wait();  // closed
    });
    late = std::make_unique<Late>(JX_UTILITY_LIBRARY);
    EXPECT_NE(late->library, nullptr) << dlerror();
    step.arrive_and_wait();
    step.arrive_and_wait();
    EXPECT_EQ(released, 0);
    EXPECT_EQ(dlclose(late->library), 0);
    step.arrive_and_wait();
    thread.join();
    EXPECT_EQ(released, 1);
}

TEST(Threads, ALoadSeesOldTextsOrNewOnes) {
    const JxwString first[] = {{1, "first"}, {2, "first too"}, {0, nullptr}};
    const JxwString second[] = {{1, "second, which is longer than a short string holds"}, {0, nullptr}};
    ASSERT_EQ(JXW_RegisterModule("shared", first, nullptr), 1);
    std::atomic<bool> ended{false};
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i)
        readers.emplace_back([&] {
            while (!ended) {
                unsigned char buffer[256];
                EXPECT_GT(JXW_LoadString("shared", 1, buffer, 0), 0);
                const std::string text = chars(buffer);
                EXPECT_TRUE(text == first[0].text || text == second[0].text) << text;
            }
        });
    for (int i = 0; i < 500; ++i) {
        EXPECT_EQ(JXW_RegisterModule("shared", i % 2 == 0 ? second : first, nullptr), 1);
        EXPECT_EQ(JXW_RegisterModule(("other " + std::to_string(i % 7)).c_str(), first, nullptr), 1);
    }
    ended = true;
    for (std::thread& reader : readers)
        reader.join();
}

// A handler that checks that it was called with its own context.
template <int number>
unsigned int answering(void* context, HWND /*owner*/, const char* /*text*/, const char* /*title*/,
                       unsigned int /*style*/) {
    return *static_cast<int*>(context) == number ? IDYES : IDNO;
}

TEST(Threads, AHandlerIsCalledWithItsOwnContext) {
    int one = 1;
    int two = 2;
    ASSERT_EQ(JXW_SetMessageBoxHandler(answering<1>, &one), 1);
    std::atomic<bool> ended{false};
    std::vector<std::thread> askers;
    for (int i = 0; i < 3; ++i)
        askers.emplace_back([&ended] {
            while (!ended) {
                EXPECT_EQ(guiMessageBox(0, bytes("x"), bytes("y"), MB_YESNO), static_cast<unsigned int>(IDYES));
            }
        });
    for (int i = 0; i < 2000; ++i)
        JXW_SetMessageBoxHandler(i % 2 == 0 ? answering<2> : answering<1>, i % 2 == 0 ? &two : &one);
    ended = true;
    for (std::thread& asker : askers)
        asker.join();
    JXW_SetMessageBoxHandler(nullptr, nullptr);
}

}  // namespace
