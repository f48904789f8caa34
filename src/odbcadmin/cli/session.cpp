// Writing results, sentences and errors.
#include "odbcadmin/cli/session.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/more_rights.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/root_directory.h"
#include "odbcadmin/model/text.h"
#include "rules/secrets.h"
#include "rules/utf8.h"

namespace jx::cli {

using model::printable;

namespace {

// Bytes that belong to no UTF-8 character count one each.
std::size_t characterCount(std::string_view text) {
    return text.size() - static_cast<std::size_t>(std::count_if(text.begin(), text.end(), rules::isContinuation));
}

std::vector<std::size_t> columnWidths(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], characterCount(row[i]));
    }
    return widths;
}

std::string line(const std::vector<std::string>& row, const std::vector<std::size_t>& widths) {
    std::string text;
    std::size_t missing = 0;
    const auto last = std::find_if(row.rbegin(), row.rend(), [](const std::string& cell) { return !cell.empty(); });
    for (std::size_t i = 0; i < static_cast<std::size_t>(row.rend() - last); ++i) {
        text.append(missing, ' ').append(printable(row[i]));
        missing = widths[i] - characterCount(row[i]) + 2;
    }
    return text;
}

ExitCode codeOf(model::Reason::Kind kind) {
    using enum ExitCode;
    // In the order of the kinds.
    constexpr ExitCode kCodes[] = {done, invalid, locked, fileTrouble, notFound, exists, wrongUse, failed, fileTrouble};
    return kCodes[static_cast<std::size_t>(kind)];
}

}  // namespace

std::vector<std::string> Session::pathsOf(const model::ChangeResult& result) {
    std::vector<std::string> paths;
    for (const model::ChangedFile& file : result.files)
        if (std::find(paths.begin(), paths.end(), file.path) == paths.end())
            paths.push_back(file.path);
    return paths;
}

bool Session::colors() const {
    return !noColor && std::getenv("NO_COLOR") == nullptr && isatty(STDOUT_FILENO) == 1;
}

void Session::print(std::string_view text) const {
    std::cout << text << '\n';
}

void Session::printOfFile(std::string_view lines) const {
    std::string shown(lines);
    if (isatty(STDOUT_FILENO) == 1)
        shown = printable(lines);
    for (std::size_t i = 0; i < shown.size(); ++i)
        if (lines[i] == '\n' || lines[i] == '\t')
            shown[i] = lines[i];
    print(shown);
}

void Session::say(std::string_view text) const {
    if (!quiet && !json)
        std::cout << printable(text) << '\n';
}

void Session::printTable(const std::vector<std::vector<std::string>>& rows) const {
    const std::vector<std::size_t> widths = columnWidths(rows);
    std::string text;
    for (const auto& row : rows)
        text.append(line(row, widths)).append("\n");
    std::cout << text;
}

void Session::printJson(const Json& object) const {
    hasPrintedJson = true;
    Json whole;
    whole["schema"] = "odbcadmin/1";
    whole.update(object);
    constexpr int kIndent = 2;
    std::cout << whole.dump(kIndent, ' ', /*ensure_ascii=*/false, Json::error_handler_t::replace) << '\n';
}

ExitCode Session::fail(ExitCode code, std::string_view fact, std::string_view advice) const {
    if (json && !hasPrintedJson)
        printJson({{"error", {{"code", static_cast<int>(code)}, {"fact", fact}, {"advice", advice}}}});
    std::cout.flush();
    std::cerr << "odbcadmin: " << printable(fact) << '\n';
    if (!advice.empty())
        std::cerr << "  " << printable(advice) << '\n';
    return code;
}

ExitCode Session::fail(const model::Reason& reason) const {
    return fail(codeOf(reason.kind), reason.fact, adviceOn(reason, *this));
}

model::ChangeWay Session::way() const {
    model::ChangeWay way;
    if (writesNothing())
        way.writing = model::ChangeWay::Writing::never;
    if (showSecrets)
        way.secrets = model::ChangeWay::Secrets::shown;
    way.aroundWait = [isQuiet = quiet](const std::string& path, const std::function<void()>& wait) {
        const Waiting waiting(isQuiet, "Waiting for the lock on " + path);
        wait();
    };
    way.scope = system ? model::Scope::system : model::Scope::user;
    if (openSecrets)
        way.openSecrets = model::ChangeWay::OpenSecrets::allowed;
    return way;
}

std::string Session::imageRoot() const {
    return root.empty() ? "" : model::absolutePath(unmarked(root));
}

std::string Session::storedPath(const std::string& given) const {
    const std::string path = model::absoluteLibrary(given);
    return model::pathInImage(imageRoot(), path).value_or(path);
}

model::Scopes Session::scopes() const {
    if (system)
        return {model::Seen::system, model::Seen::system};
    // Data sources of the user's may well use drivers of the system's.
    return {user ? model::Seen::user : model::Seen::both, model::Seen::both};
}

std::string Session::shown(std::string_view key, std::string_view value) const {
    return showSecrets ? std::string(value) : rules::masked(key, value);
}

ExitCode Session::report(const model::ChangeResult& result, const std::string& sentence,
                         const std::vector<std::string>& remarks) const {
    return report(result, sentence, remarks, Json::object());
}

ExitCode Session::report(const model::ChangeResult& result, const std::string& sentence,
                         const std::vector<std::string>& remarks, const Json& more) const {
    const std::vector<std::string> files = pathsOf(result);
    if (!result.isDone() && (files.empty() || writesNothing()))
        return fail(result.reason);
    if (!result.isDone())
        return fail(codeOf(result.reason.kind), result.reason.fact,
                    adviceOn(result.reason, *this) + " Written before that: " + model::joined(files) + ".");
    std::string difference;
    for (const model::ChangedFile& file : result.files)
        difference += file.difference;
    // What would change did not: only a change that was made has its sentence.
    const std::string said = files.empty()     ? "unchanged: nothing to do"
                             : writesNothing() ? "would change: " + model::joined(files)
                                               : sentence;
    if (json) {
        Json object{{"result", files.empty()     ? "unchanged"
                               : writesNothing() ? "would change"
                                                 : "changed"},
                    {"changed", !files.empty() && !writesNothing()},
                    {"message", said},
                    {"files", files}};
        if (!remarks.empty())
            object["remarks"] = remarks;
        if (dryRun)
            object["difference"] = difference;
        object.update(more);
        printJson(object);
    } else if (dryRun && !files.empty()) {
        printOfFile(std::string_view(difference).substr(0, difference.size() - 1));
    } else {
        say(said);
    }
    if (!json)
        for (const std::string& remark : remarks)
            warn(remark);
    return check && !files.empty() ? ExitCode::wouldChange : ExitCode::done;
}

void Session::warn(std::string_view text) const {
    if (quiet)
        return;
    std::cout.flush();
    std::cerr << "odbcadmin: " << printable(text) << '\n';
}

}  // namespace jx::cli
