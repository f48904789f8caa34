// The error-list functions when memory is short.
#include <gtest/gtest.h>
#include <jxerrors.h>
#include <odbcinst.h>

#include <new>
#include <vector>

namespace {

bool memoryIsShort = false;
std::vector<JxError*> added;

}  // namespace

// The library allocates its errors here.
void* operator new(std::size_t sizeInBytes, const std::nothrow_t&) noexcept {
    if (memoryIsShort)
        return nullptr;
    try {
        return ::operator new(sizeInBytes);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

// Replaces the library's error list: records the calls and stores nothing.
JxError* JxErrorKeeper::add(JxError* error) {
    added.push_back(error);
    return error;
}

namespace jx::test {

TEST(ErrorsWithoutMemory, HandTheKeeperANullError) {
    added.clear();
    memoryIsShort = true;
    JxError* error = addError(50);
    JxError* given = addError(51, reinterpret_cast<const unsigned char*>("text"));
    JxError* warning = addWarning(52);
    memoryIsShort = false;
    EXPECT_EQ(error, nullptr);
    EXPECT_EQ(given, nullptr);
    EXPECT_EQ(warning, nullptr);
    EXPECT_EQ(added, (std::vector<JxError*>{nullptr, nullptr, nullptr}));
}

TEST(ErrorsWithMemory, HandTheKeeperTheErrorAndReturnItsAnswer) {
    added.clear();
    JxError* error = addError(50);
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(added, (std::vector<JxError*>{error}));
    EXPECT_EQ(error->number(), 50);
    delete error;
}

}  // namespace jx::test
