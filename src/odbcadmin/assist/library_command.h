// What is asked and said before a command of the library's dialogs is carried out.
#pragma once

#include <jxdialog.h>

namespace jx::assist {

struct LibraryCommand {
    HWND dialog;
    unsigned short templateId;
    int control;
    int notification;
};

// True when the command is dealt with and must not reach the library:
//   Setup, Delete, Add of a data source   that cannot be done is answered with the reason
//   Setup, Add                            offer the general setup library for a driver that brings none
//   Delete of such a data source          is done here, after a question
//   Delete of a driver                    asks first whether its files are to go
//   all three, of what the system has     are done here, since the library knows the user's files only; also the Setup
//                                         of the user's data source that has a driver of the system's
//   OK of the Options                     stays in the dialog, with the reason, if the settings cannot be written
bool isAnswered(const LibraryCommand& command);

}  // namespace jx::assist
