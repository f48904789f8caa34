// What a disk may hold after a power cut.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "../recording_files.h"

namespace jx::ini::test {

// What is left of the bytes that were not flushed: all; the first half; none; zeros, as on a file system that writes
// the size before the data.
enum class Unflushed { kept, cut, dropped, zeros };
inline constexpr Unflushed kEveryFate[] = {Unflushed::kept, Unflushed::cut, Unflushed::dropped, Unflushed::zeros};

// One directory after the cut: every file's bytes and mode.
struct FileAfter {
    std::string bytes;
    mode_t mode;
    bool operator==(const FileAfter&) const = default;
};
using DirectoryAfter = std::map<std::string, FileAfter>;

// CrashDisk: one directory, as programs see it and as it may be after a power cut.
// Model    A file's bytes and mode are safe once it was flushed, names once the directory was. Until then bytes may be
//          lost as Unflushed lists, the mode may be the one before, and names may be as after any number of the changes
//          since the last flush, in order. Flushing a file makes no name safe.
class CrashDisk {
public:
    // A file that was there long before.
    void put(const std::string& name, const std::string& bytes, mode_t mode) {
        auto file = std::make_shared<File>();
        file->safe = file->now = {bytes, mode};
        now_[name] = std::move(file);
        safe_ = now_;
    }

    void apply(const DiskChange& change) {
        using Kind = DiskChange::Kind;
        switch (change.kind) {
            case Kind::create:
                now_[change.name] = std::make_shared<File>();
                now_[change.name]->safe = now_[change.name]->now = {"", change.mode};
                break;
            case Kind::write:
                now_.at(change.name)->now.bytes += change.bytes;
                break;
            case Kind::setMode:
                now_.at(change.name)->now.mode = change.mode;
                break;
            case Kind::flushFile:
                now_.at(change.name)->safe = now_.at(change.name)->now;
                break;
            case Kind::flushDirectory:
                safe_ = now_;
                since_.clear();
                break;
            case Kind::rename:
                now_[change.to] = now_.at(change.name);
                now_.erase(change.name);
                break;
            case Kind::exchange:
                std::swap(now_.at(change.to), now_.at(change.name));
                break;
            case Kind::remove:
                now_.erase(change.name);
                break;
        }
        if (change.kind == Kind::create || change.kind == Kind::rename || change.kind == Kind::exchange ||
            change.kind == Kind::remove)
            since_.push_back(now_);
    }

    // Every state of the directory that a power cut now may leave.
    std::vector<DirectoryAfter> states() const {
        std::vector<DirectoryAfter> found;
        std::vector<Names> namesLeft{safe_};
        namesLeft.insert(namesLeft.end(), since_.begin(), since_.end());
        for (const Names& names : namesLeft)
            for (const Unflushed fate : kEveryFate)
                for (const bool modeKept : {true, false})
                    found.push_back(after(names, fate, modeKept));
        return found;
    }

private:
    struct File {
        FileAfter safe;
        FileAfter now;
    };
    using Names = std::map<std::string, std::shared_ptr<File>>;

    static std::string bytesAfter(const File& file, Unflushed fate) {
        const std::string& safe = file.safe.bytes;
        const std::string& now = file.now.bytes;
        switch (fate) {
            case Unflushed::kept:
                return now;
            case Unflushed::dropped:
                return safe;
            case Unflushed::cut:
                return now == safe ? now : now.substr(0, now.size() / 2);
            case Unflushed::zeros:
                return now == safe ? now : std::string(now.size(), '\0');
        }
        return now;
    }

    static DirectoryAfter after(const Names& names, Unflushed fate, bool modeKept) {
        DirectoryAfter directory;
        for (const auto& [name, file] : names)
            directory[name] = {bytesAfter(*file, fate), modeKept ? file->now.mode : file->safe.mode};
        return directory;
    }

    Names now_;
    Names safe_;
    std::vector<Names> since_;
};

}  // namespace jx::ini::test
