// The variables that say where files are.
//
//     const Environment environment = readEnvironment();
//     if (environment.home != nullptr) ...
#pragma once

namespace jx::api3 {

// Environment: the values at this moment; null for what is unset, and for all of them in a program with raised rights:
// whoever started that must not choose its files. They are the environment's own texts, not copies.
struct Environment {
    const char* home = nullptr;             // HOME
    const char* dataSources = nullptr;      // ODBCINI
    const char* systemDirectory = nullptr;  // ODBCSYSINI
    const char* drivers = nullptr;          // ODBCINSTINI
    const char* log = nullptr;              // JXODBC_LOG
};

Environment readEnvironment();

// One variable by its name; null as above.
const char* readVariable(const char* name);

// Whether whoever started the program must not choose its files.
bool hasRaisedRights();

}  // namespace jx::api3
