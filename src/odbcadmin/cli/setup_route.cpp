// Requests to a driver's setup library.
#include "odbcadmin/cli/setup_route.h"

#include <dlfcn.h>
#include <jxerrors.h>
#include <jxfiles.h>

#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/text.h"

namespace jx::admin {

namespace {

// What SQLConfigDataSource takes at most.
constexpr std::size_t kLongestList = 1024;
constexpr std::size_t kLongestDriver = 49;

std::string loadTrouble(const std::string& path) {
    void* library = bosLoadLibrary(reinterpret_cast<const unsigned char*>(path.c_str()), 0);
    if (library == nullptr)
        return std::string("its setup library cannot be loaded: ") + reinterpret_cast<const char*>(bosLastLoadError());
    const bool hasEntry = dlsym(library, "CONFIGDSN") != nullptr || dlsym(library, "ConfigDSN") != nullptr;
    dlclose(library);
    return hasEntry ? std::string() : "its setup library has no ConfigDSN: " + path;
}

// What the setup library left in the error list.
std::string recordedErrors() {
    std::string text;
    for (unsigned long i = 0; i < JxErrorKeeper::count(); ++i)
        if (const JxError* error = JxErrorKeeper::errorAt(i))
            text.append(": ").append(reinterpret_cast<const char*>(error->text()));
    return text;
}

std::string bytesOfBothFiles() {
    std::string bytes;
    for (const char* file : {INS_ODBCINI_FILENAME, INS_ODBCINST_FILENAME}) {
        JxIniText* text = jxIniRead(file);
        std::size_t length = 0;
        const char* begin = jxIniBytes(text, &length);
        if (begin != nullptr)
            bytes.append(begin, length);
        bytes.push_back('\0');
        jxIniRelease(text);
    }
    return bytes;
}

std::string attributeList(const std::string& name, const Pairs& attributes) {
    std::string list = "DSN=" + name;
    list.push_back('\0');
    for (const auto& [key, value] : attributes) {
        list.append(key).append("=").append(value);
        list.push_back('\0');
    }
    list.push_back('\0');
    return list;
}

bool callSetup(const Session& session, const Registered& driver, WORD request, const std::string& list) {
    const Waiting waiting(session.quiet, "The setup library " + driver.setup + " is at work");
    return SQLConfigDataSource(0, request, driver.name.c_str(), list.c_str()) != FALSE;
}

}  // namespace

SetupRoute findRoute(const Session& session, const Registered& driver, bool direct) {
    if (direct)
        return {false, "as --direct asks"};
    if (session.writesNothing())
        return {false, driver.setup.empty() ? "" : "the setup library of " + driver.name + " might do otherwise"};
    if (driver.setup.empty())
        return {false, driver.name + " has no setup library"};
    const std::string trouble = loadTrouble(driver.setup);
    return {trouble.empty(), trouble};
}

ExitCode configureThroughSetup(const Session& session, const Registered& driver, WORD request, const std::string& name,
                               const Pairs& attributes, const std::string& doing, Outcome& outcome) {
    const std::string list = attributeList(name, attributes);
    if (list.size() > kLongestList || driver.name.size() > kLongestDriver)
        return session.fail(ExitCode::invalid,
                            "Cannot " + doing + " through the setup library: " +
                                (list.size() > kLongestList ? "more than 1024 bytes" : "the driver's name is too long"),
                            "Use --direct to write without it.");
    const std::string before = bytesOfBothFiles();
    JxErrorKeeper::clear();
    if (!callSetup(session, driver, request, list))
        return session.fail(
            ExitCode::failed, "The setup library " + driver.setup + " refused to " + doing + recordedErrors(),
            "A name has at most 32 bytes, none of []{}(),;?*=!@\\; --direct writes without the library.");
    if (bytesOfBothFiles() != before)
        outcome.noteChange(INS_ODBCINI_FILENAME);
    return ExitCode::done;
}

}  // namespace jx::admin
