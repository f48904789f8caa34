/* Calls a driver's ODBC functions, declared as in the ODBC reference and found by name. */
#include "driver.h"

#include <dlfcn.h>
#include <stdio.h>
#include <string.h>

enum {
    SQL_HANDLE_ENV = 1,
    SQL_HANDLE_DBC = 2,
    SQL_HANDLE_STMT = 3,
    SQL_ATTR_ODBC_VERSION = 200,
    SQL_OV_ODBC3 = 3,
    SQL_NTS = -3,
    SQL_C_CHAR = 1,
    SQL_DRIVER_NAME = 6,
    SQL_DRIVER_VER = 7,
    SQL_DBMS_NAME = 17,
    SQL_DBMS_VER = 18
};

typedef short (*alloc_handle)(short type, void* input, void** output);
typedef short (*free_handle)(short type, void* handle);
typedef short (*set_env_attr)(void* environment, int attribute, void* value, int length);
typedef short (*driver_connect)(void* connection, void* window, const char* input, short input_length, char* output,
                                short output_size, short* output_length, unsigned short completion);
typedef short (*disconnect)(void* connection);
typedef short (*get_info)(void* connection, unsigned short type, void* value, short size, short* length);
typedef short (*exec_direct)(void* statement, const char* text, int length);
typedef short (*num_result_cols)(void* statement, short* count);
typedef short (*fetch)(void* statement);
typedef short (*get_data)(void* statement, unsigned short column, short type, void* value, long size, long* length);
typedef short (*get_diag_rec)(short type, void* handle, short number, char* state, int* native_error, char* text,
                              short size, short* length);

typedef void (*any_function)(void);

static any_function function(const struct connection* connection, const char* name) {
    any_function found = NULL;
    void* symbol = dlsym(connection->library, name);
    memcpy(&found, &symbol, sizeof found);
    return found;
}

static int has_all_functions(const struct connection* connection) {
    static const char* const names[] = {"SQLAllocHandle", "SQLFreeHandle", "SQLSetEnvAttr", "SQLDriverConnect",
                                        "SQLDisconnect",  "SQLGetInfo",    "SQLExecDirect", "SQLNumResultCols",
                                        "SQLFetch",       "SQLGetData",    "SQLGetDiagRec"};
    size_t i;
    for (i = 0; i < sizeof names / sizeof *names; ++i)
        if (function(connection, names[i]) == NULL) {
            printf("    the driver has no function %s\n", names[i]);
            return 0;
        }
    return 1;
}

#define CALL(connection, type, name) ((type)function(connection, name))

/* 0 and 1 (success with information) mean success in every ODBC function. */
static int succeeded(short result) {
    return result == 0 || result == 1;
}

static void print_message(const struct connection* connection, short type, void* handle) {
    char state[6] = "", text[512] = "";
    int native_error = 0;
    short length = 0;
    CALL(connection, get_diag_rec, "SQLGetDiagRec")(type, handle, 1, state, &native_error, text, sizeof text, &length);
    printf("    the driver says: %s %s\n", state, text);
}

static const char* info(const struct connection* connection, unsigned short type, char* text, short size) {
    short length = 0;
    if (!succeeded(CALL(connection, get_info, "SQLGetInfo")(connection->handle, type, text, size, &length)))
        strncpy(text, "?", (size_t)size);
    return text;
}

static void print_driver(const struct connection* connection) {
    char driver[64], version[64], dbms[64], dbms_version[64];
    printf("    driver %s %s, database %s %s\n", info(connection, SQL_DRIVER_NAME, driver, sizeof driver),
           info(connection, SQL_DRIVER_VER, version, sizeof version),
           info(connection, SQL_DBMS_NAME, dbms, sizeof dbms),
           info(connection, SQL_DBMS_VER, dbms_version, sizeof dbms_version));
}

int open_connection(struct connection* connection, const char* driver, const char* text) {
    memset(connection, 0, sizeof *connection);
    connection->library = dlopen(driver, RTLD_NOW | RTLD_LOCAL);
    if (connection->library == NULL) {
        printf("    %s\n", dlerror());
        return 0;
    }
    if (!has_all_functions(connection))
        return 0;
    const alloc_handle allocate = CALL(connection, alloc_handle, "SQLAllocHandle");
    char complete[1024] = "";
    short length = 0;
    if (!succeeded(allocate(SQL_HANDLE_ENV, NULL, &connection->environment)) ||
        !succeeded(CALL(connection, set_env_attr, "SQLSetEnvAttr")(connection->environment, SQL_ATTR_ODBC_VERSION,
                                                                   (void*)(long)SQL_OV_ODBC3, 0)) ||
        !succeeded(allocate(SQL_HANDLE_DBC, connection->environment, &connection->handle)))
        return 0;
    if (!succeeded(CALL(connection, driver_connect, "SQLDriverConnect")(connection->handle, NULL, text, SQL_NTS,
                                                                        complete, sizeof complete, &length, 0))) {
        print_message(connection, SQL_HANDLE_DBC, connection->handle);
        return 0;
    }
    print_driver(connection);
    return 1;
}

static void print_row(const struct connection* connection, void* statement, short columns) {
    char value[256];
    long length;
    short column;
    for (column = 1; column <= columns; ++column) {
        value[0] = '\0';
        CALL(connection, get_data, "SQLGetData")
        (statement, (unsigned short)column, SQL_C_CHAR, value, sizeof value, &length);
        printf("%s%-12s", column == 1 ? "    row: " : "| ", value);
    }
    printf("\n");
}

static int print_rows(const struct connection* connection, void* statement) {
    const fetch next = CALL(connection, fetch, "SQLFetch");
    short columns = 0;
    int rows = 0;
    CALL(connection, num_result_cols, "SQLNumResultCols")(statement, &columns);
    while (columns > 0 && succeeded(next(statement))) {
        print_row(connection, statement, columns);
        ++rows;
    }
    return rows;
}

int execute(struct connection* connection, const char* text) {
    void* statement = NULL;
    int rows = -1;
    printf("    %s\n", text);
    if (!succeeded(CALL(connection, alloc_handle, "SQLAllocHandle")(SQL_HANDLE_STMT, connection->handle, &statement)))
        return -1;
    if (succeeded(CALL(connection, exec_direct, "SQLExecDirect")(statement, text, SQL_NTS)))
        rows = print_rows(connection, statement);
    else
        print_message(connection, SQL_HANDLE_STMT, statement);
    CALL(connection, free_handle, "SQLFreeHandle")(SQL_HANDLE_STMT, statement);
    return rows;
}

void close_connection(struct connection* connection) {
    if (connection->library == NULL)
        return;
    if (connection->handle != NULL) {
        CALL(connection, disconnect, "SQLDisconnect")(connection->handle);
        CALL(connection, free_handle, "SQLFreeHandle")(SQL_HANDLE_DBC, connection->handle);
    }
    if (connection->environment != NULL)
        CALL(connection, free_handle, "SQLFreeHandle")(SQL_HANDLE_ENV, connection->environment);
    dlclose(connection->library);
    memset(connection, 0, sizeof *connection);
}
