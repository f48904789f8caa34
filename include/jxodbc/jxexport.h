/* What is visible outside the two libraries, and how calls to it bind. */
#ifndef JXEXPORT_H
#define JXEXPORT_H

/* Visible to programs. Calls from inside the installer library reach its own functions even so, whatever else in the
 * process exports their names; the dialog starters and procedures are the exceptions (src/api/dynamic.list). */
#define JX_EXPORT __attribute__((visibility("default")))

#ifdef __cplusplus
#define JX_EXTERN_C_BEGIN extern "C" {
#define JX_EXTERN_C_END }
#define JX_INT_VALUES : int /* an enumeration that may hold any int, as in C */
#else
#define JX_EXTERN_C_BEGIN
#define JX_EXTERN_C_END
#define JX_INT_VALUES
#endif

#endif
