// What a screen must not show, what it shows on which kind of terminal, and what it says about the setup dialog.
#include <gtest/gtest.h>
#include <jxwindow.h>
#include <odbcinst.h>

#include <array>
#include <clocale>
#include <cstdlib>

#include "odbcadmin/terminal/screen.h"
#include "pty.h"
#include "run_program.h"
#include "scripted_terminal.h"
#include "test_home.h"
#include "tmux.h"

namespace jx::test {
namespace {

constexpr unsigned short kSecretEdit = 11;

constexpr JxwControl kSecretControls[] = {{JXW_LABEL, 0, 8, 8, 60, 8, "&Password:", 0},
                                          {JXW_EDIT, kSecretEdit, 72, 8, 120, 12, nullptr, JXW_PASSWORD},
                                          {JXW_BUTTON, IDOK, 8, 24, 68, 14, "OK", JXW_DEFAULT},
                                          {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0}};
constexpr JxwTemplate kSecretTemplates[] = {{1, "Secret", 200, 40, kSecretControls}, {0, nullptr, 0, 0, nullptr}};

constexpr JxwControl kNamedControls[] = {{JXW_LABEL, 0, 8, 8, 120, 8, "R&D && Sons", JXW_PLAIN},
                                         {JXW_LABEL, 0, 8, 16, 120, 8, "R&D && Sons", 0},
                                         {JXW_BUTTON, IDOK, 8, 24, 68, 14, "OK", JXW_DEFAULT},
                                         {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0}};
constexpr JxwTemplate kNamedTemplates[] = {{1, "Named", 200, 40, kNamedControls}, {0, nullptr, 0, 0, nullptr}};

unsigned int endWithOk(HWND dialog, int message, int wparam, uintptr_t) {
    if (message == WM_COMMAND && wparam == IDOK)
        JXW_EndDialog(dialog, 1);
    return 1;
}

unsigned int takeSecret(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG) {
        JXW_SetProp(dialog, "Text", lparam);
    } else if (message == WM_COMMAND && wparam == IDOK) {
        auto& text = *reinterpret_cast<std::string*>(JXW_GetProp(dialog, "Text"));
        std::array<char, 64> typed{};
        JXW_GetDlgItemText(dialog, kSecretEdit, typed.data(), static_cast<int>(typed.size()));
        text = typed.data();
        JXW_EndDialog(dialog, 1);
    }
    return 1;
}

class LooksTest : public testing::Test {
protected:
    LooksTest() { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    void run() {
        const terminal::Screen screen(user_);
        SQLManageDataSources(0);
    }

    static bool has(const std::string& picture, const std::string& text) {
        return picture.find(text) != std::string::npos;
    }

    // Whether any picture, also those that nobody looked at, holds text.
    bool wasShown(const std::string& text) const {
        for (const std::string& picture : user_.pictures())
            if (has(picture, text))
                return true;
        return false;
    }

    TestHome home_;
    ScriptedTerminal user_{80, 24};
};

TEST_F(LooksTest, APasswordIsStarsAndNeverItsText) {
    std::string text;
    user_.then(typed("geheimß"));
    user_.then(press(Key::left));
    user_.then(type("x"));
    user_.look();
    user_.then(press(Key::f1));
    user_.then({press(Key::enter), press(Key::enter)});
    const terminal::Screen screen(user_);
    JXW_RegisterModule("secret", nullptr, kSecretTemplates);
    JXW_DialogBox("secret", 1, 0, takeSecret, &text);
    EXPECT_EQ(text, "geheimxß");
    ASSERT_EQ(user_.seen().size(), 1U);
    EXPECT_TRUE(has(user_.seen()[0], "Password:       ********  ")) << user_.seen()[0];
    for (const char* part : {"geh", "eim", "ß"})
        EXPECT_FALSE(wasShown(part)) << part;
}

TEST_F(LooksTest, DataInALabelIsShownAsItStands) {
    user_.look();
    user_.then(press(Key::enter));
    const terminal::Screen screen(user_);
    JXW_RegisterModule("named", nullptr, kNamedTemplates);
    JXW_DialogBox("named", 1, 0, endWithOk, nullptr);
    ASSERT_EQ(user_.seen().size(), 1U);
    EXPECT_TRUE(has(user_.seen()[0], " R&D && Sons ")) << user_.seen()[0];
    EXPECT_TRUE(has(user_.seen()[0], " RD & Sons ")) << user_.seen()[0];
}

class SetupDialogTest : public LooksTest {
protected:
    SetupDialogTest() {
        home_.put(".odbc.ini",
                  "[ODBC Data Sources]\nShop=Mine\n\n[Shop]\nDriver=/none\nDatabase=/srv/shop\nPWD=geheim\n");
        home_.put(".odbcinst.ini",
                  "[ODBC Drivers]\nMine=Installed\n\n[Mine]\nDriver=/none\nSetup=" JX_SETUP_LIBRARY "\n");
    }
};

TEST_F(SetupDialogTest, ShowsAStoredPasswordAsStars) {
    user_.then({press(Key::enter), alt("s"), press(Key::end)});
    user_.look();
    user_.then({alt("h"), press(Key::end)});
    user_.look();
    run();
    ASSERT_EQ(user_.seen().size(), 2U);
    EXPECT_TRUE(has(user_.seen()[0], "Key:            PWD ")) << user_.seen()[0];
    EXPECT_TRUE(has(user_.seen()[1], "Hidden value:   ******  ")) << user_.seen()[1];
    EXPECT_FALSE(wasShown("geheim"));
}

TEST_F(SetupDialogTest, EveryControlSaysWhatItDoesOrWhyItIsGrey) {
    user_.then({press(Key::enter), press(Key::f1)});
    user_.look();
    for (int i = 0; i < 40; ++i)
        user_.then(press(Key::down));
    user_.look();
    run();
    ASSERT_EQ(user_.seen().size(), 2U);
    const std::string help = user_.seen()[0] + user_.seen()[1];
    for (const char* part : {"A data source in ~/.odbc.ini", "is grey: The name stays as it is", "What the driver gets",
                             "Change is grey: Choose a key", "Remove is grey: Choose a key", "A key your driver knows",
                             "is grey: It is for passwords", "OK: Stores", "Cancel: Stores nothing."})
        EXPECT_TRUE(has(help, part)) << part << "\n" << help;
}

TEST_F(SetupDialogTest, AnEmptyListSaysHowItIsFilled) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nShop=Mine\n\n[Shop]\nDriver=/none\n");
    user_.then({press(Key::enter), alt("s")});
    user_.look();
    run();
    EXPECT_TRUE(has(user_.seen()[0], "No key yet: type one and its value below, then Add.")) << user_.seen()[0];
}

TEST_F(SetupDialogTest, TheOnlyDriverNeedsNoChoosing) {
    user_.then({alt("a"), press(Key::enter)});
    user_.look();
    run();
    EXPECT_TRUE(has(user_.seen()[0], "Data Source Setup")) << user_.seen()[0];
}

TEST_F(SetupDialogTest, OfSeveralDriversNoneIsChosenAndTheHelpSaysHow) {
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nMine=Installed\nOther=Installed\n");
    user_.then({alt("a"), press(Key::enter)});
    user_.look();
    run();
    EXPECT_TRUE(has(user_.seen()[0], "Choose the driver that reaches your database with the arrows; then Enter."))
        << user_.seen()[0];
}

TEST_F(LooksTest, AHomeWithADriverIsNotToldToRegisterOne) {
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nMine=Installed\n");
    user_.look();
    run();
    EXPECT_TRUE(has(user_.seen()[0], " No data source yet: Add... makes one.\n")) << user_.seen()[0];
}

// Whether the bytes choose a colour: parameters 30 to 37 and 40 to 47 of the sequence that ends with m.
bool choosesColour(const std::string& bytes) {
    for (std::size_t at = bytes.find("\033["); at != std::string::npos; at = bytes.find("\033[", at + 1)) {
        const char* text = bytes.c_str() + at + 2;
        const std::size_t length = std::string(text).find_first_not_of("0123456789;");
        if (length == std::string::npos || text[length] != 'm')
            continue;
        for (char* end = nullptr; std::strtol(text, &end, 10) != 0 || end != text; text = end + 1) {
            const long number = std::strtol(text, nullptr, 10);
            if ((number >= 30 && number <= 37) || (number >= 40 && number <= 47))
                return true;
            if (*end != ';')
                break;
        }
    }
    return false;
}

TEST(Colours, AreThereOnlyWhereTheTerminalHasThemAndTheUserWantsThem) {
    const TestHome home;
    const struct {
        std::vector<std::string> environment;
        bool coloured;
    } rows[] = {{{"TERM=xterm-256color"}, true},
                {{"TERM=xterm-256color", "NO_COLOR="}, true},
                {{"TERM=xterm-256color", "NO_COLOR=1"}, false},
                {{"TERM=xterm-mono"}, false},
                {{"TERM=vt100"}, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.environment));
        std::vector<std::string> environment = row.environment;
        environment.push_back("HOME=" + home.path());
        Pty pty(JX_ODBCADMIN, environment);
        ASSERT_TRUE(pty.waitFor("new driver"));
        pty.send("\033");
        EXPECT_EQ(pty.waitForEnd(), "exited 0");
        EXPECT_EQ(choosesColour(pty.take()), row.coloured);
    }
}

TEST(Colours, WhereNothingIsDimGreyButtonsStandInBrackets) {
    const struct {
        const char* environment;
        const char* setup;
    } rows[] = {{"TERM=vt100", "(   Setup...    )"},
                {"TERM=xterm-256color", "<   Setup...    >"},
                {"TERM=xterm-256color NO_COLOR=1", "<   Setup...    >"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.environment);
        const TestHome home;
        const Tmux tmux(home, 80, 24, row.environment, shellQuoted(JX_ODBCADMIN));
        const std::string shown = tmux.waitForPart("F2 new driver");
        EXPECT_NE(shown.find(row.setup), std::string::npos) << shown;
    }
}

}  // namespace
}  // namespace jx::test
