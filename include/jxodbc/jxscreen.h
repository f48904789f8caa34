/* For programs that show dialogs: a screen's callbacks, what the user does, and what there is to see.
 *
 *     JxwScreen screen = {0};
 *     screen.opened = paint;
 *     screen.wait = readKeys;
 *     JXW_SetScreen(&screen);
 *
 * A screen paints what JXW_GetDialogInfo and JXW_GetControlInfo return, and calls a JXW_User function for everything
 * the user does. The layer keeps all state; a screen needs none.
 * Threads  a screen shows the dialogs and message boxes of the thread that set it, and is called on that thread only.
 * Owner    texts returned here belong to the layer and are valid until the next call that changes their dialog.
 * Failure  0. */
#ifndef JXSCREEN_H
#define JXSCREEN_H

#include "jxdialog.h"

JX_EXTERN_C_BEGIN

/* A screen's callbacks; each gets context first and may be null. opened, wait and messageBox may throw; the others must
 * not, since they may be called while an exception passes. */
typedef struct JxwScreen {
    void* context;

    /* A dialog appears; its procedure has set it up. */
    void (*opened)(void* context, HWND dialog);

    /* Control id of an opened dialog changed; id 0: the dialog itself (title, enabling, place, focus). */
    void (*changed)(void* context, HWND dialog, unsigned short id);

    /* An opened dialog is being destroyed; it can still be read during the call. */
    void (*closed)(void* context, HWND dialog);

    /* Waits for the user and carries out at least one action through the functions below; dialog is the one in front.
     * Returns 1 to go on, 0 when the user has left: the dialog is then closed as by JXW_KEY_CLOSE, or ended with -1
     * when that does not end it. Without this callback JXW_DialogBox returns -1. */
    int (*wait)(void* context, HWND dialog);

    /* Shows a message box and returns the button chosen; arguments as in guiMessageBox, texts never null. */
    unsigned int (*messageBox)(void* context, HWND owner, const char* text, const char* title, unsigned int style);

    /* The cursor was set: kJxwWaitCursor begins slow work, kJxwArrowCursor ends it. */
    void (*cursor)(void* context, unsigned int cursor);
} JxwScreen;

/* Sets the calling thread's screen to a copy of the struct; null removes it. 1, or 0 when memory is short. Find dialogs
 * that are open already with JXW_NextDialog. */
JX_EXPORT int JXW_SetScreen(const JxwScreen* screen);

/* ---- what the user did ----
 * Each returns 1 when the action was carried out, and 0 when it was not possible: no such dialog or control, wrong
 * kind, greyed, ended, or a dialog or message box of its own in front. Notifications are sent before the call returns;
 * the dialog may have ended or been destroyed by then. */

/* Pressed button id. */
JX_EXPORT int JXW_UserCommand(HWND dialog, unsigned short id);

/* Selected a row of list box id (-1: none). Sends LBN_SELCHANGE, also when the row was selected before. */
JX_EXPORT int JXW_UserSelect(HWND dialog, unsigned short id, int row);

/* Double-clicked a row: selects it if it was not, then sends LBN_DBLCLK. */
JX_EXPORT int JXW_UserDoubleClick(HWND dialog, unsigned short id, int row);

/* Changed the text of edit field id to text (null is empty). Sends EN_CHANGE. */
JX_EXPORT int JXW_UserEdit(HWND dialog, unsigned short id, const char* text);

/* Clicked check box or radio button id: the box changes its state, the radio button becomes the checked one of its
 * group. Sends BN_CLICKED. */
JX_EXPORT int JXW_UserCheck(HWND dialog, unsigned short id);

/* Moved the focus to control id. */
JX_EXPORT int JXW_UserFocus(HWND dialog, unsigned short id);

/* Keys that mean the same in every dialog. */
enum {
    JXW_KEY_ENTER = 1,   /* presses the button that has the focus, else the default button */
    JXW_KEY_ESCAPE = 2,  /* presses IDCANCEL, else the JXW_CLOSE button, else sends the command IDCANCEL */
    JXW_KEY_CLOSE = 3,   /* the window was closed by its frame: as Escape */
    JXW_KEY_NEXT = 4,    /* Tab: to the next control that can take the focus; a radio group is one stop */
    JXW_KEY_PREVIOUS = 5 /* Shift-Tab */
};
JX_EXPORT int JXW_UserKey(HWND dialog, int key);

/* Pressed an access key (ASCII, in any case): presses the button, clicks the box, or moves the focus to the control
 * after the label or group box. */
JX_EXPORT int JXW_UserAccessKey(HWND dialog, int character);

/* ---- what there is to see ---- */

typedef struct JxwDialogInfo {
    HWND dialog;
    HWND owner;         /* 0: none */
    const char* module; /* where its template comes from */
    unsigned short templateId;
    const char* title;
    short width, height; /* of the inside, in dialog units */
    int controlCount;
    int focus;    /* index of the control that has the dialog's focus, -1: none */
    int active;   /* 1: this dialog has the thread's focus */
    int enabled;  /* as JXW_IsWindowEnabled */
    int centered; /* winCenterBox was called */
    int ended;
} JxwDialogInfo;

typedef struct JxwControlInfo {
    HWND control;
    int kind;
    unsigned short id;
    short x, y, width, height;
    const char* text; /* with its "&", which has no meaning in an edit field and with JXW_PLAIN */
    unsigned int flags;
    int accessKey; /* lower-case ASCII, 0: none */
    int enabled;
    int checked;
    int rowCount;
    int selection; /* -1: none */
} JxwControlInfo;

/* The thread's dialogs in the order in which they were made: the one after previous (0: the first); 0 after the last.
 */
JX_EXPORT HWND JXW_NextDialog(HWND previous);

/* Fill *info; 1, or 0 (*info untouched) when there is no such dialog or control. Controls are counted from 0 in the
 * order of the Tab key. */
JX_EXPORT int JXW_GetDialogInfo(HWND dialog, JxwDialogInfo* info);
JX_EXPORT int JXW_GetControlInfo(HWND dialog, int index, JxwControlInfo* info);

/* The text of a row of the list box at index, rows counted from 0; null when there is none. */
JX_EXPORT const char* JXW_GetRow(HWND dialog, int index, int row);

JX_EXTERN_C_END

#endif
