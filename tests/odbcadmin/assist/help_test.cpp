// What is said about dialogs and their controls: every sentence of every dialog.
#include "odbcadmin/assist/help.h"

#include <control_ids.h>
#include <gtest/gtest.h>
#include <jxwindow.h>
#include <odbcinst.h>

#include <cstdlib>
#include <filesystem>

#include "driver_folder.h"
#include "odbcadmin/assist/driver_form.h"
#include "scripted_user.h"
#include "test_home.h"

namespace jx::assist::test {
namespace {

using jx::test::Action, jx::test::press, jx::test::ScriptedUser, jx::test::selectRow, jx::test::type;

class Help : public testing::Test {
protected:
    Action read() {
        return jx::test::call([this](HWND dialog) { pages_.push_back(helpOnAll(dialog)); });
    }

    // Goes through the dialogs from the first one on, and gives the pages that were read.
    std::string manage(std::initializer_list<Action> actions) {
        const ScriptedUser user(actions);
        SQLManageDataSources(0);
        std::string all;
        for (const std::string& page : pages_)
            all += page + "\n----\n";
        return all;
    }

    jx::test::TestHome home_;
    std::vector<std::string> pages_;
};

// What is said of the first dialog's buttons and keys whatever its list holds.
const std::string kRestOfDataSources = R"(Add...: Makes a new data source for one of your drivers.
Drivers...: Shows, installs and removes drivers. F2 registers one by hand.
Options...: Turns the tracing of calls on and off.
Close: Ends the program.

F3: connects with the chosen data source and says what happens.
F4: shows its keys and values.
F5: reads the list again.
F6: copies it under another name.
F7: gives it another name.
F8: chooses which rows are shown.
----
)";

TEST_F(Help, OfDialogsWithNothingInThemSaysWhatToDoFirst) {
    EXPECT_EQ(manage({read(), press(JxAddButton), read(), press(IDCANCEL), press(JxDriversButton), read(),
                      press(JxCloseButton)}),
              R"(Data sources in ~/.odbc.ini

Data sources (driver): No data source yet: Add... makes one, after a driver is registered (F2).
Setup... is grey: Choose a data source in the list first. None there? Add... makes one.
Delete is grey: Choose a data source in the list first. None there? Add... makes one.
)" + kRestOfDataSources +
                  R"(Drivers in ~/.odbcinst.ini

Driver for the new data source: No driver is registered yet. Press F2 to register one.
OK is grey: No driver is registered yet. Press F2 to register one.
Cancel: Makes no data source.

F5: reads the list again.
----
Drivers in ~/.odbcinst.ini

Installed drivers: No driver yet: F2 registers one, Add... runs a vendor's script.
Add...: Installs from a vendor's script (odbc.inf). F2 registers a driver without one.
Delete... is grey: Choose a driver in the list first. None there? F2 registers one.
Close: Back to the data sources.

F5: reads the list again.
----
)");
}

TEST_F(Help, OfTheFirstDialogKnowsWhetherThereIsADriver) {
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nA=Installed\n");
    const std::string text = manage({read()});
    EXPECT_NE(text.find("Data sources (driver): No data source yet: Add... makes one.\n"), std::string::npos) << text;
}

class HelpOnEntries : public Help {
protected:
    HelpOnEntries() {
        home_.put(".odbcinst.ini",
                  "[ODBC Drivers]\nA=Installed\nB=Installed\n[A]\nDriver=/a.so\nSetup=" JX_SETUP_LIBRARY
                  "\n[B]\nDriver=/b.so\n");
        home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=A\n[Sales]\nDriver=/a.so\nServer=db1\n");
    }
};

