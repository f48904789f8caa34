// Counts the driver manager's installations.
#include "api3/driver_manager.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "api3/call.h"
#include "api3/component.h"
#include "api3/directories.h"

namespace jx::api3 {

namespace {

ChangeSubject subject() {
    return {"The driver manager's count", ODBC_ERROR_USAGE_UPDATE_FAILED};
}

const Place& systemsFile(ThreadState& state) {
    return state.places.find(Scope::system, FileKind::drivers, readEnvironment());
}

}  // namespace

bool installDriverManager(ThreadState& state, const TextOutput& output, WORD* length) {
    const std::string directory = libraryDirectory();
    const Placed placed = output.place(directory);
    if (length != nullptr)
        *length = static_cast<WORD>(std::min<std::size_t>(placed.length, UINT16_MAX));
    if (placed.isCut)
        return refuse(ODBC_ERROR_INVALID_BUFF_LEN, "The path " + directory + " does not fit the buffer.");
    return changeFile(systemsFile(state), subject(), [](FileChange& change) {
        const FileText text = change.before();
        const bool wasInstalled = text.hasSection(rules::kCore);
        return setCount(change, rules::kCore, countOneMore(countOf(text, rules::kCore), wasInstalled));
    });
}

bool removeDriverManager(ThreadState& state, DWORD* count) {
    std::uint32_t left = 0;
    const Place& file = systemsFile(state);
    const bool done = changeFile(file, subject(), [&](FileChange& change) {
        const FileText text = change.before();
        if (!text.hasSection(rules::kCore))
            return refuse(ODBC_ERROR_COMPONENT_NOT_FOUND, "No driver manager is entered in " + file.path() + ".");
        left = countOneLess(countOf(text, rules::kCore));
        return left > 0 ? setCount(change, rules::kCore, left) : change.set(rules::kCore, nullptr, nullptr);
    });
    if (done && count != nullptr)
        *count = left;
    return done;
}

}  // namespace jx::api3
