// The chooser of each thread.
#include "odbcadmin/assist/file_choice.h"

#include <utility>

namespace jx::assist {

namespace {

thread_local FileChooser current;

}  // namespace

void setFileChooser(FileChooser chooser) {
    current = std::move(chooser);
}

bool canChooseFile() {
    return static_cast<bool>(current);
}

std::string chooseFile(const std::string& path) {
    return current ? current(path) : std::string();
}

}  // namespace jx::assist
