// A verb of the command: its operands and options, what it does with them, and what they were on this line.
//
//     addVerb(app, session, "dsn unset", "Remove keys of a data source", "odbcadmin dsn unset Sales Timeout Server")
//         .operand("NAME", "Data source", kOne, Complete::dsn)
//         .operand("KEY", "Keys", kSome, Complete::keysOfDsn)
//         .onRead(Needs::bothFiles, unsetKeys);
//
// where unsetKeys reads line.text("NAME") and line.texts("KEY"). It runs after the whole line was read and --home is in
// force, so it finds the global options in its Session.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "odbcadmin/cli/session.h"
#include "odbcadmin/model/configuration.h"

// The parser's header is large: only the files that build and read the line include it.
namespace CLI {
class App;
}

namespace jx::cli {

// What the shell offers for an operand or an option's value; help calls the value so.
struct Complete {
    static constexpr const char* nothing = "TEXT";
    static constexpr const char* files = "FILE";
    static constexpr const char* directories = "DIR";
    static constexpr const char* users = "USER";
    static constexpr const char* dsn = "DSN";
    static constexpr const char* driver = "DRIVER";
    static constexpr const char* dsnOrDriver = "NAME";
    static constexpr const char* translator = "TRANSLATOR";
    static constexpr const char* keysOfDsn = "KEY";                // of the data source in the first operand
    static constexpr const char* keysDriverAsksFor = "KEY=VALUE";  // the driver of --driver, or of that data source
    static constexpr const char* keysOfDriver = "KEY OF DRIVER";   // of the driver in the first operand
    static constexpr const char* keysOfTranslator = "KEY OF TRANSLATOR";
    static constexpr const char* sections = "SECTION";                 // of the file in the first operand
    static constexpr const char* keysOfSection = "KEY OF SECTION";     // of that file, in that of the second operand
    static constexpr const char* scope = "SCOPE";                      // user or system
    static constexpr const char* scriptsDrivers = "DRIVER OF SCRIPT";  // what the script in the first operand offers
};

// How often an operand stands on the line.
struct Times {
    int least;
    int most;  // -1: any number
};
inline constexpr Times kOne{1, 1};
inline constexpr Times kOptional{0, 1};
inline constexpr Times kSome{1, -1};
inline constexpr Times kAny{0, -1};

// Line: what was given for a verb's operands and options, by the names that these were added with.
class Line {
public:
    explicit Line(const CLI::App& verb) : verb_(&verb) {}

    bool has(const char* name) const;

    // In order; none when it was not given.
    std::vector<std::string> texts(const char* name) const;

    // The first of them; empty when there is none.
    std::string text(const char* name) const;

private:
    const CLI::App* verb_;
};

// Which files a verb cannot do without. The others are as empty ones when they cannot be read.
enum class Needs { nothing, dataSources, drivers, bothFiles };

class Verb {
public:
    using Action = std::function<ExitCode(const Session&, const Line&)>;
    using ReadingAction = std::function<ExitCode(const Session&, const model::Configuration&, const Line&)>;

    Verb(CLI::App& verb, Session& session) : verb_(verb), session_(session) {}

    // The operands stand on the line in the order in which they are added, and may be any text.
    Verb& operand(const std::string& name, const std::string& description, Times times,
                  const char* complete = Complete::nothing);

    // An option with a value of any text; a required one must be given.
    Verb& option(const std::string& name, const std::string& description, const char* complete = Complete::nothing);
    Verb& requiredOption(const std::string& name, const std::string& description,
                         const char* complete = Complete::nothing);

    // An option without a value.
    Verb& flag(const std::string& name, const std::string& description);

    // The option --timeout: see timeLimit.
    Verb& timeout(const char* description);

    // Only one of the two may be given.
    Verb& notBoth(const char* one, const char* other);

    // It loads libraries, or looks at what would be loaded: with --root, where others lie, it fails.
    Verb& thisSystemOnly();

    // What the verb does.
    void onRun(Action action);

    // What it does with what is configured; it fails first when a file that it needs cannot be read.
    void onRead(Needs needs, ReadingAction action);

private:
    CLI::App& verb_;
    Session& session_;
    bool isThisSystemOnly_ = false;
};

// Adds a verb such as "lint", or "dsn add" with its noun before it. A noun is made by its first verb; add its
// description in verb.cpp. examples: whole command lines, one below the other.
Verb addVerb(CLI::App& app, Session& session, const std::string& name, const char* description, const char* examples);

// What a verb does that lets libraries of this system do something for as long as --timeout says.
void onTrial(Verb verb, const char* timeout, Verb::ReadingAction action);

// What --timeout says: a number of seconds, also with a fraction, at most a day; otherwise, when it is not given.
// Nothing after it said that the text is no such number: that is wrong use.
std::optional<std::chrono::milliseconds> timeLimit(const Session& session, const Line& line,
                                                   std::chrono::milliseconds otherwise);

// A number of seconds from 0, also with a fraction, to a day; nothing for any other text.
std::optional<std::chrono::milliseconds> secondsFrom(const std::string& text);

// Takes KEY=VALUE operands apart, each at its first "="; keys in reserved are refused. Nothing after it said what is
// wrong with one: that is wrong use.
std::optional<model::Pairs> takePairs(const Session& session, const std::vector<std::string>& texts,
                                      const std::vector<std::string_view>& reserved);

// CLI11 takes operands such as "[a,b]" and "{}" apart, and gives what follows "--" to the whole command once a verb has
// all the operands it needs. So such words, what begins with the mark itself, and all that follows "--" get a mark in
// front while CLI11 holds them, and "--" never reaches it.
inline constexpr char kMark = '\x01';
std::vector<std::string> marked(const std::vector<std::string>& words);
std::string unmarked(const std::string& text);

// The end of a help text.
std::string withExamples(const std::string& examples);

}  // namespace jx::cli
