// What the command's exit code tells a script. The numbers are frozen: scripts depend on them.
#pragma once

namespace jx::cli {

enum class ExitCode {
    done = 0,            // done, or nothing to do
    failed = 1,          // something else went wrong
    wrongUse = 2,        // the command line makes no sense
    notFound = 3,        // a data source, driver, translator or key is not there
    exists = 4,          // what should be added is there already
    invalid = 5,         // a name or value that the file could not give back, or that is not allowed
    badInput = 6,        // the input of apply is not valid
    fileTrouble = 7,     // a file cannot be read or written
    locked = 8,          // another program kept the file locked for too long
    wouldChange = 9,     // --check: the command would change a file
    foundErrors = 10,    // doctor, lint or driver check found errors
    cannotConnect = 11,  // dsn test could not connect
    cannotRun = 126,     // run: the program is there and cannot be run so; else the exit code is the program's
    noProgram = 127,     // run: there is no such program
};

}  // namespace jx::cli
