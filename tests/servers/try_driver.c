/* Loads a driver as a program without a driver manager does, connects, and executes statements: the driver's own calls
 * of the installer library are what is tried.
 * Usage: try_driver DRIVER CONNECTION-STRING STATEMENT...
 *        try_driver -t DRIVER CONNECTION-STRING STATEMENT...    the same ten times in each of 8 threads
 * Exit status 0 when all succeeded. */
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

int main(int count, char** arguments) {
    const int threaded = count > 1 && strcmp(arguments[1], "-t") == 0;
    if (count < 3 + threaded)
        return 2;
    return (threaded ? run_in_threads(arguments + 2) : run(arguments + 1)) ? 0 : 1;
}
