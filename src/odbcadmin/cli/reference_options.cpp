// Reading the options and storing what they say.
#include "odbcadmin/cli/reference_options.h"

#include <array>

#include "odbcadmin/cli/key_remarks.h"
#include "odbcadmin/model/secret_reference.h"

namespace jx::cli {

namespace {

// In the order of the references.
constexpr std::array<const char*, 3> kOptions{"--from-file", "--from-env", "--from-credential"};

}  // namespace

void addReferenceOptions(Verb& verb) {
    verb.option(kOptions[0], "Have the value of the one KEY read from this file at each connect", Complete::files)
        .option(kOptions[1], "The same from this environment variable of the program")
        .option(kOptions[2], "The same from this credential of the service")
        .notBoth(kOptions[0], kOptions[1])
        .notBoth(kOptions[0], kOptions[2])
        .notBoth(kOptions[1], kOptions[2]);
    for (const char* each : kOptions)
        verb.notBoth(each, "--stdin");
}

bool hasReference(const Line& line) {
    for (const char* each : kOptions)
        if (line.has(each))
            return true;
    return false;
}

ExitCode setReference(const Session& session, const model::Configuration& configuration, const Line& line) {
    const std::vector<std::string> keys = line.texts("KEY=VALUE");
    if (keys.size() != 1 || keys[0].find('=') != std::string::npos)
        return session.fail(ExitCode::wrongUse, "A value from elsewhere takes one KEY and no VALUE",
                            "odbcadmin dsn set NAME KEY --from-file PATH stores where it lies.");
    std::size_t kind = 0;
    while (!line.has(kOptions[kind]))
        ++kind;
    const std::string name = line.text("NAME");
    const model::ChangeResult result = model::referTo(configuration, name, keys[0], static_cast<rules::Reference>(kind),
                                                      line.text(kOptions[kind]), session.way());
    const auto source = configuration.dataSource(name);
    return session.report(
        result, "Changed data source " + name,
        source ? remarksOnKeys(configuration, source->driver, {{keys[0], ""}}) : std::vector<std::string>());
}

}  // namespace jx::cli
