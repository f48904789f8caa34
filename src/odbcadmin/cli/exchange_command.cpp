// export and apply: everything the two files say as a JSON document, and the other way round.
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/document_json.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"

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

// What --prune asks to have removed from the files of a scope; nothing after it said what is wrong.
std::optional<std::vector<model::Superfluous>> superfluousIn(const Session& session, const model::Document& document,
                                                             const Line& line) {
    std::vector<model::Superfluous> removed;
    const std::string word = line.text("--prune");
    for (const model::Scope scope : {model::Scope::user, model::Scope::system})
        if (word == scopeWord(scope))
            removed.push_back(model::superfluous(document, scope));
    if (!removed.empty() || !line.has("--prune"))
        return removed;
    session.fail(ExitCode::wrongUse, "--prune takes user or system, not " + word,
                 "It removes from the files of that scope what the document does not have.");
    return std::nullopt;
}

std::string textOf(const model::Superfluous& removed) {
    std::vector<std::string> all;
    for (const auto& [word, names] :
         {std::pair{"data source ", &removed.dataSources}, std::pair{"driver ", &removed.drivers},
          std::pair{"translator ", &removed.translators}})
        for (const std::string& name : *names)
            all.push_back(word + name);
    return model::joined(all);
}

// Done when what is superfluous may go. At a terminal the difference is shown first, and the user asked.
ExitCode askToRemove(const Session& session, const Line& line, const model::Superfluous& removed,
                     const model::ChangeResult& preview) {
    if (removed.count() == 0 || session.writesNothing() || line.has("--yes"))
        return ExitCode::done;
    const bool canAsk = ::isatty(STDIN_FILENO) == 1 && line.text("--file") != "-" && !session.json;
    if (!canAsk)
        return session.fail(ExitCode::wrongUse, "This would remove " + textOf(removed),
                            "Look at it with --dry-run; --yes removes it without asking. Nothing was changed.");
    for (const model::ChangedFile& file : preview.files)
        session.printOfFile(std::string_view(file.difference).substr(0, file.difference.size() - 1));
    std::cout.flush();
    std::cerr << "Remove " << model::printable(textOf(removed)) << "? [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    const bool isYes = answer == "y" || answer == "Y" || answer == "yes";
    return isYes ? ExitCode::done : session.fail(ExitCode::failed, "Nothing was changed");
}

// What --user and --system leave of a document.
std::size_t keepScopes(const Session& session, model::Document& document) {
    std::size_t leftOut = 0;
    for (auto* entries : {&document.drivers, &document.translators, &document.dataSources, &document.tracing})
        leftOut +=
            std::erase_if(*entries, [&](const model::DocumentEntry& each) { return !session.isAbout(each.scope); });
    return leftOut;
}

ExitCode applyDocument(const Session& session, const Configuration& configuration, const Line& line,
                       model::Document document) {
    const std::size_t leftOut = keepScopes(session, document);
    const auto removed = superfluousIn(session, document, line);
    if (!removed)
        return ExitCode::wrongUse;
    model::ChangeWay preview = session.way();
    preview.writing = model::ChangeWay::Writing::never;
    const model::ChangeResult tried = model::applyDocument(configuration, document, preview, *removed);
    if (!tried.isDone())
        return session.fail(tried.reason);
    if (!removed->empty())
        if (const ExitCode code = askToRemove(session, line, removed->front(), tried); code != ExitCode::done)
            return code;
    std::string said = "Applied " + model::counted(document.drivers.size(), "driver") + ", " +
                       model::counted(document.translators.size(), "translator") + ", " +
                       model::counted(document.dataSources.size(), "data source");
    if (!removed->empty() && removed->front().count() > 0)
        said += "; removed " + textOf(removed->front());
    std::vector<std::string> remarks;
    if (leftOut > 0)
        remarks.push_back((leftOut == 1 ? "1 entry" : std::to_string(leftOut) + " entries") +
                          " of the other scope left out");
    return session.report(model::applyDocument(configuration, document, session.way(), *removed), said, remarks);
}

