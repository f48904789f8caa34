// Texts in blocks of the utility library's allocator.
#include "install/owned_text.h"

#include <gtest/gtest.h>

#include <string>

#include "config/text_bytes.h"

namespace {

using namespace jx::install;
using jx::asChars;
using jx::viewOf;

TEST(OwnedText, JoinsAndCopies) {
    EXPECT_STREQ(asChars(joined("My Driver", "-Keys").get()), "My Driver-Keys");
    EXPECT_STREQ(asChars(copyOf("a").get()), "a");
    EXPECT_STREQ(asChars(copyOf("").get()), "");
    const std::string large(70000, 'x');
    EXPECT_EQ(viewOf(joined(large, large).get()), large + large);
}

}  // namespace
