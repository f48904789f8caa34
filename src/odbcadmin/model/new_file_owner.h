// To whom a configuration file belongs that root makes: not to root, where it is somebody else's home.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "odbcadmin/model/reason.h"

namespace jx::model {

struct Account {
    uid_t user;
    gid_t group;
};

// The account of that name or number; nothing when there is none.
std::optional<Account> accountOf(const std::string& name);

// NewFileOwner: remembers which of the two configuration files are not there. settle gives those that were made since
// to the chosen account, or else to the owner and group of their directory. Only for root, whose new files have mode
// 0600 and would be closed to the service that is to read them.
class NewFileOwner {
public:
    explicit NewFileOwner(std::optional<Account> chosen);

    // Why a file could not be given away; of kind none when there was nothing to give or all were.
    Reason settle() const;

private:
    std::optional<Account> chosen_;
    std::vector<std::string> absent_;
};

}  // namespace jx::model
