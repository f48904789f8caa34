// Writing results, sentences and errors.
#include "odbcadmin/cli/session.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/text.h"

namespace jx::admin {

namespace {

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
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (row[i].empty() && i + 1 == row.size())
            break;
        text.append(missing, ' ').append(printable(row[i]));
        missing = widths[i] - characterCount(row[i]) + 2;
    }
    return text;
}

}  // namespace

bool Session::colors() const {
    return !noColor && std::getenv("NO_COLOR") == nullptr && isatty(STDOUT_FILENO) == 1;
}

void Session::print(std::string_view text) const {
    std::cout << text << '\n';
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
    Json whole;
    whole["schema"] = "odbcadmin/1";
    whole.update(object);
    constexpr int kIndent = 2;
    std::cout << whole.dump(kIndent, ' ', /*ensure_ascii=*/false, Json::error_handler_t::replace) << '\n';
}

ExitCode Session::fail(ExitCode code, std::string_view fact, std::string_view advice) const {
    std::cout.flush();
    std::cerr << "odbcadmin: " << printable(fact) << '\n';
    if (!advice.empty())
        std::cerr << "  " << printable(advice) << '\n';
    return code;
}

void Session::warn(std::string_view text) const {
    if (quiet)
        return;
    std::cout.flush();
    std::cerr << "odbcadmin: " << printable(text) << '\n';
}

}  // namespace jx::admin
