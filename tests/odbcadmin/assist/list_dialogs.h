// What goes through the dialogs of lists, and notes what it sees there in told_ and seen_.
#pragma once

#include <gtest/gtest.h>
#include <jxscreen.h>
#include <odbcinst.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "driver_folder.h"
#include "odbcadmin/assist/assistant.h"
#include "odbcadmin/assist/cut_list.h"
#include "scripted_user.h"
#include "test_home.h"

// The build says where the general setup library lies.
#ifndef JX_SETUP_LIBRARY
#define JX_SETUP_LIBRARY "."
#endif

namespace jx::assist::test {

using jx::test::Action, jx::test::call, jx::test::click, jx::test::doubleClick, jx::test::press, jx::test::selectRow,
    jx::test::type;

using Lines = std::vector<std::string>;

// ListDialogs: a user with the driver Mine and these data sources.
class ListDialogs : public testing::Test {
protected:
    explicit ListDialogs(const std::string& dataSources) {
        home_.put(".odbcinst.ini", "[ODBC Drivers]\nMine=Installed\n[Mine]\nDriver=" + folder_.driver() +
                                       "\nSetup=" JX_SETUP_LIBRARY "\n");
        home_.put(".odbc.ini", dataSources);
    }

    Action key(int number) {
        return call([this, number](HWND dialog) {
            for (const FunctionKey& each : assistant_.functionKeys(dialog))
                if (each.number == number)
                    told_.push_back(each.press(dialog));
        });
    }

    Action open() {
        return call([this](HWND dialog) { assistant_.opened(dialog); });
    }

    // Notes the rows of the list in front, the selected one behind ">".
    Action see() {
        return call([this](HWND dialog) {
            JxwControlInfo list{};
            std::string rows;
            for (int index = 0; JXW_GetControlInfo(dialog, index, &list) != 0; ++index)
                for (int row = 0; list.kind == JXW_LISTBOX && row < list.rowCount; ++row)
                    rows += (row == list.selection ? ">" : " ") + std::string(JXW_GetRow(dialog, index, row)) + "\n";
            seen_.push_back(rows);
        });
    }

    Action notice() {
        return call([this](HWND dialog) { told_.push_back(cutNotice(dialog)); });
    }

    Action title() {
        return call([this](HWND dialog) {
            JxwDialogInfo info{};
            JXW_GetDialogInfo(dialog, &info);
            told_.push_back(info.title);
        });
    }

    Lines manage(std::initializer_list<Action> actions, std::initializer_list<unsigned int> answers = {}) {
        jx::test::ScriptedUser user(actions, answers);
        SQLManageDataSources(0);
        EXPECT_EQ(user.actionsLeft(), 0U);
        EXPECT_EQ(user.answersLeft(), 0U);
        return user.boxes;
    }

    jx::test::TestHome home_;
    jx::test::DriverFolder folder_{home_};
    Assistant assistant_;
    Lines told_, seen_;
};

}  // namespace jx::assist::test
