// The walk over needed libraries and their symbol versions.
#include "odbcadmin/doctor/needed_libraries.h"

#include <algorithm>
#include <deque>
#include <map>

#include "odbcadmin/doctor/elf_header.h"

namespace jx::doctor {

namespace {

struct Loaded {
    ElfFile file;
    Requester requester;
    std::map<std::string, const Loaded*> needed;  // by the name asked for
};

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

class Walk {
public:
    explicit Walk(const LoaderPlaces& places) : places_(places) {}

    std::vector<NeededProblem> from(const std::string& path) {
        add(path, nameOf(path), nullptr);
        // The queue grows while it is walked; a deque leaves its elements where they are.
        for (std::size_t i = 0; i < queue_.size(); ++i) {
            for (const std::string& name : queue_[i].file.needed)
                take(name, queue_[i]);
        }
        for (const Loaded& each : queue_)
            compareVersions(each);
        return problems_;
    }

private:
    const Loaded* add(const std::string& path, const std::string& name, const Loaded* askedBy) {
        std::optional<ElfFile> file = readElfFile(path);
        if (!file)
            return nullptr;
        Loaded& added = queue_.emplace_back();
        added.file = std::move(*file);
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
        if (found.path.empty())
            return tellMissing(name, requester, found);
        const Loaded* added =
            readElfHeader(found.path).state == HeaderState::readable ? add(found.path, name, &requester) : nullptr;
        if (added == nullptr)
            tell(NeededProblem::Kind::damaged, name, requester).at = found.path;
        requester.needed[name] = added;
    }

    void tellMissing(const std::string& name, const Loaded& requester, const LookUp& found) {
        const bool loaded = places_.isLoaded(name);
        const bool elsewhere = !found.otherSystem.empty();
        using Kind = NeededProblem::Kind;
        NeededProblem& problem =
            tell(loaded ? Kind::fromProgram : (elsewhere ? Kind::otherSystem : Kind::missing), name, requester);
        if (elsewhere)
            problem.at = found.otherSystem.front();
        problem.directories = found.directories;
        std::vector<std::string> directories = found.directories;
        directories.insert(directories.end(), places_.defaults.begin(), places_.defaults.end());
        if (!loaded)
            problem.similar = otherVersions(name, directories, places_.cache);
    }

    // Deliberate: a library that offers no versions at all is taken for every version, as the loader does.
    void compareVersions(const Loaded& each) {
        for (const VersionNeed& need : each.file.versionsNeeded) {
            const auto found = each.needed.find(need.file);
            const Loaded* provider = found != each.needed.end() ? found->second : nullptr;
            if (need.weak || provider == nullptr || provider->file.versionsOffered.empty() ||
                provider->file.versionsOffered.contains(need.version))
                continue;
            NeededProblem& problem = tell(NeededProblem::Kind::versionMissing, need.file, each);
            problem.at = provider->file.path;
            problem.version = need.version;
            problem.similar.assign(provider->file.versionsOffered.begin(), provider->file.versionsOffered.end());
        }
    }

    NeededProblem& tell(NeededProblem::Kind kind, const std::string& name, const Loaded& requester) {
        NeededProblem& problem = problems_.emplace_back();
        problem.kind = kind;
        problem.name = name;
        problem.requester = requester.file.path;
        problem.chain = name;
        for (const Requester* each = &requester.requester; each != nullptr; each = each->askedBy)
            problem.chain.insert(0, nameOf(each->file->path) + " -> ");
        return problem;
    }

    const LoaderPlaces& places_;
    std::deque<Loaded> queue_;
    std::map<std::string, const Loaded*> byName_;
    std::vector<NeededProblem> problems_;
};

}  // namespace

std::vector<NeededProblem> examineNeeded(const std::string& path, const LoaderPlaces& places) {
    return Walk(places).from(path);
}

}  // namespace jx::doctor
