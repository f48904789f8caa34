// Trying without, asking, and making the change.
#include "odbcadmin/assist/open_secret.h"

#include "odbcadmin/assist/say.h"
#include "odbcadmin/assist/scoped_files.h"

namespace jx::assist {

namespace {

// Whether the change would be made if secrets were no matter.
bool isOnlyAboutSecrets(const model::ChangeWay& way, const MakeChange& make) {
    model::ChangeWay trial = way;
    trial.openSecrets = model::ChangeWay::OpenSecrets::allowed;
    trial.writing = model::ChangeWay::Writing::never;
    return make(trial).isDone();
}

}  // namespace

std::optional<model::ChangeResult> changeAsking(HWND dialog, const std::string& title, model::Scope scope,
                                                const MakeChange& make) {
    model::ChangeWay way = changeWayOf(scope);
    model::ChangeResult result = make(way);
    if (result.reason.kind != model::Reason::Kind::refused || !isOnlyAboutSecrets(way, make))
        return result;
    if (!asksToDestroy(dialog, result.reason.fact + ".\nStore it all the same?", title))
        return std::nullopt;
    way.openSecrets = model::ChangeWay::OpenSecrets::allowed;
    return make(way);
}

}  // namespace jx::assist
