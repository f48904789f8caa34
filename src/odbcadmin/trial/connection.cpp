// Asking the helper to connect and reading its answer.
#include "odbcadmin/trial/connection.h"

#include <charconv>

namespace jx::trial {

namespace {

// Names with characters that end a value go between braces.
std::string connectionString(const std::string& dataSource) {
    if (dataSource.find_first_of("[]{}(),;?*=!@") == std::string::npos)
        return "DSN=" + dataSource;
    std::string value;
    for (const char letter : dataSource)
        value.append(letter == '}' ? 2 : 1, letter);
    return "DSN={" + value + "}";
}

int numberOf(const std::string& text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// Whether the record is one of a remark, which comes in three.
bool takeDiagnostic(const std::string& word, const std::string& text, std::vector<Diagnostic>& diagnostics) {
    if (word == "state")
        diagnostics.push_back({text, 0, ""});
    else if (word == "native" && !diagnostics.empty())
        diagnostics.back().native = numberOf(text);
    else if (word == "message" && !diagnostics.empty())
        diagnostics.back().message = text;
    else
        return false;
    return true;
}

void takeConnection(const std::string& word, const std::string& text, ConnectReport& trial) {
    using End = ConnectReport::End;
    if (takeDiagnostic(word, text, trial.diagnostics))
        return;
    if (word == "calls" || word == "missing")
        trial.function = text;
    if (word == "missing") {
        trial.end = End::noFunction;
    } else if (word == "refused") {
        trial.end = End::notLoaded;
        trial.sentence = text;
    } else if (word == "failed") {
        trial.end = trial.end == End::noFunction ? End::noFunction : End::refused;
        trial.code = numberOf(text);
    } else if (word == "driver") {
        trial.driver = text;
    } else if (word == "database") {
        trial.database = text;
    } else if (word == "connected") {
        trial.end = End::connected;
    }
}

}  // namespace

ConnectReport tryConnecting(const ConnectRequest& request, const Waiting& waiting) {
    const Records texts{{"source", request.dataSource}, {"connect", connectionString(request.dataSource)}};
    return answerOf<ConnectReport>(
        runHelper({"connect", request.library, request.namedBy, texts, request.limit}, waiting), takeConnection);
}

}  // namespace jx::trial
