// Somebody else's place in the system, as libraries find it there: whose rights, which environment, which files.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "odbcadmin/model/reason.h"
#include "odbcadmin/trial/owned_descriptor.h"

namespace jx::doctor {

// Standpoint: what an account has after a login, or what a process has.
struct Standpoint {
    std::string who;  // "user www-data (33)", "process 4711 (nginx) of user www-data (33)"
    uid_t user = 0;
    gid_t group = 0;
    std::vector<gid_t> groups;
    std::vector<std::string> environment;  // "NAME=VALUE"
    std::string directory;                 // where it works; empty when place is open

    // Of a process: where it works, and where its files differ from those of this process, its mounts and its root
    // directory.
    trial::OwnedDescriptor place, mounts, root;

    bool hasFilesOfItsOwn() const { return mounts.isOpen() || root.isOpen(); }

    // Whether this process has the rights to work there: root has, and everybody at a place of the same rights.
    bool isOpenToThisUser() const;
};

// The place of an account, by its name or number: its home directory, HOME, USER, LOGNAME, SHELL and PATH, and no other
// variable. The reason when there is no such account.
model::Reason standpointOfAccount(const std::string& account, Standpoint& place);

// The place of a process: user, groups, root directory, mounts, working directory, and the environment that it was
// started with. The reason when the number is none, there is no such process, or this user may not look at it.
model::Reason standpointOfProcess(const std::string& number, Standpoint& place);

}  // namespace jx::doctor
