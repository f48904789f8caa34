// The places where the configuration files may be, and which of them counts.
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
    FileKind kind = FileKind::dataSources;
    Scope scope = Scope::user;
    std::string file;      // ".odbc.ini" of the user, "odbc.ini" of the system
    std::string variable;  // "ODBCINI"
    std::string path;      // the winner's; empty when there is no home directory
    std::vector<Candidate> candidates;
};

// The four files, in the order in which they are looked through: the user's data sources, the system's, the user's
// drivers, the system's; as the environment of this process has it. root: the directory that enterRoot was given, if
// it was; for the reasons only.
std::vector<ConfigPlace> configPlaces(const std::string& root = {});

// The variable that names the user's file of that kind when it is elsewhere: "ODBCINI".
const char* variableOf(FileKind kind);

// Of the variables that move files, those that are set: "ODBCINI=/srv/odbc.ini".
std::vector<std::string> variablesThatMove();

// What HOME says, or else the home directory of the account; empty when there is none.
std::string homeDirectory();

// A program that looks for data sources and drivers, and the files that it would look through, in order.
struct Generation {
    std::string program;  // "libodbcinst.so.2"
    std::vector<std::string> dataSources, drivers;
};

// The older library, the newer one, and the newer one in a program that has ODBCSYSINI, or has it not where it is set
// here.
std::vector<Generation> generations();

}  // namespace jx::model
