// The checks of one library in their order.
#include "odbcadmin/doctor/library_checks.h"

#include <cerrno>
#include <cstring>
#include <initializer_list>

#include "odbcadmin/cli/text.h"
#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/child.h"
#include "odbcadmin/doctor/elf_header.h"
#include "odbcadmin/doctor/file_kind.h"
#include "odbcadmin/doctor/file_rights.h"
#include "odbcadmin/doctor/library_path.h"
#include "odbcadmin/doctor/needed_findings.h"
#include "odbcadmin/doctor/trial_load.h"

namespace jx::doctor {

namespace {

// Of each group a library of the role must have one function.
using Group = std::vector<const char*>;

const std::vector<Group>& groupsOf(LibraryRole role) {
    static const std::vector<Group> kDriver = {{"SQLAllocHandle", "SQLAllocEnv"},
                                               {"SQLDriverConnect", "SQLDriverConnectW", "SQLConnect", "SQLConnectW"}};
    static const std::vector<Group> kSetup = {{"ConfigDSN", "CONFIGDSN"}};
    static const std::vector<Group> kTranslator = {{"SQLDriverToDataSource"}, {"SQLDataSourceToDriver"}};
    static const std::vector<Group> kTranslatorSetup = {{"ConfigTranslator", "CONFIGTRANSLATOR"}};
    switch (role) {
        case LibraryRole::driver:
            return kDriver;
        case LibraryRole::setup:
            return kSetup;
        case LibraryRole::translator:
            return kTranslator;
        case LibraryRole::translatorSetup:
            break;
    }
    return kTranslatorSetup;
}

const char* roleWord(LibraryRole role) {
    switch (role) {
        case LibraryRole::driver:
            return "driver";
        case LibraryRole::setup:
            return "setup library of a driver";
        case LibraryRole::translator:
            return "translator";
        case LibraryRole::translatorSetup:
            break;
    }
    return "setup library of a translator";
}

// One library on its way through the checks.
class Examination {
public:
    Examination(const std::string& subject, const std::string& path, LibraryRole role, const LibraryOptions& options)
        : subject_(subject), path_(path), role_(role), options_(options) {}

    Findings run() {
        if (!reach())
            return findings_;
        header_ = readElfHeader(path_);
        if (header_.state == HeaderState::unreadable || header_.state == HeaderState::absent) {
            tellUnreadable();
            return findings_;
        }
        lookAtFile();
        load();
        return findings_;
    }

private:
    void tell(const Check& what, std::string fact, std::string advice) {
        findings_.push_back(found(what, subject_, std::move(fact), std::move(advice)));
    }

    bool reach() {
        if (path_.find('/') == std::string::npos)
            return reachByName();
        findings_ = checkLibraryPath(subject_, path_);
        return findings_.empty();
    }

    bool reachByName() {
        const LookUp look = lookUp(path_, nullptr, options_.places);
        if (look.path.empty() && look.otherSystem.empty()) {
            tell(check::kLibraryMissing,
                 path_ + " is in none of the directories where the loader looks: " + admin::joined(look.directories) +
                     ".",
                 "Give the library's full path.");
            return false;
        }
        path_ = look.path.empty() ? look.otherSystem.front() : look.path;
        return true;
    }

    void tellUnreadable() {
        if (header_.error == EISDIR || header_.error == EINVAL)
            tell(check::kLibraryNotRegular,
                 path_ + (header_.error == EISDIR ? " is a directory" : " is a pipe, socket or device") + ".",
                 "Give the path of the library file itself.");
        else
            tell(check::kLibraryUnreadable,
                 path_ + " (" + rightsText(path_) + ") cannot be read by " + thisUserText() + ": " +
                     std::strerror(header_.error) + ".",
                 "Let everybody who uses the library read it, as with chmod a+r.");
    }

    void lookAtFile() {
        switch (header_.state) {
            case HeaderState::notElf:
                return tellKind();
            case HeaderState::cutShort:
                return tell(check::kLibraryCutShort, path_ + " ends before what its header announces.",
                            "It was copied or downloaded in part: install it again.");
            case HeaderState::notShared:
                tell(check::kLibraryNotShared, path_ + " is an object file or a program, no shared library.",
                     "Give the path of the shared library (.so).");
                break;
            default:
                break;
        }
        if (!(header_.system == thisSystem()))
            tellSystem();
        else
            addNeededFindings(subject_, path_, options_.places, findings_);
    }

