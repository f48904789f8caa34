// The paths a batch installation works with.
#include "install/installation_paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "config/text_bytes.h"
#include "record_text.h"

namespace {

using namespace jx::install;
using namespace jx::test;

TEST(InstallationPaths, AreTheScriptItsDirectoryAndTheOneWithASlashBehindIt) {
    TestRecord record;
    ASSERT_TRUE(takePaths(*record.get(), jx::asBytes("/pkg/odbc.inf"), nullptr));
    EXPECT_EQ(quoted(record->infFile), "\"/pkg/odbc.inf\"");
    EXPECT_EQ(quoted(record->sourceDir), "\"/pkg\"");
    EXPECT_EQ(quoted(record->targetDir), "\"/pkg/\"");
    TestRecord root;
    ASSERT_TRUE(takePaths(*root.get(), jx::asBytes("/odbc.inf"), nullptr));
    EXPECT_EQ(quoted(root->sourceDir), "\"/\"");
    EXPECT_EQ(quoted(root->targetDir), "\"/\"");
}

TEST(InstallationPaths, OfASourceDirectoryHaveOneSlashAtTheEndOfTheTarget) {
    struct Row {
        const char* source;
        const char* target;
    };
    for (const Row& row : {Row{"/cdrom", "/cdrom/"}, Row{"/cdrom///", "/cdrom/"}, Row{"/", "/"}, Row{"//", "/"}}) {
        SCOPED_TRACE(row.source);
        TestRecord record;
        ASSERT_TRUE(takePaths(*record.get(), jx::asBytes("pkg/odbc.inf"), jx::asBytes(row.source)));
        EXPECT_EQ(quoted(record->infFile), "\"pkg/odbc.inf\"");
        EXPECT_EQ(quoted(record->sourceDir), "\"" + std::string(row.source) + "\"");
        EXPECT_EQ(quoted(record->targetDir), "\"" + std::string(row.target) + "\"");
    }
}

TEST(InstallationPaths, AreFullOnes) {
    const std::string here = std::filesystem::current_path();
    for (const char* source : {static_cast<const char*>(nullptr), "", "pkg"}) {
        TestRecord record;
        ASSERT_TRUE(takePaths(*record.get(), jx::asBytes("pkg/odbc.inf"), jx::asBytes(source)));
        EXPECT_EQ(quoted(record->sourceDir), "\"" + here + "/pkg\"");
        EXPECT_EQ(quoted(record->targetDir), "\"" + here + "/pkg/\"");
    }
}

}  // namespace
