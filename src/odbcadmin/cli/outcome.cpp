// Printing what was changed, would change or stays.
#include "odbcadmin/cli/outcome.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/text.h"

namespace jx::admin {

ExitCode Outcome::finish(FileChange& change) {
    const ExitCode code = change.finish();
    if (code == ExitCode::done && change.changes()) {
        noteChange(change.file());
        differences_ += change.difference();
    }
    return code;
}

void Outcome::noteChange(const std::string& file) {
    const std::string path = pathOf(file.c_str());
    if (std::find(files_.begin(), files_.end(), path) == files_.end())
        files_.push_back(path);
}

void Outcome::tellJson(const Session& session, const std::string& sentence, const Json& more) const {
    Json json;
    json["result"] = !changed() ? "unchanged" : session.writesNothing() ? "would change" : "changed";
    json["message"] = sentence;
    json["files"] = files_;
    if (!remarks_.empty())
        json["remarks"] = remarks_;
    if (session.dryRun)
        json["difference"] = differences_;
    json.update(more);
    session.printJson(json);
}

void Outcome::tellText(const Session& session, const std::string& sentence) const {
    if (session.dryRun && changed()) {
        session.print(std::string_view(differences_).substr(0, differences_.size() - 1));
        return;
    }
    if (!changed())
        session.say("unchanged: nothing to do");
    else if (session.check)
        session.say("would change: " + joined(files_));
    else
        session.say(sentence);
}

ExitCode Outcome::tell(const Session& session, const std::string& sentence) const {
    return tell(session, sentence, Json::object());
}

ExitCode Outcome::tell(const Session& session, const std::string& sentence, const Json& more) const {
    if (session.json)
        tellJson(session, sentence, more);
    else
        tellText(session, sentence);
    if (!session.json)
        for (const std::string& remark : remarks_)
            session.warn(remark);
    return session.check && changed() ? ExitCode::wouldChange : ExitCode::done;
}

}  // namespace jx::admin
