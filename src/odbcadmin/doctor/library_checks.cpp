// The checks of one library in their order.
#include "odbcadmin/doctor/library_checks.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <vector>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/file_rights.h"
#include "odbcadmin/doctor/library_path.h"
#include "odbcadmin/doctor/needed_libraries.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/trial/installer_library.h"
#include "odbcadmin/trial/library_load.h"

namespace jx::doctor {

namespace {

using State = LibraryFile::State;

// Of each group a library of the role must have one function.
using Group = std::vector<std::string>;

const std::vector<Group>& groupsOf(LibraryRole role) {
    static const std::vector<Group> kGroups[] = {
        {{"SQLAllocHandle", "SQLAllocEnv"}, {"SQLDriverConnect", "SQLDriverConnectW", "SQLConnect", "SQLConnectW"}},
        {{"ConfigDSN", "CONFIGDSN"}},
        {{"SQLDriverToDataSource"}, {"SQLDataSourceToDriver"}},
        {{"ConfigTranslator", "CONFIGTRANSLATOR"}}};
    return kGroups[static_cast<std::size_t>(role)];
}

const char* roleWord(LibraryRole role) {
    constexpr const char* kWords[] = {"driver", "setup library of a driver", "translator",
                                      "setup library of a translator"};
    return kWords[static_cast<std::size_t>(role)];
}

// "undefined symbol: SQLConnect" or "undefined symbol: f, version V" at the sentence's end; empty for other sentences.
std::string undefinedSymbol(const std::string& sentence) {
    constexpr std::string_view kBegin = "undefined symbol: ";
    const std::size_t at = sentence.find(kBegin);
    if (at == std::string::npos)
        return {};
    const std::string symbol = sentence.substr(at + kBegin.size());
    return symbol.substr(0, symbol.find_first_of(",( "));
}

// The functions of installer libraries that drivers call.
bool isOfInstaller(const std::string& function) {
    for (const char* begin : {"SQLGetPrivateProfileString", "SQLWritePrivateProfileString", "SQLPostInstallerError",
                              "SQLInstallerError", "SQLValidDSN", "SQLWriteDSNToIni", "SQLRemoveDSNFromIni"})
        if (function.starts_with(begin))
            return true;
    return false;
}

// One library on its way through the checks.
class Examination {
public:
    Examination(const std::string& subject, const std::string& path, LibraryRole role, const LibraryOptions& options)
        : subject_{subject, findings_}, path_(path), role_(role), options_(options) {}

    Findings run() {
        if (!reach())
            return findings_;
        if (!file_.isThere()) {
            tellUnreadable();
            return findings_;
        }
        lookAtFile();
        // All is said of a file that was copied in part, and what loads it may die of it.
        if (file_.state != State::cutShort)
            load();
        return findings_;
    }

private:
    void tell(const Check& what, std::string fact, std::string advice) {
        subject_.tell(what, std::move(fact), std::move(advice));
    }

    // False when the way to the file says all there is to say.
    bool reach() {
        if (path_.find('/') == std::string::npos)
            return reachByName();
        checkLibraryPath(path_, subject_);
        if (findings_.empty())
            file_ = readLibraryFile(path_);
        return findings_.empty();
    }

    bool reachByName() {
        const LookUp look = lookUp(path_, nullptr, options_.places);
        if (!look.file.isThere() && look.otherSystem.empty()) {
            tell(check::kLibraryMissing,
                 path_ + " is in none of the directories where the loader looks: " + model::joined(look.directories) +
                     ".",
                 "Give the library's full path.");
            return false;
        }
        file_ = look.file.isThere() ? look.file : look.otherSystem.front();
        path_ = file_.path;
        return true;
    }

    void tellUnreadable() {
        if (file_.error == EISDIR || file_.error == EINVAL)
            tell(check::kLibraryNotRegular,
                 path_ + (file_.error == EISDIR ? " is a directory" : " is a pipe, socket or device") + ".",
                 "Give the path of the library file itself.");
        else
            tell(check::kLibraryUnreadable,
                 path_ + " (" + rightsText(path_) + ") cannot be read by " + thisUserText() + ": " +
                     std::strerror(file_.error) + ".",
                 "Let everybody who uses the library read it: chmod a+r " + model::shellWord(path_));
    }

