// Composing references.
#include "odbcadmin/model/secret_reference.h"

#include "odbcadmin/model/data_source_change.h"

namespace jx::model {

std::string whyNeverFollowed(rules::Reference kind, std::string_view target) {
    switch (kind) {
        case rules::Reference::file:
            return target.starts_with('/') ? "" : "is not an absolute path";
        case rules::Reference::variable:
            return target.empty() || target.find('=') != std::string_view::npos ? "is not the name of a variable" : "";
        case rules::Reference::credential:
            return target.empty() || target == "." || target == ".." || target.find('/') != std::string_view::npos
                       ? "is not the name of a credential"
                       : "";
    }
    return {};
}

ChangeResult referTo(const Configuration& configuration, const std::string& source, const std::string& key,
                     rules::Reference kind, const std::string& target, const ChangeWay& way) {
    if (!rules::mayBeReferred(key))
        return {{Reason::Kind::refused, "The value of " + key + " cannot lie elsewhere",
                 "Only what is neither code to load nor a reference itself can."}};
    if (const std::string why = whyNeverFollowed(kind, target); !why.empty())
        return {{Reason::Kind::refused, "\"" + target + "\" " + why,
                 kind == rules::Reference::file ? "Give the full path: a driver asks from any directory." : ""}};
    const std::string name = key + std::string(rules::kReferenceSuffixes[static_cast<std::size_t>(kind)]);
    if (Reason reason = whyNotSet(configuration, source, {{name, target}}))
        return {std::move(reason)};
    FileChange change(rules::kDataSourceFile, way);
    change.erase(source, key);
    for (const std::string_view suffix : rules::kReferenceSuffixes)
        if (!name.ends_with(suffix))
            change.erase(source, key + std::string(suffix));
    change.set(source, name, target);
    return change.finish();
}

}  // namespace jx::model
