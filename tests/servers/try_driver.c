/* Loads a driver as a program without a driver manager does, connects, and executes statements: the driver's own calls
 * of the installer library are what is tried.
 * Usage: try_driver DRIVER CONNECTION-STRING STATEMENT...
 *        try_driver -w DRIVER CONNECTION-STRING                 connects with SQLDriverConnectW, ASCII only
 *        try_driver -t DRIVER CONNECTION-STRING STATEMENT...    the same ten times in each of 8 threads
 * Exit status 0 when all succeeded. */
#include <dlfcn.h>
#include <pthread.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "driver.h"

enum { kThreads = 8, kRounds = 10 };

static int run(char** arguments) {
    struct connection connection;
    int done = open_connection(&connection, arguments[0], arguments[1]);
    int i;
    for (i = 2; arguments[i] != NULL && done; ++i)
        done = execute(&connection, arguments[i]) >= 0;
    close_connection(&connection);
    return done;
}

static void* run_often(void* arguments) {
    uintptr_t failures = 0;
    int round;
    for (round = 0; round < kRounds; ++round)
        failures += run(arguments) ? 0 : 1;
    return (void*)failures;
}

static int run_in_threads(char** arguments) {
    pthread_t threads[kThreads];
    uintptr_t failures = 0;
    void* result;
    int i;
    for (i = 0; i < kThreads; ++i)
        if (pthread_create(&threads[i], NULL, run_often, arguments) != 0)
            return 0;
    for (i = 0; i < kThreads; ++i) {
        pthread_join(threads[i], &result);
        failures += (uintptr_t)result;
    }
    return failures == 0;
}

typedef short (*alloc_handle)(short type, void* input, void** output);
typedef short (*set_env_attr)(void* environment, int attribute, void* value, int length);
typedef short (*driver_connect_w)(void* connection, void* window, const uint16_t* input, short input_length,
                                  uint16_t* output, short output_size, short* output_length, unsigned short completion);
typedef short (*disconnect)(void* connection);

static int succeeded(short result) {
    return result == 0 || result == 1;
}

static int connect_wide(char** arguments) {
    enum { kEnvironment = 1, kConnection = 2, kVersionAttribute = 200, kVersion3 = 3, kSize = 512, kTextEnds = -3 };
    void* library = dlopen(arguments[0], RTLD_NOW | RTLD_LOCAL);
    uint16_t text[kSize] = {0};
    void *environment = NULL, *connection = NULL;
    alloc_handle allocate;
    set_env_attr set_attribute;
    driver_connect_w connect;
    disconnect end;
    size_t i;
    if (library == NULL || strlen(arguments[1]) >= kSize)
        return 0;
    for (i = 0; arguments[1][i] != '\0'; ++i)
        text[i] = (unsigned char)arguments[1][i];
    *(void**)&allocate = dlsym(library, "SQLAllocHandle");
    *(void**)&set_attribute = dlsym(library, "SQLSetEnvAttr");
    *(void**)&connect = dlsym(library, "SQLDriverConnectW");
    *(void**)&end = dlsym(library, "SQLDisconnect");
    return succeeded(allocate(kEnvironment, NULL, &environment)) &&
           succeeded(set_attribute(environment, kVersionAttribute, (void*)(intptr_t)kVersion3, 0)) &&
           succeeded(allocate(kConnection, environment, &connection)) &&
           succeeded(connect(connection, NULL, text, kTextEnds, NULL, 0, NULL, 0)) && succeeded(end(connection));
}

int main(int count, char** arguments) {
    const int threaded = count > 1 && strcmp(arguments[1], "-t") == 0;
    const int wide = count > 1 && strcmp(arguments[1], "-w") == 0;
    if (count < 3 + threaded + wide)
        return 2;
    if (wide)
        return connect_wide(arguments + 2) ? 0 : 1;
    return (threaded ? run_in_threads(arguments + 2) : run(arguments + 1)) ? 0 : 1;
}
