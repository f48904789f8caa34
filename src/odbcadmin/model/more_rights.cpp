// Repeating command lines with sudo in front.
#include "odbcadmin/model/more_rights.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "odbcadmin/model/config_places.h"
#include "odbcadmin/model/system_files.h"
#include "odbcadmin/model/text.h"
#include "rules/secrets.h"

namespace jx::model {

namespace fs = std::filesystem;

namespace {

bool isAboutSystemsFile(const std::string& fact) {
    const auto isIn = [&](FileKind kind) {
        const std::string directory = fs::path(systemPath(kind)).parent_path().string();
        return fact.find(directory + (directory.ends_with('/') ? "" : "/")) != std::string::npos;
    };
    return isIn(FileKind::dataSources) || isIn(FileKind::drivers);
}

// The command beside this program, which may be the one with windows. sudo looks for programs in the usual directories
// only.
std::string commandName() {
    constexpr std::array<std::string_view, 3> kUsual{"/usr/bin", "/usr/local/bin", "/bin"};
    std::error_code error;
    const fs::path directory = fs::read_symlink("/proc/self/exe", error).parent_path();
    const bool isUsual = std::find(kUsual.begin(), kUsual.end(), directory.string()) != kUsual.end();
    return error || isUsual ? "odbcadmin" : shellWord((directory / "odbcadmin").string());
}

std::string maskedWord(const std::string& word) {
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos)
        return word;
    return word.substr(0, equals + 1) + rules::masked(word.substr(0, equals), word.substr(equals + 1));
}

// sudo keeps neither the variables that move files nor the home directory.
std::string withSudo(const RepeatedCommand& command) {
    std::string line = "sudo";
    if (!command.isInRoot)
        for (const std::string& each : variablesThatMove())
            line += " " + shellWord(each);
    line += " " + commandName();
    if (command.needsHome)
        line += " --home " + shellWord(homeDirectory());
    for (const std::string& word : command.words)
        line += " " + shellWord(maskedWord(word));
    return line;
}

bool hidesSecret(const RepeatedCommand& command) {
    return std::any_of(command.words.begin(), command.words.end(),
                       [](const std::string& word) { return maskedWord(word) != word; });
}

}  // namespace

std::string adviceOn(const Reason& reason, const std::vector<RepeatedCommand>& commands) {
    if (reason.kind != Reason::Kind::noRight || ::geteuid() == 0 || !isAboutSystemsFile(reason.fact))
        return reason.advice;
    std::vector<std::string> lines;
    lines.reserve(commands.size());
    for (const RepeatedCommand& each : commands)
        lines.push_back(withSudo(each));
    const bool hides = std::any_of(commands.begin(), commands.end(), hidesSecret);
    return "Run it with the right to: " + joined(lines, " && ") +
           (hides ? " (with the secret in place of the stars)" : "");
}

}  // namespace jx::model
