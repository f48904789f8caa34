/* One connection to a database, by direct calls of a driver library's ODBC functions. */
#ifndef DRIVER_H
#define DRIVER_H

struct connection {
    void* library;
    void* environment;
    void* handle;
};

/* Loads the driver and connects, for example with "DSN=Sales"; prints the driver's name and version. 1 for success. */
int open_connection(struct connection* connection, const char* driver, const char* text);

/* Executes a statement and prints its rows. Returns their number, or -1 after printing the driver's message. */
int execute(struct connection* connection, const char* statement);

/* Closes the connection, if any, and unloads the driver. */
void close_connection(struct connection* connection);

#endif
