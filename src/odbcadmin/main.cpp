// The program odbcadmin.
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>

#include "odbcadmin/cli/command_line.h"
#ifdef JX_HAS_TERMINAL
#include "odbcadmin/terminal/run.h"
#endif

namespace {

jx::admin::ExitCode run(int count, char** arguments) {
#ifdef JX_HAS_TERMINAL
    if (count == 1)
        return static_cast<jx::admin::ExitCode>(jx::terminal::runScreen());
#endif
    return jx::admin::runCommandLine({arguments + 1, arguments + count});
}

}  // namespace

int main(int count, char** arguments) {
    using jx::admin::ExitCode;
    ExitCode code = ExitCode::failed;
    try {
        std::ios::sync_with_stdio(/*sync=*/false);
        code = run(count, arguments);
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
