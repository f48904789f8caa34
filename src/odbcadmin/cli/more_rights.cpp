// Repeating the command line with sudo in front.
#include "odbcadmin/cli/more_rights.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "odbcadmin/model/config_places.h"
#include "odbcadmin/model/system_files.h"
#include "odbcadmin/model/text.h"
#include "rules/secrets.h"

namespace jx::cli {

namespace fs = std::filesystem;

namespace {

bool isAboutSystemsFile(const std::string& fact) {
    const auto isIn = [&](model::FileKind kind) {
        const std::string directory = fs::path(model::systemPath(kind)).parent_path().string();
        return fact.find(directory + (directory.ends_with('/') ? "" : "/")) != std::string::npos;
    };
    return isIn(model::FileKind::dataSources) || isIn(model::FileKind::drivers);
}

// sudo looks for programs in the usual directories only.
std::string thisProgram() {
    constexpr std::array<std::string_view, 3> kUsual{"/usr/bin", "/usr/local/bin", "/bin"};
    std::error_code error;
    const fs::path path = fs::read_symlink("/proc/self/exe", error);
    const bool isUsual = std::find(kUsual.begin(), kUsual.end(), path.parent_path().string()) != kUsual.end();
    return error || isUsual ? "odbcadmin" : model::shellWord(path.string());
}

std::string maskedWord(const std::string& word) {
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos)
        return word;
    return word.substr(0, equals + 1) + rules::masked(word.substr(0, equals), word.substr(equals + 1));
}

// sudo keeps neither the variables that move files nor the home directory.
std::string withSudo(const Session& session) {
    std::string command = "sudo";
    if (session.root.empty())
        for (const std::string& each : model::variablesThatMove())
            command += " " + model::shellWord(each);
    command += " " + thisProgram();
    if (!session.system && session.home.empty())
        command += " --home " + model::shellWord(model::homeDirectory());
    for (const std::string& word : session.words)
        command += " " + model::shellWord(maskedWord(word));
    return command;
}

}  // namespace

std::string adviceOn(const model::Reason& reason, const Session& session) {
    if (reason.kind != model::Reason::Kind::noRight || ::geteuid() == 0 || !isAboutSystemsFile(reason.fact))
        return reason.advice;
    const bool hidesSecret = std::any_of(session.words.begin(), session.words.end(),
                                         [](const std::string& word) { return maskedWord(word) != word; });
    return "Run it with the right to: " + withSudo(session) +
           (hidesSecret ? " (with the secret in place of the stars)" : "");
}

}  // namespace jx::cli
