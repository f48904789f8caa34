// The fixture of the dialogs' tests: a home directory, drivers, a record of the calls of their setup libraries.
#pragma once

#include <gtest/gtest.h>
#include <jxscreen.h>
#include <jxwindow.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <string>
#include <vector>

#include <control_ids.h>
#include "scripted_user.h"
#include "setup_calls.h"
#include "test_home.h"

namespace jx::test {

inline constexpr char kRowRefused[] =
    "KALDERO ODBC Admin|This row cannot be used here: it names no driver, or the name of its data source or of its "
    "driver is longer than 49 bytes.|48";

using Texts = std::vector<std::string>;

// A message box of the administrator, as ScriptedUser::boxes has it.
inline std::string adminBox(unsigned short text, unsigned int style) {
    unsigned char buffer[256] = {};
    winGetString(buffer, text);
    return "KALDERO ODBC Admin|" + std::string(reinterpret_cast<char*>(buffer)) + "|" + std::to_string(style);
}

// A text of the library with name in the place of "%s" or "%1".
inline std::string filled(unsigned short text, const std::string& name) {
    unsigned char buffer[256] = {};
    winGetString(buffer, text);
    std::string whole = reinterpret_cast<char*>(buffer);
    for (const char* place : {"%s", "%1"}) {
        if (const std::size_t at = whole.find(place); at != std::string::npos)
            whole.replace(at, 2, name);
    }
    return whole;
}

inline std::string plain(unsigned short text) {
    return filled(text, "");
}

class DialogTest : public testing::Test {
protected:
    ~DialogTest() override {
        EXPECT_EQ(JXW_NextDialog(0), 0U) << "a dialog was left";
        EXPECT_EQ(HWNDDSDLG, 0U);
        EXPECT_EQ(HWNDADDLG, 0U);
    }

    // Drivers by name and setup library, a data source for each pair of name and driver.
    void putDrivers(std::initializer_list<std::pair<const char*, std::string>> drivers) const {
        std::string list = "[ODBC Drivers]\n";
        std::string sections;
        for (const auto& [name, setup] : drivers) {
            list += std::string(name) + "=Installed\n";
            sections += "\n[" + std::string(name) + "]\nDriver=/lib/" + name + ".so\nSetup=" + setup + "\n";
        }
        home.put(".odbcinst.ini", list + sections);
    }

    void putDataSources(std::initializer_list<std::pair<const char*, const char*>> sources) const {
        std::string list = "[ODBC Data Sources]\n";
        std::string sections;
        for (const auto& [name, driver] : sources) {
            list += std::string(name) + "=" + driver + "\n";
            sections += "\n[" + std::string(name) + "]\nDriver=/lib/x.so\n";
        }
        home.put(".odbc.ini", list + sections);
    }

    // Opens a dialog, which must end with 1, and gives the dump of what it shows before the closing action.
    template <typename Open, typename Action>
    static std::string shownBy(Open open, const Action& close) {
        ScriptedUser user{look(), close};
        EXPECT_EQ(open(), 1);
        return user.dumps.empty() ? "(nothing was shown)" : user.dumps[0];
    }

    // The part of a dump that belongs to one list box.
    static std::string listIn(const std::string& dump) {
        const std::size_t begin = dump.find("  list ");
        std::size_t end = dump.find('\n', begin) + 1;
        while (dump.compare(end, 4, "    ") == 0)
            end = dump.find('\n', end) + 1;
        return dump.substr(begin, end - begin);
    }

    const TestHome home;
    const SetupCalls calls;
};

}  // namespace jx::test
