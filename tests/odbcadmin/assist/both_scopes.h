// A user and a system that both have a data source Sales and a driver Mine, and a user who goes through the dialogs.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

#include "list_dialogs.h"
#include "odbcadmin/model/text.h"

namespace jx::assist::test {

inline const std::string kBothUserSources =
    "; mine\n[ODBC Data Sources]\nSales=Mine\nRefuse=Mine\n\n[Sales]\nDriver=Mine\nServer=db1\n\n[Refuse]\n"
    "Driver=Mine\n";
inline const std::string kBothSystemSources =
    "; of all\n[ODBC Data Sources]\nSales=Mine\n\n[Sales]\nDriver=Mine\nServer=big\nPWD=geheim\n; the last\n\n"
    "[Stock]\nDriver=Theirs\nServer=db2\n";

// BothScopes: the user's and the system's.
class BothScopes : public ListDialogs {
protected:
    BothScopes() : ListDialogs(kBothUserSources) {
        home_.putSystem("odbc.ini", kBothSystemSources);
        home_.putSystem("odbcinst.ini", "[Theirs]\nDriver=" + folder_.driver() + "\n[Mine]\nDriver=/opt/other.so\n");
    }

    // From here on the system's files cannot be changed.
    Action loseRights() {
        return call([this](HWND) {
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

    bool wasRoot_ = false;
};

}  // namespace jx::assist::test
