// Measures the command as its users run it, one process for each call: against git config on a file of the same size,
// and against limits in seconds.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "ini_files.h"
#include "rounds.h"

namespace jx::bench {
namespace {

using Words = std::vector<std::string>;

constexpr double kSecond = 1e9;
constexpr int kDone = 0;
constexpr int kFoundErrors = 10;

// The nanoseconds of one run, whose output goes nowhere; kFailed unless it ends with the exit code.
double runOnce(Words words, int wantedCode) {
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    Stopwatch watch;
    watch.start();
    pid_t child = 0;
    int status = 0;
    const bool ended = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0 &&
                       waitpid(child, &status, 0) == child;
    watch.stop();
    posix_spawn_file_actions_destroy(&actions);
    return ended && WIFEXITED(status) && WEXITSTATUS(status) == wantedCode ? watch.nanoseconds() : kFailed;
}

Words admin(Words words) {
    words.insert(words.begin(), JX_ODBCADMIN);
    return words;
}

Words git(const Folder& home, Words words) {
    words.insert(words.begin(), {"git", "config", "--file", home.file("git.ini")});
    return words;
}

// A file of git with the same sections and keys.
std::string gitText(const IniFile& file) {
    std::string text;
    const std::string* section = nullptr;
    for (const IniEntry& entry : file.entries) {
        if (section == nullptr || entry.section != *section)
            text.append("[dsn \"").append(entry.section).append("\"]\n");
        section = &entry.section;
        text.append("\t").append(entry.key).append(" = ").append(entry.value).append("\n");
    }
    return text.append(file.text.size() - std::min(file.text.size(), text.size()), '\n');
}

// Five drivers, which have the library that the data sources name.
std::string driversText() {
    std::string text = makeDrivers(5).text;
    for (std::size_t driver = 0; driver < 5; ++driver)
        if (const std::size_t at = text.find("libsample0000" + std::to_string(driver)); at != std::string::npos)
            text.replace(at, std::string("libsample00000").size(), "libsample");
    return text;
}

// A home with that many data sources.
bool fill(const Folder& home, const IniFile& sources) {
    home.becomeHome();
    setenv("GIT_CONFIG_NOSYSTEM", "1", 1);
    return putFile(home.file(kDataSourceFile), sources.text) && putFile(home.file(kDriverFile), driversText()) &&
           putFile(home.file("git.ini"), gitText(sources));
}

struct Comparison {
    Words words;     // of odbcadmin
    Words gitWords;  // of git config
    int code;
    double bound;
};

// A "%" in the words is the number of the call, so that each of them changes the file.
Words numbered(Words words, int number) {
    for (std::string& word : words)
        if (const std::size_t at = word.find('%'); at != std::string::npos)
            word.replace(at, 1, std::to_string(number));
    return words;
}

void compare(benchmark::State& state, const Comparison& comparison) {
    const Folder home;
    const bool isReady = fill(home, makeDataSources(static_cast<std::size_t>(state.range(0))));
    int number = 0;
    Rounds rounds;
    rounds.add("store", [&] {
        return isReady ? runOnce(numbered(admin(comparison.words), ++number), comparison.code) : kFailed;
    });
    rounds.add("git", [&] { return runOnce(numbered(git(home, comparison.gitWords), ++number), kDone); });
    rounds.run(state, comparison.bound);
}

constexpr double kLikeGit = 1.5;
constexpr double kThreeTimesGit = 3;
const Words kGetOfGit{"--get", "dsn.Orders 05006.Server"};

void commandGet(benchmark::State& state) {
    compare(state, {{"dsn", "get", "Orders 05006", "Server"}, kGetOfGit, kDone, kLikeGit});
}

void commandList(benchmark::State& state) {
    compare(state, {{"dsn", "list"}, {"--get-regexp", "^dsn\\..*\\.driver$"}, kDone, kLikeGit});
}

void commandSet(benchmark::State& state) {
    compare(state, {{"dsn", "set", "Orders 05006", "Port=%"}, {"dsn.Orders 05006.Port", "%"}, kDone, kLikeGit});
}

void commandLint(benchmark::State& state) {
    compare(state, {{"lint"}, kGetOfGit, kDone, kThreeTimesGit});
}

void commandDoctorName(benchmark::State& state) {
    compare(state, {{"doctor", "Orders 05006"}, kGetOfGit, kFoundErrors, kThreeTimesGit});
}

// ---- limits ----

// The first contender may take so long; its ratio to the limit is judged.
void limit(benchmark::State& state, const Work& work, double seconds) {
    Rounds rounds;
    rounds.add("store", work);
    rounds.add("limit", [seconds] { return seconds * kSecond; });
    rounds.run(state, 1);
}

void commandLintLines(benchmark::State& state) {
    const Folder home;
    const bool isReady = fill(home, makeDataSources(static_cast<std::size_t>(state.range(0))));
    limit(
        state, [&] { return isReady ? runOnce(admin({"lint"}), kDone) : kFailed; }, 1);
}

void commandDoctorLines(benchmark::State& state) {
    const Folder home;
    const bool isReady = fill(home, makeDataSources(static_cast<std::size_t>(state.range(0))));
    limit(
        state, [&] { return isReady ? runOnce(admin({"doctor"}), kFoundErrors) : kFailed; }, 1);
}

// A document of these data sources with their drivers, as export writes it.
bool makeDocument(const Folder& home, std::size_t dataSources) {
    const std::string line =
        std::string("'") + JX_ODBCADMIN + "' export --show-secrets > '" + home.file("all.json") + "'";
    return fill(home, makeDataSources(dataSources)) && std::system(line.c_str()) == 0;
}

void commandApply(benchmark::State& state) {
    const Folder home;
    const Folder elsewhere;
    const bool isReady = makeDocument(home, static_cast<std::size_t>(state.range(0)));
    const auto applying = [&] {
        std::error_code ignored;
        std::filesystem::remove(elsewhere.file(kDataSourceFile), ignored);
        std::filesystem::remove(elsewhere.file(kDriverFile), ignored);
        return isReady ? runOnce(admin({"apply", "-f", home.file("all.json"), "--home", elsewhere.path()}), kDone)
                       : kFailed;
    };
    limit(state, applying, 3);
}

// A script whose drivers have their libraries, which are copies of nothing.
bool makeScript(const Folder& home, std::size_t drivers) {
    std::string names = "[ODBC Drivers]\n";
    std::string sections;
    bool isMade = fill(home, makeDataSources(10));
    for (std::size_t driver = 0; driver < drivers; ++driver) {
        const std::string name = "Script Driver " + std::to_string(driver);
        const std::string library = "libscript" + std::to_string(driver) + ".so";
        names.append("\"").append(name).append("\"=\n");
        sections.append("\n[").append(name).append("]\n\"Driver\"=1,").append(library);
        sections.append(",,,,2024-03-15,,,NEWER,,,,,,,48211,,,,02.50.00.1234,\n");
        isMade = isMade && putFile(home.file(library), "");
    }
    return isMade && putFile(home.file("odbc.inf"), names + sections);
}

void commandInstallPreview(benchmark::State& state) {
    const Folder home;
    const bool isReady = makeScript(home, static_cast<std::size_t>(state.range(0)));
    limit(
        state,
        [&] {
            return isReady ? runOnce(admin({"install", home.file("odbc.inf"), "--dry-run"}), kDone) : kFailed;
        },
        0.5);
}

BENCHMARK(commandGet)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(31);
BENCHMARK(commandList)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(31);
BENCHMARK(commandSet)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(31);
BENCHMARK(commandLint)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);
BENCHMARK(commandDoctorName)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);
BENCHMARK(commandLintLines)->Arg(20000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(commandDoctorLines)->Arg(20000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(commandApply)->Arg(16000)->Arg(40000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(commandInstallPreview)->Arg(200)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace jx::bench
