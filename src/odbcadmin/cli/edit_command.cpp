// edit: a configuration file in the user's editor, looked over before it is written.
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <iostream>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/editor.h"
#include "odbcadmin/cli/end_signals.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/examination.h"
#include "odbcadmin/doctor/syntax_checks.h"
#include "odbcadmin/model/private_copy.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::Configuration;
using model::FileKind;
using model::IniView;
using model::PrivateCopy;
using model::Reason;

// One run of the editor and what follows; file is a name of jxini.h.
struct Editing {
    const Session& session;
    std::string file;
    std::string path;
    std::string before;
};

// The errors in the text as it would be in its place, and in this file alone.
doctor::Findings errorsIn(const Editing& editing, const std::string& text) {
    doctor::Findings findings;
    std::vector<model::ConfigFile> files;
    for (const FileKind kind : {FileKind::dataSources, FileKind::drivers}) {
        files.push_back(model::readConfigFile(kind));
        auto view = IniView::parse(text);
        if (files.back().path == editing.path && view)
            files.back().view = std::move(*view);
    }
    const bool isOwn =
        std::any_of(files.begin(), files.end(), [&](const auto& each) { return each.path == editing.path; });
    findings = isOwn ? doctor::lintTexts(Configuration(std::move(files))) : doctor::checkSyntaxOf(editing.path, text);
    std::erase_if(findings, [&](const doctor::Finding& each) {
        const bool isOfFile = each.subject.starts_with(editing.path) || each.fact.starts_with(editing.path);
        return each.severity != doctor::Severity::error || !isOfFile;
    });
    return findings;
}

void show(const doctor::Findings& errors) {
    std::cout.flush();
    for (const doctor::Finding& each : errors)
        std::cerr << "error " << each.id << " " << model::printable(each.subject) << "\n  "
                  << model::printable(each.fact) << "\n  " << model::printable(each.advice) << '\n';
}

enum class Answer { editAgain, save, discard };

// The end of the input, or a signal, is an answer as well.
Answer ask() {
    for (std::string line;;) {
        std::cerr << "Edit again (e), save anyway (s) or discard (d)? " << std::flush;
        if (!std::getline(std::cin, line) || line == "d" || EndSignals::arrived() != 0)
            return Answer::discard;
        if (line == "e" || line == "s")
            return line == "e" ? Answer::editAgain : Answer::save;
    }
}

// What was typed is not lost when it cannot be written.
ExitCode keepCopy(const Session& session, PrivateCopy& copy, Reason reason) {
    copy.keep();
    reason.advice += (reason.advice.empty() ? "" : " ") + ("What you wrote is in " + copy.path() + ".");
    return session.fail(reason);
}

ExitCode commit(const Editing& editing, const std::string& text, PrivateCopy& copy) {
    const model::ChangeWay way = editing.session.way();
    model::ChangeResult result;
    {
        model::FileChange change(editing.file, way);
        if (EndSignals::arrived() != 0)
            return ExitCode::failed;
        if (change.before().bytes() != editing.before)
            change.fail({Reason::Kind::fileTrouble, editing.path + " was changed while you edited it",
                         "It stays as it is now: compare it with your text, and edit it again."});
        change.replace(text);
        result = change.finish();
    }
    return result.isDone() ? editing.session.report(result, "Changed " + editing.path)
                           : keepCopy(editing.session, copy, result.reason);
}

ExitCode editCopy(const Editing& editing, PrivateCopy& copy) {
    const Session& session = editing.session;
    const bool canAsk = !session.json && ::isatty(STDIN_FILENO) == 1 && ::isatty(STDERR_FILENO) == 1;
    for (;;) {
        if (const Reason reason = runEditor(copy.path()))
            return session.fail(reason);
        const std::optional<std::string> text = copy.text();
        if (!text)
            return session.fail(ExitCode::failed, "The editor left no file", "Nothing was changed.");
        const doctor::Findings errors = *text == editing.before ? doctor::Findings() : errorsIn(editing, *text);
        show(errors);
        if (!errors.empty() && !canAsk) {
            copy.keep();
            return session.fail(
                ExitCode::foundErrors,
                "The new text has " + model::counted(errors.size(), "error") + "; " + editing.path + " is as it was",
                "What you wrote is in " + copy.path() + ".");
        }
        const Answer answer = errors.empty() ? Answer::save : ask();
        if (answer == Answer::discard) {
            session.say("Discarded: " + editing.path + " is as it was");
            return ExitCode::done;
        }
        if (answer == Answer::save)
            return commit(editing, *text, copy);
    }
}

std::string nameOfCopy(const std::string& path) {
    const std::string name = std::filesystem::path(path).filename().string();
    return name.size() > 1 && name.front() == '.' ? name.substr(1) : name;
}

ExitCode edit(const Session& session, const Line& line) {
    const std::string file = line.has("FILE")        ? line.text("FILE")
                             : line.has("--drivers") ? rules::kDriverFile
                                                     : rules::kDataSourceFile;
    const std::optional<IniView> view = IniView::read(file);
    if (!view)
        return session.fail(model::lastFailure());
    const Editing editing{session, file, model::pathOf(file), std::string(view->bytes())};
    ExitCode code = ExitCode::failed;
    int signal = 0;
    {
        const EndSignals signals;
        PrivateCopy copy(nameOfCopy(editing.path), editing.before);
        code = copy.trouble() ? session.fail(copy.trouble()) : editCopy(editing, copy);
        signal = EndSignals::arrived();
    }
    if (signal != 0)
        std::raise(signal);
    return code;
}

}  // namespace

void addEditCommand(CLI::App& app, Session& session) {
    addVerb(app, session, "edit", "Edit a configuration file in your editor; it is checked before it is written",
            "odbcadmin edit\nodbcadmin edit --drivers\nEDITOR='nano -w' odbcadmin edit servers.ini")
        .operand("FILE", "A path; without it .odbc.ini", kOptional, Complete::files)
        .flag("--drivers", "Edit .odbcinst.ini")
        .notBoth("--drivers", "FILE")
        .onRun(edit);
}

}  // namespace jx::cli
