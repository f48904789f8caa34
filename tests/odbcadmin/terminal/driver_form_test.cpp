// Registering a driver by hand and running a vendor's script, as a person does it on the screen.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <clocale>

#include "odbcadmin/terminal/screen.h"
#include "scripted_terminal.h"
#include "test_home.h"

namespace jx::test {
namespace {

class DriverFormTest : public testing::Test {
protected:
    DriverFormTest() { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    void fill(const std::string& name, const std::string& library, const std::string& setup) {
        user_.then(press(Key::f2));
        user_.then(type(name));
        user_.then(press(Key::tab));
        user_.then(type(library));
        user_.then(press(Key::tab));
        user_.then(setup.empty() ? press(Key::erase) : type(setup));
        user_.then(press(Key::enter));
        user_.look();
    }

    void run() {
        const terminal::Screen screen(user_);
        SQLManageDataSources(0);
    }

    static bool has(const std::string& picture, const std::string& text) {
        return picture.find(text) != std::string::npos;
    }

    TestHome home_;
    ScriptedTerminal user_{80, 24};
};

TEST_F(DriverFormTest, FromNothingToADataSource) {
    fill("Mine", JX_DRIVER, JX_DRIVER);
    user_.then({press(Key::enter), alt("a")});
    user_.look();
    user_.then({press(Key::down), press(Key::enter)});
    user_.look();
    run();
    ASSERT_EQ(user_.seen().size(), 3U);
    EXPECT_TRUE(has(user_.seen()[0], "Mine is registered.")) << user_.seen()[0];
    EXPECT_TRUE(has(user_.seen()[1], "│Mine ")) << user_.seen()[1];
    EXPECT_TRUE(has(user_.seen()[2], "│Made (Mine)")) << user_.seen()[2];
    EXPECT_EQ(home_.text(".odbcinst.ini"),
              "[ODBC Drivers]\nMine=Installed\n\n[Mine]\nDriver=" JX_DRIVER "\nSetup=" JX_DRIVER "\n");
}

TEST_F(DriverFormTest, ALibraryThatCrashesDoesNotTakeTheProgramAlong) {
    fill("Mine", JX_CRASHER, "");
    run();
    EXPECT_TRUE(has(user_.seen()[0], "crashes when it is loaded: signal 11")) << user_.seen()[0];
}

TEST_F(DriverFormTest, TheListOfDriversShowsTheNewOne) {
    user_.then(alt("r"));
    fill("Mine", JX_DRIVER, "");
    user_.then(press(Key::enter));
    user_.look();
    run();
    EXPECT_TRUE(has(user_.seen()[1], "│Mine ")) << user_.seen()[1];
}

class ScriptTest : public DriverFormTest {
protected:
    void install() {
        home_.put("odbc.inf", script_);
        user_.then({alt("r"), alt("a")});
        user_.then(type(home_.path()));
        user_.then(press(Key::enter));
        user_.look();
        user_.then(press(Key::enter));
        user_.look();
        user_.then(press(Key::enter));
        user_.look();
    }

    std::string script_ =
        "[ODBC Drivers]\n\"Pack\"=\n[Pack]\n\"Driver\"=1,libpack.so,,,,2024-01-31,,,,,,,,,,1067,,,,1.0,\n"
        "[Pack-Keys]\nCreateDSN=PackData\n";
};

TEST_F(ScriptTest, TheAbortedRunTellsWhatWasReallyEnteredAndTheListsShowIt) {
    install();
    user_.then(press(Key::escape));
    user_.look();
    run();
    ASSERT_EQ(user_.seen().size(), 4U);
    EXPECT_TRUE(has(user_.seen()[1], "Installation was aborted")) << user_.seen()[0] << user_.seen()[1];
    EXPECT_TRUE(has(user_.seen()[1], "Drivers: Pack")) << user_.seen()[1] << home_.text(".odbcinst.ini");
    EXPECT_TRUE(has(user_.seen()[2], "│Pack ")) << user_.seen()[2];
    EXPECT_TRUE(has(user_.seen()[3], "│PackData (Pack) ")) << user_.seen()[3];
}

TEST_F(ScriptTest, ARunThatEntersNothingSaysSo) {
    home_.put(".odbcinst.ini", "");
    install();
    run();
    const std::string before = home_.text(".odbcinst.ini");
    ScriptedTerminal again(80, 24);
    user_.resize(80, 24);
    EXPECT_TRUE(has(user_.seen()[1], "really entered")) << user_.seen()[1];
    again.then({alt("r"), alt("a")});
    again.then(type(home_.path()));
    again.then({press(Key::enter), press(Key::enter)});
    again.look();
    const terminal::Screen screen(again);
    SQLManageDataSources(0);
    EXPECT_TRUE(has(again.seen()[0], "nothing new is in your files")) << again.seen()[0];
    EXPECT_EQ(home_.text(".odbcinst.ini"), before);
}

}  // namespace
}  // namespace jx::test
