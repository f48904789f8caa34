// One run of the command: the options that hold for every verb, and how a verb talks to its user.
#pragma once

#include <functional>
#include <initializer_list>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/cli/exit_code.h"
#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/file_change.h"
#include "odbcadmin/model/reason.h"

namespace jx::cli {

// Keys stay in the order in which they were put in. Whoever builds one includes <nlohmann/json.hpp>.
using Json = nlohmann::ordered_json;

// Session: made once in main, filled by the command line, handed to the verb that runs. A verb writes its result with
// print, printTable or printJson, says what it did with report, and what went wrong with fail; it returns its exit code
// and never ends the process itself. Not for more than one thread.
struct Session {
    // ---- global options ----
    bool json = false;         // --json
    bool dryRun = false;       // -n, --dry-run: print what would change as a unified diff
    bool check = false;        // --check: change nothing, exit 9 when something would change
    bool quiet = false;        // -q: no sentences about what was done, lists as bare names
    bool showSecrets = false;  // --show-secrets
    bool noColor = false;      // --no-color
    std::string home;          // --home DIR; already in force when a verb runs
    std::string owner;         // --owner USER; of files that root makes
    std::string lockTimeout;   // --lock-timeout SECONDS; already in force when a verb runs
    bool user = false;         // --user: the user's files only
    bool system = false;       // --system: the system's files only, and changes go there
    bool openSecrets = false;  // --open-secrets: also into a file of the system's that everybody may read
    std::string root;          // --root DIR; already in force when a verb runs

    // The command line, for a user who is to repeat it with more rights.
    std::vector<std::string> words;

    mutable bool hasPrintedJson = false;

    // What the chosen verb does; set while the command line is read.
    std::function<ExitCode(const Session&)> action;

    // Whether nothing may be written.
    bool writesNothing() const { return dryRun || check; }

    // Which files verbs look at.
    model::Scopes scopes() const;

    // Whether data sources of that scope are among them.
    bool isAbout(model::Scope scope) const { return scope == model::Scope::user ? !system : !user; }

    // The full path of the directory that --root names; empty without it.
    std::string imageRoot() const;

    // A path that a user gives for a library, as it is to be stored: in an image one that the shell completed begins
    // with the root's directory, which is not there once the image runs.
    std::string storedPath(const std::string& given) const;

    // How the model is to change files: what the options say, and a line on the terminal while a lock is waited for.
    model::ChangeWay way() const;

    // A value as it is shown: a secret is masked unless the options say otherwise.
    std::string shown(std::string_view key, std::string_view value) const;

    // Whether to colour what is written to standard output.
    bool colors() const;

    // A line of the result, on standard output.
    void print(std::string_view line) const;

    // Lines of a file, on standard output: as they are, but on a terminal with "?" for each control character.
    void printOfFile(std::string_view lines) const;

    // A line about what was done, on standard output; nothing with -q or --json.
    void say(std::string_view line) const;

    // Columns of equal width, two blanks apart; a row may have fewer cells. Line breaks and other control characters in
    // a cell are shown as "?".
    void printTable(const std::vector<std::vector<std::string>>& rows) const;

    // An object with "schema": "odbcadmin/1" before everything else, indented. Bytes that are not UTF-8 become U+FFFD.
    void printJson(const Json& object) const;

    // One line of fact and one of advice (none when empty), on standard error; with --json, if no object was printed
    // yet, also one on standard output: {"error": {"code", "fact", "advice"}}. Returns code.
    ExitCode fail(ExitCode code, std::string_view fact, std::string_view advice = {}) const;
    ExitCode fail(const model::Reason& reason) const;

    // What a verb that changes files says at its end: sentence, such as "Added data source Sales", or what would
    // change, or that nothing did; then the remarks as warnings; or the reason why it was not done. 9 when --check
    // asked and something would change. more: further members of the JSON object.
    ExitCode report(const model::ChangeResult& result, const std::string& sentence,
                    const std::vector<std::string>& remarks = {}) const;
    ExitCode report(const model::ChangeResult& result, const std::string& sentence,
                    const std::vector<std::string>& remarks, const Json& more) const;

    // The paths of the files that were changed, each once.
    static std::vector<std::string> pathsOf(const model::ChangeResult& result);

    // A line on standard error that does not stop anything; not with -q.
    void warn(std::string_view line) const;
};

}  // namespace jx::cli
