// Measures batch installations: how reading a script grows with it, and what installing adds to its durable writes.
#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <jxmemory.h>
#include <jxprofile.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

#include "config/text_bytes.h"
#include "ini_files.h"
#include "install/batch_installation.h"
#include "install/installation_paths.h"
#include "install/item_installation.h"
#include "install/script_entries.h"
#include "install/script_items.h"
#include "rounds.h"
#include "yardsticks.h"

namespace {

using jx::asBytes;
using jx::bench::Folder;
using jx::bench::kDataSourceFile;
using jx::bench::kDriverFile;
using jx::bench::Rounds;
using jx::bench::Stopwatch;

constexpr double kFailed = -1;
constexpr std::size_t kFilesOfADriver = 20;

// ---- a script, and the list of its drivers for a caller ----

struct Script {
    std::string text;
    std::string drivers;
};

std::string driverName(std::size_t number) {
    return "Sample Driver " + std::to_string(1000 + number);
}

std::string roleOf(std::size_t file) {
    if (file < 2)
        return file == 0 ? "Driver" : "Setup";
    return "File" + std::to_string(file);
}

void addFiles(std::string& text, std::size_t driver) {
    for (std::size_t file = 0; file < kFilesOfADriver; ++file) {
        text.append("\"").append(roleOf(file)).append("\"=1,libsample").append(std::to_string(1000 + driver));
        text.append("_").append(std::to_string(file));
        text.append(".so,,,,2024-03-15,,,NEWER,,,,,,,48211,,,,02.50.00.1234,\n");
    }
}

Script makeScript(std::size_t drivers) {
    Script script;
    script.text = "[ODBC Drivers]\n";
    for (std::size_t driver = 0; driver < drivers; ++driver)
        script.text.append("\"").append(driverName(driver)).append("\"=\n");
    for (std::size_t driver = 0; driver < drivers; ++driver) {
        const std::string name = driverName(driver);
        script.text.append("\n[").append(name).append("]\n");
        addFiles(script.text, driver);
        script.text.append("\n[").append(name).append(
            "-Keys]\nAPILevel=2\nConnectFunctions=YYN\nDriverODBCVer=02.50\n");
        script.text.append("FileUsage=0\nFileExtns=*.dat\nSQLLevel=1\n");
        script.drivers += name;
        script.drivers += '\0';
    }
    return script;
}

// ---- one run's record ----

class Run {
public:
    explicit Run(const std::string& script) {
        ready_ = jx::install::InstallInit(0, record_, nullptr, nullptr) == 0 &&
                 jx::install::takePaths(*record_, asBytes(script.c_str()), nullptr);
    }
    ~Run() {
        jx::install::InstallTerm(record_);
        ramFree(record_);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    // Everything a batch installation reads; false unless all of it was there.
    bool read(std::string drivers) {
        namespace install = jx::install;
        if (!ready_ || install::PlaceDriversToBeInstalledInInstallStruct(record_, asBytes(drivers.data())) != 0 ||
            install::GetTheDriverKeys(record_) != 0 ||
            install::PlaceTranslatorsToBeInstalledInInstallStruct(record_) != 0 ||
            install::GetTheNonDriverItems(record_) != 0 || install::GetTheOdbcInfEntriesForEachItem(record_) != 0)
            return false;
        bool whole = record_->itemCount > 0;
        for (jx::install::InstallItem& item : itemsOf(*record_)) {
            item.selected = 1;
            whole = whole && item.entryCount == kFilesOfADriver && item.driverKeys[0] != nullptr;
        }
        return whole;
    }

    jx::install::_Install* record() { return record_; }

private:
    jx::install::_Install* record_ = nullptr;
    bool ready_ = false;
};

// ---- reading ----

// The time of reading a script that did not change since the first read.
jx::bench::Work readingOf(const Folder& folder, const std::string& name, std::size_t drivers) {
    const auto script = std::make_shared<Script>(makeScript(drivers));
    const std::string path = folder.file(name + ".inf");
    const bool ready = jx::bench::putFile(path, script->text);
    return [script, path, ready] {
        Run run(path);
        Stopwatch watch;
        watch.start();
        const bool read = ready && run.read(script->drivers);
        watch.stop();
        return read ? watch.nanoseconds() : kFailed;
    };
}

// Four times the drivers may take five times as long; the smaller scripts have no bound.
void readScript(benchmark::State& state) {
    const Folder folder;
    const auto drivers = static_cast<std::size_t>(state.range(0));
    Rounds rounds;
    rounds.add("store", readingOf(folder, "measured", drivers));
    rounds.add("fifty", readingOf(folder, "fifty", 50));
    jx::bench::letFilesSettle();
    constexpr double kLinearWithRoom = 5;
    rounds.run(state, drivers == 200 ? kLinearWithRoom : 0);
}

// ---- installing ----

// While an installation is measured, each of its writes is followed by a durable write of the same bytes to another
// file, on another stopwatch.
class WriteForWrite {
public:
    explicit WriteForWrite(const Folder& home) : home_(home) { current_ = this; }
    ~WriteForWrite() { current_ = nullptr; }
    WriteForWrite(const WriteForWrite&) = delete;
    WriteForWrite& operator=(const WriteForWrite&) = delete;

