// The stable identifiers of everything that the doctor can find, each with its severity. docs/doctor.md explains them.
#pragma once

#include <string>
#include <utility>

#include "odbcadmin/doctor/finding.h"

namespace jx::doctor {

struct Check {
    const char* id;
    Severity severity;
};

namespace check {

using enum Severity;

// Where the files are and who may read them.
inline constexpr Check kNoPlace{"files.no-place", error};
inline constexpr Check kVariableEmpty{"files.variable-empty", warning};
inline constexpr Check kVariableRelative{"files.variable-relative", warning};
inline constexpr Check kFileMissing{"files.missing", note};
inline constexpr Check kWithoutDot{"files.without-dot", warning};
inline constexpr Check kNoDirectory{"files.no-directory", error};
inline constexpr Check kNamedFileMissing{"files.named-missing", warning};
inline constexpr Check kFileUnreadable{"files.unreadable", error};
inline constexpr Check kFileDanglingLink{"files.dangling-link", error};
inline constexpr Check kFileNotRegular{"files.not-regular", error};
inline constexpr Check kFileShadowed{"files.shadowed", note};
inline constexpr Check kSystemFileIgnored{"files.system-wide-ignored", note};
inline constexpr Check kSystemMoved{"files.system-moved", note};
inline constexpr Check kDriversMoved{"files.drivers-moved", warning};
inline constexpr Check kPasswordOpen{"files.password-open", warning};
inline constexpr Check kFileReadOnly{"files.read-only", warning};

// How the lines are written.
inline constexpr Check kByteOrderMark{"syntax.byte-order-mark", warning};
inline constexpr Check kCarriageReturn{"syntax.carriage-return", warning};
inline constexpr Check kNul{"syntax.nul", error};
inline constexpr Check kNotUtf8{"syntax.not-utf8", warning};
inline constexpr Check kInvisible{"syntax.invisible-character", warning};
inline constexpr Check kTrailingBlanks{"syntax.trailing-blanks", note};
inline constexpr Check kDuplicateSection{"syntax.duplicate-section", warning};
inline constexpr Check kDuplicateKey{"syntax.duplicate-key", warning};
inline constexpr Check kKeyOutside{"syntax.key-before-section", error};
inline constexpr Check kNoEquals{"syntax.no-equals", warning};
inline constexpr Check kUtf16{"syntax.utf-16", error};
inline constexpr Check kNoKey{"syntax.no-key", error};
inline constexpr Check kUnclosed{"syntax.unclosed-bracket", error};

// What names lead to.
inline constexpr Check kNoSection{"names.no-section", error};
inline constexpr Check kNotListed{"names.not-listed", warning};
inline constexpr Check kDriverUnknown{"names.driver-unknown", error};
inline constexpr Check kNoLibraryKey{"names.no-library-key", error};
inline constexpr Check kNoSetupKey{"names.no-setup-key", note};
inline constexpr Check kRelativePath{"names.relative-path", warning};
inline constexpr Check kQuotedPath{"names.quoted-path", error};
inline constexpr Check kUnexpandedPath{"names.unexpanded-path", error};
inline constexpr Check kCommentInValue{"names.comment-in-value", error};
inline constexpr Check kForeignPath{"names.foreign-path", error};
inline constexpr Check kDriverByName{"names.driver-by-name", note};
inline constexpr Check kStalePath{"names.stale-path", warning};
inline constexpr Check kForbiddenCharacter{"names.forbidden-character", warning};
inline constexpr Check kTooLong{"names.too-long", warning};
inline constexpr Check kReserved{"names.reserved", error};
inline constexpr Check kKeyMisspelt{"names.key-misspelt", warning};
inline constexpr Check kKeyNotAsked{"names.key-not-asked", warning};

// Keys whose value lies elsewhere.
inline constexpr Check kReferenceNeverFollowed{"reference.never-followed", error};
inline constexpr Check kReferenceHidden{"reference.hidden", warning};
inline constexpr Check kReferenceRefused{"reference.refused", error};
inline constexpr Check kReferenceElsewhere{"reference.elsewhere", note};
inline constexpr Check kReferenceEmpty{"reference.empty", warning};
inline constexpr Check kReferenceLineEnd{"reference.line-end", warning};
inline constexpr Check kReferenceOtherLibrary{"reference.other-library", error};

// What the user's files and the system's have to do with each other.
inline constexpr Check kShadowed{"scopes.shadowed", note};
inline constexpr Check kSplit{"scopes.split", warning};
inline constexpr Check kListedElsewhere{"scopes.listed-elsewhere", warning};
inline constexpr Check kDriverOfUser{"scopes.driver-of-user", warning};
inline constexpr Check kDriverOfSystem{"scopes.driver-of-system", note};

// What the driver gets.
inline constexpr Check kQuotedValue{"values.quoted", warning};
inline constexpr Check kCommentBehindValue{"values.comment", warning};

// Libraries.
inline constexpr Check kLibraryMissing{"library.missing", error};
inline constexpr Check kDirectoryMissing{"library.directory-missing", error};
inline constexpr Check kDirectoryClosed{"library.directory-closed", error};
inline constexpr Check kLibraryDanglingLink{"library.dangling-link", error};
inline constexpr Check kLibraryUnreadable{"library.unreadable", error};
inline constexpr Check kLibraryNotRegular{"library.not-regular", error};
inline constexpr Check kLibraryEmpty{"library.empty", error};
inline constexpr Check kLibraryArchive{"library.archive", error};
inline constexpr Check kLibraryLinkerScript{"library.linker-script", error};
inline constexpr Check kLibraryText{"library.text", error};
inline constexpr Check kLibraryNotElf{"library.not-elf", error};
inline constexpr Check kLibraryCutShort{"library.cut-short", error};
inline constexpr Check kLibraryNotShared{"library.not-shared", error};
inline constexpr Check kWrongClass{"library.wrong-class", error};
inline constexpr Check kWrongMachine{"library.wrong-machine", error};
inline constexpr Check kNeededMissing{"library.needed-missing", error};
inline constexpr Check kNeededOtherSystem{"library.needed-wrong-architecture", error};
inline constexpr Check kNeededDamaged{"library.needed-damaged", error};
inline constexpr Check kInstaller{"library.installer", note};
inline constexpr Check kInstallerMissing{"library.installer-missing", warning};
inline constexpr Check kVersionMissing{"library.version-missing", error};
inline constexpr Check kLoadRefused{"library.load-refused", error};
inline constexpr Check kLoaderSays{"library.loader-says", note};  // when the cause is reported already
inline constexpr Check kLoadCrashed{"library.load-crashed", error};
inline constexpr Check kLoadExited{"library.load-exited", error};
inline constexpr Check kLoadTimedOut{"library.load-timed-out", error};
inline constexpr Check kLoadWithheld{"library.load-withheld", warning};
inline constexpr Check kLoadedAs{"library.loaded-as", note};
inline constexpr Check kLoadNotTried{"library.load-not-tried", warning};
inline constexpr Check kUnloadFailed{"library.unload-failed", warning};
inline constexpr Check kNoEntryPoint{"library.no-entry-point", error};

// Around the libraries.
inline constexpr Check kTracingOn{"environment.tracing-on", warning};
inline constexpr Check kUnregistered{"environment.driver-unregistered", note};
inline constexpr Check kForeignVariable{"environment.foreign-variable", note};

}  // namespace check

inline Finding found(const Check& what, std::string subject, std::string fact, std::string advice) {
    return {what.id, what.severity, std::move(subject), std::move(fact), std::move(advice)};
}

// Findings about one subject, added to those there are.
struct Subject {
    std::string name;
    Findings& findings;

    void tell(const Check& what, std::string fact, std::string advice) const {
        findings.push_back(found(what, name, std::move(fact), std::move(advice)));
    }
};

}  // namespace jx::doctor
