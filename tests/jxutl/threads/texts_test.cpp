// Registered texts and templates that several threads use, and children forked meanwhile.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <jxdialog.h>
#include <jxtemplate.h>

namespace {

// Registers one of two sets of texts; within a set all say the same.
void registerTexts(const char* module, const char* text) {
    const JxwString strings[] = {{1, text}, {2, text}, {0, nullptr}};
    EXPECT_EQ(JXW_RegisterModule(module, strings, nullptr), 1);
}

std::string load(const char* module, unsigned short id) {
    unsigned char text[32];
    const int length = JXW_LoadString(module, id, text, sizeof text);
    return {reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)};
}

// Restless: a thread that registers texts again and again.
class Restless {
public:
    explicit Restless(const char* module)
        : thread_([this, module] {
              for (unsigned n = 0; !end_; ++n)
                  registerTexts(module, n % 2 == 0 ? "one" : "other");
          }) {}
    Restless(const Restless&) = delete;
    Restless& operator=(const Restless&) = delete;
    ~Restless() {
        end_ = true;
        thread_.join();
    }

private:
    std::atomic<bool> end_ = false;
    std::thread thread_;
};

TEST(TextsInThreads, ALoadGetsATextThatWasRegistered) {
    registerTexts("texts in threads", "one");
    const Restless first("texts in threads");
    const Restless second("texts in threads");
    for (int n = 0; n < 20'000; ++n) {
        const std::string text = load("texts in threads", 2);
        ASSERT_TRUE(text == "one" || text == "other") << text;
    }
}

TEST(TextsInThreads, EveryNewModuleIsKept) {
    constexpr int kThreads = 4;
    constexpr int kModules = 50;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([i] {
            for (int n = 0; n < kModules; ++n)
                registerTexts(("module " + std::to_string(n)).c_str(), i % 2 == 0 ? "even" : "odd");
        });
    for (std::thread& thread : threads)
        thread.join();
    for (int n = 0; n < kModules; ++n) {
        const std::string text = load(("module " + std::to_string(n)).c_str(), 1);
        EXPECT_TRUE(text == "even" || text == "odd") << n;
    }
}

// The lock that another thread holds at that moment would never be released in the child.
TEST(TextsInThreads, AForkedChildCanLoadAndRegister) {
    constexpr int kForks = 200;
    registerTexts("forked", "one");
    const Restless busy("forked");
    for (int n = 0; n < kForks; ++n) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::alarm(60);
            const std::string text = load("forked", 1);
            registerTexts("forked", "one");
            ::_exit(text == "one" || text == "other" ? 0 : 1);
        }
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
    }
}

}  // namespace
