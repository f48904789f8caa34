// Candidates for a word of the command line: the shells' completion scripts ask "odbcadmin __complete -- WORD...".
#include <CLI/CLI.hpp>
#include <cstdlib>
#include <string>
#include <vector>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/known_driver.h"
#include "odbcadmin/model/root_directory.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

// A place on the line: the command so far and its operands.
struct Position {
    const CLI::App* app = nullptr;
    std::vector<std::string> operands{};
    const CLI::Option* waiting = nullptr;  // an option whose value comes next
    std::string home{};
    std::string driver{};  // that --driver names
    std::string root{};
    bool onlyOperands = false;  // after --
    model::Scopes scopes{};
};

const CLI::Option* optionCalled(const CLI::App* app, const std::string& name) {
    for (; app != nullptr; app = app->get_parent())
        if (const CLI::Option* option = app->get_option_no_throw(name))
            return option;
    return nullptr;
}

bool takesValue(const CLI::Option* option) {
    return option != nullptr && option->get_items_expected_max() > 0;
}

void take(Position& at, const std::string& word) {
    if (at.waiting != nullptr) {
        if (at.waiting->check_lname("home"))
            at.home = word;
        if (at.waiting->check_lname("driver"))
            at.driver = word;
        if (at.waiting->check_lname("root"))
            at.root = word;
        at.waiting = nullptr;
        return;
    }
    if (!at.onlyOperands && word == "--") {
        at.onlyOperands = true;
        return;
    }
    if (!at.onlyOperands && word.size() > 1 && word[0] == '-') {
        if (word == "--system")
            at.scopes = {model::Seen::system, model::Seen::system};
        if (word == "--user")
            at.scopes.dataSources = model::Seen::user;
        const std::size_t equals = word.find('=');
        const CLI::Option* option = optionCalled(at.app, word.substr(0, equals));
        at.waiting = takesValue(option) ? option : nullptr;
        if (at.waiting != nullptr && equals != std::string::npos)
            take(at, word.substr(equals + 1));
        return;
    }
    const auto inner = at.app->get_subcommands([&](const CLI::App* each) { return each->get_name() == word; });
    if (inner.empty())
        at.operands.push_back(word);
    else
        at.app = inner.front();
}

// The operand that the next word would be.
const CLI::Option* nextOperand(const Position& at) {
    std::size_t skipped = at.operands.size();
    for (const CLI::Option* option :
         at.app->get_options([](const CLI::Option* each) { return each->get_positional(); })) {
        const auto most = static_cast<std::size_t>(option->get_items_expected_max());
        if (skipped < most)
            return option;
        skipped -= most;
    }
    return nullptr;
}

std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

void addCandidate(std::vector<std::string>& found, const std::string& beginning, const std::string& name,
                  const std::string& description) {
    // A line and a tab part candidates from each other and from what is said about them.
    const bool holdsTab = name.find_first_of("\t\r\n") != std::string::npos;
    if (name.starts_with(beginning) && !holdsTab)
        found.push_back(name + "\t" + model::printable(firstLine(description)));
}

void addOptions(const CLI::App* app, const std::string& beginning, std::vector<std::string>& found) {
    for (; app != nullptr; app = app->get_parent())
        for (const CLI::Option* option :
             app->get_options([](const CLI::Option* each) { return !each->get_positional(); }))
            for (const std::string& name : option->get_lnames())
                if (name != "help" || app->get_parent() == nullptr)
                    addCandidate(found, beginning, "--" + name, option->get_description());
}

void addKeys(const model::IniSection* section, const std::string& beginning, std::vector<std::string>& found) {
    if (section != nullptr)
        for (const std::string& key : section->keys())
            addCandidate(found, beginning, key, "");
}

// The keys that a driver asks for, each with its "=" and what it means; false when nothing is known of it.
bool addKnownKeys(const model::Configuration& configuration, const std::string& driver, const std::string& beginning,
                  std::vector<std::string>& found) {
    const auto& registered = configuration.driver(driver);
    const model::KnownDriver* known =
        registered && registered->library ? model::knownDriverOf(registered->library.text) : nullptr;
    if (known == nullptr)
        return false;
    for (const model::KnownKey& each : known->keys)
        addCandidate(found, beginning, each.name + "=",
                     each.says + (each.initial.empty() ? "" : " (" + each.initial + ")"));
    return true;
}

// What stands in a file that the line names.
void addFromFile(std::string_view kind, const Position& at, const std::string& beginning,
                 std::vector<std::string>& found) {
    const bool isSystems = at.scopes.drivers == model::Seen::system;
    const auto file = at.operands.empty()
                          ? std::nullopt
                          : model::IniView::read(model::storeName(
                                at.operands.front(), isSystems ? model::Scope::system : model::Scope::user));
    if (!file)
        return;
    if (kind == Complete::sections)
        for (const model::IniSection& section : file->sections())
            addCandidate(found, beginning, std::string(section.name), "");
    else if (kind == Complete::keysOfSection && at.operands.size() > 1)
        addKeys(file->section(at.operands[1]), beginning, found);
    else if (const model::IniSection* drivers = file->section(rules::kDriverList))
        for (const std::string& key : drivers->keys())
            addCandidate(found, beginning, model::withoutQuotes(key), "");
}

