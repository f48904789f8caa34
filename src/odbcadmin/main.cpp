// The program odbcadmin.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>

#include "odbcadmin/cli/command_line.h"
#ifdef JX_HAS_TERMINAL
#include "odbcadmin/terminal/run.h"
#endif

namespace {

#ifdef JX_HAS_TERMINAL
constexpr jx::cli::ShowDialogs kShowDialogs = [] { return static_cast<jx::cli::ExitCode>(jx::terminal::runScreen()); };
#else
constexpr jx::cli::ShowDialogs kShowDialogs = nullptr;
#endif

}  // namespace

int main(int count, char** arguments) {
    using jx::cli::ExitCode;
    ExitCode code = ExitCode::failed;
    try {
        std::ios::sync_with_stdio(/*sync=*/false);
        code = jx::cli::runCommandLine({arguments + 1, arguments + count}, kShowDialogs);
    } catch (const std::bad_alloc&) {
        std::fputs("odbcadmin: Out of memory\n", stderr);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "odbcadmin: %s\n", error.what());
    } catch (...) {
        // Drivers throw what they like.
        std::fputs("odbcadmin: A driver ended its work with an exception that says nothing\n", stderr);
    }
    // A reader that went away or a full disk: the result did not arrive.
    errno = 0;
    if (!std::cout.flush()) {
        const int error = errno;
        std::fprintf(stderr, "odbcadmin: Cannot write the result: %s\n",
                     error != 0 ? std::strerror(error) : "the output was refused");
        code = code == ExitCode::done ? ExitCode::failed : code;
    }
    return static_cast<int>(code);
}
