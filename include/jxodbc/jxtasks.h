/* Data kept per thread, and the depth of tasks on it.
 *
 *     mdsPerTaskInit();
 *     void* errors = mdsGetPerThreadData(PerThreadErrors);
 *     mdsPerTaskTerm();
 *
 * Threads share nothing of it. A thread's data is made when it is first needed and released when the thread ends; that
 * of the thread that runs main is kept until the process ends. */
#ifndef JXTASKS_H
#define JXTASKS_H

#include "jxexport.h"

JX_EXTERN_C_BEGIN

/* The slots of per-thread data. In C++ any int is a valid value, so a program may ask for any number. */
typedef enum PerThreadData JX_INT_VALUES {
    PerThreadErrors = 0 /* the calling thread's JxList of JxError objects (jxerrors.h) */
} PerThreadData;

/* Begin and end a task on the calling thread; pairs may nest. Return the depth after the call, at least 0. When memory
 * is short mdsPerTaskInit returns 0 and begins no task. Ending a task keeps the thread's error list. */
JX_EXPORT int mdsPerTaskInit(void);
JX_EXPORT int mdsPerTaskTerm(void);

/* The calling thread's object in a slot, made at the first call; null for an unknown slot or when memory is short. The
 * thread owns it: use it on that thread only and do not release it. Put only JxError objects into the list of errors.
 */
JX_EXPORT void* mdsGetPerThreadData(PerThreadData slot);

JX_EXTERN_C_END

#endif
