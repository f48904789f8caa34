// Asks files in their order, joins lists, follows references.
#include "api3/profile_lookup.h"

#include <new>
#include <utility>

#include "api3/call.h"
#include "api3/name_list.h"
#include "api3/quoted.h"
#include "api3/secret_reference.h"
#include "api3/store_failure.h"
#include "rules/sections.h"

namespace jx::api3 {

namespace {

std::string_view textOf(const JxIniPart& part) {
    return {part.text, part.length};
}

// A question to the one file in which the answer must be.
struct Asked {
    const Question& question;
    const Place& place;
    JxIniView* view;
};

std::string nameOf(const Question& question) {
    return question.section == nullptr ? "The list of sections" : keyOrSection(question.section, question.key);
}

bool isFollowed(const Question& question) {
    return !rules::isListSection(question.section) && rules::mayBeReferred(rules::argument(question.key));
}

Answer follow(const Asked& asked, Reference reference, std::string key, std::string_view target) {
    Answer answer;
    answer.place = &asked.place;
    Secret secret = readSecret(reference, std::string(target));
    if (secret.refusal.empty()) {
        answer.outcome = Outcome::found;
        answer.own = std::move(secret.text);
    } else {
        answer.outcome = Outcome::referenceRefused;
        refuse(ODBC_ERROR_REQUEST_FAILED, keyOrSection(asked.question.section, key.c_str()) + " in " +
                                              asked.place.path() + " was not followed: " + secret.refusal + ".");
    }
    answer.referenceKey = std::move(key);
    return answer;
}

// KEY and a suffix, on the stack: most look-ups of absent keys come by here.
class SuffixedKey {
public:
    SuffixedKey(std::string_view key, std::string_view suffix) : fits_(key.size() + suffix.size() < sizeof room_) {
        if (fits_) {
            key.copy(room_, key.size());
            suffix.copy(room_ + key.size(), suffix.size());
            room_[key.size() + suffix.size()] = '\0';
        } else {
            long_.append(key).append(suffix);
        }
    }

