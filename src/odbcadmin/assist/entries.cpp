// Reading the lists of the two files and comparing two looks at them.
#include "odbcadmin/assist/entries.h"

#include <jxini.h>
#include <odbcinst.h>

#include <memory>

namespace jx::assist {

namespace {

struct Release {
    void operator()(JxIniText* text) const { jxIniRelease(text); }
};
using Text = std::unique_ptr<JxIniText, Release>;

int addName(void* context, const JxIniPiece* piece) {
    static_cast<std::vector<std::string>*>(context)->emplace_back(piece->name, piece->nameLength);
    return 1;
}

int addLine(void* context, const JxIniPiece* piece) {
    auto& lines = *static_cast<std::string*>(context);
    lines.append(piece->name, piece->nameLength).push_back('=');
    if (piece->value != nullptr)
        lines.append(piece->value, piece->valueLength);
    lines.push_back('\n');
    return 1;
}

std::vector<std::string> namesOf(const JxIniText* text, const char* list) {
    std::vector<std::string> names;
    if (text != nullptr)
        jxIniEach(text, list, addName, &names);
    return names;
}

Entries entriesOf(const JxIniText* text, const char* list) {
    Entries entries;
    for (const std::string& name : namesOf(text, list))
        jxIniEach(text, name.c_str(), addLine, &entries[name]);
    return entries;
}

std::string enteredOf(const char* kind, const Entries& before, const Entries& after) {
    std::string names;
    for (const auto& [name, section] : after) {
        const auto old = before.find(name);
        if (old == before.end())
            names += (names.empty() ? "" : ", ") + name;
        else if (old->second != section)
            names += (names.empty() ? "" : ", ") + name + " (changed)";
    }
    return names.empty() ? "" : std::string(kind) + ": " + names + "\n";
}

}  // namespace

std::vector<std::string> namesIn(const char* file, const char* list) {
    const Text text(jxIniRead(file));
    return namesOf(text.get(), list);
}

Inventory Inventory::take() {
    const Text drivers(jxIniRead(INS_ODBCINST_FILENAME));
    const Text sources(jxIniRead(INS_ODBCINI_FILENAME));
    return {entriesOf(drivers.get(), INS_ODBCINI_DRIVERS), entriesOf(drivers.get(), INS_ODBCINST_TRANSLATORS),
            entriesOf(sources.get(), INS_ODBCINI_DS)};
}

std::string tellEntered(const Inventory& before, const Inventory& after) {
    const std::string entered = enteredOf("Drivers", before.drivers, after.drivers) +
                                enteredOf("Translators", before.translators, after.translators) +
                                enteredOf("Data sources", before.dataSources, after.dataSources);
    if (entered.empty())
        return "Compared with before, nothing new is in your files.";
    return "Your files show what was really entered:\n" + entered.substr(0, entered.size() - 1);
}

}  // namespace jx::assist
