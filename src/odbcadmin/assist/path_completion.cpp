// Comparing a path with what its directory holds.
#include "odbcadmin/assist/path_completion.h"

#include <jxscreen.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "odbcadmin/assist/forms.h"

namespace jx::assist {

namespace fs = std::filesystem;

namespace {

// The begin that both names share.
std::string common(const std::string& left, const std::string& right) {
    std::size_t size = 0;
    while (size < left.size() && size < right.size() && left[size] == right[size])
        ++size;
    return left.substr(0, size);
}

struct Agreed {
    std::string name;
    std::size_t count = 0;
};

// What the names in a directory that begin with a text agree in.
Agreed agreed(const fs::path& directory, const std::string& begin) {
    Agreed result;
    std::error_code error;
    for (fs::directory_iterator each(directory, error), end; !error && each != end; each.increment(error)) {
        const std::string name = each->path().filename().string();
        const bool isHidden = name.starts_with('.') && begin.empty();
        if (isHidden || !name.starts_with(begin))
            continue;
        result.name = result.count == 0 ? name : common(result.name, name);
        ++result.count;
    }
    return result;
}

}  // namespace

std::string expandedPath(const std::string& path) {
    const char* home = std::getenv("HOME");
    if (home == nullptr || (path != "~" && !path.starts_with("~/")))
        return path;
    return home + path.substr(1);
}

std::string completedPath(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return path == "~" ? "~/" : path;
    const std::string directory = path.substr(0, slash + 1);
    const Agreed found = agreed(expandedPath(directory), path.substr(slash + 1));
    if (found.count == 0)
        return path;
    std::error_code ignored;
    const bool isDirectory = found.count == 1 && fs::is_directory(expandedPath(directory + found.name), ignored);
    return directory + found.name + (isDirectory ? "/" : "");
}

bool completePath(HWND dialog) {
    JxwDialogInfo info{};
    JxwControlInfo field{};
    if (JXW_GetDialogInfo(dialog, &info) == 0 || std::string_view(info.module) != kFormModule ||
        info.templateId != kFormDialog || JXW_GetControlInfo(dialog, info.focus, &field) == 0 ||
        (field.id != kFormLibrary && field.id != kFormSetup))
        return false;
    const std::string completed = completedPath(field.text);
    if (completed == field.text)
        return false;
    return JXW_UserEdit(dialog, field.id, completed.c_str()) != 0;
}

}  // namespace jx::assist
