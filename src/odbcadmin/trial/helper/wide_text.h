// UTF-8 and the UTF-16 of wide driver functions.
#pragma once

#include <stddef.h>
#include <uchar.h>

// Converts a whole text; what is not valid becomes U+FFFD. The result ends with a NUL and is cut before a character
// that does not fit. size counts units and is not 0.
void widen(const char* utf8, char16_t* wide, size_t size);
void narrow(const char16_t* utf16, char* text, size_t size);
