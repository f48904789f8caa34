// The process that loads what is foreign, and the one that waits for it.
#pragma once

#include "odbcadmin/trial/helper/request.h"

// Has a process of its own do what the request asks, ends it after its "limit" (milliseconds) or when the command that
// waits goes away, then ends all that is left of it, and writes its report and one line more:
//     end exited 3
//     end signalled 11
//     end timed-out
//     end not-started 11      the errno
// The last record of a worker that came to its own end is "finished". When the helper runs as root and the library is
// another user's, the worker runs as that user, and a record "user NAME" comes first; where that cannot be done nothing
// is loaded, and a record "withheld" says whose what is. Standard output and error of the worker are the helper's
// standard error; its standard input is empty.
void serve(const Request* request);
