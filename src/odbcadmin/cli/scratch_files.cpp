// Copying the files, letting the library see the copies, comparing.
#include "odbcadmin/cli/scratch_files.h"

#include <jxini.h>
#include <odbcinst.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>

#include "odbcadmin/cli/diff.h"
#include "odbcadmin/cli/file_change.h"
#include "rules/secrets.h"

namespace jx::admin {

namespace {

std::string textOf(const std::string& path, bool& isAbsent) {
    const std::unique_ptr<JxIniText, void (*)(JxIniText*)> text(jxIniRead(path.c_str()), jxIniRelease);
    isAbsent = text == nullptr;
    std::size_t length = 0;
    const char* bytes = jxIniBytes(text.get(), &length);
    return bytes == nullptr ? std::string() : std::string(bytes, length);
}

}  // namespace

ScratchFiles::ScratchFiles(const Session& session) {
    for (const auto& [name, variable] :
         {std::pair{INS_ODBCINST_FILENAME, "ODBCINSTINI"}, {INS_ODBCINI_FILENAME, "ODBCINI"}}) {
        File file{name, variable, pathOf(name), {}, /*isAbsent=*/false};
        file.text = textOf(file.path, file.isAbsent);
        files_.push_back(file);
    }
    if (session.writesNothing())
        trouble_ = copyAll(session);
}

ExitCode ScratchFiles::copyAll(const Session& session) {
    std::error_code error;
    const std::filesystem::path place = std::filesystem::temp_directory_path(error);
    std::string made = (place / "odbcadmin-XXXXXX").string();
    if (mkdtemp(made.data()) == nullptr)
        return session.fail(ExitCode::fileTrouble,
                            "Cannot make a directory in " + place.string() + ": " + std::strerror(errno),
                            "Name a directory for temporary files in TMPDIR.");
    directory_ = made;
    for (const File& file : files_) {
        const std::string copy = directory_ + "/" + file.name;
        std::ofstream out;
        if (!file.isAbsent) {
            out.open(copy, std::ios::binary);
            out << file.text << std::flush;
        }
        if (!out)
            return session.fail(ExitCode::fileTrouble, "Cannot write " + copy, "Make room for temporary files.");
        if (const char* old = std::getenv(file.variable))
            oldVariables_.emplace_back(file.variable, old);
        setenv(file.variable, copy.c_str(), 1);
    }
    return ExitCode::done;
}

ScratchFiles::~ScratchFiles() {
    if (directory_.empty())
        return;
    for (const File& file : files_)
        unsetenv(file.variable);
    for (const auto& [name, value] : oldVariables_)
        setenv(name.c_str(), value.c_str(), 1);
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
}

void ScratchFiles::noteChanges(const Session& session, Outcome& outcome) const {
    const auto shown = [&](std::string_view line) {
        return session.showSecrets ? std::string(line) : rules::maskedLine(line);
    };
    for (const File& file : files_) {
        bool isAbsent = false;
        const std::string after = textOf(pathOf(file.name), isAbsent);
        if (after == file.text)
            continue;
        outcome.noteChange(file.path);
        if (session.dryRun)
            outcome.noteDifference(unifiedDiff(file.path, file.text, after, shown));
    }
}

}  // namespace jx::admin
