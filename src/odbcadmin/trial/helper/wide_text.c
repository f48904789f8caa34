// Converting between UTF-8 and UTF-16.
#include "odbcadmin/trial/helper/wide_text.h"

#include <stdbool.h>
#include <stdint.h>

enum { kReplacement = 0xFFFD, kFirstBeyond = 0x10000, kLastCharacter = 0x10FFFF };

static bool isSurrogate(uint32_t code) {
    return code >= 0xD800 && code < 0xE000;
}

// The character at *text, which is left behind it; only one byte of what is not valid.
static uint32_t nextCharacter(const char** text) {
    static const uint32_t kSmallest[] = {0, 0x80, 0x800, kFirstBeyond};
    const unsigned char first = (unsigned char)*(*text)++;
    if (first < 0x80)
        return first;
    const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    if (first < 0xC0 || first >= 0xF8)
        return kReplacement;
    uint32_t code = first & (0x3FU >> more);
    for (int i = 0; i < more; ++i) {
        const unsigned char next = (unsigned char)(*text)[i];
        if ((next & 0xC0U) != 0x80)
            return kReplacement;
        code = code << 6U | (next & 0x3FU);
    }
    if (code < kSmallest[more] || code > kLastCharacter || isSurrogate(code))
        return kReplacement;
    *text += more;
    return code;
}

void widen(const char* utf8, char16_t* wide, size_t size) {
    size_t at = 0;
    while (*utf8 != '\0') {
        const uint32_t code = nextCharacter(&utf8);
        const size_t units = code < kFirstBeyond ? 1 : 2;
        if (at + units >= size)
            break;
        if (units == 2)
            wide[at++] = (char16_t)(0xD800 + ((code - kFirstBeyond) >> 10U));
        wide[at++] = (char16_t)(units == 1 ? code : 0xDC00 + ((code - kFirstBeyond) & 0x3FFU));
    }
    wide[at] = 0;
}

static uint32_t nextWideCharacter(const char16_t** text) {
    const uint32_t first = *(*text)++;
    if (!isSurrogate(first))
        return first;
    const uint32_t second = **text;
    if (first >= 0xDC00 || second < 0xDC00 || second >= 0xE000)
        return kReplacement;
    ++*text;
    return kFirstBeyond + ((first - 0xD800) << 10U) + (second - 0xDC00);
}

static size_t encode(uint32_t code, char* bytes) {
    if (code < 0x80) {
        bytes[0] = (char)code;
        return 1;
    }
    const size_t more = code < 0x800 ? 1 : code < kFirstBeyond ? 2 : 3;
    static const unsigned char kFirst[] = {0, 0xC0, 0xE0, 0xF0};
    for (size_t i = more; i > 0; --i, code >>= 6U)
        bytes[i] = (char)(0x80U | (code & 0x3FU));
    bytes[0] = (char)(kFirst[more] | code);
    return more + 1;
}

void narrow(const char16_t* utf16, char* text, size_t size) {
    size_t at = 0;
    while (*utf16 != 0) {
        char bytes[4];
        const size_t length = encode(nextWideCharacter(&utf16), bytes);
        if (at + length >= size)
            break;
        for (size_t i = 0; i < length; ++i)
            text[at++] = bytes[i];
    }
    text[at] = '\0';
}
