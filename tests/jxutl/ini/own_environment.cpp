// A program that defines environ, as old C programs do. setenv does not change that one, so it must not decide where
// the user's files are. Exit code 0 when a read and a write use the environment that setenv changes.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <jxprofile.h>

char** environ;

namespace {

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

// Writes a value in the home directory and reads it back.
bool follows(const std::string& home) {
    unsigned char value[200];
    return setenv("HOME", home.c_str(), 1) == 0 &&
           jxWritePrivateProfileString(bytes("A"), bytes("k"), bytes(home.c_str()), bytes(".odbc.ini")) != 0 &&
           jxGetPrivateProfileString(bytes("A"), bytes("k"), bytes("none"), value, sizeof value, bytes(".odbc.ini")) >
               0 &&
           home == reinterpret_cast<const char*>(value) && std::filesystem::exists(home + "/.odbc.ini");
}

}  // namespace

int main(int, char**, char** variables) {
    environ = variables;
    std::string home = "/tmp/jxodbc-own-environment-XXXXXX";
    if (mkdtemp(home.data()) == nullptr || !std::filesystem::create_directory(home + "/two"))
        return 2;
    bool fine = unsetenv("ODBCINI") == 0 && follows(home);
    fine = setenv("JX_ANOTHER_VARIABLE", "1", 1) == 0 && fine;  // the C library's array moves
    fine = follows(home + "/two") && fine;
    std::filesystem::remove_all(home);
    std::puts(fine ? "followed" : "FAILED: another environment decided");
    return fine ? 0 : 1;
}
