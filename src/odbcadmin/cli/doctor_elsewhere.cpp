// Running the examination elsewhere, and reading its answer.
#include "odbcadmin/cli/doctor_elsewhere.h"

#include <unistd.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "odbcadmin/cli/findings_output.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/doctor/run_elsewhere.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using doctor::Finding;
using doctor::Severity;

// What of the line is asked there as well.
std::vector<std::string> wordsOf(const Line& line) {
    std::vector<std::string> words;
    if (line.has("--report"))
        words.emplace_back("--report");
    if (line.has("--timeout"))
        words.insert(words.end(), {"--timeout", line.text("--timeout")});
    words.emplace_back("--");
    const std::vector<std::string> names = line.texts("NAME");
    words.insert(words.end(), names.begin(), names.end());
    return words;
}

std::string textOf(const Json& object, const char* member) {
    const auto found = object.find(member);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

Severity severityIn(const std::string& word) {
    for (const Severity each : {Severity::error, Severity::warning})
        if (word == doctor::severityWord(each))
            return each;
    return Severity::note;
}

doctor::Findings findingsIn(const Json& answer) {
    doctor::Findings findings;
    const auto list = answer.find("findings");
    if (list == answer.end() || !list->is_array())
        return findings;
    for (const Json& each : *list)
        if (each.is_object())
            findings.push_back({textOf(each, "id"), severityIn(textOf(each, "severity")), textOf(each, "subject"),
                                textOf(each, "fact"), textOf(each, "advice")});
    return findings;
}

// The variables that decide which files and libraries count there, in one line.
std::string placeText(const doctor::Standpoint& place) {
    std::string text;
    for (const char* name : {"HOME", "ODBCINI", "ODBCINSTINI", "LD_LIBRARY_PATH"}) {
        const std::string begin = std::string(name) + "=";
        const auto found = std::find_if(place.environment.begin(), place.environment.end(),
                                        [&](const std::string& each) { return each.starts_with(begin); });
        if (found != place.environment.end())
            text += (text.empty() ? ", " : " ") + *found;
    }
    return "Examined as " + place.who + text;
}

ExitCode showAnswer(const Session& session, const Json& answer, const doctor::Standpoint& place,
                    const doctor::ElsewhereRun& run) {
    const auto code = static_cast<ExitCode>(run.code);
    const auto error = answer.find("error");
    if (error != answer.end() && error->is_object())
        return session.fail(code, textOf(*error, "fact"), textOf(*error, "advice"));
    const std::string report = textOf(answer, "report");
    Json more{{"as", place.who}};
    if (!report.empty())
        more["report"] = report;
    if (!report.empty() && !session.json) {
        std::istringstream lines(report);
        for (std::string line; std::getline(lines, line);)
            session.print(model::printable(line));
        return code;
    }
    session.say(model::printable(placeText(place)));
    showFindings(session, findingsIn(answer), more);
    // What else it had to say stands in lines of their own.
    std::istringstream lines(run.errors);
    std::string fact;
    std::string advice;
    if (!std::getline(lines, fact))
        return code;
    std::getline(lines, advice);
    constexpr std::string_view kName = "odbcadmin: ";
    return session.fail(code, fact.substr(fact.starts_with(kName) ? kName.size() : 0),
                        advice.substr(std::min(advice.find_first_not_of(' '), advice.size())));
}

model::Reason takeStandpoint(const Line& line, doctor::Standpoint& place) {
    return line.has("--pid") ? doctor::standpointOfProcess(line.text("--pid"), place)
                             : doctor::standpointOfAccount(line.text("--as-user"), place);
}

// The whole line, to be pasted.
std::string commandOf(const Line& line) {
    std::string command = "odbcadmin doctor";
    for (const char* option : {"--as-user", "--pid"})
        if (line.has(option))
            command += std::string(" ") + option + " " + model::shellWord(line.text(option));
    for (const std::string& word : wordsOf(line))
        command += word == "--" ? "" : " " + model::shellWord(word);
    return command;
}

}  // namespace

bool isDoctorElsewhere(const Line& line) {
    return line.has("--as-user") || line.has("--pid");
}

ExitCode runDoctorElsewhere(const Session& session, const Line& line) {
    if (!session.home.empty())
        return session.fail(ExitCode::wrongUse, "--home, --as-user and --pid each say whose files are looked at",
                            "Give one of them.");
    doctor::Standpoint place;
    model::Reason reason = takeStandpoint(line, place);
    if (reason.kind == model::Reason::Kind::fileTrouble)
        reason.advice = ::geteuid() != 0 ? "Run: sudo " + commandOf(line)
                                         : "Not even root may look at it here; look as its user: --as-user USER";
    if (reason)
        return session.fail(reason);
    if (!place.isOpenToThisUser())
        return session.fail(ExitCode::failed, "Only root can look with the rights of " + place.who,
                            "Run: sudo " + commandOf(line));
    std::vector<std::string> words{"doctor", "--json"};
    const std::vector<std::string> more = wordsOf(line);
    words.insert(words.end(), more.begin(), more.end());
    doctor::ElsewhereRun run;
    {
        Progress progress(session.quiet);
        progress.begin("Examining as " + place.who);
        run = doctor::runElsewhere(place, words, [&] { progress.tick(); });
    }
    if (run.trouble)
        return session.fail(run.trouble);
    const Json answer = Json::parse(run.output, nullptr, /*allow_exceptions=*/false);
    if (!answer.is_object())
        return session.fail(ExitCode::failed,
                            "The examination as " + place.who + " gave no answer: " +
                                (run.errors.empty() ? "exit code " + std::to_string(run.code)
                                                    : run.errors.substr(0, run.errors.find('\n'))),
                            "Run odbcadmin doctor as that user.");
    return showAnswer(session, answer, place, run);
}

}  // namespace jx::cli