TEST_F(HelpOnEntries, OfListsWithAndWithoutAChoice) {
    EXPECT_EQ(manage({selectRow(JxDataSourcesList, 0), read(), press(JxAddButton), read(),
                      selectRow(JxAddDataSourceList, 0), read(), press(IDCANCEL), press(JxDriversButton),
                      selectRow(JxDriversList, 0), read(), press(JxCloseButton)}),
              R"(Data sources in ~/.odbc.ini

Data sources (driver): Your data sources. Enter or a double click sets one up.
Setup...: Changes the settings of the chosen data source.
Delete: Removes the chosen data source; asks first.
)" + kRestOfDataSources +
                  R"(Drivers in ~/.odbcinst.ini

Driver for the new data source: Choose the driver that reaches your database with the arrows; then Enter.
OK: Lets the chosen driver ask for the settings.
Cancel: Makes no data source.

F5: reads the list again.
----
Drivers in ~/.odbcinst.ini

Driver for the new data source: Choose the driver that reaches your database.
OK: Lets the chosen driver ask for the settings.
Cancel: Makes no data source.

F5: reads the list again.
----
Drivers in ~/.odbcinst.ini

Installed drivers: The drivers registered for you.
Add...: Installs from a vendor's script (odbc.inf). F2 registers a driver without one.
Delete...: Unregisters the chosen driver, or deletes its files and its data sources too; asks first.
Close: Back to the data sources.

F5: reads the list again.
----
)");
}

TEST_F(HelpOnEntries, OfTheGenericSetupDialog) {
    const ScriptedUser user({read(), selectRow(203, 0), read(), press(IDCANCEL)});
    SQLConfigDataSource(1, ODBC_CONFIG_DSN, "A", "DSN=Sales\0");
    ASSERT_EQ(pages_.size(), 2U);
    EXPECT_EQ(pages_[0], R"(A data source in ~/.odbc.ini

Data source name: Sales is grey: The name stays as it is; a new data source gets another one.
Keys and values: What the driver gets. Choose a row to change or remove it.
Add: Puts the key and value below into the list.
Change is grey: Choose a key in the list first.
Remove is grey: Choose a key in the list first.
Key: A key your driver knows, such as Database or Server; its manual lists them.
Value: The key's value, such as a path or a host. OK stores it, too.
Hidden value: This is grey: It is for passwords: type PWD or Password as the key.
OK: Stores the name, the keys and their values.
Cancel: Stores nothing.)");
    EXPECT_NE(pages_[1].find("Change: Gives the chosen row the key and value below.\n"
                             "Remove: Takes the chosen row out of the list.\n"),
              std::string::npos)
        << pages_[1];
}

TEST_F(HelpOnEntries, OfTheDialogsOfAnInstallation) {
    home_.put("odbc.inf",
              "[ODBC Drivers]\n\"Pack\"=\n[Pack]\n\"Driver\"=1,libpack.so,,,,2024-01-31,,,,,,,,,,1067,,,,1.0,\n");
    EXPECT_EQ(manage({press(JxDriversButton), press(JxAddDriverButton), type(JxDirectoryEdit, home_.path()), read(),
                      press(IDOK), read(), press(JxAdvancedButton), read(), press(JxVersionsButton), read(),
                      press(IDCANCEL), press(IDCANCEL)}),
              R"(Add Driver

Directory: The directory with the vendor's odbc.inf. No such file? Escape, then F2.
OK: Reads the script in that directory.
Cancel: Installs nothing.
----
Install Drivers

Drivers in the installation script: The drivers that the script can install.
OK: Installs the chosen driver.
Cancel: Installs nothing.
Advanced...: Options of the installation, and what the script says of versions.
----
Advanced Installation Options

Option: on (kept, but has no effect yet): Kept for a later release; nothing reads it yet.
First: value 0: The arrows choose one of the group.
First: value 1: The arrows choose one of the group.
First: value 2: The arrows choose one of the group.
Second: value 0: The arrows choose one of the group.
Second: value 1: The arrows choose one of the group.
Second: value 2: The arrows choose one of the group.
Versions...: Shows what the script says about its drivers' files.
OK: Enter or space presses it.
Cancel: Leaves without a change.
----
Versions

Drivers in the installation script: Choose a driver to see its file below.
Close: Back to the options.
OK (no effect): Does nothing here; Close leaves the dialog.
----
)");
}

TEST_F(Help, OfTheOptions) {
    EXPECT_EQ(manage({press(JxOptionsButton), read(), press(IDCANCEL)}), R"(Settings in ~/.odbc.ini

Trace the calls of the driver manager: A driver manager that reads this setting writes its calls into the file.
Stop tracing by itself: Asks the driver manager to end the tracing with the program it traces.
Trace file: The file that the calls are written to.
Choose a file (not available): Not available: type the file's name above.
OK: Stores the three settings.
Cancel: Leaves the settings as they were.
----
)");
}

