/* One connection to a database through a driver library, made by calling the driver's own ODBC functions. */
#ifndef DRIVER_H
#define DRIVER_H

struct connection {
    void* library;
    void* environment;
    void* handle;
};

/* Loads the driver and connects, for example with "DSN=Sales"; prints what the driver says of itself. 1 for success. */
int open_connection(struct connection* connection, const char* driver, const char* text);

/* Executes a statement and prints the rows it gives; their number, or -1 after printing the driver's message. */
int execute(struct connection* connection, const char* statement);

/* Closes whatever is open; the driver is unloaded. */
void close_connection(struct connection* connection);

#endif
