// The account of whoever runs the tests, with a home directory where nothing is: what the checks find must not depend
// on the .odbc.ini that a developer has. (Programs that tests start know the true account.)
#include <pwd.h>

extern "C" passwd* getpwuid(uid_t user) {
    static passwd account;
    static char texts[4096];
    static char nowhere[] = "/nonexistent";
    passwd* found = nullptr;
    if (getpwuid_r(user, &account, texts, sizeof texts, &found) == 0 && found != nullptr)
        found->pw_dir = nowhere;
    return found;
}
