// The folder with the data of the product that a library or a program belongs to.
#pragma once

#include <string>

namespace jx::model {

// "/opt/acme/share" for what lies in or below "/opt/acme/lib", "/opt/acme/lib64" or "/opt/acme/bin"; the last such
// folder of the path counts. "/usr/share" for "/lib/...", which most systems have as a link. Empty when there is none.
std::string dataFolderOf(const std::string& path);

}  // namespace jx::model
