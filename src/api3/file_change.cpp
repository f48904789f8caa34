// Edits and commits.
#include "api3/file_change.h"

#include <new>

#include "api3/call.h"
#include "api3/store_failure.h"

namespace jx::api3 {

namespace {

using Bytes = const char*(const JxIniChange*, size_t*);

std::string_view bytesOf(const JxIniChange* change, Bytes* which) {
    std::size_t length = 0;
    const char* bytes = which(change, &length);
    return {bytes, length};
}

}  // namespace

FileText::FileText(std::string_view bytes) : text_(jxIniParse(bytes.data(), bytes.size())) {
    if (text_ == nullptr)
        throw std::bad_alloc();
}

bool FileText::hasSection(const std::string& section) const {
    return jxIniFind(text_.get(), section.c_str(), nullptr, nullptr) != 0;
}

std::optional<std::string> FileText::value(const std::string& section, const char* key) const {
    JxIniPiece entry;
    if (jxIniFind(text_.get(), section.c_str(), key, &entry) == 0)
        return std::nullopt;
    return entry.value == nullptr ? std::string() : std::string(entry.value, entry.valueLength);
}

FileText FileChange::before() const {
    return FileText(bytesOf(change_.get(), jxIniBefore));
}

bool FileChange::set(const std::string& section, const char* key, const char* value) {
    return jxIniSet(change_.get(), section.c_str(), key, value) != 0 || refuse(storeReason());
}

bool FileChange::refuse(const std::string& why) const {
    const std::string where = place_.isThere() ? " to " + place_.path() : "";
    return jx::api3::refuse(subject_.code, subject_.name + " was not written" + where + ": " + why);
}

bool FileChange::begin(Kind kind) {
    if (!place_.isThere())
        return refuse(whyNowhere(place_));
    const char* path = place_.path().c_str();
    if (kind == Kind::preview)
        change_.reset(jxIniPreview(path));
    else
        change_.reset(place_.isShared() ? jxIniBeginShared(path) : jxIniBegin(path));
    return change_ != nullptr || refuse(storeReason());
}

bool FileChange::changesNothing() const {
    return bytesOf(change_.get(), jxIniBefore) == bytesOf(change_.get(), jxIniAfter);
}

bool FileChange::commit() {
    return jxIniCommit(change_.release()) != 0 || refuse(storeReason());
}

bool changeFile(const Place& place, const ChangeSubject& subject, const std::function<bool(FileChange&)>& edit) {
    FileChange preview(place, subject);
    if (!preview.begin(FileChange::Kind::preview) || !edit(preview))
        return false;
    if (preview.changesNothing())
        return true;
    FileChange change(place, subject);
    return change.begin(FileChange::Kind::real) && edit(change) && change.commit();
}

}  // namespace jx::api3
