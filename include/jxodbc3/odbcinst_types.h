/* The types, constants and error codes of odbcinst.h.
 *
 *     UWORD mode = ODBC_SYSTEM_DSN;
 *     DWORD code = ODBC_ERROR_REQUEST_FAILED;
 *
 * Identical definitions of another ODBC header may stand beside them. */
#ifndef JXODBC3_ODBCINST_TYPES_H
#define JXODBC3_ODBCINST_TYPES_H

/* Define JX_NO_ODBC_TYPES when another ODBC header defines these types; they must have the widths given here. */
#if !defined(JX_NO_ODBC_TYPES) && !defined(__SQLTYPES) && !defined(__SQLTYPES_H) && !defined(_SQLTYPES_H)
typedef void* HWND; /* the caller's window; null for none */
typedef int BOOL;
typedef unsigned short WORD;  /* 16 bits */
typedef unsigned short UWORD; /* 16 bits */
typedef unsigned int DWORD;   /* 32 bits */
typedef signed short RETCODE;
typedef unsigned short SQLWCHAR; /* one unit of UTF-16 */
typedef char* LPSTR;
typedef const char* LPCSTR;
#endif

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif
#ifndef SQL_SUCCESS
#define SQL_SUCCESS 0
#endif
#ifndef SQL_SUCCESS_WITH_INFO
#define SQL_SUCCESS_WITH_INFO 1
#endif
#ifndef SQL_NO_DATA
#define SQL_NO_DATA 100
#endif
#ifndef SQL_ERROR
#define SQL_ERROR (-1)
#endif
#ifndef SQL_MAX_DSN_LENGTH
#define SQL_MAX_DSN_LENGTH 32 /* characters of a new data source's name */
#endif
#ifndef SQL_MAX_MESSAGE_LENGTH
#define SQL_MAX_MESSAGE_LENGTH 512
#endif

/* Requests of SQLConfigDataSource. */
#define ODBC_ADD_DSN 1
#define ODBC_CONFIG_DSN 2
#define ODBC_REMOVE_DSN 3
#define ODBC_ADD_SYS_DSN 4
#define ODBC_CONFIG_SYS_DSN 5
#define ODBC_REMOVE_SYS_DSN 6
#define ODBC_REMOVE_DEFAULT_DSN 7

/* Requests of SQLInstallDriverEx and SQLInstallTranslatorEx, and of SQLConfigDriver. */
#define ODBC_INSTALL_INQUIRY 1
#define ODBC_INSTALL_COMPLETE 2
#define ODBC_INSTALL_DRIVER 1
#define ODBC_REMOVE_DRIVER 2
#define ODBC_CONFIG_DRIVER 3
#define ODBC_CONFIG_DRIVER_MAX 100

/* Modes of SQLSetConfigMode: which file of data sources is read and written. */
#define ODBC_BOTH_DSN 0
#define ODBC_USER_DSN 1
#define ODBC_SYSTEM_DSN 2

/* Error codes of SQLInstallerError and SQLPostInstallerError. */
#define ODBC_ERROR_GENERAL_ERR 1
#define ODBC_ERROR_INVALID_BUFF_LEN 2
#define ODBC_ERROR_INVALID_HWND 3
#define ODBC_ERROR_INVALID_STR 4
#define ODBC_ERROR_INVALID_REQUEST_TYPE 5
#define ODBC_ERROR_COMPONENT_NOT_FOUND 6
#define ODBC_ERROR_INVALID_NAME 7
#define ODBC_ERROR_INVALID_KEYWORD_VALUE 8
#define ODBC_ERROR_INVALID_DSN 9
#define ODBC_ERROR_INVALID_INF 10
#define ODBC_ERROR_REQUEST_FAILED 11
#define ODBC_ERROR_INVALID_PATH 12
#define ODBC_ERROR_LOAD_LIB_FAILED 13
#define ODBC_ERROR_INVALID_PARAM_SEQUENCE 14
#define ODBC_ERROR_INVALID_LOG_FILE 15
#define ODBC_ERROR_USER_CANCELED 16
#define ODBC_ERROR_USAGE_UPDATE_FAILED 17
#define ODBC_ERROR_CREATE_DSN_FAILED 18
#define ODBC_ERROR_WRITING_SYSINFO_FAILED 19
#define ODBC_ERROR_REMOVE_DSN_FAILED 20
#define ODBC_ERROR_OUT_OF_MEM 21
#define ODBC_ERROR_OUTPUT_STRING_TRUNCATED 22
#define ODBC_ERROR_NOTRANINFO 23

#endif
