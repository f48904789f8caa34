// One change of one file, or what it would be.
#include "odbcadmin/model/file_change.h"

#include <sys/stat.h>

#include <algorithm>

#include "odbcadmin/model/diff.h"
#include "odbcadmin/model/name_places.h"
#include "rules/names.h"
#include "rules/secrets.h"
#include "rules/storable.h"

namespace jx::model {

namespace {

using LookAt = const char*(const JxIniChange*, size_t*);

std::string_view textOf(const JxIniChange* change, LookAt* lookAt) {
    std::size_t length = 0;
    const char* bytes = lookAt(change, &length);
    return {bytes == nullptr ? "" : bytes, length};
}

JxIniChange* begin(const std::string& file, bool isShared, const ChangeWay& way) {
    if (way.writing == ChangeWay::Writing::never)
        return jxIniPreview(file.c_str());
    JxIniChange* change = nullptr;
    way.aroundWait(pathOf(file),
                   [&] { change = isShared ? jxIniBeginShared(file.c_str()) : jxIniBegin(file.c_str()); });
    return change;
}

// Whether everybody may read the file, or a new one in its place.
bool isOpenToAll(const std::string& path) {
    struct stat state {};
    if (::stat(path.c_str(), &state) == 0)
        return (state.st_mode & S_IROTH) != 0;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return (mask & S_IROTH) == 0;
}

bool isSecret(const std::string& key, const std::string& value) {
    return rules::masked(key, value) != value;
}

// A file that is written gets another one; 0 without a file.
ino_t numberOf(const std::string& path) {
    struct stat state {};
    return ::stat(path.c_str(), &state) == 0 ? state.st_ino : 0;
}

// What was refused, in words; a value is never repeated.
std::string refusedText(rules::Text what, const std::string& section, const std::string& key) {
    switch (what) {
        case rules::Text::section:
            return "The name \"" + section + "\"";
        case rules::Text::key:
            return "The key \"" + key + "\"";
        case rules::Text::value:
            break;
    }
    return "This value of " + key;
}

}  // namespace

Reason whyHidden(const std::string& key, const std::string& value) {
    if (!rules::holdsMask(key, value))
        return {};
    return {Reason::Kind::refused,
            "The value given for " + key + " is what a hidden secret is shown as, not the secret",
            "Give the secret itself; --show-secrets prints one that is stored."};
}

ChangeResult& ChangeResult::add(ChangeResult next) {
    reason = std::move(next.reason);
    for (ChangedFile& each : next.files)
        files.push_back(std::move(each));
    return *this;
}

FileChange::FileChange(const std::string& file, const ChangeWay& way)
    : way_(way), file_(storeName(file, way.scope)), isShared_(file_ != file), change_(begin(file_, isShared_, way)) {
    std::optional<IniView> before;
    if (change_)
        before = IniView::parse(textOf(change_.get(), jxIniBefore));
    if (before)
        before_ = std::move(*before);
    else
        fail(lastFailure());
}

std::string FileChange::path() const {
    return pathOf(file_);
}

void FileChange::fail(Reason reason) {
    if (!reason_)
        reason_ = std::move(reason);
}

void FileChange::refuse(const std::string& what, const std::string& why) {
    fail({Reason::Kind::refused, what + " cannot be stored: " + why,
          path() + " could not give it back as it is; use another one."});
}

void FileChange::refuseOpenSecret(const std::string& section, const std::string& key, const std::string& value) {
    if (!isShared_ || way_.openSecrets == ChangeWay::OpenSecrets::allowed || !isSecret(key, value) ||
        before_.value(section, key) == value || !isOpenToAll(path()))
        return;
    fail({Reason::Kind::refused, "Everybody may read " + path() + ", and the value of " + key + " is a secret",
          "Keep it in a file and store " + key + "@file=PATH instead; --open-secrets stores it all the same."});
}

// The store would trim the name and change another section than the one that was named.
bool FileChange::takesSection(const std::string& section) {
    const rules::Why why = reason_ ? nullptr : rules::whyNotGivenBack(section);
    if (why != nullptr)
        refuse(refusedText(rules::Text::section, section, {}), why);
    return !reason_;
}

void FileChange::settle() {
    std::vector<JxIniSetting> settings;
    for (std::size_t i = settled_; i < wanted_.size(); ++i)
        settings.push_back({wanted_[i].section.c_str(), wanted_[i].key.c_str(), wanted_[i].value.c_str()});
    settled_ = wanted_.size();
    if (!reason_ && !settings.empty() && jxIniSetAll(change_.get(), settings.data(), settings.size()) == 0)
        fail(lastFailure());
}

void FileChange::remove(const std::string& section, const char* key) {
    settle();
    if (takesSection(section) && jxIniSet(change_.get(), section.c_str(), key, nullptr) == 0)
        fail(lastFailure());
}

void FileChange::set(const std::string& section, const std::string& key, const std::string& value) {
    if (const rules::Refusal refused = rules::exactRefusalOf(section, key, value))
        return refuse(refusedText(refused.what, section, key), refused.why);
    refuseOpenSecret(section, key, value);
    if (takesSection(section))
        wanted_.push_back({section, key, value});
}

void FileChange::set(const std::string& section, const Pairs& pairs) {
    for (const auto& [key, value] : pairs)
        set(section, key, value);
}

// What was set before it was removed need not be there at the end.
void FileChange::forget(const std::function<bool(const Wanted&)>& isGone) {
    std::erase_if(wanted_, isGone);
    settled_ = wanted_.size();
}

void FileChange::erase(const std::string& section, const std::string& key) {
    remove(section, key.c_str());
    forget(
        [&](const Wanted& each) { return rules::sameName(each.section, section) && rules::sameName(each.key, key); });
}

void FileChange::eraseSection(const std::string& section) {
    remove(section, nullptr);
    forget([&](const Wanted& each) { return rules::sameName(each.section, section); });
}

void FileChange::replace(std::string_view text) {
    wanted_.clear();
    settled_ = 0;
    if (!reason_ && jxIniReplace(change_.get(), text.data(), text.size()) == 0)
        fail(lastFailure());
}

// Whatever the rules missed shows here: the new text must give back what was asked for. Of several values for a key the
// last counts.
void FileChange::readBack() {
    const std::optional<IniView> after = IniView::parse(textOf(change_.get(), jxIniAfter));
    if (!after)
        return fail(lastFailure());
    NamePlaces checked;
    checked.reserve(wanted_.size());
    for (std::size_t i = wanted_.size(); i-- > 0;) {
        const Wanted& each = wanted_[i];
        const std::uint32_t hash = NamePlaces::hashOf(each.key, NamePlaces::hashOf(each.section));
        const auto isSame = [&](std::size_t at) {
            return rules::sameName(wanted_[at].key, each.key) && rules::sameName(wanted_[at].section, each.section);
        };
        if (checked.find(hash, isSame))
            continue;
        checked.add(hash, i);
        const IniEntry* entry = after->find(each.section, each.key);
        if (entry == nullptr || entry->value != each.value || entry->key.size() != each.key.size())
            refuse("\"" + each.key + "\" of section \"" + each.section + "\"",
                   "another line of the file has the same meaning");
    }
}

ChangeResult FileChange::finish() {
    settle();
    if (reason_)
        return {reason_};
    const bool changes = textOf(change_.get(), jxIniBefore) != textOf(change_.get(), jxIniAfter);
    if (changes)
        readBack();
    if (reason_ || !changes)
        return {reason_};
    ChangedFile changed{path(), {}};
    if (way_.writing == ChangeWay::Writing::never)
        changed.difference = differenceOf(changed.path, textOf(change_.get(), jxIniBefore),
                                          textOf(change_.get(), jxIniAfter), way_.secrets);
    else if (jxIniCommit(change_.release()) == 0)
        return {lastFailure()};
    return {{}, {changed}};
}

ChangeResult asOneChange(const ChangeWay& way, const std::function<ChangeResult()>& work) {
    if (way.writing == ChangeWay::Writing::never)
        return work();
    const auto discard = [](JxIniRun* run) { jxIniDiscardRun(run); };
    std::unique_ptr<JxIniRun, decltype(discard)> run(jxIniBeginRun(), discard);
    if (run == nullptr)
        return {lastFailure()};
    ChangeResult result = work();
    if (!result.isDone())
        return {result.reason};
    std::vector<ino_t> before;
    for (const ChangedFile& file : result.files)
        before.push_back(numberOf(file.path));
    if (jxIniCommitRun(run.release()) != 0)
        return result;
    result.reason = lastFailure();
    std::vector<ChangedFile> written;
    for (std::size_t i = 0; i < before.size(); ++i)
        if (numberOf(result.files[i].path) != before[i])
            written.push_back(result.files[i]);
    result.files = std::move(written);
    return result;
}

std::string differenceOf(const std::string& path, std::string_view before, std::string_view after,
                         ChangeWay::Secrets secrets) {
    return unifiedDiff(path, before, after, [&](std::string_view line) {
        return secrets == ChangeWay::Secrets::shown ? std::string(line) : rules::maskedLine(line);
    });
}

}  // namespace jx::model
