/* Data kept per task and per thread.
 *
 * Nothing here is shared between threads, so nothing locks. A thread's data is made when it is first needed, whether
 * the thread began before or after this library was loaded, and released when the thread ends; the thread that runs
 * main keeps its data until the process ends. */
#ifndef JXTASKS_H
#define JXTASKS_H

#include "jxexport.h"

JX_EXTERN_C_BEGIN

/* The slots of per-thread data. In C++ its values are all those of int, so that a number from elsewhere may be asked
 * for. */
typedef enum PerThreadData JX_INT_VALUES {
    PerThreadErrors = 0 /* the calling thread's JxList of JxError objects (jxerrors.h) */
} PerThreadData;

/* Mark the begin and the end of a task on the calling thread; pairs may nest. Return the depth after the call, which
 * never falls below 0. A begin when memory is short returns 0 and opens nothing. The thread's error list outlives a
 * task. */
JX_EXPORT int mdsPerTaskInit(void);
JX_EXPORT int mdsPerTaskTerm(void);

/* The calling thread's object in a slot, made at the first call; null for an unknown slot or when memory is short. It
 * is owned by the thread: use it on that thread only and do not release it. What is put into the list of errors must
 * be JxError objects. */
JX_EXPORT void* mdsGetPerThreadData(PerThreadData slot);

JX_EXTERN_C_END

#endif
