// A program that makes one profile write and prints its result, the failed step and its errno.
// Usage: write_once FILE SECTION KEY VALUE
#include <cstdio>

#include <jxini.h>
#include <jxprofile.h>

int main(int count, char** arguments) {
    if (count != 5)
        return 2;
    const auto argument = [arguments](int number) { return reinterpret_cast<const unsigned char*>(arguments[number]); };
    const int written = jxWritePrivateProfileString(argument(2), argument(3), argument(4), argument(1));
    const JxIniFailure failure = jxIniLastFailure();
    std::printf("%d %d %d\n", written, static_cast<int>(failure.step), failure.error);
    return 0;
}
