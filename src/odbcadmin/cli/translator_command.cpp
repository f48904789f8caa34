// translator list, add and remove.
#include <odbcinst.h>

#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/outcome.h"
#include "odbcadmin/cli/registration.h"
#include "odbcadmin/cli/text.h"

namespace jx::admin {

namespace {

ExitCode listTranslators(const Session& session) {
    ExitCode code = ExitCode::done;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    Json json = Json::array();
    std::vector<std::vector<std::string>> rows;
    for (const Registered& each : configuration->translators()) {
        json.push_back(
            {{"name", each.name}, {"library", each.library}, {"setup", each.setup}, {"listed", each.isListed}});
        rows.push_back(session.quiet
                           ? std::vector{each.name}
                           : std::vector{each.name, each.library, std::string(each.isListed ? "" : "(not listed)")});
    }
    if (session.json)
        session.printJson({{"translators", json}});
    else
        session.printTable(rows);
    if (rows.empty())
        session.say("There are no translators in " + pathOf(INS_ODBCINST_FILENAME));
    return ExitCode::done;
}

ExitCode addTranslator(const Session& session, const RegistrationWish& wish) {
    if (const ExitCode code = checkRegisteredName(session, translatorKind(), wish.name); code != ExitCode::done)
        return code;
    FileChange change(session, INS_ODBCINST_FILENAME);
    if (!change.isOpen())
        return change.trouble();
    if (change.before().section(wish.name) != nullptr ||
        change.before().find(INS_ODBCINST_TRANSLATORS, wish.name) != nullptr)
        return session.fail(ExitCode::exists,
                            "There is something called " + wish.name + " in " + pathOf(INS_ODBCINST_FILENAME),
                            "Remove it first, or choose another name.");
    if (!composeRegistration(change, translatorKind(), wish))
        return change.trouble();
    Outcome outcome;
    const ExitCode code = outcome.finish(change);
    return code != ExitCode::done ? code : outcome.tell(session, "Added translator " + wish.name);
}

ExitCode removeTranslator(const Session& session, const std::string& name) {
    ExitCode code = checkRegisteredName(session, translatorKind(), name);
    if (code != ExitCode::done)
        return code;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    std::vector<std::string> names;
    for (const Registered& each : configuration->translators())
        names.push_back(each.name);
    if (!configuration->translator(name))
        return session.fail(ExitCode::notFound,
                            "There is no translator " + name + " in " + pathOf(INS_ODBCINST_FILENAME),
                            adviceFor(name, names, "odbcadmin translator list shows those there are."));
    FileChange change(session, INS_ODBCINST_FILENAME);
    if (!change.isOpen() || !composeUnregistration(change, translatorKind(), name))
        return change.trouble();
    Outcome outcome;
    code = outcome.finish(change);
    return code != ExitCode::done ? code : outcome.tell(session, "Removed translator " + name);
}

}  // namespace

void addTranslatorCommands(CLI::App& app, Session& session) {
    CLI::App& translator = noun(app, "translator");
    onRun(addVerb(translator, "list", "List the translators", "odbcadmin translator list"), session, listTranslators);

    CLI::App& add = addVerb(translator, "add", "Register a translator",
                            "odbcadmin translator add Latin1 --lib /usr/lib/odbc/liblatin1.so");
    const CLI::Option* name = addOperands(add, "NAME", "Translator", {1, 1});
    CLI::Option* library = addValueOption(add, "--lib", "Its library", Complete::files);
    const CLI::Option* setup = addValueOption(add, "--setup", "Its setup library", Complete::files);
    require(library);
    onRun(add, session, [=](Session& run) {
        return addTranslator(
            run, {operand(name, 0), absoluteLibrary(operand(library, 0)), absoluteLibrary(operand(setup, 0)), {}});
    });

    CLI::App& remove = addVerb(translator, "remove", "Unregister a translator; its library file stays",
                               "odbcadmin translator remove Latin1");
    const CLI::Option* removed = addOperands(remove, "NAME", "Translator", {1, 1, Complete::translator});
    onRun(remove, session, [removed](Session& run) { return removeTranslator(run, operand(removed, 0)); });
}

}  // namespace jx::admin
