// Sentences about reports, and the secrets in them.
#include "odbcadmin/doctor/connection_words.h"

#include <algorithm>
#include <cctype>

#include "odbcadmin/model/text.h"
#include "rules/names.h"
#include "rules/secrets.h"

namespace jx::doctor {

namespace {

using model::printable;
using trial::ConnectReport;

std::string linesOf(const std::string& message) {
    std::string lines;
    for (std::size_t at = 0; at < message.size();) {
        const std::size_t end = std::min(message.find_first_of("\r\n", at), message.size());
        std::string line = message.substr(at, end - at);
        std::replace(line.begin(), line.end(), '\t', ' ');
        const std::string_view trimmed = rules::trimmed(line);
        if (!trimmed.empty())
            lines.append(lines.empty() ? "" : "\n  ").append(printable(trimmed));
        at = end + 1;
    }
    return lines;
}

// Every place where the word stands by itself; a long one anywhere, since nothing else looks like it.
void hideWord(std::string& text, const std::string& word) {
    constexpr std::size_t kLong = 8;
    const auto isPartOfWord = [&](std::size_t at) {
        return at < text.size() && std::isalnum(static_cast<unsigned char>(text[at])) != 0;
    };
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at)) {
        const bool isPart = (at > 0 && isPartOfWord(at - 1)) || isPartOfWord(at + word.size());
        if (!isPart || word.size() >= kLong)
            text.replace(at, word.size(), rules::kMask);
        at += !isPart || word.size() >= kLong ? rules::kMask.size() : word.size();
    }
}

}  // namespace

std::string endOf(const ConnectReport& report, std::chrono::milliseconds limit) {
    using End = ConnectReport::End;
    const std::string during = report.function.empty() ? "while the driver was loaded" : "in " + report.function;
    switch (report.end) {
        case End::connected:
            return "connected";
        case End::refused:
            return report.function + " failed with result " + std::to_string(report.code);
        case End::notLoaded:
            return "the loader says: " + report.sentence;
        case End::noFunction:
            return "the driver has no " + report.function;
        case End::crashed:
            return "the driver crashed " + during + ", with " + trial::signalText(report.code);
        case End::exited:
            return "the driver ended the program " + during + ", with exit code " + std::to_string(report.code);
        case End::timedOut:
            return "no answer within " + model::secondsText(limit) + ", " + during;
        case End::withheld:
            return "its driver is not loaded with the rights of root: " + report.why;
        case End::notStarted:
            break;
    }
    return "the program that connects could not be started: " + report.why;
}

trial::Outcome outcomeOf(const ConnectReport& report) {
    return report.end == ConnectReport::End::connected ? trial::Outcome::connected : trial::Outcome::refused;
}

std::string describe(const trial::Diagnostic& diagnostic, trial::Outcome outcome) {
    const trial::StateMeaning meaning = trial::meaningOf(diagnostic.state, outcome);
    return printable(diagnostic.state) + " (native " + std::to_string(diagnostic.native) + ") " +
           linesOf(diagnostic.message) + "\n  means: " + meaning.meaning + ". " + meaning.advice;
}

void hideSecrets(const model::DataSource& source, ConnectReport& report) {
    if (source.section == nullptr)
        return;
    const auto hide = [&](std::string& text) {
        text = rules::masked({}, text);
        for (const model::IniEntry& entry : source.section->entries)
            if (rules::isSecretKey(entry.key) && !entry.value.empty())
                hideWord(text, std::string(entry.value));
    };
    hide(report.output);
    for (trial::Diagnostic& each : report.diagnostics)
        hide(each.message);
}

}  // namespace jx::doctor
