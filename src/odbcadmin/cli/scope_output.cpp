// Words and JSON members about scopes.
#include "odbcadmin/cli/scope_output.h"

#include <nlohmann/json.hpp>

namespace jx::cli {

Json placeJson(const model::Located& located) {
    return located ? Json{{"file", located.file->path}, {"line", located.line}} : Json();
}

std::string sectionText(const model::Located& header) {
    return "[" + header.text + "] of " + header.where();
}

void addScope(Json& object, const model::ConfigFile& file, bool isShadowed) {
    object["scope"] = scopeWord(file.scope);
    object["shadowed"] = isShadowed;
}

}  // namespace jx::cli
