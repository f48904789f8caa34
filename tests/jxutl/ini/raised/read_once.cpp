// A program that makes one profile read and prints the value.
// Usage: read_once FILE SECTION KEY
#include <cstdio>

#include <jxprofile.h>

int main(int count, char** arguments) {
    if (count != 4)
        return 2;
    const auto argument = [arguments](int number) { return reinterpret_cast<const unsigned char*>(arguments[number]); };
    unsigned char value[100];
    jxGetPrivateProfileString(argument(2), argument(3), reinterpret_cast<const unsigned char*>("none"), value,
                              static_cast<int>(sizeof value), argument(1));
    std::printf("%s\n", reinterpret_cast<const char*>(value));
    return 0;
}
