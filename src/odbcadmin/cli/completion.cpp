// Candidates for a word of the command line: the shells' completion scripts ask "odbcadmin __complete -- WORD...".
#include <odbcinst.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/configuration.h"
#include "odbcadmin/cli/text.h"

namespace jx::admin {

namespace {

// A place on the line: the command so far and its operands.
struct Position {
    const CLI::App* app = nullptr;
    std::vector<std::string> operands{};
    const CLI::Option* waiting = nullptr;  // an option whose value comes next
    std::string home{};
    bool onlyOperands = false;  // after --
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
        at.waiting = nullptr;
        return;
    }
    if (!at.onlyOperands && word == "--") {
        at.onlyOperands = true;
        return;
    }
    if (!at.onlyOperands && word.size() > 1 && word[0] == '-') {
        const CLI::Option* option = optionCalled(at.app, word);
        at.waiting = takesValue(option) ? option : nullptr;
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
        found.push_back(name + "\t" + printable(firstLine(description)));
}

void addOptions(const CLI::App* app, const std::string& beginning, std::vector<std::string>& found) {
    for (; app != nullptr; app = app->get_parent())
        for (const CLI::Option* option :
             app->get_options([](const CLI::Option* each) { return !each->get_positional(); }))
            for (const std::string& name : option->get_lnames())
                if (name != "help" || app->get_parent() == nullptr)
                    addCandidate(found, beginning, "--" + name, option->get_description());
}

// What stands in a file that the line names.
void addFromFile(const std::string& kind, const Position& at, const std::string& beginning,
                 std::vector<std::string>& found) {
    const std::optional<IniView> file = at.operands.empty() ? std::nullopt : IniView::read(at.operands.front().c_str());
    if (!file)
        return;
    if (kind == "SECTION")
        for (const IniSection& section : file->sections())
            addCandidate(found, beginning, std::string(section.name), "");
    const bool isScript = kind == "DRIVER OF SCRIPT";
    const IniSection* section = isScript                 ? file->section(INS_ODBCINI_DRIVERS)
                                : at.operands.size() > 1 ? file->section(at.operands[1])
                                                         : nullptr;
    if (section == nullptr || kind == "SECTION")
        return;
    for (const IniEntry& entry : section->entries)
        addCandidate(found, beginning, isScript ? withoutQuotes(entry.key) : std::string(entry.key), "");
}

void addFromConfiguration(const std::string& kind, const Position& at, const std::string& beginning,
                          std::vector<std::string>& found) {
    std::optional<IniView> sources = IniView::read(INS_ODBCINI_FILENAME);
    std::optional<IniView> drivers = IniView::read(INS_ODBCINST_FILENAME);
    if (!sources || !drivers)
        return;
    const Configuration configuration(std::move(*sources), std::move(*drivers));
    if (kind == "DSN" || kind == "NAME")
        for (const DataSource& source : configuration.dataSources())
            addCandidate(found, beginning, source.name, source.driver);
    if (kind == "DRIVER" || kind == "NAME")
        for (const Registered& driver : configuration.drivers())
            addCandidate(found, beginning, driver.name, driver.library);
    if (kind == "TRANSLATOR")
        for (const Registered& translator : configuration.translators())
            addCandidate(found, beginning, translator.name, translator.library);
    if (kind == "KEY" && !at.operands.empty())
        if (const IniSection* section = configuration.sourcesFile().section(at.operands.front()))
            for (const IniEntry& entry : section->entries)
                addCandidate(found, beginning, std::string(entry.key), "");
}

// The word that a shell must complete by itself is told by a line of its own.
void addNames(const std::string& kind, const Position& at, const std::string& beginning,
              std::vector<std::string>& found) {
    if (kind == "FILE" || kind == "DIR")
        found.push_back(":" + kind);
    else if (kind == "SECTION" || kind == "KEY OF SECTION" || kind == "DRIVER OF SCRIPT")
        addFromFile(kind, at, beginning, found);
    else
        addFromConfiguration(kind, at, beginning, found);
}

void useHome(const std::string& home) {
    if (home.empty())
        return;
    setenv("HOME", absolutePath(home).c_str(), 1);
    unsetenv("ODBCINI");
    unsetenv("ODBCINSTINI");
}

}  // namespace

std::vector<std::string> candidates(const CLI::App& app, const std::vector<std::string>& words) {
    Position at{&app, {}};
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        take(at, words[i]);
    const std::string beginning = words.empty() ? std::string() : words.back();
    useHome(at.home);
    std::vector<std::string> found;
    if (at.waiting != nullptr) {
        addNames(at.waiting->get_type_name(), at, beginning, found);
        return found;
    }
    if (!at.onlyOperands && beginning.starts_with("-")) {
        addOptions(at.app, beginning, found);
        return found;
    }
    for (const CLI::App* verb :
         at.app->get_subcommands([](const CLI::App* each) { return !each->get_group().empty(); }))
        addCandidate(found, beginning, verb->get_name(), verb->get_description());
    if (const CLI::Option* next = nextOperand(at))
        addNames(next->get_group(), at, beginning, found);
    return found;
}

void addCompleteCommand(CLI::App& app, Session& session) {
    CLI::App& verb = *app.add_subcommand("__complete", "Candidates for the last word");
    verb.group("");
    const CLI::Option* words = addOperands(verb, "WORD", "What stands left of the cursor", {0, -1});
    onRun(verb, session, [&app, words](Session& run) {
        for (const std::string& candidate : candidates(app, operands(words)))
            run.print(candidate);
        return ExitCode::done;
    });
}

}  // namespace jx::admin
