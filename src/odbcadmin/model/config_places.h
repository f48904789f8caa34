// The places where the two configuration files may be, and which of them counts.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/model/config_file.h"

namespace jx::model {

struct Candidate {
    std::string path;
    std::string why;  // "ODBCINI names it"
    bool wins = false;
    bool exists = false;  // a file, whatever its kind; a link that leads nowhere does not exist
};

struct ConfigPlace {
    std::string file;      // ".odbc.ini"
    std::string variable;  // "ODBCINI"
    std::string path;      // the winner's; empty when there is no home directory
    std::vector<Candidate> candidates;
};

// Both files, as the environment of this process has it. systemFolder is where other systems keep files for all users;
// they are candidates that never win.
std::vector<ConfigPlace> configPlaces(const std::string& systemFolder = "/etc");

// The variable that names the user's file of that kind when it is elsewhere: "ODBCINI".
const char* variableOf(FileKind kind);

}  // namespace jx::model
