// Measures the durable write of one key, on the disk of the current directory.
#include <benchmark/benchmark.h>
#include <odbcinst.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "ini_files.h"
#include "peers.h"
#include "rounds.h"
#include "yardsticks.h"

namespace jx::bench {
namespace {

constexpr std::size_t kPeersTakePartEvery = 5;

std::string textOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Writes: each call gives a new value to one of the keys, which are spread over the file.
class Writes {
public:
    explicit Writes(const IniFile& file) : keys_(spread(file, 64)) { shuffle(keys_); }

    template <typename Write>
    double next(Write write) {
        const IniEntry& key = keys_[number_ % keys_.size()];
        const std::string value = "value " + std::to_string(100000 + number_++);
        Stopwatch watch;
        watch.start();
        const bool written = write(key, value);
        watch.stop();
        return written ? watch.nanoseconds() : kFailed;
    }

private:
    std::vector<IniEntry> keys_;
    std::size_t number_ = 0;
};

bool storeWrite(const IniEntry& key, const std::string& value) {
    return SQLWritePrivateProfileString(key.section.c_str(), key.key.c_str(), value.c_str(), kDataSourceFile) != 0;
}

// Replaces another file with the bytes that the store wrote last.
double writeSameBytes(const std::string& from, const std::string& to) {
    const std::string bytes = textOf(from);
    Stopwatch watch;
    watch.start();
    const bool written = replaceDurably(to, bytes);
    watch.stop();
    return written ? watch.nanoseconds() : kFailed;
}

// Flushing costs the same for every file; reading and editing cost more for a larger one.
double boundFor(std::size_t dataSources) {
    if (dataSources <= 100)
        return 1.15;
    return dataSources <= 1000 ? 1.25 : 1.5;
}

void writeKey(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const IniFile file = makeDataSources(count);
    const Folder home;
    home.becomeHome();
    const std::string storePath = home.file(kDataSourceFile);
    const std::string yardstickPath = home.file("yardstick.ini");
    Writes storeWrites(file);
    bool ready = putFile(storePath, file.text) && putFile(yardstickPath, file.text);
    Rounds rounds;
    rounds.add("store", [&] { return ready ? storeWrites.next(storeWrite) : kFailed; });
    rounds.add("W", [&] { return writeSameBytes(storePath, yardstickPath); });
    for (const Peer* peer : {&kGlib, &kSimpleIni}) {
        const std::string path = home.file(std::string(peer->name) + ".ini");
        ready = ready && putFile(path, file.text);
        const auto write = [path, peer](const IniEntry& key, const std::string& value) {
            return peer->write(path, key.section, key.key, value);
        };
        rounds.add(
            peer->name, [writes = Writes(file), write]() mutable { return writes.next(write); }, kPeersTakePartEvery);
    }
    rounds.run(state, boundFor(count));
}

BENCHMARK(writeKey)
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(201);

}  // namespace
}  // namespace jx::bench
