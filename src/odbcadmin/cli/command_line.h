// The command line: nouns, verbs, operands and help.
//
// A file NAME_command.cpp adds its verbs in a function that commands.h declares and command_line.cpp calls:
//
//     void addDsnTest(CLI::App& app, Session& session) {
//         CLI::App& verb = addVerb(noun(app, "dsn"), "test", "Connect to a data source and tell what happens",
//                                  "odbcadmin dsn test Sales");
//         auto names = addOperands(verb, "NAME", "data source", {.least = 1, .most = 1, .complete = Complete::dsn});
//         onRun(verb, session, [names](Session& run) { return testDataSource(run, operand(names, 0)); });
//     }
//
// The action runs after the whole line was read and --home is in force, so it finds the global options in its Session.
// One that works on what is configured is given that by onRead.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/cli/session.h"
#include "odbcadmin/model/configuration.h"

// The parser's header is large: only the files that build and read the line include it.
namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace jx::cli {

// What the shell offers for an operand or an option's value; help calls the value so.
struct Complete {
    static constexpr const char* nothing = "TEXT";
    static constexpr const char* files = "FILE";
    static constexpr const char* directories = "DIR";
    static constexpr const char* dsn = "DSN";
    static constexpr const char* driver = "DRIVER";
    static constexpr const char* dsnOrDriver = "NAME";
    static constexpr const char* translator = "TRANSLATOR";
    static constexpr const char* keysOfDsn = "KEY";                    // of the data source in the first operand
    static constexpr const char* sections = "SECTION";                 // of the file in the first operand
    static constexpr const char* keysOfSection = "KEY OF SECTION";     // of that file, in that of the second operand
    static constexpr const char* scriptsDrivers = "DRIVER OF SCRIPT";  // what the script in the first operand offers
};

struct OperandRule {
    int least = 0;
    int most = 1;  // -1: any number
    const char* complete = Complete::nothing;
};

// The noun called name, which is made by its first user; add its description in nounDescription of command_line.cpp.
CLI::App& noun(CLI::App& app, const std::string& name);

// A verb of a noun, or of the whole command (pass app). examples: whole command lines, one below the other.
CLI::App& addVerb(CLI::App& parent, const std::string& name, const std::string& description,
                  const std::string& examples);

// Operands that may be any text: use operands or operand to read them, not CLI11's own ways, which take texts such as
// "[a,b]" apart.
CLI::Option* addOperands(CLI::App& verb, const std::string& name, const std::string& description, OperandRule rule);

// An option with a value of any text; read it with operand(option, 0).
CLI::Option* addValueOption(CLI::App& verb, const std::string& names, const std::string& description,
                            const char* complete = Complete::nothing);

// The option --timeout.
CLI::Option* addTimeout(CLI::App& verb, const std::string& description);

// What it says: a number of seconds, also with a fraction, at most a day; otherwise, when it is not given. Nothing
// after it said that the text is no such number: that is wrong use.
std::optional<std::chrono::milliseconds> timeLimit(const Session& session, const CLI::Option* timeout,
                                                   std::chrono::milliseconds otherwise);

// An option without a value; see isGiven.
CLI::Option* addSwitch(CLI::App& verb, const std::string& names, const std::string& description);

// The option must be given.
void require(CLI::Option* option);

// Only one of the two may be given.
void excludeEachOther(CLI::Option* one, CLI::Option* other);

// Whether it was given; false for null.
bool isGiven(const CLI::Option* option);

// What was given for them, in order.
std::vector<std::string> operands(const CLI::Option* option);

// Number index of them; empty when there are fewer.
std::string operand(const CLI::Option* option, std::size_t index);

// What the verb does.
void onRun(CLI::App& verb, Session& session, std::function<ExitCode(Session&)> action);

// Which files a verb cannot do without. The others are as empty ones when they cannot be read.
enum class Needs { nothing, dataSources, drivers, bothFiles };

// What the verb does with what is configured; it fails first when a file that it needs cannot be read.
void onRead(CLI::App& verb, Session& session, Needs needs,
            std::function<ExitCode(Session&, const model::Configuration&)> action);

// Adds the global options and all commands.
void buildCommandLine(CLI::App& app, Session& session);

// Shows the dialogs until the user leaves and gives the program's exit code.
using ShowDialogs = ExitCode (*)();

// Reads the line and runs what it asks for. A line without a command asks for the dialogs, at most with --home and
// --no-color; null: there are none, and it is wrong use.
ExitCode runCommandLine(std::vector<std::string> arguments, ShowDialogs showDialogs = nullptr);

// Candidates for the last of words, which is what stands left of the cursor, a tab and a description behind each one:
// what the completion scripts of the shells call.
std::vector<std::string> candidates(const CLI::App& app, const std::vector<std::string>& words);

}  // namespace jx::cli