    void tellKind() {
        const FileContent content = fileContent(path_);
        switch (content.kind) {
            case FileKind::empty:
                return tell(check::kLibraryEmpty, path_ + " is empty.", "Install it again.");
            case FileKind::archive:
                return tell(check::kLibraryArchive, path_ + " is a static archive; only linkers can use it.",
                            "Give the path of the shared library (.so) of the same product.");
            case FileKind::linkerScript:
                return tellLinkerScript(content.pointsTo);
            case FileKind::text:
                return tell(check::kLibraryText, path_ + " is a text file.", "Give the path of the library itself.");
            default:
                return tell(check::kLibraryNotElf, path_ + " is no ELF file, so no library of this system.",
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
        const Check& what =
            header_.system.elfClass != thisSystem().elfClass ? check::kWrongClass : check::kWrongMachine;
        tell(what,
             path_ + " is for " + systemText(header_.system) + "; this program is " + systemText(thisSystem()) + ".",
             "Install the product's library for " + systemText(thisSystem()) + ".");
    }

    void load() {
        std::vector<std::string> names;
        for (const LibraryRole role :
             {LibraryRole::driver, LibraryRole::setup, LibraryRole::translator, LibraryRole::translatorSetup})
            for (const Group& group : groupsOf(role))
                names.insert(names.end(), group.begin(), group.end());
        const TrialLoad trial = tryLoading(path_, names, options_.limit, options_.waiting);
        if (trial.end != TrialLoad::End::loaded)
            return tellLoad(trial);
        tellFunctions(trial);
        if (!trial.unloaded)
            tell(check::kUnloadFailed, path_ + " loads, but unloading it ends the program: " + trial.unloadEnd + ".",
                 "Report it to the library's maker; programs that keep it loaded are not affected.");
    }

    void tellLoad(const TrialLoad& trial) {
        const std::string printed = trial.output.empty() ? "" : " It printed: " + firstLine(trial.output);
        switch (trial.end) {
            case TrialLoad::End::refused:
                return tellRefusal(trial.sentence);
            case TrialLoad::End::crashed:
                return tell(
                    check::kLoadCrashed,
                    path_ + " crashes while it is loaded, with " + signalText(trial.code) + "." + printed,
                    "Its own start-up code fails: look for what it expects around it, or report it to its maker.");
            case TrialLoad::End::exited:
                return tell(check::kLoadExited,
                            path_ + " ends the program while it is loaded, with exit code " +
                                std::to_string(trial.code) + "." + printed,
                            "Its own start-up code gives up: look for what it expects around it, such as a licence.");
            case TrialLoad::End::timedOut:
                return tell(
                    check::kLoadTimedOut,
                    path_ + " was not loaded within " + std::to_string(options_.limit.count()) + " ms." + printed,
                    "Its own start-up code waits: for a server, a lock or a network file system.");
            default:
                return tell(check::kLoadNotTried,
                            "No process could be started to load " + path_ + ": " + std::strerror(trial.code) + ".",
                            "Try again when the system has room for more processes.");
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
        if (sentence.find("undefined symbol") != std::string::npos)
            return "A library that it needs is of another version or was not linked: ask the library's maker which.";
        if (sentence.find("failed to map") != std::string::npos)
            return "The file system may be mounted noexec, or memory is short.";
        return "Install the library again, or ask its maker.";
    }

    static std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

    void tellFunctions(const TrialLoad& trial) {
        const Offers offers = [&](const char* name) { return trial.offered.contains(name); };
        const std::string missing = missingFunctions(role_, offers);
        if (missing.empty())
            return;
        std::string advice = "Give the library that the product's manual names.";
        for (const LibraryRole other : {LibraryRole::driver, LibraryRole::setup, LibraryRole::translator}) {
            if (other != role_ && missingFunctions(other, offers).empty())
                advice = std::string("It is a ") + roleWord(other) + ": were two paths exchanged?";
        }
        tell(check::kNoEntryPoint, path_ + " has no " + missing + ", so it is no " + roleWord(role_) + ".", advice);
    }

    const std::string& subject_;
    std::string path_;
    LibraryRole role_;
    const LibraryOptions& options_;
    ElfHeader header_;
    Findings findings_;
};

std::string alternatives(const Group& group) {
    std::string text;
    for (const char* name : group)
        text.append(text.empty() ? "" : " or ").append(name);
    return text;
}

}  // namespace

std::string missingFunctions(LibraryRole role, const Offers& offers) {
    for (const Group& group : groupsOf(role)) {
        bool offered = false;
        for (const char* name : group)
            offered = offered || offers(name);
        if (!offered)
            return alternatives(group);
    }
    return {};
}

Findings checkLibrary(const std::string& subject, const std::string& path, LibraryRole role,
                      const LibraryOptions& options) {
    return Examination(subject, path, role, options).run();
}

}  // namespace jx::doctor
