// Chooses the file and writes.
#include "api3/profile_write.h"

#include <string>

#include "api3/call.h"
#include "api3/file_change.h"
#include "api3/quoted.h"
#include "api3/secret_reference.h"
#include "rules/sections.h"

namespace jx::api3 {

namespace {

const Place& placeOf(ThreadState& state, Scope scope, FileKind kind) {
    return state.places.find(scope, kind, readEnvironment());
}

enum class Holds { yes, no, failed };

// Whether a file has the section, and the key when there is one; what is written is for the record.
Holds holds(const Place& place, const char* section, const char* key, const Question& written) {
    const Look look = lookAt(place, written);
    if (look.failed)
        return Holds::failed;
    JxIniPart part{};
    return look.view != nullptr && ask(look.view, section, key, part) == JxIniFound ? Holds::yes : Holds::no;
}

const Place* placeFor(ThreadState& state, const ProfileWrite& write, const char* file) {
    switch (fileKindOf(file)) {
        case FileKind::dataSources:
            return mayWriteDataSource(state, {write.section, write.key}) ? &writtenDataSources(state) : nullptr;
        case FileKind::drivers:
            return writtenDrivers(state, write);
        case FileKind::path:
            return &state.places.find(file);
        case FileKind::none:
            break;
    }
    refuse(ODBC_ERROR_INVALID_PATH, "Nothing was written to " + quoted(file) + ": it is not an absolute path.");
    return nullptr;
}

std::string subjectOf(const ProfileWrite& write) {
    return keyOrSection(write.section == nullptr ? "" : write.section, write.key);
}

bool deletesKey(const ProfileWrite& write) {
    return write.key != nullptr && write.value == nullptr && rules::mayBeReferred(rules::argument(write.key));
}

bool apply(FileChange& change, const ProfileWrite& write) {
    const std::string section = write.section == nullptr ? "" : write.section;
    if (!change.set(section, write.key, write.value))
        return false;
    if (!deletesKey(write) || rules::isListSection(section))
        return true;
    for (const std::string_view suffix : rules::kReferenceSuffixes) {
        const std::string reference = std::string(rules::argument(write.key)).append(suffix);
        if (!change.set(section, reference.c_str(), nullptr))
            return false;
    }
    return true;
}

}  // namespace

const Place* writtenDrivers(ThreadState& state, const ProfileWrite& write) {
    const Place& users = placeOf(state, Scope::user, FileKind::drivers);
    const char* section = write.section == nullptr ? "" : write.section;
    const Holds found =
        holds(users, section, rules::isListSection(section) ? write.key : nullptr, {section, write.key});
    if (found == Holds::failed)
        return nullptr;
    return found == Holds::yes ? &users : &placeOf(state, Scope::system, FileKind::drivers);
}

const Place& writtenDataSources(ThreadState& state) {
    const Scope scope = modeOf(state) == Mode::system ? Scope::system : Scope::user;
    return placeOf(state, scope, FileKind::dataSources);
}

bool mayHide(ThreadState& state, const Question& written) {
    const char* section = written.section;
    const Holds users = holds(placeOf(state, Scope::user, FileKind::dataSources), section, nullptr, written);
    if (users != Holds::no)
        return users == Holds::yes;
    const Place& systems = placeOf(state, Scope::system, FileKind::dataSources);
    const Holds found = holds(systems, section, nullptr, written);
    if (found != Holds::yes)
        return found == Holds::no;
    return refuse(ODBC_ERROR_REQUEST_FAILED, "Data source " + quoted(section) +
                                                 " was not written: it stands in the system's file " + systems.path() +
                                                 " only, and a key in the user's file would hide all of it.");
}

bool mayWriteDataSource(ThreadState& state, const Question& written) {
    return modeOf(state) != Mode::both || written.section == nullptr || rules::isReservedSection(written.section) ||
           mayHide(state, written);
}

bool writeProfile(ThreadState& state, const ProfileWrite& write, const char* file) {
    if (file == nullptr || *file == '\0')
        return refuse(ODBC_ERROR_INVALID_NAME, subjectOf(write) + " was not written: no file is named.");
    const Place* place = placeFor(state, write, file);
    return place != nullptr &&
           changeFile(*place, {subjectOf(write)}, [&](FileChange& change) { return apply(change, write); });
}

}  // namespace jx::api3
