// Whose code a library is, and becoming that user: what others may change must not run with root's rights.
#pragma once

#include <stdbool.h>
#include <sys/types.h>

#include "odbcadmin/trial/helper/request.h"

typedef struct {
    enum { kOwnCode, kOneUsersCode, kManyUsersCode } whose;
    uid_t user;        // of kOneUsersCode and kManyUsersCode: the first one found
    const char* path;  // what belongs to that user
} Owner;

// Looks at the library of a request, the files that name it ("named-by"), which need not be there, and every directory
// above them: is any of them another user's than root's? Links are looked at themselves and followed.
Owner ownerOf(const Request* request);

// Gives up all rights but those of a user with an account, for good. False when that cannot be done: rights may then be
// given up in part.
bool becomeUser(uid_t user);

// The user's name, or the number as text. Valid until the next call.
const char* userName(uid_t user);
