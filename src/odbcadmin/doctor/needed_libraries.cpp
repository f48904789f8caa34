// The walk over needed libraries and their symbol versions.
#include "odbcadmin/doctor/needed_libraries.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <map>
#include <set>
#include <vector>

#include "odbcadmin/model/text.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::doctor {

namespace {

constexpr std::size_t kShown = 8;

struct Loaded {
    LibraryFile file;
    Requester requester;
    std::map<std::string, const Loaded*> needed;  // by the name asked for
};

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

// At most a line of them: a C library offers forty versions.
std::string some(std::vector<std::string> texts) {
    const std::size_t more = texts.size() - std::min(texts.size(), kShown);
    if (more == 0)
        return model::joined(texts);
    texts.erase(texts.begin(), texts.end() - kShown);
    return std::to_string(more) + " others and " + model::joined(texts);
}

// The newest of those that differ in their numbers only, as in GLIBC_2.4 and GLIBC_2.34.
std::string newestLike(const std::string& version, const std::set<std::string>& offered) {
    const auto stem = [](const std::string& text) { return text.substr(0, text.find_first_of("0123456789")); };
    std::string newest;
    for (const std::string& each : offered)
        if (stem(each) == stem(version) && (newest.empty() || ::strverscmp(each.c_str(), newest.c_str()) > 0))
            newest = each;
    return newest;
}

// Of other versions of a library the newest one; one whose name differs before ".so" only where there is no other.
std::string newestOf(const std::vector<std::string>& others, const std::string& name) {
    const std::string base = name.substr(0, name.find(".so") + 3);
    const auto isNearer = [&](const std::string& left, const std::string& right) {
        const bool isLeftSame = nameOf(left).starts_with(base);
        const bool isRightSame = nameOf(right).starts_with(base);
        if (isLeftSame != isRightSame)
            return isRightSame;
        return ::strverscmp(nameOf(left).c_str(), nameOf(right).c_str()) < 0;
    };
    return *std::max_element(others.begin(), others.end(), isNearer);
}

// How a program gets an installer library that is nowhere where the loader looks, where this product has one; empty
// for every other library.
std::string ownInstallerAdvice(const std::string& name) {
    const std::string own = name == trial::kDriversInstaller ? trial::driversInstallerPath() : "";
    if (own.empty())
        return {};
    const std::string directory = own.substr(0, own.rfind('/'));
    return "This product has one: start the program with LD_LIBRARY_PATH=" + model::shellWord(directory);
}

// Its parts are of one build, which all programs of the system use.
bool isOfCLibrary(const std::string& name) {
    for (const char* part : {"libc.so.", "libm.so.", "libpthread.so.", "libdl.so.", "librt.so.", "ld-linux"})
        if (name.starts_with(part))
            return true;
    return false;
}

class Walk {
public:
    Walk(const LoaderPlaces& places, const Subject& subject) : places_(places), subject_(subject) {}

    void from(const LibraryFile& library) {
        add(library, nameOf(library.path), nullptr);
        // The queue grows while it is walked; a deque leaves its elements where they are.
        for (std::size_t i = 0; i < queue_.size(); ++i) {
            for (const std::string& name : queue_[i].file.needed)
                take(name, queue_[i]);
        }
        for (const Loaded& each : queue_)
            compareVersions(each);
    }

private:
    const Loaded* add(const LibraryFile& file, const std::string& name, const Loaded* askedBy) {
        Loaded& added = queue_.emplace_back();
        added.file = file;
        added.requester = {&added.file, askedBy != nullptr ? &askedBy->requester : nullptr};
        byName_[name] = &added;
        if (!added.file.soname.empty())
            byName_.emplace(added.file.soname, &added);
        return &added;
    }

    // A name that was met before means the library that was found then, whoever asks.
    void take(const std::string& name, Loaded& requester) {
        const auto known = byName_.find(name);
        if (known != byName_.end()) {
            requester.needed[name] = known->second;
            return;
        }
        byName_[name] = nullptr;
        const LookUp found = lookUp(name, &requester.requester, places_);
        if (!found.file.isThere())
            return tellMissing(name, requester, found);
        if (found.file.state == LibraryFile::State::library)
            requester.needed[name] = add(found.file, name, &requester);
        else
            subject_.tell(check::kNeededDamaged,
                          whoNeeds(name, requester) + ", and the loader finds " + found.file.path +
                              ", which is not a shared library.",
                          "Install the package that holds " + name + " again.");
    }

    void tellMissing(const std::string& name, const Loaded& requester, const LookUp& found) const {
        const std::string who = whoNeeds(name, requester);
        if (!found.otherSystem.empty())
            return subject_.tell(check::kNeededOtherSystem,
                                 who + ", which is there for " + systemText(found.otherSystem.front().system) +
                                     " only: " + found.otherSystem.front().path + ".",
                                 "Install " + name + " for " + systemText(thisSystem()) + ".");
        std::vector<std::string> directories = found.directories;
        directories.insert(directories.end(), places_.defaults.begin(), places_.defaults.end());
        const std::vector<std::string> others = otherVersions(name, directories, places_.cache);
        subject_.tell(
            check::kNeededMissing,
            who + ", which is nowhere where the loader looks" +
                (found.directories.empty() ? "" : ": " + some(found.directories)) + "." +
                (others.empty() ? "" : " Of other versions the newest here is " + newestOf(others, name) + "."),
            !ownInstallerAdvice(name).empty() ? ownInstallerAdvice(name)
            : others.empty()                  ? "Install the package that holds " + name +
                                   ", or name its directory in LD_LIBRARY_PATH or the loader's configuration."
                             : "Install " + name + " as well, or a build for the version that is there.");
    }

    // Deliberate: a library that offers no versions at all is taken for every version, as the loader does.
    void compareVersions(const Loaded& each) const {
        for (const VersionNeed& need : each.file.versionsNeeded) {
            const auto found = each.needed.find(need.file);
            const Loaded* provider = found != each.needed.end() ? found->second : nullptr;
            if (need.weak || provider == nullptr || provider->file.versionsOffered.empty() ||
                provider->file.versionsOffered.contains(need.version))
                continue;
            const std::string newest = newestLike(need.version, provider->file.versionsOffered);
            subject_.tell(check::kVersionMissing,
                          each.file.path + " needs version " + need.version + " of " + need.file + "; " +
                              provider->file.path + " offers " +
                              (newest.empty() ? "none like it" : newest + " at most") + ".",
                          isOfCLibrary(need.file)
                              ? "Install a build of the library for this system: the C library is the system's own."
                              : "Install a newer " + need.file + ", or a build of the library for this system.");
        }
    }

    // "/opt/libclient.so needs libssl.so.1.1 (libdriver.so -> libclient.so -> libssl.so.1.1)"
    static std::string whoNeeds(const std::string& name, const Loaded& requester) {
        std::string chain = name;
        for (const Requester* each = &requester.requester; each != nullptr; each = each->askedBy)
            chain.insert(0, nameOf(each->file->path) + " -> ");
        return requester.file.path + " needs " + name +
               (requester.requester.askedBy != nullptr ? " (" + chain + ")" : "");
    }

    const LoaderPlaces& places_;
    const Subject& subject_;
    std::deque<Loaded> queue_;
    std::map<std::string, const Loaded*> byName_;
};

}  // namespace

void checkNeeded(const LibraryFile& library, const LoaderPlaces& places, const Subject& subject) {
    Walk(places, subject).from(library);
}

}  // namespace jx::doctor
