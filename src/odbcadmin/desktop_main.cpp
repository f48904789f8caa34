// The program xodbcadmin: the dialogs in windows of the desktop.
#include <odbcinst.h>

#include <cstdio>
#include <exception>
#include <string>

#include "odbcadmin/desktop/desktop_screen.h"
#include "odbcadmin/desktop/options.h"
#include "odbcadmin/desktop/toolkit.h"
#include "odbcadmin/desktop/watch.h"
#include "odbcadmin/model/home_folder.h"
#include "odbcadmin/trial/installer_library.h"

namespace {

using jx::desktop::Options;

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;
constexpr int kHomeTrouble = 7;

int refuse(const std::string& why, int code) {
    std::fprintf(stderr,
                 "xodbcadmin: %s\nIt shows its dialogs in windows; odbcadmin shows them in a terminal. See xodbcadmin "
                 "--help.\n",
                 why.c_str());
    return code;
}

int showDialogs(const jx::desktop::NoteWorker& noteWorker) {
    if (!jx::desktop::openToolkit())
        return refuse("there is no display (is DISPLAY set?)", kWrongUse);
    const auto manage = jx::trial::installerFunction<decltype(&SQLManageDataSources)>("SQLManageDataSources");
    if (manage == nullptr)
        return refuse(jx::trial::installerTrouble(), kWrongUse);
    const jx::desktop::DesktopScreen screen(noteWorker);
    manage(0);
    return 0;
}

int run(const Options& options, char** arguments) {
    switch (options.wish) {
        case Options::Wish::help:
            std::fputs(jx::desktop::kHelpText, stdout);
            return 0;
        case Options::Wish::version:
            std::puts("xodbcadmin " JX_VERSION);
            return 0;
        case Options::Wish::wrongUse:
            return refuse(options.trouble, kWrongUse);
        case Options::Wish::dialogs:
            break;
    }
    const std::string trouble = options.home.empty() ? "" : jx::model::enterHome(options.home);
    if (!trouble.empty())
        return refuse(trouble, kHomeTrouble);
    return jx::desktop::runWatched(arguments, showDialogs);
}

}  // namespace

int main(int count, char** arguments) {
    try {
        return run(jx::desktop::readOptions(count, arguments), arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "xodbcadmin: %s\n", error.what());
    } catch (...) {
        // Drivers throw what they like.
        std::fputs("xodbcadmin: A driver ended its work with an exception that says nothing\n", stderr);
    }
    return kFailed;
}
