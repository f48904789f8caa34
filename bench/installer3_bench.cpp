// Measures look-ups of libodbcinst.so.2, which asks the user's file and then the system's.
#include <benchmark/benchmark.h>
#include <jxodbc3/odbcinst.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "ini_files.h"
#include "rounds.h"
#include "yardsticks.h"

namespace jx::bench {
namespace {

constexpr double kLookUpBound = 1.4;
constexpr double kConnectionBound = 120;  // times stat: 60 us where that takes 0.5 us
constexpr std::size_t kCallsInRound = 200;
constexpr std::size_t kKeys = 100;
constexpr char kSystemFile[] = "odbc.ini";

using Buffer = std::array<char, 1024>;

// ScopedFiles: a user's file and a system's with different data sources.
class ScopedFiles {
public:
    explicit ScopedFiles(std::size_t count)
        : users_(makeDataSources(count)),
          systems_(makeDrivers(count)),
          userIndex_(user_.file(kDataSourceFile), users_),
          systemIndex_(system_.file(kSystemFile), systems_) {
        user_.becomeHome();
        setenv("ODBCSYSINI", std::filesystem::absolute(system_.path()).c_str(), 1);
        unsetenv("ODBCINI");
        unsetenv("JXODBC_LOG");
    }
    ~ScopedFiles() { unsetenv("ODBCSYSINI"); }
    ScopedFiles(const ScopedFiles&) = delete;
    ScopedFiles& operator=(const ScopedFiles&) = delete;

    bool write() const {
        const bool written =
            putFile(user_.file(kDataSourceFile), users_.text) && putFile(system_.file(kSystemFile), systems_.text);
        letFilesSettle();
        return written;
    }

