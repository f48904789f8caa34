// Keeps files until their stamps change.
#include "jxutl/ini/profile_cache.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "jxutl/ini/file_ops.h"
#include "jxutl/ini/ini_run.h"
#include "jxutl/thread/failure.h"
#include "jxutl/thread/no_cancellation.h"

namespace jx::ini {

namespace {

// The state of a regular file; false, with success or a failure noted, when there is none.
bool look(const std::string& path, struct stat& state) {
    if (uninterrupted([&] { return files().lookAt(path.c_str(), &state); }) != 0) {
        if (isAbsence(errno))
            noteSuccess();
        else
            noteFailure(JxIniStepLook, path, errno);
        return false;
    }
    if (S_ISREG(state.st_mode))
        return true;
    noteFailure(JxIniStepOpen, path, S_ISDIR(state.st_mode) ? EISDIR : ENOTSUP);
    return false;
}

}  // namespace

// An absent file that the run has locked but not changed is still absent.
IniIndex* ProfileCache::readPending(const IniChange& change) {
    noteSuccess();
    return change.isAbsent() ? nullptr : run_->index(change);
}

IniIndex* ProfileCache::read(const std::string& path, std::uint64_t number) {
    if (run_ != nullptr)
        if (const std::shared_ptr<IniChange> pending = run_->pending(path); pending != nullptr)
            return readPending(*pending);
    struct stat state;
    if (!look(path, state)) {
        letGoOfPath(path);
        return nullptr;
    }
    File& file = fileFor(path, number);
    if (&file != latest_)
        use(file);
    if (!file.text.isCurrent(state)) {
        const NoCancellation reading;
        const FileText::Outcome outcome = file.text.read(path, state);
        if (outcome == FileText::Outcome::other)
            file.index.reset(file.text.view());
        keepWithinBounds();
        if (outcome == FileText::Outcome::none)
            return nullptr;
    }
    if (kept_ == nullptr || kept_->step != JxIniStepNone)
        noteSuccess();
    return &file.index;
}

ProfileCache::File& ProfileCache::fileFor(const std::string& path, std::uint64_t number) {
    File* file = number == 0 ? nullptr : fileNumbered(number);
    if (file == nullptr) {
        file = &fileAt(path);
        file->number = number;
    }
    file->lastUse = ++uses_;
    return *file;
}

ProfileCache::File* ProfileCache::fileNumbered(std::uint64_t number) {
    for (const auto& file : files_)
        if (file->number == number)
            return file.get();
    return nullptr;
}

ProfileCache::File& ProfileCache::fileAt(const std::string& path) {
    for (const auto& file : files_)
        if (file->path == path)
            return *file;
    File& file = placeForAnother();
    file.path = path;
    return file;
}

ProfileCache::File& ProfileCache::placeForAnother() {
    letGoOfStale();
    auto empty = std::make_unique<File>();
    if (files_.size() == kMostFiles)
        letGo(leastRecentlyRead());
    files_.push_back(std::move(empty));
    return *files_.back();
}

// ---- what is let go ----

void ProfileCache::letGo(const File* file) {
    bytes_ -= file->counted;
    if (latest_ == file)
        latest_ = nullptr;
    std::erase_if(files_, [file](const auto& kept) { return kept.get() == file; });
}

void ProfileCache::letGoOfPath(const std::string& path) {
    const auto found = std::find_if(files_.begin(), files_.end(), [&](const auto& file) { return file->path == path; });
    if (found != files_.end())
        letGo(found->get());
}

void ProfileCache::letGoOfStale() {
    for (std::size_t at = files_.size(); at-- > 0;) {
        const File& file = *files_[at];
        struct stat state;
        const bool isThere = uninterrupted([&] { return files().lookAt(file.path.c_str(), &state); }) == 0;
        if (!isThere || !file.text.isOf(state))
            letGo(&file);
    }
}

ProfileCache::File* ProfileCache::leastRecentlyRead() const {
    File* least = nullptr;
    for (const auto& file : files_)
        if (file.get() != latest_ && (least == nullptr || file->lastUse < least->lastUse))
            least = file.get();
    return least;
}

// The index of the file used before may have grown with its last look-ups.
void ProfileCache::use(File& file) {
    if (latest_ != nullptr)
        count(*latest_);
    latest_ = &file;
    keepWithinBounds();
}

void ProfileCache::count(File& file) {
    const std::size_t now = file.text.memory() + file.index.memory();
    bytes_ += now - file.counted;
    file.counted = now;
}

void ProfileCache::keepWithinBounds() {
    count(*latest_);
    while (bytes_ - latest_->counted > kMostBytes)
        letGo(leastRecentlyRead());
}

std::size_t ProfileCache::memory() const {
    std::size_t total = 0;
    for (const auto& file : files_)
        total += file->text.memory() + file->index.memory();
    return total;
}

ProfileCache* newThreadCache() {
    ThreadData* data = threadData();
    if (data == nullptr)
        return nullptr;
    if (data->profiles == nullptr)
        data->profiles = std::make_shared<ProfileCache>(&data->storeFailure);
    return data->profiles.get();
}

}  // namespace jx::ini
