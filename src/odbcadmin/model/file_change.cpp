// One change of one file, or what it would be.
#include "odbcadmin/model/file_change.h"

#include <sys/stat.h>

#include <algorithm>
#include <unordered_map>

#include "odbcadmin/model/diff.h"
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

// What stands behind a key with a suffix is the place of a secret: a file, a variable, a credential.
bool isSecret(const std::string& key, const std::string& value) {
    return key.find('@') == std::string::npos && rules::masked(key, value) != value;
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

void FileChange::apply(const std::string& section, const char* key, const char* value) {
    if (reason_)
        return;
    // The store would trim the name and change another section than the one that was named.
    if (const rules::Why why = rules::whyNotGivenBack(section))
        return refuse(refusedText(rules::Text::section, section, {}), why);
    if (jxIniSet(change_.get(), section.c_str(), key, value) == 0)
        fail(lastFailure());
}

void FileChange::set(const std::string& section, const std::string& key, const std::string& value) {
    if (const rules::Refusal refused = rules::exactRefusalOf(section, key, value))
        return refuse(refusedText(refused.what, section, key), refused.why);
    refuseOpenSecret(section, key, value);
    wanted_.push_back({section, key, value});
    apply(section, key.c_str(), value.c_str());
}

void FileChange::set(const std::string& section, const Pairs& pairs) {
    for (const auto& [key, value] : pairs)
        set(section, key, value);
}

void FileChange::erase(const std::string& section, const std::string& key) {
    std::erase_if(wanted_, [&](const Wanted& each) {
        return rules::sameName(each.section, section) && rules::sameName(each.key, key);
    });
    apply(section, key.c_str(), nullptr);
}

void FileChange::eraseSection(const std::string& section) {
    std::erase_if(wanted_, [&](const Wanted& each) { return rules::sameName(each.section, section); });
    apply(section, nullptr, nullptr);
}

// Whatever the rules missed shows here: the new text must give back what was asked for. Of several values for a key the
// last counts.
void FileChange::readBack() {
    const std::optional<IniView> after = IniView::parse(textOf(change_.get(), jxIniAfter));
    if (!after)
        return fail(lastFailure());
    std::unordered_map<std::string, const Wanted*> last;
    for (const Wanted& each : wanted_)
        last[rules::foldedName(each.section) + '\n' + rules::foldedName(each.key)] = &each;
    for (const auto& [key, each] : last) {
        const IniEntry* entry = after->find(each->section, each->key);
        if (entry == nullptr || entry->value != each->value || entry->key.size() != each->key.size())
            refuse("\"" + each->key + "\" of section \"" + each->section + "\"",
                   "another line of the file has the same meaning");
    }
}

ChangeResult FileChange::finish() {
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

std::string differenceOf(const std::string& path, std::string_view before, std::string_view after,
                         ChangeWay::Secrets secrets) {
    return unifiedDiff(path, before, after, [&](std::string_view line) {
        return secrets == ChangeWay::Secrets::shown ? std::string(line) : rules::maskedLine(line);
    });
}

}  // namespace jx::model
