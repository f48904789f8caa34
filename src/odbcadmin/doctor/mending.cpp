// Going over the lines of a text, and writing those anew that are mended.
#include "odbcadmin/doctor/mending.h"

#include <jxini.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/driver_scan.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/model/root_directory.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"
#include "rules/sections.h"

namespace jx::doctor {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kMarkBytes = "\xEF\xBB\xBF";

struct ReleaseText {
    void operator()(JxIniText* text) const { jxIniRelease(text); }
};

bool leadsToNothing(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

bool namesLibrary(std::string_view key) {
    return rules::sameName(key, rules::kDriver) || rules::sameName(key, rules::kSetup) ||
           rules::sameName(key, rules::kTranslator);
}

class Mender {
public:
    Mender(std::string_view text, Holds holds, const MovedLibraries& libraries)
        : text_(text), holds_(holds), libraries_(libraries) {}

    Mending run() {
        const std::unique_ptr<JxIniText, ReleaseText> parsed(jxIniParse(text_.data(), text_.size()));
        JxIniPiece piece;
        for (std::size_t i = 0; jxIniPieceAt(parsed.get(), i, &piece) != 0; ++i)
            mendPiece(piece);
        if (!parsed)
            return {std::string(text_), {}};
        if (lineEnds_ > 0)
            fix(0, "the carriage returns at the ends of " + model::counted(lineEnds_, "line"));
        return std::move(mending_);
    }

private:
    void fix(std::size_t line, std::string what) { mending_.fixes.push_back({line, std::move(what)}); }

    void mendPiece(const JxIniPiece& piece) {
        std::string_view line = text_.substr(piece.begin, piece.end - piece.begin);
        if (piece.kind == JxIniOther && line == kMarkBytes)
            return fix(piece.line, "the byte order mark");
        const bool hasFeed = line.ends_with('\n');
        line.remove_suffix(hasFeed ? 1 : 0);
        const std::string_view whole = line;
        while (line.ends_with('\r'))
            line.remove_suffix(1);
        lineEnds_ += line.size() < whole.size() ? 1 : 0;
        if (piece.kind == JxIniSection)
            section_.assign(piece.name, piece.nameLength);
        mending_.text += piece.kind == JxIniEntry && piece.value != nullptr ? mendedEntry(piece, line) : line;
        mending_.text += hasFeed ? "\n" : "";
    }

    std::string mendedEntry(const JxIniPiece& piece, std::string_view line) {
        const std::string key(piece.name, piece.nameLength);
        const std::string value(piece.value, piece.valueLength);
        if (rules::isReservedSection(section_) || !namesLibrary(key))
            return std::string(line);
        const std::string mendedValue = meantValue(piece.line, key, value);
        if (mendedValue == value)
            return std::string(line);
        std::string mended(line);
        const std::size_t at = line.find(value, line.find('=') + 1);
        return at == std::string_view::npos ? mended : mended.replace(at, value.size(), mendedValue);
    }

    std::string meantValue(std::size_t line, const std::string& key, const std::string& value) {
        std::string meant = value;
        const auto mistake = mistakeIn(value);
        if (mistake && mistake->check == &check::kQuotedPath && !mistake->meant.empty()) {
            meant = mistake->meant;
            fix(line,
                std::string("the ") + (value.front() == '{' ? "braces" : "quotes") + " around the value of " + key);
        }
        const bool isDataSources = holds_ == Holds::dataSources && rules::sameName(key, rules::kDriver);
        std::string moved = isDataSources ? libraries_.placeOf(meant, section_) : libraries_.placeOf(meant);
        if (moved.empty())
            return meant;
        fix(line, "the path of " + key + ", which is " + moved + " now");
        return moved;
    }

    std::string_view text_;
    Holds holds_;
    const MovedLibraries& libraries_;
    Mending mending_;
    std::size_t lineEnds_ = 0;
    std::string section_;
};

}  // namespace

MovedLibraries::MovedLibraries(const model::Configuration& configuration, const LoaderPlaces& places)
    : root_(places.root), directories_(usualDriverDirectories(places)) {
    for (const model::Registered& driver : configuration.drivers())
        for (const model::Located* library : {&driver.library, &driver.setup})
            if (library->text.starts_with('/'))
                directories_.push_back(root_ + fs::path(library->text).parent_path().string());
    for (const model::DataSource& source : configuration.dataSources())
        if (const auto driver = source.listed ? configuration.driver(source.driver) : std::nullopt)
            ofDataSources_[rules::foldedName(source.name)] = driver->library.text;
}

std::string MovedLibraries::placeOf(const std::string& path, const std::string& dataSource) const {
    const auto driver = ofDataSources_.find(rules::foldedName(dataSource));
    if (driver == ofDataSources_.end() || !path.starts_with('/') || !leadsToNothing(root_ + path))
        return placeOf(path);
    const std::string& library = driver->second;
    return library.starts_with('/') && !leadsToNothing(root_ + library) ? library : placeOf(path);
}

std::string MovedLibraries::placeOf(const std::string& path) const {
    if (!path.starts_with('/') || path.ends_with('/') || !leadsToNothing(root_ + path))
        return {};
    std::string found;
    fs::path real;
    for (const std::string& directory : directories_) {
        const fs::path candidate = fs::path(directory) / fs::path(path).filename();
        std::error_code error;
        if (!fs::is_regular_file(candidate, error))
            continue;
        const fs::path resolved = fs::canonical(candidate, error);
        if (!found.empty() && resolved != real)
            return {};
        if (found.empty())
            found = candidate.string();
        real = resolved;
    }
    return model::pathInImage(root_, found).value_or("");
}

Mending mend(std::string_view text, Holds holds, const MovedLibraries& libraries) {
    // In UTF-16 no byte is what it looks like.
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
        return {std::string(text), {}};
    return Mender(text, holds, libraries).run();
}

}  // namespace jx::doctor