void addFromConfiguration(std::string_view kind, const Position& at, const std::string& beginning,
                          std::vector<std::string>& found) {
    const model::Configuration configuration = model::Configuration::read(at.scopes);
    if (kind == Complete::dsn || kind == Complete::dsnOrDriver)
        for (const model::DataSource& source : configuration.dataSources())
            addCandidate(found, beginning, source.name, source.driver);
    if (kind == Complete::driver || kind == Complete::dsnOrDriver)
        for (const model::Registered& driver : configuration.drivers())
            addCandidate(found, beginning, driver.name, driver.library.text);
    if (kind == Complete::translator)
        for (const model::Registered& translator : configuration.all(model::kTranslatorKind))
            addCandidate(found, beginning, translator.name, translator.library.text);
    const auto source = at.operands.empty() ? std::nullopt : configuration.dataSource(at.operands.front());
    const std::string& driver = at.driver.empty() && source ? source->driver : at.driver;
    const bool isKnown = kind == Complete::keysDriverAsksFor && addKnownKeys(configuration, driver, beginning, found);
    if (!isKnown && (kind == Complete::keysOfDsn || kind == Complete::keysDriverAsksFor) && source)
        addKeys(source->section, beginning, found);
    for (const auto& [keys, registered] : {std::pair{Complete::keysOfDriver, &model::kDriverKind},
                                           std::pair{Complete::keysOfTranslator, &model::kTranslatorKind}})
        if (kind == keys && !at.operands.empty())
            if (const auto entry = configuration.find(*registered, at.operands.front()))
                addKeys(entry->section, beginning, found);
}

// The word that a shell must complete by itself is asked for by a line of its own.
void addNames(std::string_view kind, const Position& at, const std::string& beginning,
              std::vector<std::string>& found) {
    if (kind == Complete::files || kind == Complete::directories || kind == Complete::users)
        found.push_back(":" + std::string(kind));
    else if (kind == Complete::sections || kind == Complete::keysOfSection || kind == Complete::scriptsDrivers)
        addFromFile(kind, at, beginning, found);
    else if (kind == Complete::scope)
        for (const model::Scope scope : {model::Scope::user, model::Scope::system})
            addCandidate(found, beginning, scopeWord(scope), std::string("the files of the ") + scopeWord(scope));
    else
        addFromConfiguration(kind, at, beginning, found);
}

// False when the root is refused: this system's names are no candidates then.
bool usePlaces(const Position& at) {
    if (!at.home.empty()) {
        setenv("HOME", model::absolutePath(at.home).c_str(), 1);
        unsetenv("ODBCINI");
        unsetenv("ODBCINSTINI");
    }
    return at.root.empty() || !model::enterRoot(at.root);
}

// For "--driver=Pl": what could follow the "=", whole as it would stand on the line.
std::vector<std::string> valuesOf(const Position& at, const std::string& beginning) {
    const std::size_t value = beginning.find('=') + 1;
    const CLI::Option* option = optionCalled(at.app, beginning.substr(0, value - 1));
    std::vector<std::string> found;
    if (takesValue(option))
        addNames(option->get_type_name(), at, beginning.substr(value), found);
    for (std::string& each : found)
        if (!each.starts_with(':'))
            each.insert(0, beginning.substr(0, value));
    return found;
}

// Keys that take their value in the same word.
void addEqualsSigns(std::vector<std::string>& found) {
    for (std::string& each : found)
        if (const std::size_t tab = each.find('\t'); tab != std::string::npos && each[tab - 1] != '=')
            each.insert(tab, "=");
}

// Candidates for the last of words, which is what stands left of the cursor, a tab and a description behind each one.
std::vector<std::string> candidates(const CLI::App& app, const std::vector<std::string>& words) {
    Position at{&app, {}};
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        take(at, words[i]);
    const std::string beginning = words.empty() ? std::string() : words.back();
    std::vector<std::string> found;
    if (!usePlaces(at))
        return found;
    if (at.waiting != nullptr) {
        addNames(at.waiting->get_type_name(), at, beginning, found);
        return found;
    }
    if (!at.onlyOperands && beginning.starts_with("--") && beginning.find('=') != std::string::npos)
        return valuesOf(at, beginning);
    if (!at.onlyOperands && beginning.starts_with("-")) {
        addOptions(at.app, beginning, found);
        return found;
    }
    for (const CLI::App* verb :
         at.app->get_subcommands([](const CLI::App* each) { return !each->get_group().empty(); }))
        addCandidate(found, beginning, verb->get_name(), verb->get_description());
    const CLI::Option* next = nextOperand(at);
    if (next != nullptr)
        addNames(next->get_group(), at, beginning, found);
    if (next != nullptr && next->get_single_name() == "KEY=VALUE")
        addEqualsSigns(found);
    return found;
}

}  // namespace

void addCompleteCommand(CLI::App& app, Session& session) {
    addVerb(app, session, "__complete", "Candidates for the last word", "")
        .operand("WORD", "What stands left of the cursor", kAny)
        .onRun([&app](const Session& run, const Line& line) {
            for (const std::string& candidate : candidates(app, line.texts("WORD")))
                run.print(candidate);
            return ExitCode::done;
        });
    app.get_subcommand("__complete")->group("");
}

}  // namespace jx::cli
