// Ending everything that a process has started, and what that started in turn, wherever it went.
#pragma once

#include <stdbool.h>
#include <sys/types.h>

// From now on children of this process's descendants become its own when their parents end, whatever they did to leave.
void keepDescendants(void);

// Kills all descendants of this process and takes their ends, for at most some seconds: a process that waits for a
// broken disk cannot be ended. True when none is left.
bool endDescendants(void);
