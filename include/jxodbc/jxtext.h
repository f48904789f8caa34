/* Texts of single bytes, ended by NUL. Only ASCII letters have a case, whatever the locale.
 *
 *     unsigned char name[8];
 *     size_t length = strCopy(name, (const unsigned char*)"Sales", sizeof name);
 *
 * A text must not be null unless its comment allows it. Nothing is allocated: pointers returned point into an argument.
 * Any thread may make these calls at any time; none can fail unless its comment says so. */
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

/* 0 when both texts are equal, else less or greater than 0 by the first byte that differs, as a number from 0 to 255.
 */
JX_EXPORT int BUTSTCMP(const unsigned char* left, const unsigned char* right);

/* Copies sizeInBytes bytes; the areas may overlap. Returns target. */
JX_EXPORT void* BUTMEMCP(void* target, const void* source, size_t sizeInBytes);

/* As BUTSTCMP, with ASCII capitals compared as lower-case letters. */
JX_EXPORT int strCompareCi(const unsigned char* left, const unsigned char* right);

/* The last place of character in text, or null; character 0 finds the NUL. Write through the result only where text may
 * be written. */
JX_EXPORT unsigned char* strFindReverse(const unsigned char* text, unsigned char character);

/* Copies as much of source as fits into sizeInBytes bytes with a NUL, and always writes that NUL; returns the number of
 * bytes before it. The text was cut when source[result] is not NUL. A size of 0 writes nothing and returns 0. */
JX_EXPORT size_t strCopy(unsigned char* target, const unsigned char* source, size_t sizeInBytes);

JX_EXTERN_C_END

#ifdef __cplusplus
/* The first place of character in text, or null; otherwise as strFindReverse. */
JX_EXPORT unsigned char* strFind(const unsigned char* text, unsigned char character);

/* The first place of part in text, or null. An empty part is found at the start. */
JX_EXPORT unsigned char* strFind(const unsigned char* text, const unsigned char* part);

/* Reads a decimal number: blanks (space, tab), then digits. *value receives it: 0 when there are no digits (a sign is
 * not one), 4294967295 for anything larger, in a 64-bit program too. Returns 1 when there are digits and only blanks
 * follow; 0 otherwise, and for a null argument. A null text gives the value 0. */
JX_EXPORT int convert(const unsigned char* text, unsigned long* value);

/* Writes value in decimal, with leading zeros up to width digits, and a NUL into buffer of sizeInBytes bytes; 21 are
 * enough for a width of at most 20. Returns the length without the NUL; 0 and an untouched buffer when it does not fit
 * or buffer is null. */
JX_EXPORT size_t convert(unsigned char* buffer, size_t sizeInBytes, unsigned long value, unsigned int width);
#endif

#endif
