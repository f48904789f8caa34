/* Making, running and destroying dialogs: what starts a dialog calls.
 *
 * Use      JXW_DialogBox runs a dialog on the thread's screen from begin to end. Without a screen, a program creates a
 *          dialog, sends and dispatches messages until JXW_IsDialogEnded says so, and destroys it.
 * Threads  a dialog and its controls belong to the thread that created them and go with it at the latest (without
 *          another call of the procedure).
 * Failure  0 (-1 where 0 is a result). An exception of the dialog procedure or the screen passes through; a dialog that
 *          was being made or run is then destroyed and its owner enabled again. */
#ifndef JXWINDOW_H
#define JXWINDOW_H

#include "jxdialog.h"

JX_EXTERN_C_BEGIN

/* Makes a dialog of module's template templateId, sends WM_INITDIALOG with record as lparam, gives the focus to the
 * first control that can take it unless the procedure set it, and shows it on the thread's screen if there is one.
 * owner is a dialog (or a control of one); a handle that names none is no owner. The owner stays enabled.
 * Returns the handle; 0 when there is no such template, procedure is null or the procedure destroyed the dialog. */
JX_EXPORT HWND JXW_CreateDialog(const char* module, unsigned short templateId, HWND owner, JxwProcedure procedure,
                                void* record);

/* Makes the dialog as above and lets the user work with it: owner is disabled, the screen waits for the user, messages
 * are delivered (those posted to other dialogs of the thread too) until JXW_EndDialog. Then owner is enabled again, the
 * dialog destroyed, its result returned.
 * -1 when it cannot be made, when the thread has no screen, when it was destroyed before it ended, or when the screen
 * has lost its user and the dialog did not close. */
JX_EXPORT int JXW_DialogBox(const char* module, unsigned short templateId, HWND owner, JxwProcedure procedure,
                            void* record);

/* Delivers the messages that are queued for dialog and its controls at this moment, with dialog 0 those of every dialog
 * of the thread; what is posted meanwhile waits for the next call. Returns how many were delivered. */
JX_EXPORT int JXW_DispatchMessages(HWND dialog);

/* 1 and the result when dialog was ended and not yet destroyed, else 0; result may be null. */
JX_EXPORT int JXW_IsDialogEnded(HWND dialog, int* result);

/* Destroys a dialog, also from inside its own messages, and the dialogs it owns before it; 1, or 0 when it is none. */
JX_EXPORT int JXW_DestroyDialog(HWND dialog);

JX_EXTERN_C_END

#endif
