// Keeps a thread's pending changes, and commits them.
#include "jxutl/ini/ini_run.h"

#include <algorithm>
#include <utility>

#include "jxutl/ini/file_ops.h"
#include "jxutl/ini/ini_place.h"
#include "jxutl/ini/profile_cache.h"
#include "jxutl/thread/thread_data.h"

namespace jx::ini {

namespace {

bool holds(const std::vector<std::string>& paths, const std::string& path) {
    return std::find(paths.begin(), paths.end(), path) != paths.end();
}

}  // namespace

// Another path may lead to one of the files; whether it can be followed is the caller's business.
IniRun::File* IniRun::fileAt(const std::string& path) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the search below may note another
    const Failure before = lastFailure();
    IniPlace place;
    File* found = nullptr;
    if (place.find(path) && place.missing() == 0)
        for (const auto& file : files_)
            if (file->change->isAt(place))
                found = file.get();
    noteFailure(before);
    return found;
}

std::shared_ptr<IniChange> IniRun::pending(const std::string& path) {
    for (const auto& file : files_)
        if (holds(file->paths, path))
            return file->change;
    if (files_.empty() || holds(elsewhere_, path))
        return nullptr;
    File* file = fileAt(path);
    (file != nullptr ? file->paths : elsewhere_).push_back(path);
    return file != nullptr ? file->change : nullptr;
}

std::shared_ptr<IniChange> IniRun::changeOf(const IniLocation& where) {
    if (std::shared_ptr<IniChange> known = pending(where.path); known != nullptr)
        return known;
    // Nothing of a failed run is written, so it waits for no further lock.
    if (failure_.step != JxIniStepNone) {
        noteFailure(failure_);
        return nullptr;
    }
    auto file = std::make_unique<File>();
    file->paths.push_back(where.path);
    file->change = std::make_shared<IniChange>();
    if (!file->change->begin(where))
        return nullptr;
    elsewhere_.clear();
    files_.push_back(std::move(file));
    return files_.back()->change;
}

IniIndex* IniRun::index(const IniChange& change) {
    for (const auto& file : files_) {
        if (file->change.get() != &change)
            continue;
        if (file->indexedVersion != change.version()) {
            file->indexed = change.text();
            file->index.reset(file->indexed);
            file->indexedVersion = change.version();
        }
        return &file->index;
    }
    return nullptr;
}

void IniRun::fail() {
    if (failure_.step == JxIniStepNone)
        failure_ = lastFailure();
}

bool IniRun::commit() {
    const auto files = std::exchange(files_, {});
    if (failure_.step != JxIniStepNone) {
        noteFailure(failure_);
        return false;
    }
    for (const auto& file : files)
        if (!file->change->commit(IniChange::Undone::makesTheFile))
            return false;
    return true;
}

// ---- the thread's run ----

IniRun* currentRun() {
    const ThreadData* data = existingThreadData();
    return data != nullptr ? data->run.get() : nullptr;
}

IniRun* beginRun() {
    ProfileCache* cache = threadCache();
    if (cache == nullptr)
        return nullptr;
    std::shared_ptr<IniRun>& run = threadData()->run;
    if (run == nullptr)
        run = std::make_shared<IniRun>();
    run->enter();
    cache->readThrough(run.get());
    return run.get();
}

void endRun() noexcept {
    ThreadData* data = existingThreadData();
    if (data == nullptr)
        return;
    if (data->profiles != nullptr)
        data->profiles->readThrough(nullptr);
    data->run.reset();
}

}  // namespace jx::ini
