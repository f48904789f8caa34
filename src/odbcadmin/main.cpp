// The program odbcadmin.
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>

#include "odbcadmin/cli/command_line.h"

int main(int count, char** arguments) {
    using jx::admin::ExitCode;
    ExitCode code = ExitCode::failed;
    try {
        std::ios::sync_with_stdio(/*sync=*/false);
        code = jx::admin::runCommandLine({arguments + 1, arguments + count});
    } catch (const std::bad_alloc&) {
        std::fputs("odbcadmin: Out of memory\n", stderr);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "odbcadmin: %s\n", error.what());
    }
    // A reader that went away or a full disk: the result did not arrive.
    if (!std::cout.flush() && code == ExitCode::done)
        code = ExitCode::failed;
    return static_cast<int>(code);
}