ExitCode apply(const Session& session, const Configuration& /*restricted*/, const Line& line) {
    const std::string file = line.text("--file");
    std::string text;
    if (const ExitCode code = readInput(session, file, text); code != ExitCode::done)
        return code;
    std::string fault;
    const std::optional<model::Document> document = parseDocument(text, fault);
    if (!document)
        return session.fail(ExitCode::badInput, (file == "-" ? "The input" : file) + " is not valid: " + fault,
                            "odbcadmin export shows what it must look like. Nothing was changed.");
    return applyDocument(session, Configuration::read(model::Scopes()), line, *document);
}

template <class Rows>
bool holds(const Rows& rows, const std::string& name) {
    return std::any_of(rows.begin(), rows.end(), [&](const auto& row) { return rules::sameName(row.name, name); });
}

// Keeps the data sources and drivers of these names, and the drivers of those data sources; what no name asks for.
void keepOnly(const std::vector<std::string>& names, model::Exchange& made) {
    const auto isNamed = [&](const auto& entry) {
        return std::any_of(names.begin(), names.end(),
                           [&](const std::string& name) { return rules::sameName(name, entry.name); });
    };
    model::Document& document = made.document;
    std::erase_if(made.leftOut, std::not_fn(isNamed));
    std::erase_if(document.dataSources, std::not_fn(isNamed));
    std::erase_if(document.translators, std::not_fn(isNamed));
    document.tracing.clear();
    std::erase_if(document.drivers, [&](const model::DocumentEntry& driver) {
        const auto uses = [&](const auto& source) { return rules::sameName(source.driver, driver.name); };
        return !isNamed(driver) && std::none_of(document.dataSources.begin(), document.dataSources.end(), uses);
    });
}

ExitCode exportThem(const Session& session, const Configuration& configuration, const Line& line) {
    model::Exchange made = model::documentOf(configuration, session.way().secrets);
    const std::vector<std::string> names = line.texts("NAME");
    for (const std::string& name : names)
        if (!holds(made.document.dataSources, name) && !holds(made.document.drivers, name) &&
            !holds(made.document.translators, name) && !holds(made.leftOut, name))
            return session.fail(model::noDataSourceOrDriver(configuration, name));
    if (!names.empty())
        keepOnly(names, made);
    keepScopes(session, made.document);
    if (!made.leftOut.empty()) {
        const model::DataSource& first = made.leftOut.front();
        return session.fail(
            ExitCode::failed,
            "Cannot export data source " + first.name + ": " +
                (first.driver.empty() ? "it has no driver" : "its driver " + first.driver + " is not registered"),
            "See odbcadmin explain; odbcadmin export NAME... exports others without it.");
    }
    std::string notText;
    const Json json = documentJson(made.document, notText);
    if (!notText.empty())
        return session.fail(ExitCode::invalid, "A name or value is not UTF-8, which JSON cannot hold: " + notText,
                            "Change it, or copy the files themselves.");
    session.printJson(json);
    const std::size_t leftOut = model::secretsLeftOut(made.document);
    if (leftOut > 0)
        session.warn(model::counted(leftOut, "secret") + (leftOut == 1
                                                              ? " is left out (null); --show-secrets includes it"
                                                              : " are left out (null); --show-secrets includes them"));
    return ExitCode::done;
}

}  // namespace

void addExchangeCommands(CLI::App& app, Session& session) {
    addVerb(app, session, "apply", "Add or change what a JSON document names",
            "odbcadmin apply -f odbc.json --dry-run\n"
            "odbcadmin apply -f odbc.json --prune user --yes\n"
            "odbcadmin export | odbcadmin apply -f - --home /srv/app")
        .requiredOption("-f,--file", "The document; - is standard input", Complete::files)
        .option("--prune", "user or system: remove from its files what the document does not have", Complete::scope)
        .flag("--yes", "Do not ask before anything is removed")
        .onRead(Needs::bothFiles, apply);
    addVerb(app, session, "export", "Print drivers, translators and data sources as JSON that apply takes",
            "odbcadmin export > odbc.json\nodbcadmin export Sales > sales.json\nodbcadmin export --show-secrets | "
            "odbcadmin apply -f - --home /srv/app")
        .operand("NAME", "Data sources, with their drivers, and drivers; everything without any", kAny,
                 Complete::dsnOrDriver)
        .onRead(Needs::bothFiles, exportThem);
}

}  // namespace jx::cli
