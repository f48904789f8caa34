// The question, and the change.
#include "odbcadmin/assist/system_driver.h"

#include <algorithm>
#include <vector>

#include "odbcadmin/assist/say.h"
#include "odbcadmin/assist/scoped_files.h"
#include "odbcadmin/model/registration.h"
#include "odbcadmin/model/text.h"

namespace jx::assist {

namespace {

constexpr const char* kTitle = "Remove a Driver";

// The data sources of the system that need it, and those of the user's own that do, unless his own driver of that name
// serves them.
std::string needing(const std::string& driver) {
    constexpr std::size_t kMostNames = 5;
    std::vector<std::string> names = namesOf(configurationOf(model::Scope::system).dataSourcesOf(driver));
    const model::Configuration user = configurationOf(model::Scope::user);
    if (!user.driver(driver))
        for (const model::DataSource& own : user.dataSourcesOf(driver))
            names.push_back(own.name + " (your own)");
    const std::size_t all = names.size();
    names.resize(std::min(all, kMostNames));
    if (all == 0)
        return "No data source of the system or of yours uses it.";
    return model::counted(all, "data source") + (all == 1 ? " needs it: " : " need it: ") + model::joined(names) +
           (all > kMostNames ? ", ..." : "") + ".";
}

}  // namespace

void unregisterSystemDriver(HWND dialog, const std::string& driver) {
    const std::string path = model::pathOf(nameOf(model::FileKind::drivers), model::Scope::system);
    if (!asksToDestroy(dialog,
                       "Unregister the driver " + driver + " for all users?\nIts entries in " + path +
                           " are deleted; its files stay.\n" + needing(driver),
                       kTitle))
        return;
    const model::ChangeResult result = model::unregisterEntry(configurationOf(model::Scope::system), model::kDriverKind,
                                                              driver, changeWayOf(model::Scope::system));
    if (!result.isDone())
        say(dialog,
            "The driver was not removed. " + sentenceOf(result.reason, {{{"--system", "driver", "remove", driver}}}),
            kTitle, MB_OK | MB_ICONSTOP);
}

}  // namespace jx::assist
