// The writes of one call as one change of each file.
//
//     ConfigurationRun run;
//     driverFile().write(...); dataSourceFile().write(...);
//     return run.commit();
#pragma once

#include <jxini.h>

#include <utility>

namespace jx {

// ConfigurationRun: keeps back the thread's writes from its construction to commit. Reads of the thread see them.
// Use      commit writes each file once. Leaving scope without it gives all of them up. End it before calling what is
//          not this library's: setup routines, message boxes, dialogs.
// Order    .odbcinst.ini is locked before .odbc.ini, so that two runs cannot wait for each other: see lockInRun of
//          ConfigurationFile.
// Nesting  inside another run it is part of that one: giving it up makes the commit of the outer one fail.
// Threads  it belongs to its thread.
class ConfigurationRun {
public:
    ConfigurationRun() : run_(jxIniBeginRun()) {}
    ~ConfigurationRun() { jxIniDiscardRun(run_); }
    ConfigurationRun(const ConfigurationRun&) = delete;
    ConfigurationRun& operator=(const ConfigurationRun&) = delete;

    // False when memory was short: writes would then be made one by one.
    bool hasBegun() const { return run_ != nullptr; }

    // False when one of the writes or the writing of a file failed; that file and those behind it are as they were.
    bool commit() { return jxIniCommitRun(std::exchange(run_, nullptr)) != 0; }

private:
    JxIniRun* run_;
};

}  // namespace jx
