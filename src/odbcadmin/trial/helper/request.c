// Reading a request and taking it apart.
#include "odbcadmin/trial/helper/request.h"

#include <errno.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static const char kFirstLine[] = "jxodbc-trial 1\n";
static const char kLastLine[] = "\ngo\n";

static bool endsRequest(const char* text, size_t length) {
    const size_t last = sizeof kLastLine - 1;
    return length >= last && memcmp(text + length - last, kLastLine, last) == 0;
}

// The request as it came, with a NUL behind it; null when it did not come whole.
static char* readWhole(int descriptor) {
    char* text = malloc(kLongestRequest + 1);
    size_t length = 0;
    while (text != NULL && length < kLongestRequest) {
        const ssize_t count = read(descriptor, text + length, kLongestRequest - length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        length += (size_t)count;
        if (!endsRequest(text, length))
            continue;
        text[length] = '\0';
        return text;
    }
    free(text);
    return NULL;
}

// In place: it only becomes shorter.
static void unescape(char* text) {
    char* to = text;
    for (const char* from = text; *from != '\0'; ++from) {
        if (*from == '\\' && from[1] != '\0') {
            ++from;
            *to++ = (char)(*from == 'n' ? '\n' : *from);
        } else {
            *to++ = *from;
        }
    }
    *to = '\0';
}

static size_t countOf(const char* text, char letter) {
    size_t count = 0;
    for (; *text != '\0'; ++text)
        count += *text == letter ? 1 : 0;
    return count;
}

static void takeLine(Request* request, char* line) {
    char* blank = strchr(line, ' ');
    if (blank == NULL)
        return;
    *blank = '\0';
    unescape(blank + 1);
    request->lines[request->count++] = (RequestLine){line, blank + 1};
}

bool readRequest(int descriptor, Request* request) {
    char* text = readWhole(descriptor);
    if (text == NULL || strncmp(text, kFirstLine, sizeof kFirstLine - 1) != 0)
        return false;
    request->lines = calloc(countOf(text, '\n') + 1, sizeof *request->lines);
    request->count = 0;
    if (request->lines == NULL)
        return false;
    char* line = text + sizeof kFirstLine - 1;
    for (char* end = strchr(line, '\n'); end != NULL; end = strchr(line, '\n')) {
        *end = '\0';
        takeLine(request, line);
        line = end + 1;
    }
    return true;
}

const char* requestText(const Request* request, const char* word) {
    size_t at = 0;
    const char* text = nextText(request, word, &at);
    return text != NULL ? text : "";
}

const char* nextText(const Request* request, const char* word, size_t* at) {
    while (*at < request->count) {
        const RequestLine* line = &request->lines[(*at)++];
        if (strcmp(line->word, word) == 0)
            return line->text;
    }
    return NULL;
}
