// The profile call that tells a failed read from an absent entry.
#include <jxprofile.h>
#include "jxutl/thread/failure.h"

int jxProfileReadFailed(void) {
    return jx::ini::lastFailure().step != JxIniStepNone ? 1 : 0;
}
