// Keeping a library from ending those who wait for it.
#pragma once

#include <stdbool.h>
#include <sys/types.h>

// From now on this process and all that it starts cannot signal, trace or limit the two processes given or their
// groups, nor everybody at once; such a call fails with EPERM. The kernel's system call filter does it, which also
// keeps programs that they start from raising their rights. False where the kernel has none; nothing is kept then.
bool guardAgainstSignals(pid_t one, pid_t other);
