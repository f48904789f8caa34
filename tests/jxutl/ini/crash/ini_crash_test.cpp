// The process is killed, or the power cut, at every call that touches the disk: the file is old or new, and the next
// write succeeds and leaves no other file.
#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include "../change_cases.h"
#include "../deadly_files.h"
#include "../recording_files.h"
#include "crash_disk.h"

namespace jx::ini::test {
namespace {

void expectOldOrNew(const CaseHome& home) {
    const std::string text = home.text();
    EXPECT_TRUE(text == home.before() || text == home.after()) << text;
}

// ---- killed ----

// Kills a writer of every case at its nth call, for every n; returns how many were killed.
int killEverywhere() {
    int kills = 0;
    for (const ChangeCase& change : possibleChangeCases()) {
        for (int n = 1;; ++n) {
            SCOPED_TRACE(std::string(change.name) + ", killed before call " + std::to_string(n));
            const CaseHome home(change);
            const int status = statusOfChild([&] {
                DeadlyFiles files(n);
                const InUse inUse(files);
                EXPECT_TRUE(home.write());
            });
            expectOldOrNew(home);
            EXPECT_LE(home.litter().size(), 2U);
            for (const std::string& name : home.litter())
                EXPECT_TRUE(name.ends_with(".jxlock") || home.directory() + "/" + name == home.newFile()) << name;
            expectNextWriteSucceeds(home);
            if (!WIFSIGNALED(status))
                break;
            ++kills;
        }
    }
    std::printf("%d kills\n", kills);
    return kills;
}

TEST(IniCrash, AWriterKilledAtEachCallLeavesTheOldOrTheNewText) {
    const int kills = killEverywhere();
    RecordProperty("kills", kills);
    EXPECT_GT(kills, 150);
}

// Root may open every file that is left; an ordinary user may not.
TEST(IniCrash, AnOrdinaryUsersWriterKilledAtEachCallLeavesTheOldOrTheNewText) {
    EXPECT_TRUE(passesAsNobody([] { EXPECT_GT(killEverywhere(), 150); }));
}

// ---- power cuts ----

// The calls that one case makes, and its directory before.
struct Recording {
    CrashDisk disk;
    std::vector<DiskChange> changes;
};

Recording record(const ChangeCase& change) {
    Recording recording;
    const CaseHome home(change);
    for (const auto& entry : std::filesystem::directory_iterator(home.directory()))
        if (entry.is_regular_file())
            recording.disk.put(RecordingFiles::nameOf(entry.path()), textOf(entry.path()), modeOf(entry.path()));
    RecordingFiles files;
    const InUse inUse(files);
    EXPECT_TRUE(home.write());
    recording.changes = files.changes();
    // The model covers the target's directory only.
    std::erase_if(recording.changes, [](const DiskChange& made) { return made.name == "status"; });
    return recording;
}

// Gives the target's directory the state after the power cut.
void restore(const CaseHome& home, const DirectoryAfter& directory) {
    for (const auto& entry : std::filesystem::directory_iterator(home.directory()))
        if (entry.is_regular_file() && !entry.is_symlink())
            std::filesystem::remove(entry.path());
    // The lock file's number is another one now, and the new file's name is made of it.
    for (const auto& [name, file] : directory)
        putText(name.ends_with(".jxnew-N") ? home.newFile() : home.directory() + "/" + name, file.bytes, file.mode);
}

void expectModeOfOldOrNew(const ChangeCase& change, const CaseHome& home) {
    if (change.before == nullptr || home.text() == "(absent)")
        return;
    EXPECT_EQ(modeOf(home.target()), change.mode);
}

int cutEverywhere(const ChangeCase& change) {
    Recording recording = record(change);
    std::set<std::string> seen;
    int states = 0;
    for (std::size_t done = 0;; ++done) {
        for (const DirectoryAfter& directory : recording.disk.states()) {
            ++states;
            SCOPED_TRACE("cut after " + std::to_string(done) + " changes, state " + std::to_string(states));
            const CaseHome home(change);
            restore(home, directory);
            expectOldOrNew(home);
            expectModeOfOldOrNew(change, home);
            seen.insert(home.text());
            expectNextWriteSucceeds(home);
        }
        if (done == recording.changes.size())
            break;
        recording.disk.apply(recording.changes[done]);
    }
    const CaseHome home(change);
    EXPECT_TRUE(seen.contains(home.before()));
    EXPECT_TRUE(seen.contains(home.after()));
    return states;
}

TEST(IniCrash, APowerCutAtEachCallLeavesTheOldOrTheNewText) {
    int states = 0;
    for (const ChangeCase& change : kChangeCases) {
        SCOPED_TRACE(change.name);
        if (canSetUp(change))
            states += cutEverywhere(change);
    }
    RecordProperty("states", states);
    std::printf("%d crash states\n", states);
    EXPECT_GT(states, 500);
}

// A write that returned survives every power cut after it.
TEST(IniCrash, AWriteThatReturnedSurvivesAPowerCut) {
    for (const ChangeCase& change : possibleChangeCases()) {
        SCOPED_TRACE(change.name);
        Recording recording = record(change);
        for (const DiskChange& made : recording.changes)
            recording.disk.apply(made);
        for (const DirectoryAfter& directory : recording.disk.states()) {
            const CaseHome home(change);
            restore(home, directory);
            EXPECT_EQ(home.text(), home.after());
        }
    }
}

// ---- the model itself ----

FileAfter fileAfter(const DirectoryAfter& directory, const std::string& name) {
    const auto found = directory.find(name);
    return found == directory.end() ? FileAfter{"(absent)", 0} : found->second;
}

// The beginning of a change of x: a new file that is not flushed.
void writeBesideX(CrashDisk& disk) {
    using Kind = DiskChange::Kind;
    disk.put("x", "old", 0600);
    disk.apply({Kind::create, ".x.jxlock", {}, {}, 0600});
    disk.apply({Kind::write, ".x.jxlock", {}, "new!", 0});
}

// What x may hold after a power cut.
std::set<std::string> textsOfX(const CrashDisk& disk) {
    std::set<std::string> texts;
    for (const DirectoryAfter& directory : disk.states())
        texts.insert(fileAfter(directory, "x").bytes);
    return texts;
}

// A writer that does not flush must fail, or the tests above prove nothing.
TEST(CrashDisk, LosesWhatWasNotFlushed) {
    using Kind = DiskChange::Kind;
    CrashDisk disk;
    writeBesideX(disk);
    disk.apply({Kind::setMode, ".x.jxlock", {}, {}, 0644});
    disk.apply({Kind::rename, ".x.jxlock", "x", {}, 0});
    std::set<mode_t> modes;
    for (const DirectoryAfter& directory : disk.states())
        modes.insert(fileAfter(directory, "x").mode);
    EXPECT_EQ(textsOfX(disk), (std::set<std::string>{"old", "new!", "ne", "", std::string(4, '\0')}));
    EXPECT_EQ(modes, (std::set<mode_t>{0600, 0644}));
}

TEST(CrashDisk, KeepsWhatWasFlushed) {
    using Kind = DiskChange::Kind;
    CrashDisk disk;
    writeBesideX(disk);
    disk.apply({Kind::flushFile, ".x.jxlock", {}, {}, 0});
    disk.apply({Kind::rename, ".x.jxlock", "x", {}, 0});
    EXPECT_EQ(textsOfX(disk), (std::set<std::string>{"old", "new!"}));
    disk.apply({Kind::flushDirectory, "d", {}, {}, 0});
    for (const DirectoryAfter& directory : disk.states()) {
        EXPECT_EQ(fileAfter(directory, "x").bytes, "new!");
        EXPECT_EQ(fileAfter(directory, ".x.jxlock").bytes, "(absent)");
    }
}

}  // namespace
}  // namespace jx::ini::test
