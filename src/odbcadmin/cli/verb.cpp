// Verbs in terms of the parser.
#include "odbcadmin/cli/verb.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <unordered_set>
#include <utility>

#include "rules/names.h"

namespace jx::cli {

namespace {

bool needsMark(const std::string& word, bool onlyOperands) {
    return onlyOperands || (!word.empty() && (word[0] == '[' || word[0] == '{' || word[0] == kMark));
}

CLI::App& noun(CLI::App& app, const std::string& name) {
    static const std::map<std::string, std::string> kDescriptions{
        {"dsn", "Data sources"},
        {"driver", "Drivers"},
        {"translator", "Translators"},
        {"trace", "Call tracing of the driver manager"},
        {"config", "Any section and key of any INI file"},
    };
    const auto present = app.get_subcommands([&](const CLI::App* each) { return each->get_name() == name; });
    if (!present.empty())
        return *present.front();
    CLI::App& made = *app.add_subcommand(name, kDescriptions.at(name));
    made.require_subcommand(1);
    made.footer("Examples, and more with odbcadmin " + name + " VERB --help:");
    return made;
}

}  // namespace

std::vector<std::string> marked(const std::vector<std::string>& words) {
    std::vector<std::string> all;
    bool onlyOperands = false;
    for (const std::string& word : words) {
        if (!onlyOperands && word == "--")
            onlyOperands = true;
        else
            all.push_back(needsMark(word, onlyOperands) ? kMark + word : word);
    }
    return all;
}

std::string unmarked(const std::string& text) {
    return !text.empty() && text[0] == kMark ? text.substr(1) : text;
}

std::string withExamples(const std::string& examples) {
    std::string text = "Examples:";
    for (const std::string& line : CLI::detail::split(examples, '\n'))
        text.append("\n  ").append(line);
    return text;
}

bool Line::has(const char* name) const {
    return verb_->get_option(name)->count() > 0;
}

std::vector<std::string> Line::texts(const char* name) const {
    std::vector<std::string> texts = verb_->get_option(name)->results();
    std::transform(texts.begin(), texts.end(), texts.begin(), unmarked);
    return texts;
}

std::string Line::text(const char* name) const {
    const std::vector<std::string> all = texts(name);
    return all.empty() ? std::string() : all.front();
}

Verb& Verb::operand(const std::string& name, const std::string& description, Times times, const char* complete) {
    CLI::Option* option = verb_.add_option(name, description)->expected(times.least, times.most);
    // CLI11 hands an operand more texts than the least number only when extra ones are allowed. Help does not show the
    // group, which is what completion offers.
    option->allow_extra_args(times.most != times.least);
    option->type_name("")->required(times.least > 0)->group(complete);
    return *this;
}

Verb& Verb::option(const std::string& name, const std::string& description, const char* complete) {
    verb_.add_option(name, description)->type_name(complete)->expected(1)->allow_extra_args(false);
    return *this;
}

Verb& Verb::requiredOption(const std::string& name, const std::string& description, const char* complete) {
    option(name, description, complete);
    verb_.get_options().back()->required();
    return *this;
}

Verb& Verb::flag(const std::string& name, const std::string& description) {
    verb_.add_flag(name)->description(description);
    return *this;
}

Verb& Verb::timeout(const char* description) {
    return option("--timeout", description, "SECONDS");
}

Verb& Verb::notBoth(const char* one, const char* other) {
    verb_.get_option(one)->excludes(verb_.get_option(other));
    return *this;
}

Verb& Verb::thisSystemOnly() {
    isThisSystemOnly_ = true;
    return *this;
}

void Verb::onRun(Action action) {
    const CLI::App* noun = verb_.get_parent();
    const std::string before = noun->get_parent() == nullptr ? "" : noun->get_name() + " ";
    if (isThisSystemOnly_)
        action = [action = std::move(action), name = before + verb_.get_name()](const Session& run, const Line& line) {
            if (run.root.empty())
                return action(run, line);
            return run.fail(ExitCode::wrongUse, name + " works with the libraries of this system, not of another root",
                            "odbcadmin lint --root looks at the files of an image.");
        };
    verb_.callback([&session = session_, line = Line(verb_), action = std::move(action)] {
        session.action = [line, action](const Session& run) { return action(run, line); };
    });
}

void Verb::onRead(Needs needs, ReadingAction action) {
    onRun([needs, action = std::move(action)](const Session& run, const Line& line) {
        using model::FileKind;
        model::Scopes scopes = run.scopes();
        if (needs == Needs::drivers)
            scopes.drivers = run.user ? model::Seen::user : scopes.drivers;
        const model::Configuration configuration = model::Configuration::read(scopes);
        if (needs != Needs::nothing)
            for (const model::Reason& each : configuration.furtherTroubles())
                run.warn(each.fact + "; what stands there is left out");
        for (const auto& [kind, own] :
             {std::pair{FileKind::dataSources, Needs::dataSources}, std::pair{FileKind::drivers, Needs::drivers}})
            if ((needs == own || needs == Needs::bothFiles) && configuration.trouble(kind))
                return run.fail(configuration.trouble(kind));
        return action(run, configuration, line);
    });
}

Verb addVerb(CLI::App& app, Session& session, const std::string& name, const char* description, const char* examples) {
    const std::size_t blank = name.find(' ');
    const bool hasNoun = blank != std::string::npos;
    CLI::App& parent = hasNoun ? noun(app, name.substr(0, blank)) : app;
    CLI::App& verb = *parent.add_subcommand(hasNoun ? name.substr(blank + 1) : name, description);
    verb.footer(withExamples(examples) + "\n\nodbcadmin --help shows the options that every command takes.");
    if (hasNoun)
        parent.footer(parent.get_footer() + "\n  " + CLI::detail::split(examples, '\n').front());
    return {verb, session};
}

void onTrial(Verb verb, const char* timeout, Verb::ReadingAction action) {
    verb.timeout(timeout).thisSystemOnly().onRead(Needs::nothing, std::move(action));
}

std::optional<std::chrono::milliseconds> timeLimit(const Session& session, const Line& line,
                                                   std::chrono::milliseconds otherwise) {
    const std::string text = line.text("--timeout");
    if (text.empty())
        return otherwise;
    const auto seconds = secondsFrom(text);
    if (seconds && seconds->count() > 0)
        return seconds;
    session.fail(ExitCode::wrongUse, "--timeout is not a number of seconds: " + text, "Try --timeout 5");
    return std::nullopt;
}

std::optional<std::chrono::milliseconds> secondsFrom(const std::string& text) {
    constexpr double kDay = 86400;
    constexpr double kMilliseconds = 1000;
    char* end = nullptr;
    const double seconds = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !(seconds >= 0 && seconds <= kDay))
        return std::nullopt;
    return std::chrono::milliseconds(static_cast<long>(std::ceil(seconds * kMilliseconds)));
}

std::optional<model::Pairs> takePairs(const Session& session, const std::vector<std::string>& texts,
                                      const std::vector<std::string_view>& reserved) {
    const auto refuse = [&](const std::string& fact, const char* advice) {
        session.fail(ExitCode::wrongUse, fact, advice);
        return std::nullopt;
    };
    model::Pairs pairs;
    std::unordered_set<std::string> seen;
    for (const std::string& text : texts) {
        const std::size_t equals = text.find('=');
        const std::string key = text.substr(0, equals);
        if (equals == std::string::npos || rules::trimmed(key).empty())
            return refuse("\"" + text + "\" is not of the form KEY=VALUE",
                          "Put the whole of it in quotes when the value holds blanks.");
        if (std::any_of(reserved.begin(), reserved.end(), [&](auto each) { return rules::sameName(key, each); }))
            return refuse(key + " cannot be given as KEY=VALUE here",
                          "It comes from the name and from the options; see --help.");
        if (!seen.insert(rules::foldedName(key)).second)
            return refuse(key + " is given twice", "Give each key once.");
        pairs.emplace_back(key, text.substr(equals + 1));
    }
    return pairs;
}

}  // namespace jx::cli
