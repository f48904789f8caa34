// Listing directories.
#include "odbcadmin/assist/file_form.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/forms.h"

namespace jx::assist {

namespace fs = std::filesystem;

namespace {

struct Browsing {
    std::string directory;  // ends with a slash
    std::string chosen;
};

bool isDirectory(const std::string& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

std::string directoryOf(const std::string& path) {
    std::string folder = path.substr(0, path.rfind('/') + 1);
    if (!folder.empty() && folder.front() == '/' && isDirectory(folder))
        return folder;
    return isDirectory("/usr/lib") ? "/usr/lib/" : "/";
}

// Directories end with a slash and come first; what neither is one nor a file is left out.
std::vector<std::string> entriesIn(const std::string& directory, std::string& trouble) {
    std::vector<std::string> folders;
    std::vector<std::string> files;
    std::error_code error;
    std::error_code ignored;
    for (fs::directory_iterator each(directory, error), end; !error && each != end; each.increment(error)) {
        const std::string name = each->path().filename().string();
        if (each->is_directory(ignored))
            folders.push_back(name + "/");
        else if (each->is_regular_file(ignored))
            files.push_back(name);
    }
    trouble = error ? error.message() : "";
    std::sort(folders.begin(), folders.end());
    std::sort(files.begin(), files.end());
    folders.insert(folders.end(), files.begin(), files.end());
    return folders;
}

void show(HWND dialog, const std::string& directory) {
    std::string trouble;
    JXW_SendDlgItemMessage(dialog, kFilesList, LB_RESETCONTENT, 0, 0);
    if (directory != "/")
        addRow(dialog, kFilesList, "../");
    for (const std::string& entry : entriesIn(directory, trouble))
        addRow(dialog, kFilesList, entry);
    JXW_SendDlgItemMessage(dialog, kFilesList, LB_SETCURSEL, 0, 0);
    JXW_SetDlgItemText(dialog, kFilesDirectory, (directory + (trouble.empty() ? "" : ": " + trouble)).c_str());
}

// A directory is entered, a file ends the dialog.
void take(HWND dialog, Browsing& browsing) {
    const std::string row = selectedRow(dialog, kFilesList);
    if (row.empty())
        return;
    if (row == "../") {
        const std::string inner = browsing.directory.substr(0, browsing.directory.size() - 1);
        browsing.directory = inner.substr(0, inner.rfind('/') + 1);
    } else if (row.back() == '/') {
        browsing.directory += row;
    } else {
        browsing.chosen = browsing.directory + row;
        JXW_EndDialog(dialog, 1);
        return;
    }
    show(dialog, browsing.directory);
}

unsigned int filesProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    const int notification = static_cast<int>((lparam >> 16U) & 0xFFFFU);
    if (message == WM_INITDIALOG) {
        keepFormRecord(dialog, lparam);
        show(dialog, formRecord<const Browsing>(dialog).directory);
    } else if (message == WM_COMMAND && (wparam == IDOK || (wparam == kFilesList && notification == LBN_DBLCLK))) {
        take(dialog, formRecord<Browsing>(dialog));
    } else {
        return closedByCancel(dialog, message, wparam);
    }
    return 1;
}

}  // namespace

std::string chooseFile(HWND owner, const std::string& path) {
    Browsing browsing{directoryOf(path), {}};
    showForm(kFilesForm, owner, filesProcedure, &browsing);
    return browsing.chosen;
}

}  // namespace jx::assist
