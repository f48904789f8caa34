// Measures batch installations: how reading a script grows with it, and how many durable writes installing takes.
#include <benchmark/benchmark.h>
#include <jxmemory.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>

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

// Enters the drivers of a script that was read before in an empty home.
double installScriptOnce(const Script& script) {
    const Folder home;
    home.becomeHome();
    Run run(home.file("odbc.inf"));
    if (!jx::bench::putFile(home.file("odbc.inf"), script.text) || !run.read(script.drivers))
        return kFailed;
    Stopwatch watch;
    watch.start();
    jx::install::InstallItems(0, run.record());
    watch.stop();
    return run.record()->anyFileInstalled != 0 ? watch.nanoseconds() : kFailed;
}

// What the installation of the script leaves in the file of drivers.
std::string installedText(const Script& script) {
    const Folder home;
    home.becomeHome();
    Run run(home.file("odbc.inf"));
    if (!jx::bench::putFile(home.file("odbc.inf"), script.text) || !run.read(script.drivers))
        return {};
    jx::install::InstallItems(0, run.record());
    std::ifstream in(home.file(kDriverFile), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// One durable write of that text.
double writeOnce(const std::string& text) {
    const Folder folder;
    Stopwatch watch;
    watch.start();
    const bool written = !text.empty() && jx::bench::replaceDurably(folder.file(kDriverFile), text);
    watch.stop();
    return written ? watch.nanoseconds() : kFailed;
}

void installScript(benchmark::State& state) {
    const auto drivers = static_cast<std::size_t>(state.range(0));
    const Script script = makeScript(drivers);
    const std::string text = installedText(script);
    Rounds rounds;
    rounds.add("store", [&] { return installScriptOnce(script); });
    rounds.add("W", [&] { return writeOnce(text); });
    // A write of that text may take half a millisecond; going through the 4,000 files takes six, whatever the disk.
    constexpr double kOneWriteAndTheWork = 20;
    rounds.run(state, drivers == 200 ? kOneWriteAndTheWork : 0);
}

BENCHMARK(readScript)->Arg(50)->Arg(100)->Arg(200)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(101);
BENCHMARK(installScript)->Arg(50)->Arg(100)->Arg(200)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(31);

}  // namespace
