// What both screens add to boxes and lists of the library's dialogs.
#include "odbcadmin/assist/assistant.h"

#include <control_ids.h>
#include <gtest/gtest.h>
#include <jxfiles.h>
#include <odbcinst.h>

#include "dialog_dump.h"
#include "odbcadmin/assist/driver_form.h"
#include "odbcadmin/assist/driver_lists.h"
#include "scripted_user.h"
#include "test_home.h"

namespace jx::assist::test {
namespace {

using jx::test::call;
using jx::test::press;
using jx::test::ScriptedUser;

class AssistantTest : public testing::Test {
protected:
    // What the dialog in front shows, without its buttons.
    jx::test::Action seeList(unsigned short list) {
        return call([this, list](HWND dialog) {
            const std::string dump = jx::test::dumpDialog(dialog);
            const std::size_t at = dump.find("list " + std::to_string(list));
            lists_.push_back(dump.substr(at, dump.find("  button", at) - at));
        });
    }

    jx::test::TestHome home_;
    Assistant assistant_;
    std::vector<std::string> lists_;
};

TEST_F(AssistantTest, ABoxAboutALibraryAlsoShowsTheLoadersSentenceOnce) {
    assistant_.beforeAction();
    EXPECT_EQ(assistant_.boxText("Nothing was loaded."), "Nothing was loaded.");
    EXPECT_EQ(bosLoadLibrary(reinterpret_cast<const unsigned char*>("/none/x.so"), 0), nullptr);
    EXPECT_EQ(assistant_.boxText("It did not load."),
              "It did not load.\n\nThe loader says:\n/none/x.so: cannot open shared object file: No such file or "
              "directory");
    EXPECT_EQ(assistant_.boxText("Another box."), "Another box.");
    EXPECT_EQ(bosLoadLibrary(reinterpret_cast<const unsigned char*>("/none/x.so"), 0), nullptr);
    const std::string already = std::string("It says: ") + reinterpret_cast<const char*>(bosLastLoadError());
    EXPECT_EQ(assistant_.boxText(already), already);
    EXPECT_EQ(bosLoadLibrary(reinterpret_cast<const unsigned char*>("/none/x.so"), 0), nullptr);
    assistant_.beforeAction();
    EXPECT_EQ(assistant_.boxText("A later action."), "A later action.");
}

TEST_F(AssistantTest, TheEndOfAScriptInstallationSaysWhatWasEntered) {
    EXPECT_EQ(assistant_.boxText("Installation was aborted."), "Installation was aborted.");
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nOld=Installed\nSame=Installed\n[Old]\nDriver=/a.so\n");
    const ScriptedUser user(
        {press(JxDriversButton), press(JxAddDriverButton), call([this](HWND dialog) { assistant_.opened(dialog); })});
    SQLManageDataSources(0);
    EXPECT_EQ(assistant_.boxText("Installation was aborted."),
              "Compared with before, nothing new is in your files.\n\nThe installer ends with: Installation was "
              "aborted.");
    home_.put(".odbcinst.ini",
              "[ODBC Drivers]\nOld=Installed\nSame=Installed\nNew=Installed\n[Old]\nDriver=/b.so\n[New]\nDriver=/n.so\n"
              "[ODBC Translators]\nLatin=Installed\n[Latin]\nTranslator=/l.so\n");
    home_.put(".odbc.ini", "[ODBC Data Sources]\nData=New\n[Data]\nDriver=/n.so\n");
    EXPECT_EQ(assistant_.boxText("Installation was aborted."), R"(Your files show what was really entered:
Drivers: Old (changed), New
Translators: Latin
Data sources: Data

The installer ends with: Installation was aborted.)");
    EXPECT_EQ(assistant_.boxText("Something else."), "Something else.");
}

TEST_F(AssistantTest, ListsOfDriversFollowTheFile) {
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nA=Installed\nB=Installed\n");
    const auto change = call([this](HWND) {
        home_.put(".odbcinst.ini", "[ODBC Drivers]\nB=Installed\nC=Installed\n[Loose]\nDriver=/l.so\n");
        refreshDriverLists();
    });
    const auto empty = call([this](HWND) {
        home_.put(".odbcinst.ini", "");
        refreshDriverLists();
    });
    const ScriptedUser user({press(JxDriversButton), seeList(JxDriversList), change, seeList(JxDriversList), empty,
                             seeList(JxDriversList), press(JxCloseButton), press(JxAddButton),
                             seeList(JxAddDataSourceList), change, seeList(JxAddDataSourceList), press(IDCANCEL)});
    SQLManageDataSources(0);
    EXPECT_EQ(lists_,
              (std::vector<std::string>{"list 117 focus\n    > A\n      B\n", "list 117 focus\n    > B\n      C\n",
                                        "list 117 focus\n", "list 101 focus\n", "list 101 focus\n    > B\n      C\n"}));
}

TEST_F(AssistantTest, TheOnlyDriverIsChosen) {
    const auto opened = call([this](HWND dialog) { assistant_.opened(dialog); });
    const auto both = call([this](HWND) { home_.put(".odbcinst.ini", "[ODBC Drivers]\nA=Installed\nB=Installed\n"); });
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nA=Installed\n");
    const ScriptedUser user({press(JxAddButton), seeList(JxAddDataSourceList), opened, seeList(JxAddDataSourceList),
                             press(IDCANCEL), both, press(JxAddButton), opened, seeList(JxAddDataSourceList),
                             press(IDCANCEL)});
    SQLManageDataSources(0);
    EXPECT_EQ(lists_, (std::vector<std::string>{"list 101 focus\n      A\n", "list 101 focus\n    > A\n",
                                                "list 101 focus\n      A\n      B\n"}));
}

TEST_F(AssistantTest, TheFormIsNotOpenedOverItself) {
    lookForDriversIn({});
    ScriptedUser user(
        {call([this](HWND dialog) { assistant_.registerDriver(dialog); }), press(IDCANCEL), call([](HWND) {})});
    assistant_.registerDriver(0);
    EXPECT_EQ(user.appearances, (std::vector<std::string>{"+Register a Driver", "-Register a Driver"}));
}

}  // namespace
}  // namespace jx::assist::test
