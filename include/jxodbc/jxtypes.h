/* The integer and text types of the ODBC installer interface. When another ODBC header defines these names, include it
 * first and leave them out here; they must have the widths given below:
 *
 *     #define JX_NO_ODBC_TYPES
 *     #include <odbcinst.h>
 */
#ifndef JXTYPES_H
#define JXTYPES_H

#include <stdint.h>

#ifndef JX_NO_ODBC_TYPES
typedef int BOOL;            /* 1 TRUE, 0 FALSE */
typedef unsigned short WORD; /* 16 bits: sizes and request codes */
typedef uint32_t DWORD;      /* 32 bits: option values */
typedef uint32_t HWND;       /* a window of the dialog layer; 0 means no window */
typedef char* LPSTR;         /* NUL-terminated single-byte text, written to */
typedef const char* LPCSTR;  /* NUL-terminated single-byte text, read only */
#endif

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

#endif
