// A program that makes one look-up and prints the value and the first error record.
// Usage: look_up_once FILE SECTION KEY
#include <jxodbc3/odbcinst.h>

#include <cstdio>

int main(int count, char** arguments) {
    if (count != 4)
        return 2;
    char value[100];
    SQLGetPrivateProfileString(arguments[2], arguments[3], "none", value, sizeof value, arguments[1]);
    char text[SQL_MAX_MESSAGE_LENGTH] = "";
    SQLInstallerError(1, nullptr, text, sizeof text, nullptr);
    std::printf("%s|%s\n", value, text);
    return 0;
}
