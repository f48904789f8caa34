// Owners of paths, and the change to another user.
#include "odbcadmin/trial/helper/owner.h"

#include <grp.h>
#include <pwd.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static void take(Owner* owner, const struct stat* status, const char* path) {
    if (status->st_uid == 0 || (owner->whose != kOwnCode && owner->user == status->st_uid))
        return;
    if (owner->whose != kOwnCode) {
        owner->whose = kManyUsersCode;
        return;
    }
    *owner = (Owner){kOneUsersCode, status->st_uid, strdup(path)};
}

static void takePath(Owner* owner, const char* path) {
    struct stat status;
    if (lstat(path, &status) == 0)
        take(owner, &status, path);
    if (stat(path, &status) == 0)
        take(owner, &status, path);
}

// The path itself and every directory on the way to it; a relative one begins where the helper was started.
static void takeWithDirectories(Owner* owner, const char* path) {
    char* part = strdup(path);
    takePath(owner, path);
    takePath(owner, *path == '/' ? "/" : ".");
    for (char* slash = part; slash != NULL && (slash = strrchr(part, '/')) != NULL && slash != part;) {
        *slash = '\0';
        takePath(owner, part);
    }
    free(part);
}

Owner ownerOf(const Request* request) {
    Owner owner = {kOwnCode, 0, NULL};
    const char* library = requestText(request, "library");
    if (strchr(library, '/') != NULL) {
        takeWithDirectories(&owner, library);
        char* real = realpath(library, NULL);
        if (real != NULL)
            takeWithDirectories(&owner, real);
        free(real);
    }
    size_t at = 0;
    for (const char* file = nextText(request, "named-by", &at); file != NULL; file = nextText(request, "named-by", &at))
        takeWithDirectories(&owner, file);
    return owner;
}

bool becomeUser(uid_t user) {
    const struct passwd* account = getpwuid(user);
    return account != NULL && initgroups(account->pw_name, account->pw_gid) == 0 &&
           setresgid(account->pw_gid, account->pw_gid, account->pw_gid) == 0 && setresuid(user, user, user) == 0 &&
           setuid(0) != 0;
}

const char* userName(uid_t user) {
    static char text[256];
    const struct passwd* account = getpwuid(user);
    if (account != NULL)
        snprintf(text, sizeof text, "%s", account->pw_name);
    else
        snprintf(text, sizeof text, "user %lu", (unsigned long)user);
    return text;
}
