/* Loads a driver as a program without a driver manager does, connects, and executes statements: the driver's own calls
 * of the installer library are what is tried.
 * Usage: try_driver DRIVER CONNECTION-STRING STATEMENT...
 *        try_driver -w DRIVER CONNECTION-STRING                 connects with SQLDriverConnectW, ASCII only
 *        try_driver -t DRIVER CONNECTION-STRING STATEMENT...    the same ten times in each of 8 threads
 *        try_driver -n DRIVER CONNECTION-STRING                 connects 101 times and prints how long the median took
 * Exit status 0 when all succeeded. */
#include <dlfcn.h>
#include <pthread.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "driver.h"

enum { kThreads = 8, kRounds = 10, kMeasured = 101 };

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

static long microseconds(void) {
    struct timespec now;
    timespec_get(&now, TIME_UTC);
    return now.tv_sec * 1000000L + now.tv_nsec / 1000;
}

static int smaller_first(const void* one, const void* other) {
    const long a = *(const long*)one, b = *(const long*)other;
    return (a > b) - (a < b);
}

/* The driver stays loaded meanwhile, as it does in a program that connects often. */
static int measure(char** arguments) {
    long times[kMeasured];
    void* library = dlopen(arguments[0], RTLD_NOW | RTLD_LOCAL);
    int round, done = library != NULL;
    for (round = 0; round < kMeasured && done; ++round) {
        struct connection connection;
        const long begin = microseconds();
        done = open_connection(&connection, arguments[0], arguments[1]);
        times[round] = microseconds() - begin;
        close_connection(&connection);
    }
    if (!done)
        return 0;
    qsort(times, kMeasured, sizeof times[0], smaller_first);
    printf("a connection: %ld us (median of %d)\n", times[kMeasured / 2], kMeasured);
    return 1;
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
    const char option = count > 1 && arguments[1][0] == '-' ? arguments[1][1] : '\0';
    char** const words = arguments + (option == '\0' ? 1 : 2);
    int done = 0;
    if (words + 2 > arguments + count)
        return 2;
    if (option == 't')
        done = run_in_threads(words);
    else if (option == 'w')
        done = connect_wide(words);
    else if (option == 'n')
        done = measure(words);
    else
        done = run(words);
    return done ? 0 : 1;
}
