// Copies of the user's two files for a call that writes them by itself and shall only show what it would write.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "odbcadmin/cli/outcome.h"
#include "odbcadmin/cli/session.h"

namespace jx::admin {

// ScratchFiles: remembers both files as they are. With --dry-run or --check the library then works on copies in a
// directory of their own until the object is gone; without them it works on the files themselves. One at a time: it
// sets ODBCINI and ODBCINSTINI of the process.
class ScratchFiles {
public:
    explicit ScratchFiles(const Session& session);
    ~ScratchFiles();
    ScratchFiles(const ScratchFiles&) = delete;
    ScratchFiles& operator=(const ScratchFiles&) = delete;

    // Other than done when the copies could not be made, which was told.
    ExitCode trouble() const { return trouble_; }

    // Notes each file that is another now, and with --dry-run the difference.
    void noteChanges(const Session& session, Outcome& outcome) const;

private:
    struct File {
        const char* name;
        const char* variable;
        std::string path;  // the user's own
        std::string text;
        bool isAbsent;
    };

    ExitCode copyAll(const Session& session);

    std::vector<File> files_;
    std::string directory_;
    std::vector<std::pair<std::string, std::string>> oldVariables_;
    ExitCode trouble_ = ExitCode::done;
};

}  // namespace jx::admin
