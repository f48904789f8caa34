// The first start: from no file at all to a data source that opens, with a packaged database driver and no manual.
#include <gtest/gtest.h>

#include <filesystem>

#include "../tmux.h"
#include "run_program.h"

namespace jx::test {
namespace {

class FirstStart : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(JX_DATABASE_DRIVER))
            GTEST_SKIP() << "there is no driver at " << JX_DATABASE_DRIVER;
    }

    // Sends keys and waits until the screen tells of what they lead to.
    void step(const std::string& keys, const std::string& part) {
        tmux_.keys(keys);
        const std::string shown = tmux_.waitForPart(part);
        ASSERT_NE(shown.find(part), std::string::npos) << keys << "\n" << shown;
    }

    TestHome home_;
    Tmux tmux_{home_, 80, 24, "TERM=xterm-256color LC_ALL=C.UTF-8", shellQuoted(JX_ODBCADMIN)};
};

// Every step follows what the screen said in the step before.
TEST_F(FirstStart, LeadsFromNoFilesToADataSourceThatOpens) {
    step("''", "Add... makes one, after a driver is registered (F2).");
    step("F2", "Any name you like: data sources refer to the driver by it.");
    step("SQLite3 Tab", "The driver's file, with its whole path.");
    step(shellQuoted(JX_DATABASE_DRIVER) + " Tab", "The proposed one works for any driver.");
    step("Enter", "Next: Add... in the Data Sources dialog");
    step("Enter", "No data source yet: Add... makes one.");
    step("M-a", "Choose the driver that reaches your database.");
    step("Enter", "Any name you like: programs open the data source by it.");
    step("Shop M-k", "A key your driver knows, such as Database or Server");
    step("Database M-v", "The key's value, such as a path or a host.");
    step(home_.file("shop.db") + " Enter", "Shop (SQLite3)");
    EXPECT_EQ(home_.text(".odbcinst.ini"), "[ODBC Drivers]\nSQLite3=Installed\n\n[SQLite3]\nDriver=" JX_DATABASE_DRIVER
                                           "\nSetup=" JX_SETUP_LIBRARY "\n");
    const ProgramResult result = runProgram(JX_ODBCADMIN, {"dsn", "test", "Shop"});
    EXPECT_EQ(result.code, 0) << result.out << result.err;
    EXPECT_TRUE(std::filesystem::exists(home_.file("shop.db")));
}

}  // namespace
}  // namespace jx::test
