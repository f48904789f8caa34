// Asking the helper for a call of a setup routine and reading its answer.
#include "odbcadmin/trial/setup_call.h"

namespace jx::trial {

namespace {

// What SQLConfigDataSource takes at most.
constexpr std::size_t kLongestList = 1024;
constexpr std::size_t kLongestDriver = 49;

// The numbers that the call has for them.
const char* codeOf(SetupRequest::Action action) {
    return action == SetupRequest::Action::add ? "1" : action == SetupRequest::Action::configure ? "2" : "3";
}

// As a list of items that end with a NUL, and one more at the end.
std::size_t lengthOf(const Records& items) {
    std::size_t length = 1;
    for (const auto& [word, item] : items)
        length += item.size() + 1;
    return length;
}

Records itemsOf(const SetupRequest& request) {
    Records items{{"attribute", "DSN=" + request.dataSource}};
    for (const auto& [key, value] : request.attributes)
        items.emplace_back("attribute", key + "=" + value);
    return items;
}

SetupReport tooLong(const char* what) {
    SetupReport report;
    report.end = SetupReport::End::tooLong;
    report.sentence = what;
    return report;
}

void takeSetup(const std::string& word, const std::string& text, SetupReport& setup) {
    using End = SetupReport::End;
    if (word == "refused") {
        setup.end = End::notLoaded;
        setup.sentence = text;
    } else if (word == "missing") {
        setup.end = End::noRoutine;
    } else if (word == "calls") {
        setup.function = text;
    } else if (word == "error") {
        setup.errors.push_back(text);
    } else if (word == "agreed" || word == "declined") {
        setup.end = word == "agreed" ? End::agreed : End::declined;
    }
}

}  // namespace

SetupReport callSetup(const SetupRequest& request, const Waiting& waiting) {
    Records details = itemsOf(request);
    if (lengthOf(details) > kLongestList)
        return tooLong("more than 1024 bytes");
    if (request.driver.size() > kLongestDriver)
        return tooLong("the driver's name is too long");
    details.emplace_back("request", codeOf(request.action));
    details.emplace_back("driver", request.driver);
    return answerOf<SetupReport>(
        runHelper({"setup", request.library, request.namedBy, details, request.limit}, waiting), takeSetup);
}

}  // namespace jx::trial
