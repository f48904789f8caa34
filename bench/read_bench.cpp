// Measures reads of an unchanged file, of a changed one and of the list of names, and the memory of a large file.
#include <benchmark/benchmark.h>
#include <jxprofile.h>
#include <malloc.h>
#include <odbcinst.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "ini_files.h"
#include "peers.h"
#include "rounds.h"
#include "yardsticks.h"

namespace jx::bench {
namespace {

constexpr double kWarmBound = 1.25;
constexpr double kEachOnceBound = 1.5;  // of a file with so many keys that the first look-up weighs nothing
constexpr double kChangedBound = 0.6;
constexpr double kMemoryBound = 4;
constexpr std::size_t kCallsInRound = 200;

// Only few calls of the other libraries: one may take as long as a hundred thousand of the store's.
constexpr std::size_t kPeersTakePartEvery = 50;

const Peer* const kPeers[] = {&kGlib, &kSimpleIni};

using Buffer = std::array<char, 1024>;

std::size_t storeRead(const IniEntry& entry, const char* file, Buffer& buffer) {
    const int length = SQLGetPrivateProfileString(entry.section.c_str(), entry.key.c_str(), "", buffer.data(),
                                                  static_cast<int>(buffer.size()), file);
    return static_cast<std::size_t>(length);
}

bool storeReads(const IniEntry& entry, const char* file) {
    Buffer buffer;
    const std::size_t length = storeRead(entry, file, buffer);
    return std::string_view(buffer.data(), length) == entry.value;
}

std::size_t peerCalls(std::size_t dataSources) {
    return std::clamp<std::size_t>(1000 / dataSources, 1, 20);
}

// ---- an unchanged file ----

// Question: one read, prepared for each contender.
struct Question {
    IniEntry entry;
    const char* file;
    const HashIndex* index;
    std::string indexName;
    std::string path;
};

// WarmFiles: both files in a home folder, and questions alternating between them, for keys spread over both.
class WarmFiles {
public:
    explicit WarmFiles(std::size_t count)
        : dataSources_(makeDataSources(count)),
          drivers_(makeDrivers(count)),
          dataSourceIndex_(home_.file(kDataSourceFile), dataSources_),
          driverIndex_(home_.file(kDriverFile), drivers_) {
        constexpr std::size_t kKeysOfEach = 100;  // few enough that the questions themselves stay in the cache
        home_.becomeHome();
        std::vector<IniEntry> asked = spread(dataSources_, kKeysOfEach);
        std::vector<IniEntry> askedDrivers = spread(drivers_, kKeysOfEach);
        shuffle(asked);
        shuffle(askedDrivers);
        for (std::size_t i = 0; i < asked.size(); ++i) {
            add(asked[i], kDataSourceFile, dataSourceIndex_);
            add(askedDrivers[i], kDriverFile, driverIndex_);
        }
    }

    bool write() const {
        const bool written =
            putFile(home_.file(kDataSourceFile), dataSources_.text) && putFile(home_.file(kDriverFile), drivers_.text);
        letFilesSettle();
        return written;
    }

    const IniFile& dataSources() const { return dataSources_; }
    const std::vector<Question>& questions() const { return questions_; }
    std::string dataSourcePath() const { return home_.file(kDataSourceFile); }

private:
    void add(const IniEntry& entry, const char* file, const HashIndex& index) {
        questions_.push_back({entry, file, &index, HashIndex::nameOf(entry), home_.file(file)});
    }

    Folder home_;
    IniFile dataSources_;
    IniFile drivers_;
    HashIndex dataSourceIndex_;
    HashIndex driverIndex_;
    std::vector<Question> questions_;
};

bool storeAnswersAll(const std::vector<Question>& questions) {
    return std::all_of(questions.begin(), questions.end(),
                       [](const Question& question) { return storeReads(question.entry, question.file); });
}

// Asking: the work of one contender in a round: the next few questions, in the same order for every contender. Few, so
// that most rounds are not interrupted by another program.
template <typename Ask>
class Asking {
public:
    Asking(const std::vector<Question>& questions, std::size_t calls, Ask ask)
        : questions_(questions), calls_(calls), ask_(std::move(ask)) {}

