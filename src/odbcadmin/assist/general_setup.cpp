// Asking, and entering it.
#include "odbcadmin/assist/general_setup.h"

#include "odbcadmin/assist/say.h"
#include "odbcadmin/model/registration.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::assist {

bool hasSetupLibrary(HWND dialog, const std::string& driver) {
    constexpr const char* kTitle = "Setup Library";
    const model::Configuration configuration = model::Configuration::read();
    const auto& registered = configuration.driver(driver);
    const std::string general = trial::generalSetupLibrary();
    if (!registered || registered->setup || general.empty())
        return true;
    if (!asksToGoOn(dialog,
                    "The driver " + registered->name +
                        " brings no setup library, which its data sources are set up with.\nUse the general one?\n\n"
                        "Setup=" +
                        general + " is then entered for it in " + registered->file->path + ".",
                    kTitle))
        return false;
    const model::ChangeResult result =
        model::registerEntry(configuration, model::kDriverKind, {registered->name, "", general, {}},
                             model::WhenPresent::change, model::ChangeWay());
    if (!result.isDone())
        say(dialog, "The setup library was not entered. " + sentenceOf(result.reason), kTitle, MB_OK | MB_ICONSTOP);
    return result.isDone();
}

}  // namespace jx::assist