    const char* text() const { return fits_ ? room_ : long_.c_str(); }

private:
    bool fits_;
    char room_[128];
    std::string long_;
};

// The key is absent where it is looked for; it may stand there as a reference.
Answer referredAnswer(const Asked& asked) {
    const std::string_view key = rules::argument(asked.question.key);
    for (std::size_t i = 0; i < rules::kReferenceSuffixes.size(); ++i) {
        const SuffixedKey name(key, rules::kReferenceSuffixes[i]);
        JxIniPart target;
        if (ask(asked.view, asked.question.section, name.text(), target) == JxIniFound)
            return follow(asked, static_cast<Reference>(i), name.text(), textOf(target));
    }
    Answer none;
    none.outcome = Outcome::noKey;
    none.place = &asked.place;
    return none;
}

enum class References : std::uint8_t { followed, asWritten };

// The keys that a program can ask for: KEY for KEY@file, each once.
Answer withoutSuffixes(Answer answer) {
    if (answer.text().find('@') == std::string_view::npos)
        return answer;
    NameList keys;
    for (const std::string_view name : NamesIn(answer.text())) {
        const std::string_view key = rules::referredKey(name);
        keys.add(key.empty() || !rules::mayBeReferred(key) ? name : key);
    }
    answer.own = std::move(keys).text();
    return answer;
}

Answer answerIn(const Asked& asked, JxIniAnswer found, const JxIniPart& part, References references) {
    const Question& question = asked.question;
    const bool mayStandThere = found == JxIniNoKey && part.length > 0;
    if (mayStandThere && references == References::followed && isFollowed(question))
        return referredAnswer(asked);
    Answer answer;
    answer.place = &asked.place;
    answer.outcome = found == JxIniFound ? Outcome::found : Outcome::noKey;
    if (found == JxIniFound)
        answer.inFile = textOf(part);
    const bool isKeyList = question.key == nullptr && !rules::isListSection(question.section);
    return isKeyList && references == References::followed ? withoutSuffixes(std::move(answer)) : answer;
}

Answer answerOf(Outcome outcome) {
    Answer answer;
    answer.outcome = outcome;
    return answer;
}

// The first file that has the section answers, or, for a key of a list that is joined, the first that has the key.
Answer firstAnswer(const Sources& sources, const Question& question, References references) {
    const bool isJoined = rules::isListSection(question.section);
    Answer last = answerOf(Outcome::noFile);
    for (std::size_t i = 0; i < sources.count(); ++i) {
        const Look look = lookAt(sources[i], question);
        if (look.failed)
            return answerOf(Outcome::notRead);
        if (look.view == nullptr)
            continue;
        JxIniPart part{};
        const JxIniAnswer found = ask(look.view, question.section, question.key, part);
        if (found == JxIniFound || (found == JxIniNoKey && !isJoined))
            return answerIn({question, sources[i], look.view}, found, part, references);
        if (last.outcome == Outcome::noFile || found == JxIniNoKey)
            last = answerOf(found == JxIniNoKey ? Outcome::noKey : Outcome::noSection);
    }
    return last;
}

// The names of all files, the first file's first and none twice.
Answer joinedAnswer(const Sources& sources, const Question& question) {
    Answer answer = answerOf(Outcome::noFile);
    NameList names;
    for (std::size_t i = 0; i < sources.count(); ++i) {
        const Look look = lookAt(sources[i], question);
        if (look.failed)
            return answerOf(Outcome::notRead);
        JxIniPart part{};
        if (look.view == nullptr)
            continue;
        if (answer.outcome == Outcome::noFile)
            answer.outcome = Outcome::noSection;
        if (ask(look.view, question.section, nullptr, part) != JxIniFound)
            continue;
        if (answer.place == nullptr)
            answer.place = &sources[i];
        answer.outcome = Outcome::found;
        for (const std::string_view name : NamesIn(textOf(part)))
            names.add(name);
    }
    if (answer.isFound())
        answer.own = std::move(names).text();
    return answer;
}

Answer answerFrom(const Sources& sources, const Question& question, References references) {
    const bool isList =
        question.section == nullptr || (question.key == nullptr && rules::isListSection(question.section));
    return isList ? joinedAnswer(sources, question) : firstAnswer(sources, question, references);
}

}  // namespace

Sources::Sources(ThreadState& state, const char* file, const Environment& environment) {
    const FileKind kind = fileKindOf(file);
    const Mode mode = kind == FileKind::dataSources ? modeOf(state) : Mode::both;
    if (kind == FileKind::none)
        return;
    if (kind == FileKind::path) {
        places_[count_++] = &state.places.find(file);
        return;
    }
    if (mode != Mode::system)
        places_[count_++] = &state.places.find(Scope::user, kind, environment);
    if (mode != Mode::user)
        places_[count_++] = &state.places.find(Scope::system, kind, environment);
}

Sources::Sources(ThreadState& state, const std::string& path) : places_{&state.places.find(path.c_str())}, count_(1) {}

Look lookAt(const Place& place, const Question& question) {
    if (!place.isThere() && place.error() == 0)
        return {};
    Look look{place.isThere() ? place.look() : nullptr};
    if (look.view == nullptr && (!place.isThere() || jxIniLastFailure().step != JxIniStepNone)) {
        look.failed = true;
        refuse(ODBC_ERROR_REQUEST_FAILED, nameOf(question) + " was not read: " + whyNotRead(place));
    }
    return look;
}

JxIniAnswer ask(JxIniView* view, const char* section, const char* key, JxIniPart& part) {
    const JxIniAnswer answer = jxIniAsk(view, section, key, &part);
    if (answer == JxIniAskFailed)
        throw std::bad_alloc();
    return answer;
}

Answer lookUp(const Sources& sources, const Question& question) {
    return answerFrom(sources, question, References::followed);
}

Answer lookUpWritten(const Sources& sources, const Question& question) {
    return answerFrom(sources, question, References::asWritten);
}

}  // namespace jx::api3
