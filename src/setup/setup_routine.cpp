// Carries out the requests of a setup routine.
#include "setup/setup_routine.h"

#include <utility>

#include "setup/data_source_file.h"
#include "setup/setup_dialog.h"

namespace jx::setup {

namespace {

// Lets the user add or change a data source, beginning with what the list says. Nothing when there is no one to ask or
// nothing to ask about.
std::optional<bool> carryOutInDialog(const SetupFiles& files, const SetupUser& user, const SetupRequest& asked,
                                     DataSourceRequest begin) {
    if (!isInstalled(files, asked.driver))
        return std::nullopt;
    const bool adds = asked.request == kAdd;
    SetupForm form{files, adds, asked.driver, {}, std::move(begin)};
    if (!adds) {
        std::optional<DataSourceRequest> stored = readDataSource(files, form.now.name);
        if (!stored)
            return std::nullopt;
        form.before = stored->attributes;
        overlay(stored->attributes, form.now.attributes);
        form.now = std::move(*stored);
    }
    runSetupDialog(user.window, form);
    return form.opened ? std::optional(form.stored) : std::nullopt;
}

bool carryOut(const SetupFiles& files, const SetupRequest& asked, const DataSourceRequest& parsed) {
    switch (asked.request) {
        case kAdd:
            return addDataSource(files, asked.driver, parsed);
        case kChange:
            return changeDataSource(files, asked.driver, parsed);
        case kRemove:
            return removeDataSource(files, parsed);
        default:
            return false;
    }
}

}  // namespace

SetupOutcome configureDataSource(const SetupFiles& files, const SetupUser& user, const SetupRequest& asked) {
    if (user.mayBeAsked && (asked.request == kAdd || asked.request == kChange)) {
        const std::optional<DataSourceRequest> begin = parseNamelessRequest(asked.attributes);
        const std::optional<bool> answered = begin ? carryOutInDialog(files, user, asked, *begin) : std::nullopt;
        if (answered)
            return *answered ? SetupOutcome::done : SetupOutcome::givenUp;
    }
    const std::optional<DataSourceRequest> parsed = parseRequest(asked.attributes);
    return parsed && carryOut(files, asked, *parsed) ? SetupOutcome::done : SetupOutcome::failed;
}

}  // namespace jx::setup
