// Makes the lines of the log.
#include "api3/lookup_log.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <ctime>
#include <string_view>

#include "api3/name_list.h"
#include "api3/text_conversion.h"
#include "rules/secrets.h"
#include "rules/utf8.h"

namespace jx::api3 {

namespace {

void append(std::string& line, std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const rules::Character next = rules::characterAt(text, at);
        const bool isControl = rules::isControl(next, text[at]);
        for (const std::size_t end = at + next.length; at < end; ++at) {
            std::array<char, 8> spelled{text[at]};
            if (isControl)
                std::snprintf(spelled.data(), spelled.size(), "\\x%02X", static_cast<unsigned char>(text[at]));
            line += spelled.data();
        }
    }
}

void appendField(std::string& line, std::string_view text) {
    append(line, text);
    line += '\t';
}

// UTC, to the microsecond.
void appendTime(std::string& line) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    tm parts{};
    gmtime_r(&now.tv_sec, &parts);
    std::array<char, 32> date{};
    std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S.", &parts);
    const std::string micros = std::to_string(1'000'000 + now.tv_nsec / 1000);
    line.append(date.data()).append(micros, 1).append("Z\t");
}

// The place in the file that answered.
std::string lineOf(const Question& question, const Answer& answer) {
    const char* key = answer.referenceKey ? answer.referenceKey->c_str() : question.key;
    const std::size_t line = question.section == nullptr ? 1 : jxIniLine(answer.place->look(), question.section, key);
    return answer.place->path() + ":" + std::to_string(line);
}

// Whether a file behind the one that answers holds the key.
bool isHidden(const Question& question, const Sources& sources, const Answer& answer) {
    bool isBehind = false;
    for (std::size_t i = 0; i < sources.count(); ++i) {
        JxIniPart part{};
        JxIniView* view = isBehind && sources[i].isThere() ? sources[i].look() : nullptr;
        if (view != nullptr && jxIniAsk(view, question.section, question.key, &part) == JxIniFound)
            return true;
        isBehind = isBehind || &sources[i] == answer.place;
    }
    return false;
}

std::string answerField(const Question& question, const Sources& sources, const Answer& answer) {
    switch (answer.outcome) {
        case Outcome::found:
            return lineOf(question, answer);
        case Outcome::noFile:
        case Outcome::notRead:
            return "no-file";
        case Outcome::noSection:
            return "no-section";
        case Outcome::referenceRefused:
            return "reference-refused";
        case Outcome::noKey:
            break;
    }
    return isHidden(question, sources, answer) ? "hidden" : "no-key";
}

std::string defaultText(const Fallback& fallback) {
    if (fallback.units == nullptr)
        return fallback.text == nullptr ? "" : fallback.text;
    return toUtf8(unitsOf(fallback.units)).value_or("\uFFFD");
}

std::string valueField(const Question& question, const Answer& answer, const Fallback& fallback) {
    if (answer.isFound() && answer.referenceKey)
        return std::string(rules::kMask);
    if (answer.isFound() && (question.section == nullptr || question.key == nullptr))
        return withSemicolons(answer.text());
    const char* key = question.key == nullptr ? "" : question.key;
    return rules::masked(key, answer.isFound() ? std::string(answer.text()) : defaultText(fallback));
}

const char* orStar(const char* name) {
    return name == nullptr ? "*" : name;
}

}  // namespace

std::string logLine(const LookUpCall& call, const Sources& sources, const Answer& answer) {
    const Question& question = call.question;
    const std::string value = valueField(question, answer, call.fallback);  // before a file is looked at again
    std::string line;
    appendTime(line);
    appendField(line, std::to_string(getpid()));
    appendField(line, call.file == nullptr ? "" : call.file);
    appendField(line, orStar(question.section));
    appendField(line, question.section == nullptr ? "*" : orStar(question.key));
    appendField(line, answerField(question, sources, answer));
    append(line, value);
    return line += '\n';
}

}  // namespace jx::api3
