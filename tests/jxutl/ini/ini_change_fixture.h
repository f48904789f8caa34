// For tests of a change: a file in a home folder, one write of it, and the failure expected.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "disk_check.h"
#include "jxutl/ini/ini_change.h"
#include "jxutl/thread/failure.h"
#include "test_home.h"

namespace jx::ini::test {

using Names = std::vector<std::string>;

inline bool write(const std::string& path, const char* section, const char* key, const char* value,
                  bool shared = false) {
    IniChange change;
    return change.begin({path, shared}) && change.apply(section, key, value) != Edit::refused && change.commit();
}

inline void expectFailure(JxIniStep step, int error, const std::string& path) {
    EXPECT_EQ(lastFailure().step, step);
    EXPECT_EQ(lastFailure().error, error);
    EXPECT_EQ(lastFailure().path, path);
    EXPECT_FALSE(lastFailure().afterRename);
}

class IniChangeTest : public ::testing::Test {
protected:
    void SetUp() override { noteSuccess(); }
    void TearDown() override { EXPECT_EQ(openDescriptors(), descriptors_); }

    const std::size_t descriptors_ = openDescriptors();
    jx::test::TestHome home_;
    const std::string file_ = home_.file("x.ini");
    const std::string lock_ = home_.file(".x.ini.jxlock");
};

}  // namespace jx::ini::test
