/* Marks what the libraries export; the other headers include it:
 *
 *     JX_EXTERN_C_BEGIN
 *     JX_EXPORT int visibleToPrograms(void);
 *     JX_EXTERN_C_END
 */
#ifndef JXEXPORT_H
#define JXEXPORT_H

/* Visible to programs. The installer library's own calls still reach its own functions, whatever else in the process
 * exports their names; only the dialog starters and procedures are looked up by name (src/api/dynamic.list). */
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