    void lookAtFile() {
        if (file_.state != State::library)
            tellKind();
        const bool isWhole = file_.state == State::library || file_.state == State::notShared;
        if (isWhole && file_.isForOtherSystem())
            tellSystem();
        else if (isWhole)
            checkNeeded(file_, options_.places, subject_);
    }

    void tellKind() {
        switch (file_.state) {
            case State::empty:
                return tell(check::kLibraryEmpty, path_ + " is empty.", "Install it again.");
            case State::archive:
                return tell(check::kLibraryArchive, path_ + " is a static archive; only linkers can use it.",
                            "Give the path of the shared library (.so) of the same product.");
            case State::linkerScript:
                return tellLinkerScript(file_.pointsTo);
            case State::text:
                return tell(check::kLibraryText, path_ + " is a text file.", "Give the path of the library itself.");
            case State::cutShort:
                return tell(check::kLibraryCutShort, path_ + " ends before what its header announces.",
                            "It was copied or downloaded in part: install it again.");
            case State::notShared:
                return tell(check::kLibraryNotShared,
                            path_ + (file_.isProgram ? " is a program, not a shared library."
                                                     : " is an object file, not a shared library."),
                            "Give the path of the shared library (.so).");
            default:
                return tell(check::kLibraryNotElf,
                            path_ + " is not an ELF file, so it is not a library of this system.",
                            "Install the product's files for Linux and give the path of its shared library.");
        }
    }

    void tellLinkerScript(const std::string& pointsTo) {
        tell(check::kLibraryLinkerScript,
             path_ + " is a linker script, which stands in for a library while programs are built.",
             pointsTo.empty() ? "Give the path of the library it stands for."
                              : "Give the path of the library it stands for: " + pointsTo + ".");
    }

    void tellSystem() {
        const Check& what = file_.system.elfClass != thisSystem().elfClass ? check::kWrongClass : check::kWrongMachine;
        tell(what,
             path_ + " is for " + systemText(file_.system) + "; this program is " + systemText(thisSystem()) + ".",
             "Install the product's library for " + systemText(thisSystem()) + ".");
    }

    void load() {
        std::vector<std::string> names;
        for (const LibraryRole role : kRoles)
            for (const Group& group : groupsOf(role))
                names.insert(names.end(), group.begin(), group.end());
        const trial::LoadReport report =
            trial::tryLoading({path_, names, options_.namedBy, options_.limit}, options_.waiting);
        if (!report.user.empty())
            tell(check::kLoadedAs,
                 path_ + " was loaded with the rights of " + report.user + ", not with those of root.",
                 "It, its directory or the file that names it is that user's, who could have it do anything.");
        if (report.end != trial::LoadReport::End::loaded)
            return tellLoad(report);
        // It has what it needs: the loader knows more places than are looked into here.
        std::erase_if(findings_, [](const Finding& each) {
            return each.id.starts_with("library.needed-") || each.id == check::kVersionMissing.id;
        });
        tellInstaller();
        tellFunctions(report.offered);
        if (!report.unloaded)
            tell(check::kUnloadFailed, path_ + " loads, but unloading it ends the program: " + report.unloadEnd + ".",
                 "Report it to the library's maker; programs that keep it loaded are not affected.");
    }

    // Which file answers a driver that was built for the other installer library.
    void tellInstaller() {
        const std::string name = trial::kDriversInstaller;
        if (std::find(file_.needed.begin(), file_.needed.end(), name) == file_.needed.end())
            return;
        const Requester requester{&file_, nullptr};
        const LookUp found = lookUp(name, &requester, options_.places);
        const std::string own = trial::driversInstallerPath();
        std::error_code ignored;
        const bool isOther = !own.empty() && !std::filesystem::equivalent(own, found.file.path, ignored);
        if (found.file.isThere())
            tell(check::kInstaller, path_ + " needs " + name + ", and " + found.file.path + " answers it.",
                 "That library decides which files the driver reads." +
                     (isOther ? " This product has another one: " + own + "." : ""));
    }

