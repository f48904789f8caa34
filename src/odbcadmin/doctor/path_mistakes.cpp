// Recognizing mistakes in paths, and following names to libraries.
#include "odbcadmin/doctor/path_mistakes.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "rules/names.h"

namespace jx::doctor {

namespace {

std::string unquoted(const std::string& value) {
    return std::string(rules::trimmed(value.substr(1, value.size() - 2)));
}

// What follows "~", "$HOME" or "${HOME}" at the value's begin; nothing when none stands there.
std::optional<std::string> behindHome(const std::string& value) {
    for (const std::string_view mark : {"~/", "$HOME/", "${HOME}/"})
        if (value.starts_with(mark))
            return value.substr(mark.size() - 1);
    return std::nullopt;
}

std::string home() {
    const char* value = std::getenv("HOME");
    return value != nullptr && *value != '\0' ? value : "/home/NAME";
}

// Where a comment would begin, if this were a line of its own.
std::size_t commentIn(const std::string& value) {
    for (std::size_t at = value.find_first_of(";#"); at != std::string::npos; at = value.find_first_of(";#", at + 1))
        if (at > 0 && (value[at - 1] == ' ' || value[at - 1] == '\t'))
            return at;
    return std::string::npos;
}

bool isFile(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

}  // namespace

std::optional<PathMistake> mistakeIn(const std::string& value) {
    const bool isQuoted =
        value.size() > 1 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
    if (isQuoted)
        return PathMistake{&check::kQuotedPath, "stands in quotes, which belong to the value here", unquoted(value)};
    if (const auto rest = behindHome(value))
        return PathMistake{&check::kUnexpandedPath, "begins with what only shells replace by the home directory",
                           home() + *rest};
    const std::size_t comment = commentIn(value);
    if (comment != std::string::npos && !isFile(value))
        return PathMistake{&check::kCommentInValue, "has a comment behind it, which belongs to the value here",
                           std::string(rules::trimmed(value.substr(0, comment)))};
    return std::nullopt;
}

std::string inDriverDirectories(const std::string& name, const LoaderPlaces& places) {
    if (name.empty())
        return {};
    for (const char* below : {"odbc", ""})
        for (const std::string& directory : places.defaults) {
            const std::filesystem::path path = std::filesystem::path(directory) / below / name;
            if (isFile(path))
                return path.string();
        }
    return {};
}

std::string meantLibrary(const std::string& value, const model::Configuration& configuration,
                         const LoaderPlaces& places) {
    if (value.find('/') != std::string::npos)
        return value;
    const auto driver = configuration.driver(value);
    if (driver && driver->library && driver->library.text.find('/') != std::string::npos)
        return driver->library.text;
    const std::string found = inDriverDirectories(driver && driver->library ? driver->library.text : value, places);
    return found.empty() ? value : found;
}

std::string meantLibrary(const model::DataSource& source, const model::Configuration& configuration,
                         const LoaderPlaces& places) {
    if (source.library)
        return meantLibrary(source.library.text, configuration, places);
    const auto driver = source.listed ? configuration.driver(source.driver) : std::nullopt;
    return driver && driver->library ? meantLibrary(driver->library.text, configuration, places) : "";
}

}  // namespace jx::doctor
