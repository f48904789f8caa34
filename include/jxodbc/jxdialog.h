/* What a dialog procedure calls: messages, controls, properties, focus, message boxes.
 *
 * Windows live in memory, whether or not anything shows them (jxwindow.h makes them, jxscreen.h shows them).
 * Handles   dialogs and controls have one each. A handle is never given out twice in a process. One that names no
 *           living window of the calling thread is answered with 0 and harms nothing.
 * Threads   a window belongs to the thread that made it; to every other thread its handle is a stale one.
 * Failure   0, also when memory is short; nothing is then changed. An exception thrown by a dialog procedure, a
 *           message-box handler or a screen passes through whatever called it. */
#ifndef JXDIALOG_H
#define JXDIALOG_H

#include "jxexport.h"
#include "jxtemplate.h"
#include "jxtypes.h"

JX_EXTERN_C_BEGIN

/* A dialog procedure: 1 when it handled the message, else 0. */
typedef unsigned int (*JxwProcedure)(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* Messages that a dialog procedure receives. */
enum {
    WM_INITDIALOG = 272,  /* lparam: the record given to whoever started the dialog; wparam: first control's handle */
    WM_COMMAND = 273,     /* wparam: control id; (lparam >> 16) & 0xFFFF: what happened to it, one of the next enum */
    WM_LBUTTONDOWN = 513, /* never sent by the layer itself */
    WM_USER = 1024        /* messages from here on are the procedure's own */
};

/* Notifications, in the upper half of a WM_COMMAND's lparam. */
enum {
    BN_CLICKED = 0,    /* a button was pressed, a check box or radio button changed */
    LBN_SELCHANGE = 1, /* the user selected a row */
    LBN_DBLCLK = 2,    /* the user double-clicked a row */
    EN_CHANGE = 768    /* the user changed an edit field */
};

/* Messages to controls. A message that its kind of control does not know returns 0. */
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

/* A row that does not exist or nothing selected; no memory, or 32767 rows already. */
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

/* 1 when hwnd is a living dialog or control. */
JX_EXPORT int JXW_IsWindow(HWND hwnd);

/* Delivers a message at once and returns the procedure's or the control's answer. */
JX_EXPORT int JXW_SendMessage(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* JXW_SendMessage to control id of a dialog. */
JX_EXPORT int JXW_SendDlgItemMessage(HWND dialog, unsigned short id, int message, int wparam, uintptr_t lparam);

/* Queues a message; 1, or 0 when hwnd is no window. Messages are delivered in the order in which they were posted;
 * those of a dialog that has ended or was destroyed are dropped. */
JX_EXPORT int JXW_PostMessage(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* Ends a dialog, from inside any of its messages or from outside; whoever runs it gets result, and destroys it. Until
 * then its controls can still be read. Called twice, the later result counts. */
JX_EXPORT int JXW_EndDialog(HWND dialog, int result);

/* Keeps a value under a name with a dialog or control, and gives it back (0 when there is none). */
JX_EXPORT int JXW_SetProp(HWND hwnd, const char* name, uintptr_t value);
JX_EXPORT uintptr_t JXW_GetProp(HWND hwnd, const char* name);

/* Changes a dialog's title or a control's text; null is empty. */
JX_EXPORT int JXW_SetWindowText(HWND hwnd, const char* text);

/* Asks for a dialog to be shown in the middle of the screen. */
JX_EXPORT int winCenterBox(HWND dialog);

/* ---- controls ---- */

/* The handle of control id; 0 when there is none. */
JX_EXPORT HWND JXW_GetDlgItem(HWND dialog, unsigned short id);

/* Enables (enable not 0) or greys a dialog or control. A control that has the focus passes it on when it is greyed.
 * Returns 1. */
JX_EXPORT int JXW_EnableWindow(HWND hwnd, int enable);

/* 1 when the user can act on hwnd: 0 for a greyed window and for a dialog with a modal dialog or a message box of its
 * own in front. A control is asked for itself, without its dialog. */
JX_EXPORT int JXW_IsWindowEnabled(HWND hwnd);

/* Sets control id's text; null is empty. */
JX_EXPORT int JXW_SetDlgItemText(HWND dialog, unsigned short id, const char* text);

/* Copies control id's text into buffer, cut at size - 1 bytes and ended with NUL; returns its length there. A control
 * that does not exist has an empty text. A null buffer or a size of 0 or less is left alone. */
JX_EXPORT int JXW_GetDlgItemText(HWND dialog, unsigned short id, char* buffer, int size);

/* Checks (state not 0) or clears a check box or radio button, no other; 1, or 0 for another kind of control. */
JX_EXPORT int JXW_CheckDlgButton(HWND dialog, unsigned short id, int state);

/* 1 when the check box or radio button is checked, else 0. */
JX_EXPORT int JXW_IsDlgButtonChecked(HWND dialog, unsigned short id);

/* Checks radio button id and clears the others of its group; with first or last not 0, the others with an id from first
 * to last. 1, or 0 when id is no radio button. */
JX_EXPORT int JXW_CheckRadioButton(HWND dialog, unsigned short first, unsigned short last, unsigned short id);

/* Gives a dialog (its control that had it last) or a control the focus. Returns the window that had it, or hwnd when
 * none had; 0, and nothing changes, when hwnd is no window, is greyed or takes no focus, and when its dialog is greyed,
 * has ended or has another dialog or message box of its own in front. */
JX_EXPORT HWND JXW_SetFocus(HWND hwnd);

/* The control that has the focus, or its dialog when no control can take it; 0 when there is no dialog. */
JX_EXPORT HWND JXW_GetFocus(void);

/* ---- the mouse's shape ---- */

/* The cursors that programs ask for: the normal one, and the one that asks for patience. */
enum { kJxwArrowCursor = 32512, kJxwWaitCursor = 32514 };

/* The handle of cursor id, which is id itself; instance is reserved, pass 0. Any thread. */
JX_EXPORT unsigned int JXW_LoadCursor(HWND instance, int id);

/* Makes cursor the process's cursor, tells the calling thread's screen, and returns the one before, which is the arrow
 * at first. Any thread. */
JX_EXPORT unsigned int JXW_SetCursor(unsigned int cursor);
JX_EXPORT unsigned int JXW_GetCursor(void);

/* ---- message boxes ---- */

/* Shows a message and returns the button that was chosen (IDOK, IDYES, IDNO). owner 0 is no window; null texts are
 * empty; style is the sum of a button set (MB_OK, MB_YESNO) and an icon. The message-box handler answers when one is
 * set, else the calling thread's screen; owner is disabled while they do. Else "title: text" and a line break go to
 * standard error and the answer is IDOK, or IDNO for a Yes/No box. There every control character but the text's line
 * breaks is shown as "?", so that no text can steer a terminal. Any thread; no lock is held while the handler runs, so
 * it may call everything here, this function included. */
JX_EXPORT unsigned int guiMessageBox(HWND owner, const unsigned char* text, const unsigned char* title,
                                     unsigned int style);

/* Who answers message boxes in this process; null removes it. The handler is called on the thread that asked; the
 * texts are never null and valid during the call only, and what it returns is the answer. Any thread; a box that is
 * asked at the same time goes to the old handler with its context or to the new one with its own, so keep the old
 * context until boxes asked earlier have returned. Returns 1. */
typedef unsigned int (*JxwMessageBoxHandler)(void* context, HWND owner, const char* text, const char* title,
                                             unsigned int style);
JX_EXPORT int JXW_SetMessageBoxHandler(JxwMessageBoxHandler handler, void* context);

JX_EXTERN_C_END

#endif
