// A user and a system that both have a data source Sales and a driver Mine, and a user who goes through the dialogs.
#pragma once

#include <gtest/gtest.h>
#include <jxscreen.h>
#include <odbcinst.h>
#include <unistd.h>

#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

#include "driver_folder.h"
#include "odbcadmin/assist/assistant.h"
#include "odbcadmin/assist/cut_list.h"
#include "odbcadmin/model/text.h"
#include "scripted_user.h"
#include "test_home.h"

// The build says where the general setup library lies.
#ifndef JX_SETUP_LIBRARY
#define JX_SETUP_LIBRARY "."
#endif

namespace jx::assist::test {

inline const std::string kBothUserSources =
    "; mine\n[ODBC Data Sources]\nSales=Mine\nRefuse=Mine\n\n[Sales]\nDriver=Mine\nServer=db1\n\n[Refuse]\n"
    "Driver=Mine\n";
inline const std::string kBothSystemSources =
    "; of all\n[ODBC Data Sources]\nSales=Mine\n\n[Sales]\nDriver=Mine\nServer=big\nPWD=geheim\n; the last\n\n"
    "[Stock]\nDriver=Theirs\nServer=db2\n";

// BothScopes: what the actions see is noted in told_ and seen_.
class BothScopes : public testing::Test {
protected:
    BothScopes() {
        home_.put(".odbcinst.ini", "[ODBC Drivers]\nMine=Installed\n[Mine]\nDriver=" + folder_.driver() +
                                       "\nSetup=" JX_SETUP_LIBRARY "\n");
        home_.put(".odbc.ini", kBothUserSources);
        home_.putSystem("odbc.ini", kBothSystemSources);
        home_.putSystem("odbcinst.ini", "[Theirs]\nDriver=" + folder_.driver() + "\n[Mine]\nDriver=/opt/other.so\n");
    }

    jx::test::Action key(int number) {
        return jx::test::call([this, number](HWND dialog) {
            for (const FunctionKey& each : assistant_.functionKeys(dialog))
                if (each.number == number)
                    told_.push_back(each.press(dialog));
        });
    }

    jx::test::Action open() {
        return jx::test::call([this](HWND dialog) { assistant_.opened(dialog); });
    }

    // Notes the rows of the list in front, the selected one behind ">".
    jx::test::Action see() {
        return jx::test::call([this](HWND dialog) {
            JxwControlInfo list{};
            std::string rows;
            for (int index = 0; JXW_GetControlInfo(dialog, index, &list) != 0; ++index)
                for (int row = 0; list.kind == JXW_LISTBOX && row < list.rowCount; ++row)
                    rows += (row == list.selection ? ">" : " ") + std::string(JXW_GetRow(dialog, index, row)) + "\n";
            seen_.push_back(rows);
        });
    }

    jx::test::Action notice() {
        return jx::test::call([this](HWND dialog) { told_.push_back(cutNotice(dialog)); });
    }

    jx::test::Action title() {
        return jx::test::call([this](HWND dialog) {
            JxwDialogInfo info{};
            JXW_GetDialogInfo(dialog, &info);
            told_.push_back(info.title);
        });
    }

    std::vector<std::string> manage(std::initializer_list<jx::test::Action> actions,
                                    std::initializer_list<unsigned int> answers = {}) {
        jx::test::ScriptedUser user(actions, answers);
        SQLManageDataSources(0);
        EXPECT_EQ(user.actionsLeft(), 0U);
        EXPECT_EQ(user.answersLeft(), 0U);
        return user.boxes;
    }

    // From here on the system's files cannot be changed.
    jx::test::Action loseRights() {
        return jx::test::call([this](HWND) {
            std::filesystem::permissions(home_.systemPath(), std::filesystem::perms(0555));
            std::filesystem::permissions(home_.path(), std::filesystem::perms(0755));
            for (const char* name : {".odbc.ini", ".odbcinst.ini"})
                std::filesystem::permissions(home_.file(name), std::filesystem::perms(0644));
            if (::geteuid() == 0 && ::seteuid(65534) == 0)
                wasRoot_ = true;
        });
    }

    void regainRights() {
        if (wasRoot_) {
            EXPECT_EQ(::seteuid(0), 0);
        }
        std::filesystem::permissions(home_.systemPath(), std::filesystem::perms(0755));
    }

    // The command beside this program, as a word of a shell.
    static std::string command() {
        return model::shellWord(std::filesystem::read_symlink("/proc/self/exe").parent_path().string() + "/odbcadmin");
    }

    bool isUntouched() const {
        return home_.text(".odbc.ini") == kBothUserSources && home_.systemText("odbc.ini") == kBothSystemSources;
    }

    static constexpr int kSystemSales = 2;  // rows
    static constexpr int kSystemStock = 3;

    jx::test::TestHome home_;
    jx::test::DriverFolder folder_{home_};
    Assistant assistant_;
    std::vector<std::string> told_, seen_;
    bool wasRoot_ = false;
};

}  // namespace jx::assist::test
