// What a command that changes files tells at its end.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/cli/file_change.h"
#include "odbcadmin/cli/session.h"

namespace jx::admin {

// Outcome: collects the changes of one command; tell prints them once, in the way the session asks for.
class Outcome {
public:
    // Finishes a change and takes note of it; other than done when it failed, which was told then.
    ExitCode finish(FileChange& change);

    // Takes note of a change that was made in another way.
    void noteChange(const std::string& file);

    // A unified diff that --dry-run is to show.
    void noteDifference(const std::string& difference) { differences_ += difference; }

    // Another line for the end, such as how it was written.
    void noteRemark(const std::string& remark) { remarks_.push_back(remark); }

    bool changed() const { return !files_.empty(); }

    // sentence says what was done, such as "Added data source Sales". Gives 9 when --check asked and something would
    // change, else done. more: further members of the JSON object.
    ExitCode tell(const Session& session, const std::string& sentence) const;
    ExitCode tell(const Session& session, const std::string& sentence, const Json& more) const;

private:
    void tellJson(const Session& session, const std::string& sentence, const Json& more) const;
    void tellText(const Session& session, const std::string& sentence) const;

    std::vector<std::string> files_;
    std::string differences_;
    std::vector<std::string> remarks_;
};

}  // namespace jx::admin
