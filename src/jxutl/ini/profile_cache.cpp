// Keeps files until their stamps change.
#include "jxutl/ini/profile_cache.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "jxutl/ini/file_ops.h"
#include "jxutl/thread/failure.h"

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

IniIndex* ProfileCache::read(const std::string& path, std::uint64_t number) {
    struct stat state;
    if (!look(path, state))
        return nullptr;
    File& file = fileFor(path, number);
    if (!file.text.isCurrent(state)) {
        const FileText::Outcome outcome = file.text.read(path, state);
        if (outcome == FileText::Outcome::none)
            return nullptr;
        if (outcome == FileText::Outcome::other)
            file.index.reset(file.text.view());
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

// An empty place: a new one, or that of the least recently read file, which is released.
ProfileCache::File& ProfileCache::placeForAnother() {
    auto empty = std::make_unique<File>();
    if (files_.size() < kMostFiles) {
        files_.push_back(std::move(empty));
        return *files_.back();
    }
    const auto earlier = [](const auto& left, const auto& right) { return left->lastUse < right->lastUse; };
    auto& oldest = *std::min_element(files_.begin(), files_.end(), earlier);
    oldest = std::move(empty);
    return *oldest;
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
