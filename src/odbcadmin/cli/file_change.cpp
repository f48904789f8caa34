// One change of one file, or what it would be.
#include "odbcadmin/cli/file_change.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <unordered_map>

#include "odbcadmin/cli/diff.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/text.h"
#include "rules/names.h"
#include "rules/secrets.h"

namespace jx::admin {

namespace {

using LookAt = const char*(const JxIniChange*, size_t*);

std::string_view textOf(const JxIniChange* change, LookAt* lookAt) {
    std::size_t length = 0;
    const char* bytes = lookAt(change, &length);
    return {bytes == nullptr ? "" : bytes, length};
}

std::string failureText() {
    std::array<char, 4096> sentence{};
    jxIniFailureText(sentence.data(), sentence.size());
    return sentence.data();
}

std::string adviceOn(const JxIniFailure& failure) {
    switch (failure.error) {
        case EACCES:
        case EPERM:
            return "Look at the rights of the file and of its directory: ls -ld.";
        case EISDIR:
            return "There must be a file at this place, or nothing.";
        case EINVAL:
            return "There must be an ordinary file at this place, or nothing.";
        case ENOSPC:
        case EDQUOT:
            return "Make room on the disk; the file is as it was.";
        case EROFS:
            return "The disk is mounted read-only.";
        case ENOENT:
            return "Make the directory first.";
        default:
            return failure.afterRename != 0 ? "The new text is in place all the same." : "The file is as it was.";
    }
}

bool holdsControl(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

JxIniChange* begin(const Session& session, const char* file) {
    const Waiting waiting(session.quiet, "Waiting for the turn of " + pathOf(file));
    return jxIniBegin(file);
}

bool hasOuterBlanks(std::string_view text) {
    return rules::trimmed(text).size() != text.size();
}

}  // namespace

std::string pathOf(const char* file) {
    std::array<char, 4097> path{};
    return jxIniPath(file, path.data(), path.size()) == 0 ? file : path.data();
}

ExitCode reportFileTrouble(const Session& session) {
    const JxIniFailure failure = jxIniLastFailure();
    if (failure.step == JxIniStepArgument)
        return session.fail(ExitCode::invalid, failureText(), "The file could not give this back as it is.");
    if (failure.step == JxIniStepLock && failure.error == ETIMEDOUT)
        return session.fail(ExitCode::noTurn, failureText(), "Another program is changing the file; try again.");
    return session.fail(ExitCode::fileTrouble, failureText(), adviceOn(failure));
}

std::optional<IniView> readFile(const Session& session, const char* file, ExitCode& code) {
    std::optional<IniView> view = IniView::read(file);
    code = view ? ExitCode::done : reportFileTrouble(session);
    return view;
}

std::string whyNoSection(std::string_view name) {
    if (name.empty())
        return "it is empty";
    if (holdsControl(name))
        return "it holds a line break or NUL";
    if (hasOuterBlanks(name))
        return "it begins or ends with a blank";
    for (std::size_t at = 1; at < name.size(); ++at)
        if ((name[at] == ';' || name[at] == '#') && (name[at - 1] == ' ' || name[at - 1] == '\t'))
            return "a blank and then ; or # begins a comment";
    return {};
}

std::string whyNoKey(std::string_view key) {
    if (key.empty())
        return "it is empty";
    if (holdsControl(key))
        return "it holds a line break or NUL";
    if (hasOuterBlanks(key))
        return "it begins or ends with a blank";
    if (key.find('=') != std::string_view::npos)
        return "it holds =";
    if (key.front() == '[' || key.front() == ';' || key.front() == '#')
        return std::string("it begins with ") + key.front();
    return {};
}

std::string whyNoValue(std::string_view value) {
    if (holdsControl(value))
        return "it holds a line break or NUL";
    if (hasOuterBlanks(value))
        return "it begins or ends with a blank";
    return {};
}

FileChange::FileChange(const Session& session, const char* file)
    : session_(session), file_(file), change_(session.writesNothing() ? jxIniPreview(file) : begin(session, file)) {
    if (change_)
        before_ = IniView::parse(textOf(change_.get(), jxIniBefore));
    if (!before_)
        trouble_ = reportFileTrouble(session);
}

bool FileChange::refuse(const std::string& what, const std::string& text, const std::string& why) {
    const std::string shown = what == "value" ? "This value of " + text : "The " + what + " \"" + text + "\"";
    trouble_ = session_.fail(ExitCode::invalid, shown + " cannot be stored: " + why,
                             pathOf(file_.c_str()) + " could not give it back as it is; use another " + what + ".");
    return false;
}

bool FileChange::apply(const std::string& section, const char* key, const char* value) {
    if (jxIniSet(change_.get(), section.c_str(), key, value) != 0)
        return true;
    trouble_ = reportFileTrouble(session_);
    return false;
}

bool FileChange::set(const std::string& section, const std::string& key, const std::string& value) {
    if (const std::string why = whyNoSection(section); !why.empty())
        return refuse("name", section, why);
    if (const std::string why = whyNoKey(key); !why.empty())
        return refuse("key", key, why);
    if (const std::string why = whyNoValue(value); !why.empty())
        return refuse("value", key, why);
    wanted_.push_back({section, key, value});
    return apply(section, key.c_str(), value.c_str());
}

bool FileChange::erase(const std::string& section, const std::string& key) {
    std::erase_if(wanted_, [&](const Wanted& each) {
        return rules::sameName(each.section, section) && rules::sameName(each.key, key);
    });
    return apply(section, key.c_str(), nullptr);
}

bool FileChange::eraseSection(const std::string& section) {
    std::erase_if(wanted_, [&](const Wanted& each) { return rules::sameName(each.section, section); });
    return apply(section, nullptr, nullptr);
}

// The last word on what the file would give back, whatever the rules above missed. Of several values for a key the last
// counts.
bool FileChange::readsBack() {
    const std::optional<IniView> after = IniView::parse(textOf(change_.get(), jxIniAfter));
    if (!after) {
        trouble_ = reportFileTrouble(session_);
        return false;
    }
    std::unordered_map<std::string, const Wanted*> last;
    for (const Wanted& each : wanted_)
        last[rules::foldedName(each.section) + '\n' + rules::foldedName(each.key)] = &each;
    for (const auto& [key, each] : last) {
        const IniEntry* entry = after->find(each->section, each->key);
        if (entry == nullptr || entry->value != each->value || entry->key.size() != each->key.size())
            return refuse("name", each->section + "/" + each->key, "another line of the file has the same meaning");
    }
    return true;
}

void FileChange::preview() {
    const auto shown = [&](std::string_view line) {
        return session_.showSecrets ? std::string(line) : rules::maskedLine(line);
    };
    if (session_.dryRun)
        difference_ = unifiedDiff(pathOf(file_.c_str()), textOf(change_.get(), jxIniBefore),
                                  textOf(change_.get(), jxIniAfter), shown);
}

ExitCode FileChange::finish() {
    if (trouble_ != ExitCode::done)
        return trouble_;
    changes_ = textOf(change_.get(), jxIniBefore) != textOf(change_.get(), jxIniAfter);
    if (!changes_)
        return ExitCode::done;
    if (!readsBack())
        return trouble_;
    if (session_.writesNothing()) {
        preview();
        return ExitCode::done;
    }
    if (jxIniCommit(change_.release()) != 0)
        return ExitCode::done;
    return trouble_ = reportFileTrouble(session_);
}

}  // namespace jx::admin
