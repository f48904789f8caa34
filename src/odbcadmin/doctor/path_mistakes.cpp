// Recognizing mistakes in paths, and following names to libraries.
#include "odbcadmin/doctor/path_mistakes.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "rules/names.h"

namespace jx::doctor {

namespace {

std::string unquoted(std::string_view value) {
    return std::string(rules::trimmed(value.substr(1, value.size() - 2)));
}

std::string home() {
    const char* value = std::getenv("HOME");
    return value != nullptr && *value != '\0' ? value : "/home/NAME";
}

// The name of the variable with which the value begins: "$NAME/..." or "${NAME}/...". Not what the loader replaces.
std::string variableOf(const std::string& value) {
    if (!value.starts_with('$'))
        return {};
    const std::string word = value.substr(1, value.find('/') - 1);
    const bool hasBraces = word.starts_with('{') && word.ends_with('}');
    std::string name = hasBraces ? word.substr(1, word.size() - 2) : word;
    for (const char* loaders : {"ORIGIN", "LIB", "PLATFORM"})
        if (name == loaders)
            return {};
    return name;
}

std::optional<PathMistake> unexpandedIn(const std::string& value) {
    const std::size_t slash = value.find('/');
    if (slash == std::string::npos)
        return std::nullopt;
    const std::string name = variableOf(value);
    if (value.starts_with("~/") || name == "HOME")
        return PathMistake{&check::kUnexpandedPath, "begins with what only shells replace by the home directory",
                           home() + value.substr(slash)};
    if (name.empty())
        return std::nullopt;
    const char* directory = std::getenv(name.c_str());
    return PathMistake{&check::kUnexpandedPath, "begins with $" + name + ", which only shells replace",
                       directory != nullptr ? directory + value.substr(slash) : ""};
}

// "C:\\..." or "x.dll".
bool isOfOtherSystem(const std::string& value) {
    const bool hasDrive = value.size() > 2 && value[1] == ':' && (value[2] == '\\' || value[2] == '/');
    constexpr std::string_view kEnding = ".dll";
    const bool isDll =
        value.size() > kEnding.size() && rules::sameName(value.substr(value.size() - kEnding.size()), kEnding);
    return hasDrive || isDll;
}

// Where a comment would begin, if this were a line of its own.
std::size_t commentIn(std::string_view value) {
    // Most values have neither; two searches for a letter are much quicker than one for any of two.
    if (value.find(';') == std::string_view::npos && value.find('#') == std::string_view::npos)
        return std::string_view::npos;
    for (std::size_t at = value.find_first_of(";#"); at != std::string_view::npos;
         at = value.find_first_of(";#", at + 1))
        if (at > 0 && (value[at - 1] == ' ' || value[at - 1] == '\t'))
            return at;
    return std::string_view::npos;
}

bool isFile(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

}  // namespace

std::optional<Wrapping> wrappingOf(std::string_view value) {
    const bool isLong = value.size() > 1;
    if (isLong && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
        return Wrapping{&check::kQuotedValue, "stands in quotes", unquoted(value)};
    if (isLong && value.front() == '{' && value.back() == '}')
        return Wrapping{&check::kQuotedValue, "stands in braces, as values of connection strings do", unquoted(value)};
    const std::size_t comment = commentIn(value);
    if (comment == std::string_view::npos)
        return std::nullopt;
    return Wrapping{&check::kCommentBehindValue, "has a comment behind it",
                    std::string(rules::trimmed(value.substr(0, comment)))};
}

std::string PathMistake::advice(const std::string& key) const {
    if (meant.empty())
        return "Give the full path of the library on this system; odbcadmin driver scan shows those that are there.";
    return "Write the line as: " + key + "=" + meant;
}

std::optional<PathMistake> mistakeIn(const std::string& value) {
    const std::optional<Wrapping> wrapping = wrappingOf(value);
    if (wrapping && wrapping->check == &check::kQuotedValue)
        return PathMistake{&check::kQuotedPath, wrapping->fact + ", which belong to the value here", wrapping->inner};
    if (auto mistake = unexpandedIn(value))
        return mistake;
    if (wrapping && !isFile(value))
        return PathMistake{&check::kCommentInValue, wrapping->fact + ", which belongs to the value here",
                           wrapping->inner};
    if (isOfOtherSystem(value))
        return PathMistake{&check::kForeignPath, "is a path of another kind of system", ""};
    return std::nullopt;
}

std::string inDriverDirectories(const std::string& name, const LoaderPlaces& places) {
    if (name.empty())
        return {};
    for (const char* below : {"odbc", ""})
        for (const std::string& directory : places.defaults) {
            const std::filesystem::path path = std::filesystem::path(directory) / below / name;
            if (isFile(places.root + path.string()))
                return path.string();
        }
    return {};
}

std::string meantLibrary(const std::string& value, const model::Configuration& configuration,
                         const LoaderPlaces& places) {
    if (value.find('/') != std::string::npos)
        return value;
    const auto& driver = configuration.driver(value);
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
