/* What is visible outside the two libraries, and how calls to it bind. */
#ifndef JXEXPORT_H
#define JXEXPORT_H

/* Visible to programs; another definition earlier in the process may take its place. */
#define JX_EXPORT __attribute__((visibility("default")))

/* Visible to programs, but a call from inside the library that defines it always reaches that library's own
 * definition: a second library in the process that exports the same name cannot capture it. */
#ifdef JX_BUILDS_INSTALLER
#define JX_EXPORT_BOUND __attribute__((visibility("protected")))
#else
#define JX_EXPORT_BOUND __attribute__((visibility("default")))
#endif

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
