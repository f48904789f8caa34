// Text resources of modules: registering, replacing, loading and cutting.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include <jxdialog.h>
#include "allocations.h"

namespace {

using jx::test::ShortMemory;

// The loaded text, or "(none)"; the buffer must then be untouched.
std::string loaded(const char* module, unsigned short id, int size = 0) {
    std::vector<unsigned char> buffer(400, '#');
    const int length = JXW_LoadString(module, id, buffer.data(), size);
    const std::string all(buffer.begin(), buffer.end());
    if (all == std::string(400, '#')) {
        EXPECT_EQ(length, 0);
        return "(none)";
    }
    const std::string text = all.substr(0, all.find('\0'));
    EXPECT_EQ(static_cast<std::size_t>(length), text.size());
    EXPECT_EQ(all.substr(text.size() + 1), std::string(400 - text.size() - 1, '#'));
    return text;
}

constexpr JxwString kTexts[] = {{7, "seven"}, {3, "three"}, {65535, "last"}, {0, ""}, {0, nullptr}};

TEST(ModuleTexts, AreLoadedById) {
    ASSERT_EQ(JXW_RegisterModule("byId", kTexts, nullptr), 1);
    EXPECT_EQ(loaded("byId", 3), "three");
    EXPECT_EQ(loaded("byId", 7), "seven");
    EXPECT_EQ(loaded("byId", 65535), "last");
    EXPECT_EQ(loaded("byId", 0), "");
}

TEST(ModuleTexts, AnUnknownModuleOrIdTouchesNothing) {
    ASSERT_EQ(JXW_RegisterModule("known", kTexts, nullptr), 1);
    EXPECT_EQ(loaded("known", 4), "(none)");
    EXPECT_EQ(loaded("unknown", 3), "(none)");
    EXPECT_EQ(loaded("KNOWN", 3), "(none)");
    EXPECT_EQ(loaded("", 3), "(none)");
    EXPECT_EQ(loaded(nullptr, 3), "(none)");
}

TEST(ModuleTexts, ANullBufferGetsNothing) {
    ASSERT_EQ(JXW_RegisterModule("nullBuffer", kTexts, nullptr), 1);
    EXPECT_EQ(JXW_LoadString("nullBuffer", 3, nullptr, 10), 0);
    EXPECT_EQ(JXW_LoadString("nullBuffer", 3, nullptr, 0), 0);
}

TEST(ModuleTexts, AreCutToTheBuffer) {
    ASSERT_EQ(JXW_RegisterModule("cut", kTexts, nullptr), 1);
    EXPECT_EQ(loaded("cut", 7, 1), "");
    EXPECT_EQ(loaded("cut", 7, 2), "s");
    EXPECT_EQ(loaded("cut", 7, 5), "seve");
    EXPECT_EQ(loaded("cut", 7, 6), "seven");
    EXPECT_EQ(loaded("cut", 7, 7), "seven");
    EXPECT_EQ(loaded("cut", 7, INT_MAX), "seven");
}

TEST(ModuleTexts, ABufferWithoutSizeHolds256Bytes) {
    const std::string text255(255, 'a');
    const std::string text256(256, 'b');
    const JxwString texts[] = {{1, text255.c_str()}, {2, text256.c_str()}, {0, nullptr}};
    ASSERT_EQ(JXW_RegisterModule("unsized", texts, nullptr), 1);
    for (const int size : {0, -1, INT_MIN, 256}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(loaded("unsized", 1, size), text255);
        EXPECT_EQ(loaded("unsized", 2, size), std::string(255, 'b'));
    }
    EXPECT_EQ(loaded("unsized", 1, 255), std::string(254, 'a'));
    EXPECT_EQ(loaded("unsized", 2, 257), text256);
}

TEST(ModuleTexts, AreCopied) {
    std::string name = "copied";
    std::string text = "mine";
    {
        const std::vector<JxwString> texts{{1, text.c_str()}, {0, nullptr}};
        ASSERT_EQ(JXW_RegisterModule(name.c_str(), texts.data(), nullptr), 1);
    }
    name[0] = 'X';
    text[0] = 'X';
    EXPECT_EQ(loaded("copied", 1), "mine");
}

TEST(ModuleTexts, RegisteringAgainReplacesThemAll) {
    ASSERT_EQ(JXW_RegisterModule("again", kTexts, nullptr), 1);
    const JxwString others[] = {{3, "drei"}, {0, nullptr}};
    ASSERT_EQ(JXW_RegisterModule("again", others, nullptr), 1);
    EXPECT_EQ(loaded("again", 3), "drei");
    EXPECT_EQ(loaded("again", 7), "(none)");
    ASSERT_EQ(JXW_RegisterModule("again", nullptr, nullptr), 1);
    EXPECT_EQ(loaded("again", 3), "(none)");
}

TEST(ModuleTexts, ModulesDoNotShareTexts) {
    const JxwString others[] = {{3, "trois"}, {0, nullptr}};
    ASSERT_EQ(JXW_RegisterModule("one", kTexts, nullptr), 1);
    ASSERT_EQ(JXW_RegisterModule("other", others, nullptr), 1);
    EXPECT_EQ(loaded("one", 3), "three");
    EXPECT_EQ(loaded("other", 3), "trois");
    EXPECT_EQ(loaded("other", 7), "(none)");
}

TEST(ModuleTexts, OfEqualIdsTheFirstCounts) {
    std::vector<JxwString> texts;
    for (int i = 0; i < 50; ++i)
        texts.push_back({5, i == 0 ? "first" : "later"});
    texts.push_back({4, "four"});
    texts.push_back({0, nullptr});
    ASSERT_EQ(JXW_RegisterModule("equal", texts.data(), nullptr), 1);
    EXPECT_EQ(loaded("equal", 5), "first");
    EXPECT_EQ(loaded("equal", 4), "four");
}

TEST(ModuleTexts, AModuleNeedsAName) {
    EXPECT_EQ(JXW_RegisterModule(nullptr, kTexts, nullptr), 0);
    EXPECT_EQ(JXW_RegisterModule("", kTexts, nullptr), 0);
    EXPECT_EQ(loaded("", 3), "(none)");
}

constexpr JxwString kLongTexts[] = {{1, "a new text that is too long for a short string"}, {2, "two"}, {0, nullptr}};

TEST(ModuleTexts, WithoutMemoryWhatWasRegisteredStays) {
    // What was registered once is kept, so its blocks are there from the beginning.
    ASSERT_EQ(JXW_RegisterModule("short", kLongTexts, nullptr), 1);
    ASSERT_EQ(JXW_RegisterModule("short", kTexts, nullptr), 1);
    EXPECT_GE(jx::test::failEachAllocation([](ShortMemory& memory) {
                  memory.begin();
                  const int result = JXW_RegisterModule("short", kLongTexts, nullptr);
                  memory.end();
                  EXPECT_EQ(loaded("short", 1), result == 1 ? kLongTexts[0].text : "(none)");
                  EXPECT_EQ(loaded("short", 3), result == 1 ? "(none)" : "three");
                  ASSERT_EQ(JXW_RegisterModule("short", kTexts, nullptr), 1);
              }),
              3);
}

TEST(ModuleTexts, RegisteringTheSameAgainKeepsNothingNew) {
    ASSERT_EQ(JXW_RegisterModule("same", kTexts, nullptr), 1);
    ASSERT_EQ(JXW_RegisterModule("same", kLongTexts, nullptr), 1);
    const long before = jx::test::liveBlocks();
    for (int n = 0; n < 100; ++n)
        ASSERT_EQ(JXW_RegisterModule("same", n % 2 == 0 ? kTexts : kLongTexts, nullptr), 1);
    EXPECT_EQ(jx::test::liveBlocks(), before);
    EXPECT_EQ(loaded("same", 2), "two");
}

TEST(ModuleTexts, WithoutMemoryANewModuleIsNotThere) {
    const char* name = "a module name that is too long for a short string";
    // The first run that succeeds keeps its texts, so its blocks are not counted.
    for (int n = 1;; ++n) {
        ShortMemory memory(n, jx::test::Fail::fromThenOn);
        const long before = jx::test::liveBlocks();
        memory.begin();
        const int result = JXW_RegisterModule(name, kLongTexts, nullptr);
        memory.end();
        EXPECT_EQ(loaded(name, 2), result == 1 ? "two" : "(none)");
        if (result == 1)
            break;
        EXPECT_EQ(jx::test::liveBlocks(), before) << n;
    }
}

TEST(ModuleTexts, LoadingNeedsNoMemory) {
    ASSERT_EQ(JXW_RegisterModule("free", kLongTexts, nullptr), 1);
    EXPECT_EQ(jx::test::failEachAllocation([](ShortMemory& memory) {
                  unsigned char buffer[256];
                  memory.begin();
                  const int length = JXW_LoadString("free", 1, buffer, 0);
                  const int none = JXW_LoadString("a module that is not there, with a long name", 1, buffer, 0);
                  memory.end();
                  EXPECT_EQ(static_cast<std::size_t>(length), std::strlen(kLongTexts[0].text));
                  EXPECT_EQ(none, 0);
              }),
              0);
}

TEST(Windows, UnknownHandlesNameNoWindow) {
    for (const HWND handle : {0U, 1U, 0xFFFFFFFFU}) {
        EXPECT_EQ(JXW_SetFocus(handle), 0U);
        EXPECT_EQ(JXW_PostMessage(handle, 1025, 0, 0), 0);
    }
}

}  // namespace
