// What the worker has to say, kept where no library can print into it or close it: in memory that the worker shares
// with the process that waits for it.
//
// A record becomes a line "WORD TEXT", with the same escapes as in a request.
#pragma once

#include <stdbool.h>

// Makes the memory; once, before the worker is started. False when there is none.
bool openReport(void);

// Adds a record. One that does not fit into what is left of 1 MiB is left out, as are all behind it.
void report(const char* word, const char* text);
void reportNumber(const char* word, long number);

// Writes all records that are complete; what they are written to may be gone.
void writeReport(int descriptor);
