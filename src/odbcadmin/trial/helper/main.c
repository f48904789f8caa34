// The helper program of odbcadmin: it loads the libraries of others, so that the command does not.
//
// It reads one request from standard input and writes a report to standard output; what the libraries print goes to
// standard error. It is linked with the C library alone: a driver's references bind to the first library of the process
// that has the name, and here that is one which the driver itself brings along, as in any program.
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <unistd.h>

#include "odbcadmin/trial/helper/library.h"
#include "odbcadmin/trial/helper/request.h"
#include "odbcadmin/trial/helper/worker.h"

int main(void) {
    Request request;
    if (!readRequest(STDIN_FILENO, &request)) {
        fputs("This program is a part of odbcadmin, which starts it; it has no use of its own.\n", stderr);
        return EXIT_FAILURE;
    }
    // Its end comes from the command that waits, by closing the stream, not from a key on the terminal; and no library
    // may look into it.
    setsid();
    signal(SIGPIPE, SIG_IGN);
    prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
    useInstaller(requestText(&request, "installer"));
    serve(&request);
    // Nothing of the libraries runs here, but functions registered by the C library's own would only cost time.
    _exit(EXIT_SUCCESS);
}
