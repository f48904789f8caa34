// What the command asks the helper for: lines of text on standard input, the last of them "go".
//
//     jxodbc-trial 1
//     action load
//     limit 10000
//     library /opt/acme/lib/libacmeodbc.so
//     installer /usr/local/lib/jxodbc/libodbcinst.so.2
//     function SQLDriverConnect
//     go
//
// A line is a word, a blank and a text in which "\\" stands for a backslash and "\n" for a line break. A word may stand
// on several lines. Requests are of at most kLongestRequest bytes.
#pragma once

#include <stdbool.h>
#include <stddef.h>

enum { kLongestRequest = 1 << 20 };

typedef struct {
    const char* word;
    const char* text;
} RequestLine;

typedef struct {
    RequestLine* lines;
    size_t count;
} Request;

// Reads one up to its "go", which may be followed by nothing. False when it is cut off, too long, of another version or
// no request at all. The texts live as long as the process.
bool readRequest(int descriptor, Request* request);

// The text of the first line with that word; "" when there is none.
const char* requestText(const Request* request, const char* word);

// The text of the first line with that word at or behind *at, and *at behind it; null when there is none.
const char* nextText(const Request* request, const char* word, size_t* at);