TEST_F(Help, OfTheForm) {
    const jx::test::DriverFolder folder(home_);
    const ScriptedUser user({read(), press(IDCANCEL)});
    registerDriver(0);
    EXPECT_EQ(pages_.at(0), R"(Registers a driver in ~/.odbcinst.ini

Drivers found on this system: Drivers in the usual places. Choosing one fills in the fields below.
Name: Any name you like: data sources refer to the driver by it.
Driver library: The driver's file, with its whole path. Its package lists it (dpkg -L NAME).
Setup library: Asks for the settings of data sources. The proposed one works for any driver.
Browse...: Looks for the driver's file in directories.
OK: Tries the libraries in a process of their own, then enters the driver.
Cancel: Registers nothing.)");
}

// Dialogs that drivers bring are unknown here; their controls are explained by their kind.
TEST_F(Help, OfUnknownDialogsIsByKind) {
    static constexpr JxwControl kControls[] = {
        {JXW_LABEL, 0, 8, 8, 64, 8, "&Server:", 0},           {JXW_EDIT, 11, 72, 8, 200, 12, nullptr, 0},
        {JXW_CHECKBOX, 12, 8, 24, 64, 8, "&Trust", 0},        {JXW_LISTBOX, 13, 8, 40, 64, 24, nullptr, 0},
        {JXW_BUTTON, IDOK, 8, 72, 64, 14, "OK", 0},           {JXW_BUTTON, 14, 80, 72, 64, 14, "&Test", JXW_GREY},
        {JXW_BUTTON, IDCANCEL, 152, 72, 64, 14, "Cancel", 0}, {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0}};
    static constexpr JxwTemplate kTemplates[] = {{1, "Of a driver", 280, 104, kControls}, {0, nullptr, 0, 0, nullptr}};
    JXW_RegisterModule("driver", nullptr, kTemplates);
    const HWND dialog = JXW_CreateDialog(
        "driver", 1, 0, [](HWND, int, int, uintptr_t) -> unsigned int { return 0; }, nullptr);
    EXPECT_EQ(helpOnAll(dialog), R"(Of a driver

Server: Type the value.
Trust: Space turns it on and off.
Trust: Choose a row with the arrows or its first letters.
OK: Enter or space presses it.
Test is grey: the dialog cannot use it at the moment.
Cancel: Leaves without a change.)");
    JXW_DestroyDialog(dialog);
    EXPECT_EQ(helpOnAll(dialog), "");
    EXPECT_EQ(helpOn(dialog, 0), "");
    EXPECT_EQ(headingOf(dialog), "");
}

TEST(AccessKeys, AreLeftOutOfWhatIsRead) {
    EXPECT_EQ(withoutAccessKey("&Add..."), "Add...");
    EXPECT_EQ(withoutAccessKey("A && B"), "A & B");
    EXPECT_EQ(withoutAccessKey("Last&"), "Last&");
    EXPECT_EQ(withoutAccessKey(""), "");
}

TEST_F(Help, OfAFileThatCannotBeReadSaysSoInsteadOfNothingYet) {
    std::filesystem::create_directory(home_.file("folder"));
    setenv("ODBCINI", home_.file("folder").c_str(), 1);
    setenv("ODBCINSTINI", home_.file("folder").c_str(), 1);
    const std::string text = manage({read(), press(JxDriversButton), read()});
    const std::string why = home_.file("folder") + ": Is a directory. There must be a file at this place, or nothing.";
    EXPECT_NE(text.find("Data sources (driver): Cannot open " + why), std::string::npos) << text;
    EXPECT_NE(text.find("Installed drivers: Cannot open " + why), std::string::npos) << text;
}

TEST_F(Help, NamesTheFilesAsPeopleDo) {
    setenv("ODBCINI", "/srv/odbc.ini", 1);
    const std::string text = manage({read()});
    EXPECT_TRUE(text.starts_with("Data sources in /srv/odbc.ini\n")) << text;
    unsetenv("HOME");
    unsetenv("ODBCINI");
    EXPECT_TRUE(manage({read()}).find("Data sources in /") != std::string::npos);
}

}  // namespace
}  // namespace jx::assist::test
