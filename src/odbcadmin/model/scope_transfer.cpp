// Two files, and a section that goes from one to the other.
#include "odbcadmin/model/scope_transfer.h"

#include <optional>
#include <utility>

#include "odbcadmin/model/registration.h"
#include "odbcadmin/model/system_files.h"
#include "rules/names.h"
#include "rules/valid_names.h"

namespace jx::model {

namespace {

using Kind = Reason::Kind;

Scope otherThan(Scope scope) {
    return scope == Scope::user ? Scope::system : Scope::user;
}

// What goes from one file to the other: the words for it, its file and its list.
struct Thing {
    std::string word;
    const char* file;
    const char* list;
};

// The files of a transfer, as they are while nobody else writes them. A copy leaves the one alone that it comes from.
class BothFiles {
public:
    BothFiles(const Thing& thing, const Transfer& transfer, const ChangeWay& way) : userWay_(way), systemWay_(way) {
        userWay_.scope = Scope::user;
        systemWay_.scope = Scope::system;
        ChangeWay& from = transfer.to == Scope::user ? systemWay_ : userWay_;
        if (transfer.old == Old::keep)
            from.writing = ChangeWay::Writing::never;
        user_.emplace(thing.file, userWay_);
        system_.emplace(thing.file, systemWay_);
    }

    BothFiles(const BothFiles&) = delete;
    BothFiles& operator=(const BothFiles&) = delete;

    FileChange& of(Scope scope) { return scope == Scope::user ? *user_ : *system_; }

private:
    ChangeWay userWay_, systemWay_;
    std::optional<FileChange> user_, system_;
};

Reason isThereAlready(const Thing& thing, const Transfer& transfer) {
    return {Kind::exists,
            "There is a " + thing.word + " " + transfer.newName + " in " + pathOf(thing.file, transfer.to),
            "Remove it first, or give the copy another name."};
}

Reason isNotThere(const Thing& thing, const Transfer& transfer) {
    const Scope from = otherThan(transfer.to);
    return {Kind::notFound, "There is no " + thing.word + " " + transfer.name + " in " + pathOf(thing.file, from),
            "--to " + std::string(scopeWord(transfer.to)) + " takes what stands in the file of the " + scopeWord(from) +
                "."};
}

ChangeResult carryOver(const Thing& thing, const Transfer& transfer, const ChangeWay& way) {
    BothFiles files(thing, transfer, way);
    FileChange& source = files.of(otherThan(transfer.to));
    FileChange& target = files.of(transfer.to);
    for (const FileChange* each : {&source, &target})
        if (each->reason())
            return {each->reason()};
    const IniSection* section = source.before().section(transfer.name);
    const IniEntry* listed = source.before().find(thing.list, transfer.name);
    if (section == nullptr)
        return {isNotThere(thing, transfer)};
    if (target.before().section(transfer.newName) != nullptr ||
        target.before().find(thing.list, transfer.newName) != nullptr)
        return {isThereAlready(thing, transfer)};
    if (listed != nullptr)
        target.set(thing.list, transfer.newName, std::string(listed->value));
    for (const IniEntry& entry : section->entries)
        target.set(transfer.newName, std::string(entry.key), std::string(entry.value));
    ChangeResult result = target.finish();
    if (!result.isDone() || transfer.old == Old::keep)
        return result;
    if (listed != nullptr)
        source.erase(thing.list, transfer.name);
    source.eraseSection(transfer.name);
    return result.add(source.finish());
}

// carryOver for names that may go there.
ChangeResult transferChecked(const Thing& thing, const Transfer& transfer, const rules::NameRules& rules,
                             const ChangeWay& way) {
    const FileKind kind =
        std::string_view(thing.file) == rules::kDriverFile ? FileKind::drivers : FileKind::dataSources;
    if (isOneFile(kind))
        return {{Kind::refused, "The user and the system have the same file here: " + pathOf(thing.file),
                 "odbcadmin paths shows which variable makes it so."}};
    if (rules::isReservedSection(transfer.name) || rules::isDefaultName(transfer.name))
        return {{Kind::refused, "There is no " + thing.word + " called " + transfer.name, "Name another one."}};
    const rules::Why why =
        rules::sameName(transfer.name, transfer.newName) ? nullptr : rules::whyNoName(transfer.newName, rules);
    if (why != nullptr)
        return {{Kind::refused, "No " + thing.word + " can be called \"" + transfer.newName + "\": " + why,
                 "Choose another name."}};
    return carryOver(thing, transfer, way);
}

}  // namespace

ChangeResult transferDataSource(const Transfer& transfer, const ChangeWay& way) {
    return transferChecked({"data source", rules::kDataSourceFile, rules::kDataSourceList}, transfer,
                           rules::kNewDataSource, way);
}

ChangeResult transferRegistered(const RegisteredKind& kind, const Transfer& transfer, const ChangeWay& way) {
    return transferChecked({kind.word, rules::kDriverFile, kind.list}, transfer, rules::kNewDriver, way);
}

}  // namespace jx::model
