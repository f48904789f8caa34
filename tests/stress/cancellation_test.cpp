// Threads that are cancelled at any moment while they write and read: the program goes on, and the file stays whole.
#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <jxini.h>
#include <jxprofile.h>
#include "test_home.h"

namespace {

constexpr int kThreads = 300;

const unsigned char* bytes(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.c_str());
}

std::size_t openDescriptors() {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

// Each write makes the next read open the file.
void* writeAndReadForEver(void* argument) {
    const auto* file = static_cast<const std::string*>(argument);
    for (unsigned number = 0;; ++number) {
        jxWritePrivateProfileString(bytes("A"), bytes("k"), number % 2 == 0 ? bytes("even") : bytes("odd"),
                                    bytes(*file));
        unsigned char value[8];
        jxGetPrivateProfileString(bytes("A"), bytes("k"), nullptr, value, sizeof value, bytes(*file));
        jxIniRelease(jxIniRead(file->c_str()));
        ::pthread_testcancel();
    }
}

TEST(IniCancellationStress, ThreadsCancelledAtAnyMomentDoNoHarm) {
    const jx::test::TestHome home{{"x.ini", "[A]\nk=even\n"}};
    std::string file = home.file("x.ini");
    const unsigned seed = std::random_device()();
    std::printf("seed %u\n", seed);
    std::mt19937 random(seed);
    std::uniform_int_distribution<useconds_t> moment(0, 3000);
    const std::size_t descriptors = openDescriptors();
    for (int number = 0; number < kThreads; ++number) {
        pthread_t thread{};
        ASSERT_EQ(::pthread_create(&thread, nullptr, writeAndReadForEver, &file), 0);
        ::usleep(moment(random));
        ASSERT_EQ(::pthread_cancel(thread), 0);
        void* result = nullptr;
        ASSERT_EQ(::pthread_join(thread, &result), 0);
        ASSERT_EQ(result, PTHREAD_CANCELED);
        const std::string text = home.text("x.ini");
        ASSERT_TRUE(text == "[A]\nk=even\n" || text == "[A]\nk=odd\n") << text;
        ASSERT_EQ(home.names(), std::vector<std::string>{"x.ini"});
    }
    EXPECT_EQ(openDescriptors(), descriptors);
}

}  // namespace
