// Compares names with the two that are known.
#include "api3/file_names.h"

#include <string_view>

#include "rules/names.h"

namespace jx::api3 {

FileKind fileKindOf(const char* name) {
    if (name == nullptr)
        return FileKind::none;
    if (*name == '/')
        return FileKind::path;
    const std::string_view bare = *name == '.' ? name + 1 : name;
    if (rules::sameName(bare, "odbc.ini"))
        return FileKind::dataSources;
    return rules::sameName(bare, "odbcinst.ini") ? FileKind::drivers : FileKind::none;
}

}  // namespace jx::api3