    void tellLoad(const trial::LoadReport& report) {
        using End = trial::LoadReport::End;
        const std::string printed =
            report.output.empty() ? "" : " It printed: " + report.output.substr(0, report.output.find('\n'));
        switch (report.end) {
            case End::refused:
                return tellRefusal(report.sentence);
            case End::crashed:
                return tell(
                    check::kLoadCrashed,
                    path_ + " crashes while it is loaded, with " + trial::signalText(report.code) + "." + printed,
                    "Its own start-up code fails: look for what it expects around it, or report it to its maker.");
            case End::exited:
                return tell(check::kLoadExited,
                            path_ + " ends the program while it is loaded, with exit code " +
                                std::to_string(report.code) + "." + printed,
                            "Its own start-up code gives up: look for what it expects around it, such as a licence.");
            case End::timedOut:
                return tell(
                    check::kLoadTimedOut,
                    path_ + " was not loaded within " + std::to_string(options_.limit.count()) + " ms." + printed,
                    "Its own start-up code waits: for a server, a lock or a network file system.");
            case End::withheld:
                return tell(check::kLoadWithheld,
                            path_ + " was not loaded, since this is root: " + report.why +
                                ", who could have it do "
                                "anything.",
                            "Run the command as the user who works with the library.");
            default:
                return tell(check::kLoadNotTried,
                            "The program that loads " + path_ + " could not be started: " + report.why + ".",
                            "Try again when the system has room for more processes, or install odbcadmin again.");
        }
    }

    // One cause is one error: what explains the refusal already stands above it.
    void tellRefusal(const std::string& sentence) {
        const auto isError = [](const Finding& finding) { return finding.severity == Severity::error; };
        if (std::any_of(findings_.begin(), findings_.end(), isError))
            tell(check::kLoaderSays, "The loader says: " + sentence,
                 "Programs show this sentence; the cause is above.");
        else
            tell(check::kLoadRefused, "The loader says: " + sentence, adviceForRefusal(sentence));
    }

    static std::string adviceForRefusal(const std::string& sentence) {
        const std::string symbol = undefinedSymbol(sentence);
        if (isOfInstaller(symbol))
            return "It calls an installer library that it does not ask for: start the program with LD_PRELOAD=" +
                   (trial::driversInstallerPath().empty() ? trial::kDriversInstaller : trial::driversInstallerPath()) +
                   ", or ask its maker for a build that names that library.";
        if (!symbol.empty())
            return "A library that it needs is of another version or was not linked: ask the library's maker which.";
        if (sentence.find("failed to map") != std::string::npos)
            return "The file system may be mounted noexec, or memory is short.";
        return "Install the library again, or ask its maker.";
    }

    void tellFunctions(const std::set<std::string>& functions) {
        const std::string missing = missingFunctions(role_, functions);
        if (missing.empty())
            return;
        std::string advice = "Give the library that the product's manual names.";
        for (const LibraryRole other : {LibraryRole::driver, LibraryRole::setup, LibraryRole::translator}) {
            if (other != role_ && missingFunctions(other, functions).empty())
                advice = std::string("It is a ") + roleWord(other) + ": were two paths exchanged?";
        }
        tell(check::kNoEntryPoint, path_ + " has no " + missing + ", so it is not a " + roleWord(role_) + ".", advice);
    }

    static constexpr LibraryRole kRoles[] = {LibraryRole::driver, LibraryRole::setup, LibraryRole::translator,
                                             LibraryRole::translatorSetup};

    Findings findings_;
    Subject subject_;
    std::string path_;
    LibraryRole role_;
    const LibraryOptions& options_;
    LibraryFile file_;
};

}  // namespace

std::string missingFunctions(LibraryRole role, const std::set<std::string>& functions) {
    for (const Group& group : groupsOf(role))
        if (std::none_of(group.begin(), group.end(), [&](const auto& name) { return functions.contains(name); }))
            return model::joined(group, " or ");
    return {};
}

LibraryRole roleOf(const LibraryFile& library) {
    for (const LibraryRole role :
         {LibraryRole::driver, LibraryRole::setup, LibraryRole::translator, LibraryRole::translatorSetup})
        if (missingFunctions(role, library.functions).empty())
            return role;
    return LibraryRole::driver;
}

Findings checkLibrary(const std::string& subject, const std::string& path, LibraryRole role,
                      const LibraryOptions& options) {
    return Examination(subject, path, role, options).run();
}

}  // namespace jx::doctor
