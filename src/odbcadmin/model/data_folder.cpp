// Finding the folder by the layout that all packages have.
#include "odbcadmin/model/data_folder.h"

#include <filesystem>

namespace jx::model {

std::string dataFolderOf(const std::string& path) {
    std::filesystem::path folder = std::filesystem::path(path).parent_path();
    for (; folder.has_filename(); folder = folder.parent_path()) {
        const std::string name = folder.filename().string();
        if (name != "lib" && name != "lib64" && name != "lib32" && name != "bin")
            continue;
        const std::filesystem::path prefix = folder.parent_path();
        return ((prefix == "/" ? "/usr" : prefix) / "share").string();
    }
    return {};
}

}  // namespace jx::model