    double operator()() {
        bool answered = true;
        Stopwatch watch;
        watch.start();
        for (std::size_t i = 0; i < calls_; ++i) {
            answered &= ask_(questions_[next_]);
            next_ = next_ + 1 < questions_.size() ? next_ + 1 : 0;
        }
        watch.stop();
        return answered ? watch.nanoseconds() / static_cast<double>(calls_) : kFailed;
    }

private:
    const std::vector<Question>& questions_;
    std::size_t calls_;
    Ask ask_;
    std::size_t next_ = 0;
};

bool askStore(const Question& question) {
    Buffer buffer;
    const std::size_t length = storeRead(question.entry, question.file, buffer);
    benchmark::DoNotOptimize(buffer.data());
    benchmark::ClobberMemory();
    return length == question.entry.value.size();
}

bool askIndex(const Question& question) {
    const std::string* value = question.index->find(question.indexName);
    return value != nullptr && value->size() == question.entry.value.size();
}

bool askPeer(const Peer& peer, const Question& question) {
    std::string value;
    return peer.read(question.path, question.entry.section, question.entry.key, value) && value == question.entry.value;
}

void readUnchanged(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const WarmFiles files(count);
    if (!files.write() || !storeAnswersAll(files.questions())) {
        state.SkipWithError("the store does not answer");
        return;
    }
    Rounds rounds;
    rounds.add("store", Asking(files.questions(), kCallsInRound, askStore));
    rounds.add("S", Asking(files.questions(), kCallsInRound, askIndex));
    for (const Peer* peer : kPeers) {
        const auto ask = [peer](const Question& question) { return askPeer(*peer, question); };
        rounds.add(peer->name, Asking(files.questions(), peerCalls(count), ask), kPeersTakePartEvery);
    }
    rounds.run(state, kWarmBound);
}

// A new thread has no file in its cache; its first pass over all keys shows the cost of the first read of a key.
double askEveryKeyOnce(const IniFile& file) {
    double time = kFailed;
    std::thread([&time, &file] {
        Buffer buffer;
        bool answered = true;
        Stopwatch watch;
        watch.start();
        for (const IniEntry& entry : file.entries)
            answered &= storeRead(entry, kDataSourceFile, buffer) == entry.value.size();
        watch.stop();
        if (answered)
            time = watch.nanoseconds() / static_cast<double>(file.entries.size());
    }).join();
    return time;
}

void readEveryKeyOnce(benchmark::State& state) {
    const WarmFiles files(static_cast<std::size_t>(state.range(0)));
    if (!files.write()) {
        state.SkipWithError("the files could not be written");
        return;
    }
    Rounds rounds;
    rounds.add("store", [&files] { return askEveryKeyOnce(files.dataSources()); });
    rounds.add("S", Asking(files.questions(), kCallsInRound, askIndex));
    rounds.run(state, state.range(0) == 10'000 ? kEachOnceBound : 0);
}

// ---- a changed file ----

// ChangingFile: .odbc.ini, which becomes another file at each change, with the same keys and another text.
class ChangingFile {
public:
    explicit ChangingFile(std::size_t count) : file_(makeDataSources(count)) {
        home_.becomeHome();
        ready_ = putFile(state(0), withComment("# one\n")) && putFile(state(1), withComment("# two\n")) && change();
    }

    bool ready() const { return ready_; }
    const IniFile& file() const { return file_; }
    std::string path() const { return home_.file(kDataSourceFile); }

    // Replaces the file by the one with the other text: same size, another inode, the time of now; nothing is copied.
    bool change() {
        const std::string beside = home_.file("beside");
        turn_ = 1 - turn_;
        return link(state(turn_).c_str(), beside.c_str()) == 0 && rename(beside.c_str(), path().c_str()) == 0;
    }

private:
    std::string state(int number) const { return home_.file("state" + std::to_string(number)); }

    // The text with a line in its middle that differs between the states.
    std::string withComment(const char* comment) const {
        std::string text = file_.text;
        return text.insert(text.find("\n\n", text.size() / 2) + 1, comment);
    }

    Folder home_;
    IniFile file_;
    int turn_ = 0;
    bool ready_ = false;
};

// One read of each key, with a change of the file before each; read returns whether the value was right.
template <typename Read>
double readChanged(ChangingFile& file, const std::vector<IniEntry>& keys, Read read) {
    Stopwatch watch;
    std::string value;
    for (const IniEntry& key : keys) {
        if (!file.change())
            return kFailed;
        watch.start();
        const bool found = read(key, value);
        watch.stop();
        if (!found || value != key.value)
            return kFailed;
    }
    return watch.nanoseconds() / static_cast<double>(keys.size());
}

bool storeReadInto(const IniEntry& key, std::string& value) {
    Buffer buffer;
    value.assign(buffer.data(), storeRead(key, kDataSourceFile, buffer));
    return true;
}

void readAfterChange(benchmark::State& state) {
    constexpr std::size_t kKeys = 16;
    const auto count = static_cast<std::size_t>(state.range(0));
    ChangingFile file(count);
    const std::vector<IniEntry> keys = spread(file.file(), kKeys);
    const std::vector<IniEntry> peerKeys = spread(file.file(), std::min(kKeys, peerCalls(count)));
    const std::string path = file.path();
    Rounds rounds;
    rounds.add("store", [&] { return file.ready() ? readChanged(file, keys, storeReadInto) : kFailed; });
    rounds.add("P", [&] {
        return readChanged(file, keys, [&path](const IniEntry& key, std::string& value) {
            return passOverFile(path, key.section, key.key, value);
        });
    });
    for (const Peer* peer : kPeers) {
        const auto read = [&path, peer](const IniEntry& key, std::string& value) {
            return peer->read(path, key.section, key.key, value);
        };
        rounds.add(
            peer->name, [&file, &peerKeys, read] { return readChanged(file, peerKeys, read); },
            kPeersTakePartEvery / 5);
    }
    constexpr std::size_t kBoundHoldsFrom = 100;
    rounds.run(state, count >= kBoundHoldsFrom ? kChangedBound : 0);
}

// ---- the list of data source names ----

constexpr int kListCalls = 100;

// ShiftingBuffer: a buffer at another address each time. The speed of a copy depends on the addresses of source and
// target; many addresses even that out for all contenders.
class ShiftingBuffer {
public:
    explicit ShiftingBuffer(std::size_t size) : bytes_(size + kPlaces * kStep), size_(size) {}

    std::span<unsigned char> next() {
        place_ = (place_ + 1) % kPlaces;
        return std::span(bytes_).subspan(place_ * kStep, size_);
    }

private:
    static constexpr std::size_t kPlaces = 61;
    static constexpr std::size_t kStep = 4096 / 64 + 3;

    std::vector<unsigned char> bytes_;
    std::size_t size_;
    std::size_t place_ = 0;
};

template <typename List>
double listNames(int calls, List list) {
    bool listed = true;
    Stopwatch watch;
    watch.start();
    for (int i = 0; i < calls; ++i) {
        listed &= list();
        benchmark::ClobberMemory();
    }
    watch.stop();
    return listed ? watch.nanoseconds() / calls : kFailed;
}

// Through the utility library: the installer's function takes sizes up to 32767 only.
int storeList(std::span<unsigned char> buffer) {
    const auto* section = reinterpret_cast<const unsigned char*>(kDataSourceList);
    const auto* file = reinterpret_cast<const unsigned char*>(kDataSourceFile);
    return jxGetPrivateProfileString(section, nullptr, nullptr, buffer.data(), static_cast<int>(buffer.size()), file);
}

void listUnchanged(benchmark::State& state) {
    const WarmFiles files(static_cast<std::size_t>(state.range(0)));
    const std::string& names = files.dataSources().names;
    const std::string path = files.dataSourcePath();
    std::vector<unsigned char> listed(names.size() + 1);
    std::string peerNames;
    if (!files.write() || storeList(listed) != static_cast<int>(names.size()) ||
        !std::equal(names.begin(), names.end(), listed.begin())) {
        state.SkipWithError("the store does not list the names");
        return;
    }
    ShiftingBuffer buffer(listed.size());
    const auto copy = [&] { return statAndCopy(path, names, reinterpret_cast<char*>(buffer.next().data())); };
    const auto list = [&] { return storeList(buffer.next()) == static_cast<int>(names.size()); };
    const auto onlyCopy = [&] {
        std::copy(names.begin(), names.end(), buffer.next().begin());
        return true;
    };
    Rounds rounds;
    rounds.add("store", [&] { return listNames(kListCalls, list); });
    rounds.add("S", [&] { return listNames(kListCalls, copy); });
    rounds.add("copy", [&] { return listNames(kListCalls, onlyCopy); });
    for (const Peer* peer : kPeers) {
        const auto peerList = [&path, &peerNames, &names, peer] {
            return peer->list(path, kDataSourceList, peerNames) && peerNames == names;
        };
        rounds.add(
            peer->name, [peerList] { return listNames(1, peerList); }, kPeersTakePartEvery);
    }
    rounds.run(state, kWarmBound);
}

// ---- memory ----

std::size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

struct Growth {
    std::size_t first = 0;    // after one read
    std::size_t all = 0;      // after every key and the list were read
    std::size_t changed = 0;  // after the same for the file's next state
};

bool readAll(const IniFile& file, std::vector<unsigned char>& listBuffer) {
    Buffer buffer;
    bool answered = storeList(listBuffer) == static_cast<int>(file.names.size());
    for (const IniEntry& entry : file.entries)
        answered &= storeRead(entry, kDataSourceFile, buffer) == entry.value.size();
    return answered;
}

// False when a read failed. Runs in a new thread, whose cache is empty.
bool readAndMeasure(ChangingFile& file, Growth& growth) {
    std::vector<unsigned char> listBuffer(file.file().names.size() + 1);
    Buffer buffer;
    storeRead({"none", "none", ""}, "no such file", buffer);
    letFilesSettle();
    const std::size_t before = heapInUse();
    storeRead(file.file().entries.back(), kDataSourceFile, buffer);
    growth.first = heapInUse() - before;
    bool fine = readAll(file.file(), listBuffer);
    growth.all = heapInUse() - before;
    fine &= file.change();
    letFilesSettle();
    fine &= readAll(file.file(), listBuffer);
    growth.changed = heapInUse() - before;
    return fine;
}

void memoryOfFile(benchmark::State& state) {
    ChangingFile file(static_cast<std::size_t>(state.range(0)));
    const auto size = static_cast<double>(file.file().text.size());
    Growth growth;
    bool fine = file.ready();
    for (auto _ : state)
        std::thread([&] { fine = fine && readAndMeasure(file, growth); }).join();
    if (!fine)
        state.SkipWithError("the store does not answer");
    state.counters["file_bytes"] = size;
    state.counters["first_bytes"] = static_cast<double>(growth.first);
    state.counters["all_bytes"] = static_cast<double>(growth.all);
    state.counters["changed_bytes"] = static_cast<double>(growth.changed);
    state.counters["ratio"] = static_cast<double>(std::max({growth.first, growth.all, growth.changed})) / size;
    state.counters["bound"] = kMemoryBound;
}

void forEverySize(benchmark::internal::Benchmark* registered) {
    registered->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->UseManualTime()->Unit(benchmark::kMicrosecond);
}

// Other programs easily disturb measurements of microseconds.
void severalTimes(benchmark::internal::Benchmark* registered) {
    registered->Repetitions(3)->ReportAggregatesOnly();
}

BENCHMARK(readUnchanged)->Apply(forEverySize)->Iterations(1001)->Apply(severalTimes);
BENCHMARK(readAfterChange)->Apply(forEverySize)->Iterations(201)->Apply(severalTimes);
BENCHMARK(listUnchanged)->Apply(forEverySize)->Iterations(1001)->Apply(severalTimes);
BENCHMARK(readEveryKeyOnce)->Apply(forEverySize)->Iterations(21);
BENCHMARK(memoryOfFile)->Arg(10000)->Iterations(1);

}  // namespace
}  // namespace jx::bench
