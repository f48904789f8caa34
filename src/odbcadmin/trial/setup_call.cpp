// Loading setup libraries and making the installer call them.
#include "odbcadmin/trial/setup_call.h"

#include <dlfcn.h>
#include <jxerrors.h>
#include <jxfiles.h>
#include <odbcinst.h>

namespace jx::trial {

namespace {

// What SQLConfigDataSource takes at most.
constexpr std::size_t kLongestList = 1024;
constexpr std::size_t kLongestDriver = 49;

WORD codeOf(SetupRequest::Action action) {
    return action == SetupRequest::Action::add         ? ODBC_ADD_DSN
           : action == SetupRequest::Action::configure ? ODBC_CONFIG_DSN
                                                       : ODBC_REMOVE_DSN;
}

std::string attributeList(const SetupRequest& request) {
    std::string list = "DSN=" + request.dataSource;
    list.push_back('\0');
    for (const auto& [key, value] : request.attributes) {
        list.append(key).append("=").append(value);
        list.push_back('\0');
    }
    list.push_back('\0');
    return list;
}

std::vector<std::string> recordedErrors() {
    std::vector<std::string> errors;
    for (unsigned long i = 0; i < JxErrorKeeper::count(); ++i)
        if (const JxError* error = JxErrorKeeper::errorAt(i))
            errors.emplace_back(reinterpret_cast<const char*>(error->text()));
    return errors;
}

}  // namespace

SetupReport probeSetup(const std::string& library) {
    void* loaded = bosLoadLibrary(reinterpret_cast<const unsigned char*>(library.c_str()), 0);
    if (loaded == nullptr)
        return {SetupReport::End::notLoaded, reinterpret_cast<const char*>(bosLastLoadError()), {}};
    const bool hasRoutine = dlsym(loaded, "CONFIGDSN") != nullptr || dlsym(loaded, "ConfigDSN") != nullptr;
    dlclose(loaded);
    return {hasRoutine ? SetupReport::End::done : SetupReport::End::noRoutine, {}, {}};
}

SetupReport callSetup(const SetupRequest& request) {
    const std::string list = attributeList(request);
    if (list.size() > kLongestList)
        return {SetupReport::End::tooLong, "more than 1024 bytes", {}};
    if (request.driver.size() > kLongestDriver)
        return {SetupReport::End::tooLong, "the driver's name is too long", {}};
    JxErrorKeeper::clear();
    if (SQLConfigDataSource(0, codeOf(request.action), request.driver.c_str(), list.c_str()) != FALSE)
        return {};
    return {SetupReport::End::refused, {}, recordedErrors()};
}

}  // namespace jx::trial
