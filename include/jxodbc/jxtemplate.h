/* Texts and dialog templates, which a module registers under its name before it shows a dialog.
 *
 *     static const JxwControl controls[] = {
 *         {JXW_LABEL, 0, 6, 8, 50, 8, "&Name:", 0},
 *         {JXW_EDIT, 201, 60, 6, 120, 12, "", 0},
 *         {JXW_BUTTON, IDOK, 60, 30, 50, 14, "OK", JXW_DEFAULT},
 *         {JXW_NO_CONTROL, 0, 0, 0, 0, 0, 0, 0}};
 *     static const JxwTemplate templates[] = {{200, "Sample", 200, 50, controls}, {0, 0, 0, 0, 0}};
 *     JXW_RegisterModule("sample", 0, templates);
 *
 * Threads  everything here may be called from any thread.
 * Owner    tables and texts are copied when they are registered: the library that holds them may be unloaded. */
#ifndef JXTEMPLATE_H
#define JXTEMPLATE_H

#include "jxexport.h"
#include "jxtypes.h"

JX_EXTERN_C_BEGIN

/* One text resource; an array of them ends with a null text. */
typedef struct JxwString {
    unsigned short id;
    const char* text; /* at most 254 bytes without the NUL: callers load into 255 bytes, and more is cut there */
} JxwString;

/* The kinds of controls. */
enum {
    JXW_NO_CONTROL = 0, /* ends an array of controls */
    JXW_LABEL = 1,      /* fixed text; its access key leads to the control that follows it */
    JXW_EDIT = 2,       /* one line of text that the user edits */
    JXW_BUTTON = 3,     /* a push button */
    JXW_CHECKBOX = 4,   /* on or off; a click changes it */
    JXW_RADIO = 5,      /* one of a group: radio buttons that follow one another without another control between */
    JXW_LISTBOX = 6,    /* rows of text, at most one of them selected */
    JXW_GROUPBOX = 7    /* a frame with a caption around other controls */
};

/* What a control may be besides its kind. */
enum {
    JXW_DEFAULT = 1,  /* a button: Enter presses it */
    JXW_CLOSE = 2,    /* a button: Escape presses it in a dialog that has no IDCANCEL control */
    JXW_PASSWORD = 4, /* an edit field: screens hide its characters; the layer does not */
    JXW_GREY = 8,     /* disabled from the start */
    JXW_GROUP = 16,   /* a radio button: begins a new group, also directly after another radio button */
    JXW_PLAIN = 32    /* a label: its text is data, such as a name; an "&" in it is an "&" and makes no access key */
};

/* One control of a template. Positions and sizes are in dialog units: a quarter of a character's width, an eighth of
 * its height. The order of an array is the order of the Tab key. */
typedef struct JxwControl {
    int kind;
    unsigned short id; /* unique in its dialog; 0 for a control that is never referred to */
    short x, y, width, height;
    const char* text; /* "&" comes before the access key, "&&" is one "&", but not with JXW_PLAIN; null is empty */
    unsigned int flags;
} JxwControl;

/* One dialog template; an array of them ends with a null title. */
typedef struct JxwTemplate {
    unsigned short id;
    const char* title;
    short width, height;        /* of the inside, in dialog units */
    const JxwControl* controls; /* ended by JXW_NO_CONTROL; null is a dialog without controls */
} JxwTemplate;

/* Registers copies of the texts and templates of the module called name, in place of those it had; open dialogs keep
 * what they were made from, and a load at the same time sees the old or the new ones. Null arrays are empty. Names are
 * compared byte for byte; of two texts or templates with one id the first counts. 1, or 0 for a null or empty name or
 * when memory is short: what was registered before then stays. */
JX_EXPORT int JXW_RegisterModule(const char* name, const JxwString* strings, const JxwTemplate* templates);

/* Copies text id of module into buffer, cut at size - 1 bytes and ended with NUL; returns the length copied. With a
 * size of 0 or less the buffer must have 256 bytes. 0 and an untouched buffer for an unknown module or id or a null
 * buffer.
 */
JX_EXPORT int JXW_LoadString(const char* module, unsigned short id, unsigned char* buffer, int size);

JX_EXTERN_C_END

#endif
