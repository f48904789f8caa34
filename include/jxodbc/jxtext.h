/* Single-byte, NUL-terminated text. Only ASCII letters have a case here, whatever the locale.
 *
 * Every argument must be a valid text unless a line says that null is allowed. Nothing here allocates: what is returned
 * points into what was handed in. The calls keep no state, so any thread may make them at any time. */
#ifndef JXTEXT_H
#define JXTEXT_H

#include <stddef.h>

#include "jxexport.h"

JX_EXTERN_C_BEGIN

/* Length in bytes without the NUL; 0 for null. */
JX_EXPORT size_t BUTSTLEN(const unsigned char* text);

/* Copies source with its NUL into target, which must be large enough (strCopy knows a size); returns target. The two
 * may overlap. */
JX_EXPORT unsigned char* BUTSTCPY(unsigned char* target, const unsigned char* source);

/* Appends source with its NUL to the text in target, which must be large enough; returns target. The source
 * may be a part of the text in target. */
JX_EXPORT unsigned char* BUTSTCAT(unsigned char* target, const unsigned char* source);

/* 0 when both texts are equal byte for byte, else below or above 0 as the first different byte, taken as a number from
 * 0 to 255, orders them. */
JX_EXPORT int BUTSTCMP(const unsigned char* left, const unsigned char* right);

/* Copies sizeInBytes bytes; the areas may overlap. Returns target. */
JX_EXPORT void* BUTMEMCP(void* target, const void* source, size_t sizeInBytes);

/* As BUTSTCMP without regard to ASCII case: letters are compared as their lower-case forms. */
JX_EXPORT int strCompareCi(const unsigned char* left, const unsigned char* right);

/* The last place of character in text, or null. A character of 0 finds the end. The result may be written through when
 * the text may. */
JX_EXPORT unsigned char* strFindReverse(const unsigned char* text, unsigned char character);

/* Copies as much of source as fits into sizeInBytes bytes and always ends it with NUL; returns the number of bytes
 * copied without the NUL: the text was cut when source goes on there. A size of 0 writes nothing and returns 0. */
JX_EXPORT size_t strCopy(unsigned char* target, const unsigned char* source, size_t sizeInBytes);

JX_EXTERN_C_END

#ifdef __cplusplus
/* The first place of character in text, or null. A character of 0 finds the end. The result may be written through
 * when the text may. */
JX_EXPORT unsigned char* strFind(const unsigned char* text, unsigned char character);

/* The first place of part in text, or null. An empty part is found at the start. */
JX_EXPORT unsigned char* strFind(const unsigned char* text, const unsigned char* part);

/* Reads a decimal number: blanks (space, tab), then digits up to the first byte that is none. *value receives what the
 * digits make, 0 when there are none (a sign is none) and 4294967295 for everything above that, in a 64-bit program
 * too. Returns 1 when nothing but blanks follows the digits, else 0. Null for either argument returns 0; a null text
 * gives the value 0. */
JX_EXPORT int convert(const unsigned char* text, unsigned long* value);

/* Writes value in decimal, with zeros before it up to width digits, and a NUL into buffer of sizeInBytes bytes (with a
 * width of at most 20, 21 are always enough). Returns the length without the NUL; 0 and an untouched buffer when it
 * does not fit or buffer is null. */
JX_EXPORT size_t convert(unsigned char* buffer, size_t sizeInBytes, unsigned long value, unsigned int width);
#endif

#endif
