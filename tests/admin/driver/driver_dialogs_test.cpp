// The whole way through the dialogs with a real database driver: add, connect, set up, connect again, delete.
#include <filesystem>

#include "dialog_dump.h"
#include "dialog_fixture.h"
#include "setup/setup_template.h"

extern "C" {
#include "driver.h"
}

namespace jx::test {

namespace {

using namespace jx::setup;

// Types a key and its value into the setup dialog and presses a button.
Action enter(const char* keyword, std::string value, unsigned short button) {
    return [keyword, value = std::move(value), button](ScriptedUser&, HWND dialog) {
        JXW_UserEdit(dialog, kKeyEdit, keyword);
        JXW_UserEdit(dialog, kValueEdit, value.c_str());
        return JXW_UserCommand(dialog, button);
    };
}

class RealDriver : public DialogTest {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(JX_DATABASE_DRIVER))
            GTEST_SKIP() << "there is no driver at " << JX_DATABASE_DRIVER;
        home.put(".odbcinst.ini", std::string("[ODBC Drivers]\nSQLite3=Installed\n\n[SQLite3]\nDriver=") +
                                      JX_DATABASE_DRIVER + "\nSetup=" + JX_SETUP_LIBRARY + "\n");
    }

    // Executes statements through the data source Sales; returns the number of rows of the last, -1 on a failure.
    static int rowsOf(std::initializer_list<const char*> statements) {
        connection driver{};
        int rows = -1;
        if (open_connection(&driver, JX_DATABASE_DRIVER, "DSN=Sales") != 0) {
            for (const char* statement : statements)
                rows = execute(&driver, statement);
        }
        close_connection(&driver);
        return rows;
    }

    std::string database(const char* name) const { return home.file(name); }

    void addSales() {
        ScriptedUser user{press(JxAddButton),
                          doubleClick(JxAddDataSourceList, 0),
                          type(kNameEdit, "Sales"),
                          enter("Database", database("first.db"), setup::kAddButton),
                          enter("Timeout", "1000", IDOK),
                          look(),
                          press(JxCloseButton)};
        EXPECT_EQ(SQLManageDataSources(0), 1);
        EXPECT_TRUE(user.boxes.empty());
        EXPECT_EQ(user.actionsLeft(), 0U);
        EXPECT_EQ(user.appearances, (Texts{"+Data Sources", "+Add Data Source", "+Data Source Setup",
                                           "-Data Source Setup", "-Add Data Source", "-Data Sources"}));
        ASSERT_EQ(user.dumps.size(), 1U);
        EXPECT_EQ(listIn(user.dumps[0]), "  list 103\n    > Sales (SQLite3)\n");
    }
};

TEST_F(RealDriver, ConnectsWithADataSourceThatWasAddedThroughTheDialogs) {
    addSales();
    EXPECT_EQ(home.text(".odbc.ini"),
              "[ODBC Data Sources]\nSales=SQLite3\n\n[Sales]\nDriver=" + std::string(JX_DATABASE_DRIVER) +
                  "\nDatabase=" + database("first.db") + "\nTimeout=1000\n");
    EXPECT_EQ(rowsOf({"create table orders (number integer, customer text)", "insert into orders values (1, 'Anna')",
                      "insert into orders values (2, 'Ben')", "select number, customer from orders"}),
              2);
    EXPECT_TRUE(std::filesystem::exists(database("first.db")));
}

TEST_F(RealDriver, FollowsWhatTheSetupDialogChanged) {
    addSales();
    ScriptedUser user{doubleClick(JxDataSourcesList, 0), enter("Database", database("second.db"), IDOK),
                      press(JxCloseButton)};
    EXPECT_EQ(SQLManageDataSources(0), 1);
    EXPECT_TRUE(user.boxes.empty());
    EXPECT_EQ(rowsOf({"create table orders (number integer)", "select * from orders"}), 0);
    EXPECT_TRUE(std::filesystem::exists(database("second.db")));
    EXPECT_FALSE(std::filesystem::exists(database("first.db")));
}

TEST_F(RealDriver, IsForgottenWhenTheDataSourceIsDeleted) {
    addSales();
    ScriptedUser user({press(JxDeleteButton), look(), press(JxCloseButton)}, {IDYES});
    EXPECT_EQ(SQLManageDataSources(0), 1);
    EXPECT_EQ(listIn(user.dumps[0]), "  list 103\n");
    EXPECT_EQ(home.text(".odbc.ini").find("Sales"), std::string::npos);
}

}  // namespace

}  // namespace jx::test
