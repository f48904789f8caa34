// Where the configuration files are: the user's and the system's.
//
//     Place& place = state.places.find(Scope::user, FileKind::dataSources, readEnvironment());
//     if (place.isThere()) ... place.path() ...
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <jxini.h>
#include "api3/environment.h"
#include "api3/file_names.h"

namespace jx::api3 {

enum class Scope : std::uint8_t { user, system };

// Place: one file and the store's object for it. It need not exist.
class Place {
public:
    // False without a path: there is no home directory, or (error() is not 0) it could not be found out.
    bool isThere() const { return file_ != nullptr; }
    int error() const { return error_; }

    const std::string& path() const { return path_; }
    Scope scope() const { return scope_; }

    // What the file holds now; null when it is absent, or cannot be read: jxIniLastFailure then tells. Valid until the
    // thread looks at this file again or at ten others.
    JxIniView* look() const { return jxIniLook(file_.get()); }

    // Whether the file belongs to everybody: a new one may then be read by all.
    bool isShared() const { return isShared_; }

private:
    friend class FilePlaces;

    struct Terminate {
        void operator()(JxIniFileCache* file) const { jxPrivateProfileTerm(file); }
    };

    bool isAt(std::string_view directory, std::string_view name) const;
    void moveTo(std::string_view directory, std::string_view name);
    void moveNowhere(int error);

    std::string path_;
    std::unique_ptr<JxIniFileCache, Terminate> file_;
    int error_ = 0;
    Scope scope_ = Scope::user;
    bool isShared_ = false;
};

// FilePlaces: the places that a thread asked for last. They are found anew at each call, and put together again only
// when the environment says something else; that takes no memory otherwise.
// Failure  std::bad_alloc may be thrown.
class FilePlaces {
public:
    FilePlaces();

    // kind is dataSources or drivers.
    const Place& find(Scope scope, FileKind kind, const Environment& environment);

    // The file at an absolute path.
    const Place& find(const char* path);

private:
    const Place& findUsers(Place& place, const char* named, std::string_view name, const Environment& environment);
    const Place& findSystems(Place& place, const char* named, std::string_view name, const Environment& environment);

    Place userDataSources_;
    Place userDrivers_;
    Place systemDataSources_;
    Place systemDrivers_;
    Place other_;
};

// The system's directory: ODBCSYSINI when that is absolute, else /etc.
std::string_view systemDirectory(const Environment& environment);

}  // namespace jx::api3
