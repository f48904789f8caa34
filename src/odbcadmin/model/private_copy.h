// A text in a file that only this user can read, for a program that wants a file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "odbcadmin/model/reason.h"

namespace jx::model {

// PrivateCopy: a directory of its own (0700) in the user's runtime directory or else the one for temporary files, and
// in it one file (0600). The directory goes with the object, and all that a program left in it, unless keep was called.
class PrivateCopy {
public:
    // name: of the file, without a directory.
    PrivateCopy(const std::string& name, std::string_view text);
    ~PrivateCopy();
    PrivateCopy(const PrivateCopy&) = delete;
    PrivateCopy& operator=(const PrivateCopy&) = delete;

    // Why it could not be made.
    const Reason& trouble() const { return trouble_; }

    const std::string& path() const { return path_; }

    // What stands in the file now; nothing when it is gone or no ordinary file.
    std::optional<std::string> text() const;

    // It stays when the object goes.
    void keep() { isKept_ = true; }

private:
    std::string directory_;
    std::string path_;
    bool isKept_ = false;
    Reason trouble_;
};

}  // namespace jx::model