    static WriteForWrite* current() { return current_; }

    // Whether the last write changed its file.
    void follow(const std::string& name) {
        installing.stop();
        struct stat state {};
        const std::string path = home_.file(name);
        if (stat(path.c_str(), &state) == 0 && isNew(name, state)) {
            std::ifstream in(path, std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
            writing.start();
            fine = jx::bench::replaceDurably(home_.file("yardstick of " + name), bytes) && fine;
            writing.stop();
            ++writes;
        }
        installing.start();
    }

    Stopwatch installing;
    Stopwatch writing;
    std::size_t writes = 0;
    bool fine = true;

private:
    bool isNew(const std::string& name, const struct stat& state) {
        struct stat& last = last_[name == kDriverFile ? 1 : 0];
        const bool same = last.st_ino == state.st_ino && last.st_size == state.st_size &&
                          last.st_mtim.tv_sec == state.st_mtim.tv_sec && last.st_mtim.tv_nsec == state.st_mtim.tv_nsec;
        last = state;
        return !same;
    }

    static WriteForWrite* current_;
    const Folder& home_;
    struct stat last_[2]{};
};

WriteForWrite* WriteForWrite::current_ = nullptr;

// Both sides of the comparison come from one run, made by the first of the two calls.
class Installation {
public:
    explicit Installation(std::size_t drivers) : script_(makeScript(drivers)) {}

    double installing() { return take(installing_); }
    double writing() { return take(writing_); }

private:
    double take(double& time) {
        if (time == 0)
            run();
        return std::exchange(time, 0);
    }

    void run() {
        const Folder home;
        home.becomeHome();
        Run run(home.file("odbc.inf"));
        installing_ = writing_ = kFailed;
        if (!jx::bench::putFile(home.file("odbc.inf"), script_.text) || !run.read(script_.drivers))
            return;
        WriteForWrite pair(home);
        pair.installing.start();
        jx::install::InstallItems(0, run.record());
        pair.installing.stop();
        if (!pair.fine || pair.writes == 0)
            return;
        installing_ = pair.installing.nanoseconds();
        writing_ = pair.writing.nanoseconds();
    }

    Script script_;
    double installing_ = 0;
    double writing_ = 0;
};

void installScript(benchmark::State& state) {
    Installation installation(static_cast<std::size_t>(state.range(0)));
    Rounds rounds;
    rounds.add("store", [&] { return installation.installing(); });
    rounds.add("W", [&] { return installation.writing(); });
    constexpr double kWritesAndLittleElse = 1.2;
    rounds.run(state, kWritesAndLittleElse);
}

BENCHMARK(readScript)->Arg(50)->Arg(100)->Arg(200)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(101);
BENCHMARK(installScript)->Arg(50)->Arg(100)->Arg(200)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

using ProfileWrite = int (*)(const unsigned char*, const unsigned char*, const unsigned char*, const unsigned char*);

}  // namespace

// The installation calls this one: the program's definition is found before the library's.
JX_EXPORT int jxWritePrivateProfileString(const unsigned char* section, const unsigned char* key,
                                          const unsigned char* value, const unsigned char* file) {
    static const auto write =
        reinterpret_cast<ProfileWrite>(dlsym(RTLD_NEXT, "_Z27jxWritePrivateProfileStringPKhS0_S0_S0_"));
    const int result = write(section, key, value, file);
    if (WriteForWrite* pair = WriteForWrite::current(); pair != nullptr)
        pair->follow(jx::asChars(file));
    return result;
}
