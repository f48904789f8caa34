/* Making, running and destroying dialogs, for programs that show or drive them.
 *
 *     OdbcIns ins;
 *     int result = JXW_DialogBox(BJXHINST, JxDataSourcesDialog, 0, DataSourcesDlgProc, &ins);
 *
 * JXW_DialogBox runs a dialog on the thread's screen (jxscreen.h) until it ends. Without a screen, create a dialog,
 * send and dispatch messages until JXW_IsDialogEnded returns 1, and destroy it. Threads  a dialog and its controls
 * belong to the thread that created them. They are destroyed with it at the latest, without another call of the
 * procedure. Failure  0 (-1 where 0 is a result). An exception of the dialog procedure or the screen passes through; a
 * dialog that was being made or run is then destroyed and its owner enabled again. */
#ifndef JXWINDOW_H
#define JXWINDOW_H

#include "jxdialog.h"

JX_EXTERN_C_BEGIN

/* Makes a dialog of module's template templateId, sends WM_INITDIALOG with record as lparam, gives the focus to the
 * first control that can take it unless the procedure set it, and shows it on the thread's screen if there is one.
 * owner is a dialog or a control of one, and stays enabled; any other handle means no owner. record stays the caller's.
 * Returns the handle; 0 when there is no such template, module or procedure is null, memory is short or the procedure
 * destroyed the dialog. */
JX_EXPORT HWND JXW_CreateDialog(const char* module, unsigned short templateId, HWND owner, JxwProcedure procedure,
                                void* record);

/* Makes the dialog as above and runs it: owner is disabled, the screen waits for the user, messages are delivered
 * (those posted to other dialogs of the thread too) until JXW_EndDialog. Then owner is enabled again, the dialog
 * destroyed and its result returned. -1 when it cannot be made, when the thread's screen is missing or has no wait
 * callback, when the dialog was destroyed before it ended, or when wait returned 0 and the dialog did not close. */
JX_EXPORT int JXW_DialogBox(const char* module, unsigned short templateId, HWND owner, JxwProcedure procedure,
                            void* record);

/* Delivers the messages queued for dialog and its controls, or for every dialog of the thread when dialog is 0. What is
 * posted meanwhile waits for the next call. Returns how many were delivered; 0 for any other handle. */
JX_EXPORT int JXW_DispatchMessages(HWND dialog);

/* 1, and its result in *result (which may be null), when dialog was ended and not yet destroyed; else 0. */
JX_EXPORT int JXW_IsDialogEnded(HWND dialog, int* result);

/* Destroys the dialogs that dialog owns, then dialog itself, also from inside its own messages. 1, or 0 when the handle
 * is not a dialog of this thread. */
JX_EXPORT int JXW_DestroyDialog(HWND dialog);

JX_EXTERN_C_END

#endif
