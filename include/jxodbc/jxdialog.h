/* What a dialog procedure calls: messages, controls, properties, focus, message boxes.
 *
 *     char name[33];
 *     JXW_EnableWindow(JXW_GetDlgItem(dialog, 205), 0);
 *     if (JXW_GetDlgItemText(dialog, 201, name, sizeof name) > 0)
 *         JXW_EndDialog(dialog, IDOK);
 *
 * Windows are dialogs and controls. They live in memory, whether or not a screen shows them: jxwindow.h makes them,
 * jxscreen.h shows them.
 * Handles  each dialog and control has its own, which is never given out twice in a process. Calls with any other
 *          handle do nothing and return 0.
 * Threads  a window belongs to the thread that made it; on other threads its handle is an unknown one.
 * Failure  0, also when memory is short; nothing is then changed. An exception of a dialog procedure, a message-box
 *          handler or a screen passes through to the caller.
 * Texts    are copied. */
#ifndef JXDIALOG_H
#define JXDIALOG_H

#include "jxexport.h"
#include "jxtemplate.h"
#include "jxtypes.h"

JX_EXTERN_C_BEGIN

/* A dialog procedure: returns 1 when it handled the message, else 0. */
typedef unsigned int (*JxwProcedure)(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* Messages that a dialog procedure receives. */
enum {
    WM_INITDIALOG = 272,  /* the first one. lparam: the record; wparam: handle of the first control that takes focus */
    WM_COMMAND = 273,     /* wparam: control id; (lparam >> 16) & 0xFFFF: what happened to it, one of the next enum */
    WM_LBUTTONDOWN = 513, /* not sent by this layer */
    WM_USER = 1024        /* messages from here on are the procedure's own */
};

/* Notifications, in the upper half of a WM_COMMAND's lparam. */
enum {
    BN_CLICKED = 0,    /* a button was pressed, a check box or radio button changed */
    LBN_SELCHANGE = 1, /* the user selected a row */
    LBN_DBLCLK = 2,    /* the user double-clicked a row */
    EN_CHANGE = 768    /* the user changed an edit field */
};

/* Messages to controls. A control returns 0 for a message that its kind does not have. */
enum {
    BM_GETCHECK = 1024,     /* check box, radio button: 1 when checked, else 0 */
    BM_SETCHECK = 1025,     /* check box, radio button: wparam 1 or 0; returns 0 */
    LB_ADDSTRING = 1025,    /* lparam: text; its row, or LB_ERRSPACE */
    LB_INSERTSTRING = 1026, /* wparam: row, -1 for the end; lparam: text; the row, LB_ERR or LB_ERRSPACE */
    LB_DELETESTRING = 1027, /* wparam: row; number of rows left, or LB_ERR */
    LB_RESETCONTENT = 1029, /* no row and no selection; 0 */
    LB_SETCURSEL = 1031,    /* wparam: row, or -1 for none; the row, or LB_ERR */
    LB_GETCURSEL = 1033,    /* the selected row, or LB_ERR */
    LB_GETTEXT = 1034,      /* wparam: row; lparam: buffer for the whole text and its NUL; its length, or LB_ERR */
    LB_GETTEXTLEN = 1035,   /* wparam: row; length of its text, or LB_ERR */
    LB_GETCOUNT = 1036      /* number of rows */
};

/* LB_ERR: no such row, a null text or nothing selected. LB_ERRSPACE: memory is short, or there are 32767 rows. */
enum { LB_ERR = -1, LB_ERRSPACE = -2 };

/* Standard control ids, answers of message boxes and their styles. */
enum {
    IDOK = 1,
    IDCANCEL = 2,
    IDYES = 6,
    IDNO = 7,
    MB_OK = 0,
    MB_YESNO = 4,
    MB_ICONSTOP = 16,
    MB_ICONQUESTION = 32,
    MB_ICONEXCLAMATION = 48
};

/* ---- windows and messages ---- */

/* 1 when hwnd is a dialog or control that was not destroyed. */
JX_EXPORT int JXW_IsWindow(HWND hwnd);

/* Delivers a message at once and returns the procedure's or the control's answer. */
JX_EXPORT int JXW_SendMessage(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* JXW_SendMessage to control id of a dialog. */
JX_EXPORT int JXW_SendDlgItemMessage(HWND dialog, unsigned short id, int message, int wparam, uintptr_t lparam);

/* Queues a message; 1, or 0 when hwnd is not a window or its dialog has ended. Messages are delivered in the order in
 * which they were posted; those of a dialog that has ended or was destroyed are dropped. */
JX_EXPORT int JXW_PostMessage(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* Ends a dialog: its JXW_DialogBox returns result and destroys it. It may be called inside any of the dialog's
 * messages. Until the dialog is destroyed its controls can still be read. Of two calls the later result counts. 1, or 0
 * when dialog is not a dialog. */
JX_EXPORT int JXW_EndDialog(HWND dialog, int result);

/* Keeps a value under a name with a dialog or control (1, or 0 for a null name), and gives it back (0 when there is
 * none). */
JX_EXPORT int JXW_SetProp(HWND hwnd, const char* name, uintptr_t value);
JX_EXPORT uintptr_t JXW_GetProp(HWND hwnd, const char* name);

/* Changes a dialog's title or a control's text; null is empty. Returns 1. */
JX_EXPORT int JXW_SetWindowText(HWND hwnd, const char* text);

/* Asks the screen to show a dialog in its middle. Returns 1. */
JX_EXPORT int winCenterBox(HWND dialog);

/* ---- controls ---- */

/* The handle of control id; 0 when there is none. */
JX_EXPORT HWND JXW_GetDlgItem(HWND dialog, unsigned short id);

/* Enables (enable not 0) or greys a dialog or control. A control that has the focus passes it on when it is greyed.
 * Returns 1. */
JX_EXPORT int JXW_EnableWindow(HWND hwnd, int enable);

/* 1 when hwnd is enabled; 0 for a greyed window and for a dialog with a modal dialog or message box of its own in
 * front. For a control its dialog does not matter. */
JX_EXPORT int JXW_IsWindowEnabled(HWND hwnd);

/* Sets control id's text; null is empty. Returns 1. */
JX_EXPORT int JXW_SetDlgItemText(HWND dialog, unsigned short id, const char* text);

/* Copies control id's text into buffer, cut at size - 1 bytes and ended with NUL; returns the length copied. A control
 * that does not exist has an empty text. A null buffer or a size of 0 or less returns 0 and writes nothing. */
JX_EXPORT int JXW_GetDlgItemText(HWND dialog, unsigned short id, char* buffer, int size);

/* Checks (state not 0) or clears this check box or radio button only; 1, or 0 for another kind of control. */
JX_EXPORT int JXW_CheckDlgButton(HWND dialog, unsigned short id, int state);

/* 1 when the check box or radio button is checked, else 0. */
JX_EXPORT int JXW_IsDlgButtonChecked(HWND dialog, unsigned short id);

/* Checks radio button id and clears the others of its group; with first or last not 0, the others with an id from first
 * to last. 1, or 0 when id is not a radio button. */
JX_EXPORT int JXW_CheckRadioButton(HWND dialog, unsigned short first, unsigned short last, unsigned short id);

/* Gives the focus to a control, or to a dialog and its control that had it last. Returns the window that had it before,
 * or hwnd when none had. 0, and nothing changes, when hwnd is not a window, is greyed or cannot take the focus, or when
 * its dialog is greyed, has ended or has a dialog or message box of its own in front. */
JX_EXPORT HWND JXW_SetFocus(HWND hwnd);

/* The control that has the thread's focus, or its dialog when no control can take it; 0 without a dialog. */
JX_EXPORT HWND JXW_GetFocus(void);

/* ---- the mouse's shape ---- */

/* Cursors: the normal one, and the one shown while the user has to wait. */
enum { kJxwArrowCursor = 32512, kJxwWaitCursor = 32514 };

/* The handle of cursor id, which is id itself; instance is reserved, pass 0. Any thread. */
JX_EXPORT unsigned int JXW_LoadCursor(HWND instance, int id);

/* Sets and gets the process's cursor; at first it is the arrow. Setting it calls the calling thread's screen and
 * returns the cursor before. Any thread. */
JX_EXPORT unsigned int JXW_SetCursor(unsigned int cursor);
JX_EXPORT unsigned int JXW_GetCursor(void);

/* ---- message boxes ---- */

/* Shows a message and returns the button chosen (IDOK, IDYES, IDNO). owner may be 0; null texts are empty; style is a
 * button set (MB_OK, MB_YESNO) plus an icon. The first of these shows it:
 *   - the message-box handler
 *   - the calling thread's screen
 *   - standard error, as "title: text" and a line break; the result is IDOK, or IDNO for a Yes/No box. Control
 *     characters except the text's line breaks are written as "?", so that a text cannot control a terminal.
 * owner is disabled meanwhile. Any thread. No lock is held while the handler runs: it may call this function too. */
JX_EXPORT unsigned int guiMessageBox(HWND owner, const unsigned char* text, const unsigned char* title,
                                     unsigned int style);

/* Sets the handler that shows the message boxes of this process and returns the button chosen; null removes it. It is
 * called on the thread of guiMessageBox. Its texts are never null and valid during the call only. Any thread. A box
 * shown at the same time goes to the old handler with its context or to the new one with its own: keep the old context
 * until earlier boxes have returned. Returns 1. */
typedef unsigned int (*JxwMessageBoxHandler)(void* context, HWND owner, const char* text, const char* title,
                                             unsigned int style);
JX_EXPORT int JXW_SetMessageBoxHandler(JxwMessageBoxHandler handler, void* context);

JX_EXTERN_C_END

#endif
