// Single-byte text: length, copies, comparisons, searches and decimal numbers.
#include <jxtext.h>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>

namespace {

const char* plain(const unsigned char* text) {
    return reinterpret_cast<const char*>(text);
}

// The searches return a pointer that the caller may write through if the text is writable.
unsigned char* changeable(const char* place) {
    return reinterpret_cast<unsigned char*>(const_cast<char*>(place));
}

int lower(unsigned char byte) {
    return byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
}

const unsigned char* skipBlanks(const unsigned char* text) {
    while (*text == ' ' || *text == '\t')
        ++text;
    return text;
}

bool isDigit(unsigned char byte) {
    return byte >= '0' && byte <= '9';
}

}  // namespace

std::size_t BUTSTLEN(const unsigned char* text) {
    return text != nullptr ? std::strlen(plain(text)) : 0;
}

unsigned char* BUTSTCPY(unsigned char* target, const unsigned char* source) {
    std::memmove(target, source, std::strlen(plain(source)) + 1);
    return target;
}

unsigned char* BUTSTCAT(unsigned char* target, const unsigned char* source) {
    // The length first: a source inside target loses its end as soon as the copy begins.
    const std::size_t length = std::strlen(plain(source));
    unsigned char* end = target + std::strlen(plain(target));
    std::memmove(end, source, length);
    end[length] = 0;
    return target;
}

int BUTSTCMP(const unsigned char* left, const unsigned char* right) {
    return std::strcmp(plain(left), plain(right));
}

void* BUTMEMCP(void* target, const void* source, std::size_t sizeInBytes) {
    if (sizeInBytes != 0)
        std::memmove(target, source, sizeInBytes);
    return target;
}

int strCompareCi(const unsigned char* left, const unsigned char* right) {
    while (*left != 0 && lower(*left) == lower(*right)) {
        ++left;
        ++right;
    }
    return lower(*left) - lower(*right);
}

unsigned char* strFind(const unsigned char* text, unsigned char character) {
    return changeable(std::strchr(plain(text), character));
}

unsigned char* strFind(const unsigned char* text, const unsigned char* part) {
    return changeable(std::strstr(plain(text), plain(part)));
}

unsigned char* strFindReverse(const unsigned char* text, unsigned char character) {
    return changeable(std::strrchr(plain(text), character));
}

std::size_t strCopy(unsigned char* target, const unsigned char* source, std::size_t sizeInBytes) {
    if (sizeInBytes == 0)
        return 0;
    const std::size_t length = strnlen(plain(source), sizeInBytes - 1);
    std::memmove(target, source, length);
    target[length] = 0;
    return length;
}

int convert(const unsigned char* text, unsigned long* value) {
    if (value == nullptr)
        return 0;
    *value = 0;
    if (text == nullptr)
        return 0;
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
    const unsigned char* digits = skipBlanks(text);
    const unsigned char* at = digits;
    std::uint64_t number = 0;
    for (; isDigit(*at); ++at) {
        number = number * 10 + static_cast<std::uint64_t>(*at - '0');
        if (number > kMost)
            number = kMost;
    }
    *value = static_cast<unsigned long>(number);
    return at != digits && *skipBlanks(at) == 0 ? 1 : 0;
}

std::size_t convert(unsigned char* buffer, std::size_t sizeInBytes, unsigned long value, unsigned int width) {
    char digits[std::numeric_limits<unsigned long>::digits10 + 1];
    const char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    const auto count = static_cast<std::size_t>(end - digits);
    const std::size_t zeros = width > count ? width - count : 0;
    if (buffer == nullptr || zeros + count >= sizeInBytes)
        return 0;
    std::memset(buffer, '0', zeros);
    std::memcpy(buffer + zeros, digits, count);
    buffer[zeros + count] = 0;
    return zeros + count;
}
