/* Windows, messages, message boxes and text resources.
 *
 * Windows live in memory, whether or not anything shows them. A handle that names no window is answered with 0 and
 * harms nothing. */
#ifndef JXDIALOG_H
#define JXDIALOG_H

#include "jxexport.h"
#include "jxtypes.h"

JX_EXTERN_C_BEGIN

/* Styles and answers of guiMessageBox. */
enum {
    MB_OK = 0,
    MB_YESNO = 4,
    MB_ICONSTOP = 16,
    MB_ICONQUESTION = 32,
    MB_ICONEXCLAMATION = 48,
    IDOK = 1,
    IDCANCEL = 2,
    IDYES = 6,
    IDNO = 7
};

/* One text resource; an array of them ends with a null text. */
typedef struct JxwString {
    unsigned short id;
    const char* text; /* at most 254 bytes without the NUL: callers load into 255 bytes, and more is cut there */
} JxwString;

/* One dialog template; an array of them ends with a null title. */
typedef struct JxwTemplate JxwTemplate;

/* Gives the module called name its texts and templates, which are copied: the caller may go away afterwards. A name
 * that is registered again gets the new ones in place of the old. Null arrays are empty. Names are compared byte for
 * byte; of two texts with one id the first counts. Returns 1, or 0 for a null or empty name or when memory is short
 * (what was registered before stays). Any thread; a load at the same time sees the old texts or the new ones. */
JX_EXPORT int JXW_RegisterModule(const char* name, const JxwString* strings, const JxwTemplate* templates);

/* Copies text id of module into buffer, cut at size - 1 bytes and ended with NUL; returns its length. A size of 0 or
 * less takes the buffer to hold 256 bytes. An unknown module or id leaves the buffer untouched and returns 0, and so
 * does a null buffer. Any thread. */
JX_EXPORT int JXW_LoadString(const char* module, unsigned short id, unsigned char* buffer, int size);

/* Gives a window the focus; returns the window that had it, 0 when hwnd is no window. */
JX_EXPORT HWND JXW_SetFocus(HWND hwnd);

/* Queues a message for a window; 1, or 0 when hwnd is no window. */
JX_EXPORT int JXW_PostMessage(HWND hwnd, int message, int wparam, uintptr_t lparam);

/* The cursors that programs ask for. */
enum { kJxwArrowCursor = 32512, kJxwWaitCursor = 32514 };

/* The handle of cursor id, which is id itself; instance is reserved, pass 0. Any thread. */
JX_EXPORT unsigned int JXW_LoadCursor(HWND instance, int id);

/* Makes cursor the process's cursor and returns the one before, which is the arrow at first. Nothing is drawn: a screen
 * asks JXW_GetCursor when it draws. Any thread. */
JX_EXPORT unsigned int JXW_SetCursor(unsigned int cursor);
JX_EXPORT unsigned int JXW_GetCursor(void);

/* Shows a message and returns the button that was chosen (IDOK, IDYES, IDNO). owner 0 is no window; null texts are
 * empty; style is the sum of a button set (MB_OK, MB_YESNO) and an icon. The message-box handler answers when one is
 * set; else "title: text" and a line break go to standard error and the answer is IDOK, or IDNO for a Yes/No box. There
 * every control character but the text's line breaks is shown as "?", so that no text can steer a terminal. Any
 * thread; no lock is held while the handler runs, so it may call everything here, this function included. Exceptions of
 * the handler pass through. */
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
