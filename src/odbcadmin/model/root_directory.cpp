// Moving all paths below a directory, and looking that they stay there.
#include "odbcadmin/model/root_directory.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "odbcadmin/model/config_file.h"
#include "odbcadmin/model/config_places.h"
#include "odbcadmin/model/text.h"

namespace jx::model {

namespace fs = std::filesystem;

namespace {

constexpr int kMostLinks = 40;

bool liesIn(const fs::path& path, const fs::path& directory) {
    const fs::path relative = path.lexically_relative(directory);
    return !relative.empty() && *relative.begin() != "..";
}

// Where a write to path would put the file, link after link; an absolute link is followed as this system follows it.
bool staysIn(const fs::path& directory, fs::path path) {
    for (int links = 0; links < kMostLinks; ++links) {
        std::error_code error;
        const fs::path folder = fs::weakly_canonical(path.parent_path(), error);
        if (error)
            return false;
        const fs::path real = folder / path.filename();
        if (!fs::is_symlink(fs::symlink_status(real, error)))
            return liesIn(real, directory);
        const fs::path target = fs::read_symlink(real, error);
        path = target.is_absolute() ? target : folder / target;
    }
    return false;
}

}  // namespace

Reason enterRoot(const std::string& directory) {
    std::error_code error;
    const fs::path root = fs::canonical(absolutePath(directory), error);
    if (error || !fs::is_directory(root, error))
        return {Reason::Kind::fileTrouble,
                "Cannot use " + directory + " as root: " + (error ? error.message() : "Not a directory"),
                "Give --root a directory that exists."};
    setenv("HOME", (root / fs::path(homeDirectory()).relative_path()).c_str(), 1);
    setenv("ODBCSYSINI", (root / "etc").c_str(), 1);
    unsetenv("ODBCINI");
    unsetenv("ODBCINSTINI");
    for (const Scope scope : {Scope::user, Scope::system})
        for (const FileKind kind : {FileKind::dataSources, FileKind::drivers})
            if (const std::string path = pathOf(nameOf(kind), scope); !staysIn(root, path))
                return {Reason::Kind::refused, "A symbolic link leads from " + path + " out of " + root.string(),
                        "Replace the link by a relative one, or by the file itself."};
    return {};
}

std::optional<std::string> pathInImage(const std::string& root, const std::string& path) {
    if (root.empty())
        return path;
    std::error_code ignored;
    const fs::path normal = fs::path(path).lexically_normal();
    for (const fs::path& each : {fs::path(root).lexically_normal(), fs::canonical(root, ignored)})
        if (const fs::path relative = normal.lexically_relative(each); !each.empty() && liesIn(normal, each))
            return relative == "." ? "/" : "/" + relative.string();
    return std::nullopt;
}

}  // namespace jx::model