    std::string userPath() const { return user_.file(kDataSourceFile); }
    const IniFile& users() const { return users_; }
    const IniFile& systems() const { return systems_; }
    const HashIndex& userIndex() const { return userIndex_; }
    const HashIndex& systemIndex() const { return systemIndex_; }

private:
    Folder user_;
    Folder system_;
    IniFile users_;
    IniFile systems_;
    HashIndex userIndex_;
    HashIndex systemIndex_;
};

// Question: one look-up, prepared for both contenders.
struct Question {
    IniEntry entry;
    std::string indexName;
};

std::vector<Question> questionsOf(std::vector<IniEntry> entries) {
    shuffle(entries);
    std::vector<Question> questions;
    for (IniEntry& entry : entries) {
        std::string name = HashIndex::nameOf(entry);
        questions.push_back({std::move(entry), std::move(name)});
    }
    return questions;
}

bool askStore(const Question& question) {
    Buffer buffer;
    const int length = SQLGetPrivateProfileString(question.entry.section.c_str(), question.entry.key.c_str(), "",
                                                  buffer.data(), static_cast<int>(buffer.size()), "odbc.ini");
    benchmark::DoNotOptimize(buffer.data());
    return static_cast<std::size_t>(length) == question.entry.value.size();
}

// The work of one contender in a round: the next few questions.
template <class Ask>
auto asking(const std::vector<Question>& questions, Ask ask) {
    return [&questions, ask, next = std::size_t{0}]() mutable {
        bool answered = true;
        Stopwatch watch;
        watch.start();
        for (std::size_t i = 0; i < kCallsInRound; ++i) {
            answered &= ask(questions[next]);
            next = next + 1 < questions.size() ? next + 1 : 0;
        }
        watch.stop();
        return answered ? watch.nanoseconds() / static_cast<double>(kCallsInRound) : kFailed;
    };
}

template <class Ask>
void compare(benchmark::State& state, const ScopedFiles& files, const std::vector<Question>& questions, Ask yardstick) {
    if (!files.write() || !std::all_of(questions.begin(), questions.end(), askStore)) {
        state.SkipWithError("the library does not answer");
        return;
    }
    Rounds rounds;
    rounds.add("store", asking(questions, askStore));
    rounds.add("S", asking(questions, yardstick));
    rounds.run(state, kLookUpBound);
}

void lookUpOfTheUsers(benchmark::State& state) {
    const ScopedFiles files(static_cast<std::size_t>(state.range(0)));
    const std::vector<Question> questions = questionsOf(spread(files.users(), kKeys));
    compare(state, files, questions, [&](const Question& question) {
        const std::string* value = files.userIndex().find(question.indexName);
        return value != nullptr && value->size() == question.entry.value.size();
    });
}

// One stat of each file: a data source of the system is looked for in the user's file first.
bool askBoth(const ScopedFiles& files, const Question& question, bool isThere) {
    struct stat state {};
    if (stat(files.userPath().c_str(), &state) != 0)
        return false;
    return (files.systemIndex().find(question.indexName) != nullptr) == isThere;
}

void lookUpOfTheSystems(benchmark::State& state) {
    const ScopedFiles files(static_cast<std::size_t>(state.range(0)));
    const std::vector<Question> questions = questionsOf(spread(files.systems(), kKeys));
    compare(state, files, questions,
            [&](const Question& question) { return askBoth(files, question, /*isThere=*/true); });
}

void lookUpOfNeither(benchmark::State& state) {
    const ScopedFiles files(static_cast<std::size_t>(state.range(0)));
    std::vector<IniEntry> entries = spread(files.systems(), kKeys);
    for (IniEntry& entry : entries) {
        entry.section += " that nobody has";
        entry.value.clear();
    }
    const std::vector<Question> questions = questionsOf(std::move(entries));
    compare(state, files, questions,
            [&](const Question& question) { return askBoth(files, question, /*isThere=*/false); });
}

// What PostgreSQL's driver asks for in one connection, in its order.
constexpr const char* kDriversKeys[] = {"Logdir", "Debug", "CommLog"};
constexpr const char* kConnectionsKeys[] = {"Driver",
                                            "Description",
                                            "Servername",
                                            "Database",
                                            "Username",
                                            "Password",
                                            "Port",
                                            "Debug",
                                            "CommLog",
                                            "ReadOnly",
                                            "ShowOidColumn",
                                            "FakeOidIndex",
                                            "RowVersioning",
                                            "ShowSystemTables",
                                            "Protocol",
                                            "ConnSettings",
                                            "pqopt",
                                            "TranslationDLL",
                                            "TranslationOption",
                                            "UpdatableCursors",
                                            "LFConversion",
                                            "TrueIsMinus1",
                                            "BI",
                                            "D6",
                                            "OptionalErrors",
                                            "ByteaAsLongVarBinary",
                                            "UseServerSidePrepare",
                                            "LowerCaseIdentifier",
                                            "KeepaliveTime",
                                            "KeepaliveInterval",
                                            "BatchSize",
                                            "IgnoreTimeout",
                                            "SSLmode",
                                            "FetchRefcursors",
                                            "AB",
                                            "Fetch",
                                            "UniqueIndex",
                                            "UnknownSizes",
                                            "Lie",
                                            "Parse",
                                            "UseDeclareFetch",
                                            "MaxVarcharSize",
                                            "MaxLongVarcharSize",
                                            "TextAsLongVarchar",
                                            "UnknownsAsLongVarchar",
                                            "BoolsAsChar",
                                            "ExtraSysTablePrefixes"};

double connectionsLookUps(const std::string& section) {
    Buffer buffer;
    int found = 0;
    Stopwatch watch;
    watch.start();
    for (const char* key : kDriversKeys)
        found +=
            SQLGetPrivateProfileString("PostgreSQL Unicode", key, "", buffer.data(), buffer.size(), "odbcinst.ini");
    for (const char* key : kConnectionsKeys)
        found += SQLGetPrivateProfileString(section.c_str(), key, "", buffer.data(), buffer.size(), ".odbc.ini");
    watch.stop();
    return found > 0 ? watch.nanoseconds() : kFailed;
}

void lookUpsOfAConnection(benchmark::State& state) {
    const ScopedFiles files(static_cast<std::size_t>(state.range(0)));
    const std::string section = files.users().entries.back().section;
    const std::string path = files.userPath();
    if (!files.write()) {
        state.SkipWithError("no files");
        return;
    }
    Rounds rounds;
    rounds.add("store", [&] { return connectionsLookUps(section); });
    rounds.add("stat", [&] {
        struct stat file {};
        bool isThere = true;
        Stopwatch watch;
        watch.start();
        for (std::size_t i = 0; i < kCallsInRound; ++i)
            isThere &= stat(path.c_str(), &file) == 0;
        watch.stop();
        return isThere ? watch.nanoseconds() / static_cast<double>(kCallsInRound) : kFailed;
    });
    rounds.run(state, kConnectionBound);
}

void forEverySize(benchmark::internal::Benchmark* registered) {
    registered->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->UseManualTime()->Unit(benchmark::kMicrosecond);
    registered->Iterations(1001)->Repetitions(3)->ReportAggregatesOnly();
}

BENCHMARK(lookUpOfTheUsers)->Apply(forEverySize);
BENCHMARK(lookUpOfTheSystems)->Apply(forEverySize);
BENCHMARK(lookUpOfNeither)->Apply(forEverySize);
BENCHMARK(lookUpsOfAConnection)->Apply(forEverySize);

}  // namespace
}  // namespace jx::bench
