// Mending files, and telling of it.
#include "odbcadmin/cli/fixing.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/findings_output.h"
#include "odbcadmin/cli/image_libraries.h"
#include "odbcadmin/doctor/mending.h"

namespace jx::cli {

namespace {

using model::ChangeResult;

// A fix, and where: "PATH:LINE", or "PATH".
struct Fixed {
    std::string subject, what;
};

ChangeResult fixFile(const Session& session, const std::string& file, doctor::Holds holds,
                     const doctor::MovedLibraries& libraries, std::vector<Fixed>& fixed) {
    const model::ChangeWay way = session.way();
    model::FileChange change(file, way);
    if (change.reason())
        return {change.reason()};
    const doctor::Mending mending = doctor::mend(change.before().bytes(), holds, libraries);
    if (mending.fixes.empty())
        return {};
    change.replace(mending.text);
    ChangeResult result = change.finish();
    if (result.isDone())
        for (const doctor::Fix& fix : mending.fixes)
            fixed.push_back({model::pathOf(file) + (fix.line == 0 ? "" : ":" + std::to_string(fix.line)), fix.what});
    return result;
}

bool isOfDataSources(const model::Configuration& configuration, const std::string& file) {
    const auto files = configuration.files(model::FileKind::dataSources);
    return std::any_of(files.begin(), files.end(),
                       [&](const model::ConfigFile* each) { return each->path == model::pathOf(file); });
}

Json fixedJson(const std::vector<Fixed>& fixed) {
    Json list = Json::array();
    for (const Fixed& each : fixed)
        list.push_back({{"subject", each.subject}, {"what", each.what}});
    return list;
}

}  // namespace

std::vector<std::string> filesToFix(const model::Configuration& configuration) {
    std::vector<std::string> files;
    for (const model::FileKind kind : {model::FileKind::dataSources, model::FileKind::drivers})
        for (const model::ConfigFile* file : configuration.files(kind))
            if (file->state != model::ConfigFile::State::absent)
                files.push_back(file->name);
    return files;
}

ExitCode fixAndLookAgain(const Session& session, const model::Configuration& configuration,
                         const std::vector<std::string>& files, const std::function<doctor::Findings()>& lookAgain) {
    const doctor::MovedLibraries libraries(configuration, placesOf(session));
    ChangeResult result;
    std::vector<Fixed> fixed;
    for (const std::string& file : files) {
        const doctor::Holds holds =
            isOfDataSources(configuration, file) ? doctor::Holds::dataSources : doctor::Holds::other;
        if (!result.add(fixFile(session, file, holds, libraries, fixed)).isDone())
            break;
    }
    if (!result.isDone() || session.writesNothing())
        return session.report(result, {}, {}, {{"fixed", fixedJson(fixed)}});
    for (const Fixed& each : fixed)
        session.say("Fixed " + each.subject + ": " + each.what);
    return showFindings(session, lookAgain(),
                        {{"result", fixed.empty() ? "unchanged" : "changed"},
                         {"changed", !fixed.empty()},
                         {"files", Session::pathsOf(result)},
                         {"fixed", fixedJson(fixed)}});
}

}  // namespace jx::cli
