// Handing results to callers, in buffers of every size.
#include "config/sized_output.h"

#include <gtest/gtest.h>

#include <string>

#include "config/text_bytes.h"
#include "guarded_buffer.h"

namespace jx::test {

using namespace std::string_literals;

TEST(SizedOutput, ListsAreWholeOnlyWithRoomForTheirFinalNul) {
    const std::string list = "ab\0c\0"s;
    constexpr unsigned short kSizes[] = {1, 4, 5, 6, 7, 32767, 32768, 65535};
    for (const unsigned short size : kSizes) {
        SCOPED_TRACE(size);
        GuardedBuffer buffer(size);
        unsigned short length = 99;
        handOutList(asBytes(list.data()), list.size(), buffer.bytes(), size, &length);
        const std::size_t copied = std::min<std::size_t>(list.size(), size - 1U);
        EXPECT_EQ(length, copied);
        EXPECT_EQ(buffer.all(), list.substr(0, copied) + std::string(size - copied, '\0'));
        EXPECT_TRUE(buffer.isGuarded());
    }
}

TEST(SizedOutput, TextsAreCutToTheirBuffer) {
    constexpr unsigned short kSizes[] = {0, 1, 3, 4, 5, 32767, 32768, 65535};
    for (const unsigned short size : kSizes) {
        SCOPED_TRACE(size);
        GuardedBuffer buffer(size);
        unsigned short length = 99;
        handOutText(asBytes("abc"), buffer.bytes(), size, &length);
        const std::size_t copied = size == 0 ? 0 : std::min<std::size_t>(3, size - 1U);
        EXPECT_EQ(length, copied);
        EXPECT_EQ(size == 0 ? "" : buffer.text(), std::string("abc").substr(0, copied));
        EXPECT_TRUE(buffer.isGuarded());
    }
}

}  // namespace jx::test
