// Showing the keys, taking what is typed, and storing what has changed.
#include "odbcadmin/assist/section_form.h"

#include <algorithm>
#include <vector>

#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/key_editor.h"
#include "odbcadmin/assist/open_secret.h"
#include "odbcadmin/assist/say.h"
#include "odbcadmin/assist/scoped_files.h"
#include "odbcadmin/model/data_source_change.h"

namespace jx::assist {

namespace {

// A data source, its keys as they were found, and as the user wants them.
struct SectionEdit {
    ChosenSource source;
    model::Pairs before;
    EditedKeys keys;
};

// A key that stands twice counts once, as in every look-up.
model::Pairs pairsIn(const model::IniSection* section) {
    model::Pairs pairs;
    if (section != nullptr)
        for (const model::IniEntry& entry : section->entries)
            if (!hasKey(pairs, std::string(entry.key)))
                pairs.emplace_back(entry.key, entry.value);
    return pairs;
}

void openSection(HWND dialog, SectionEdit& edit) {
    const bool isSystems = edit.source.scope == model::Scope::system;
    JXW_SetWindowText(dialog, ("Setup of " + edit.source.name + (isSystems ? " (System)" : "")).c_str());
    const model::Configuration configuration = configurationOf(edit.source.scope);
    const auto source = configuration.dataSource(edit.source.name);
    if (!source)
        return;
    edit.before = edit.keys.now = pairsIn(source->section);
    const std::string where = source->header ? source->header.where() : source->file->path;
    JXW_SetDlgItemText(dialog, kSectionWhere,
                       ((isSystems ? "For all users of this machine, in " : "In ") + where + ".").c_str());
    fillKeys(dialog, edit.keys, -1);
}

struct SectionChange {
    model::Pairs set;
    std::vector<std::string> unset;
};

SectionChange changeOf(const SectionEdit& edit) {
    SectionChange change;
    for (const auto& pair : edit.keys.now)
        if (std::find(edit.before.begin(), edit.before.end(), pair) == edit.before.end())
            change.set.push_back(pair);
    for (const auto& [key, value] : edit.before)
        if (!hasKey(edit.keys.now, key))
            change.unset.push_back(key);
    return change;
}

model::ChangeResult write(const std::string& name, const SectionChange& wished, const model::ChangeWay& way) {
    const model::Configuration configuration = configurationOf(way.scope);
    return model::asOneChange(way, [&] {
        model::ChangeResult result;
        if (!wished.set.empty())
            result.add(model::setKeys(configuration, name, wished.set, way));
        if (result.isDone() && !wished.unset.empty())
            result.add(model::unsetKeys(configuration, name, wished.unset, way));
        return result;
    });
}

// What odbcadmin takes to do the same to one of the system's; nobody lacks the right to change his own.
std::vector<model::RepeatedCommand> commandsFor(const std::string& name, const SectionChange& wished) {
    std::vector<model::RepeatedCommand> commands;
    if (!wished.set.empty()) {
        commands.push_back({{"--system", "dsn", "set", name}});
        for (const auto& [key, value] : wished.set)
            commands.back().words.push_back(key + "=" + value);
    }
    if (!wished.unset.empty()) {
        commands.push_back({{"--system", "dsn", "unset", name}});
        commands.back().words.insert(commands.back().words.end(), wished.unset.begin(), wished.unset.end());
    }
    return commands;
}

bool storeSection(HWND dialog, const SectionEdit& edit) {
    const std::string& name = edit.source.name;
    const SectionChange wished = changeOf(edit);
    const auto result = changeAsking(dialog, edit.keys.title, edit.source.scope,
                                     [&](const model::ChangeWay& way) { return write(name, wished, way); });
    if (result && !result->isDone())
        say(dialog, "Nothing was stored. " + sentenceOf(result->reason, commandsFor(name, wished)), edit.keys.title,
            MB_OK | MB_ICONSTOP);
    return result && result->isDone();
}

void finish(HWND dialog, SectionEdit& edit) {
    if (!takeTyped(dialog, edit.keys))
        return;
    if (storeSection(dialog, edit))
        JXW_EndDialog(dialog, 1);
    else
        fillKeys(dialog, edit.keys, -1);
}

void commandOf(HWND dialog, SectionEdit& edit, int control, int notification) {
    if (control == IDOK)
        finish(dialog, edit);
    else if (control == IDCANCEL)
        JXW_EndDialog(dialog, 0);
    else
        followKeyControls(dialog, edit.keys, control, notification);
}

unsigned int sectionProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG) {
        keepFormRecord(dialog, lparam);
        openSection(dialog, formRecord<SectionEdit>(dialog));
    } else if (message == WM_COMMAND) {
        commandOf(dialog, formRecord<SectionEdit>(dialog), wparam, static_cast<int>((lparam >> 16U) & 0xFFFFU));
    } else {
        return 0;
    }
    return 1;
}

}  // namespace

void editSource(HWND owner, const ChosenSource& source) {
    const char* title = source.scope == model::Scope::system ? "Data Source of the System" : "Data Source Setup";
    SectionEdit edit{source, {}, {title, /*needsDriver=*/true, {}}};
    showForm(kSectionForm, owner, sectionProcedure, &edit);
}

}  // namespace jx::assist
