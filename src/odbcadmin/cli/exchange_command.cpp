// export and apply: everything the two files say as a JSON document, and the other way round.
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/document_json.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::Configuration;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

ExitCode readInput(const Session& session, const std::string& name, std::string& text) {
    const std::unique_ptr<std::FILE, CloseFile> own(name == "-" ? nullptr : std::fopen(name.c_str(), "rbe"));
    std::FILE* file = name == "-" ? stdin : own.get();
    std::array<char, 65536> part{};
    while (file != nullptr && std::feof(file) == 0 && std::ferror(file) == 0)
        text.append(part.data(), std::fread(part.data(), 1, part.size(), file));
    const int error = errno;
    if (file != nullptr && std::ferror(file) == 0)
        return ExitCode::done;
    return session.fail(ExitCode::fileTrouble, "Cannot read " + name + ": " + std::strerror(error),
                        "Give a file, or - for standard input.");
}

ExitCode apply(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string file = line.text("--file");
    std::string text;
    if (const ExitCode code = readInput(session, file, text); code != ExitCode::done)
        return code;
    std::string fault;
    const std::optional<model::Document> document = parseDocument(text, fault);
    if (!document)
        return session.fail(ExitCode::badInput, (file == "-" ? "The input" : file) + " is not valid: " + fault,
                            "odbcadmin export shows what it must look like. Nothing was changed.");
    return session.report(model::applyDocument(configuration, *document, session.way()),
                          "Applied " + model::counted(document->drivers.size(), "driver") + ", " +
                              model::counted(document->translators.size(), "translator") + ", " +
                              model::counted(document->dataSources.size(), "data source"));
}

ExitCode exportAll(const Session& session, const Configuration& configuration, const Line& /*line*/) {
    const model::Exchange made = model::documentOf(configuration, session.way().secrets);
    for (const model::DataSource& source : made.leftOut)
        session.warn(
            "data source " + source.name + " is left out: " +
            (source.driver.empty() ? "it has no driver" : "its driver " + source.driver + " is not registered"));
    std::string notText;
    const Json json = documentJson(made.document, notText);
    if (!notText.empty())
        return session.fail(ExitCode::invalid, "A name or value is not UTF-8, which JSON cannot hold: " + notText,
                            "Change it, or copy the files themselves.");
    session.printJson(json);
    if (made.secretsLeftOut > 0)
        session.warn(model::counted(made.secretsLeftOut, "secret") +
                     (made.secretsLeftOut == 1 ? " is left out (null); --show-secrets includes it"
                                               : " are left out (null); --show-secrets includes them"));
    return ExitCode::done;
}

}  // namespace

void addExchangeCommands(CLI::App& app, Session& session) {
    addVerb(app, session, "apply", "Add or change what a JSON document names",
            "odbcadmin apply -f odbc.json --dry-run\nodbcadmin export | odbcadmin apply -f - --home /srv/app")
        .requiredOption("-f,--file", "The document; - is standard input", Complete::files)
        .onRead(Needs::bothFiles, apply);
    addVerb(app, session, "export", "Print drivers, translators and data sources as JSON that apply takes",
            "odbcadmin export > odbc.json\nodbcadmin export --show-secrets | odbcadmin apply -f - --home /srv/app")
        .onRead(Needs::bothFiles, exportAll);
}

}  // namespace jx::cli
