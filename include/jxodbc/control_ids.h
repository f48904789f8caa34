/* The template ids of the dialogs of module "odbcinst" and the ids of their controls, for hosts that show or drive them
 * (jxscreen.h):
 *
 *     JXW_UserSelect(dialog, JxDataSourcesList, 0);
 *     JXW_UserCommand(dialog, JxSetupButton);
 *
 * Ids are part of the interface; they never change. Plain C can include this header. */
#ifndef JX_CONTROL_IDS_H
#define JX_CONTROL_IDS_H

typedef enum JxDialogId {
    JxAddDataSourceDialog = 100,
    JxDataSourcesDialog = 102,
    JxOptionsDialog = 110,
    JxDriversDialog = 115,
    JxAdvancedOptionsDialog = 120,
    JxInstallDriversDialog = 129,
    JxAddDriverDialog = 132,
    JxVersionsDialog = 136,
    JxSelectTranslatorDialog = 143,
    JxAboutDialog = 145
} JxDialogId;

typedef enum JxControlId {
    JxClaimedCommand = 10, /* belongs to no control: most dialogs answer this command with 1 */

    JxAddDataSourceList = 101,

    JxDataSourcesList = 103,
    JxCloseButton = 104, /* of the Data Sources and the ODBC Drivers dialog */
    JxSetupButton = 105,
    JxDeleteButton = 106,
    JxAddButton = 107,
    JxDriversButton = 108,
    JxOptionsButton = 109,

    JxTraceBox = 111,
    JxTraceAutoStopBox = 112,
    JxTraceFileEdit = 113,
    JxTraceFileButton = 114,

    JxDeleteDriverButton = 116,
    JxDriversList = 117,
    JxDriversLabel = 118,
    JxAddDriverButton = 119,

    JxOptionFlagBox = 121,
    JxFirstChoice0 = 122, /* and the two after it: one three-way choice */
    JxFirstChoice1 = 123,
    JxFirstChoice2 = 124,
    JxSecondChoice0 = 125, /* and the two after it: another */
    JxSecondChoice1 = 126,
    JxSecondChoice2 = 127,
    JxVersionsButton = 128,

    JxInstallDriversList = 130,
    JxAdvancedButton = 131,

    JxDirectoryEdit = 133,
    JxDirectoryText = 134,

    JxVersionsList = 137,
    JxVersionFileName = 138,
    JxVersionRole = 139,
    JxVersionNumber = 140,
    JxVersionDate = 141,
    JxVersionSize = 142,

    JxTranslatorsList = 144,

    JxAboutFirstText = 146, /* and the seven after it */
    JxAboutLastText = 153
} JxControlId;

#endif
