// Letting a call that writes the user's two files by itself work on copies, to see what it would write.
//
//     ScratchFiles files(way);
//     if (!files.trouble())
//         SQLInstallODBC(...);
//     const ChangeResult result = files.changes();
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "odbcadmin/model/config_file.h"
#include "odbcadmin/model/file_change.h"

namespace jx::model {

// ScratchFiles: remembers both files as they are. When the way says never to write, the libraries work on copies in a
// directory of their own until the object is gone, else on the files themselves; a process that is ended by SIGHUP,
// SIGINT, SIGQUIT or SIGTERM meanwhile leaves none behind. One at a time: it sets ODBCINI and ODBCINSTINI of the
// process, and the four signals.
class ScratchFiles {
public:
    explicit ScratchFiles(const ChangeWay& way);
    ~ScratchFiles();
    ScratchFiles(const ScratchFiles&) = delete;
    ScratchFiles& operator=(const ScratchFiles&) = delete;

    // Why the copies could not be made.
    const Reason& trouble() const { return trouble_; }

    // The files that are others now than they were.
    ChangeResult changes() const;

private:
    void copyAll();
    static bool copy(const ConfigFile& file, const std::string& path);

    const ChangeWay& way_;
    std::vector<ConfigFile> files_;  // the user's own
    std::string directory_;
    std::vector<std::pair<std::string, std::string>> oldVariables_;
    Reason trouble_;
};

}  // namespace jx::model
