// The dialogs of module "odbcinst" and the ids of their controls. Ids are part of the interface: procedures of other
// programs may refer to them.
#pragma once

namespace jx {

enum DialogId : unsigned short {
    kAddDataSourceDialog = 100,
    kDataSourcesDialog = 102,
    kOptionsDialog = 110,
    kDriversDialog = 115,
    kAdvancedOptionsDialog = 120,
    kInstallDriversDialog = 129,
    kAddDriverDialog = 132,
    kVersionsDialog = 136,
    kSelectTranslatorDialog = 143,
    kAboutDialog = 145
};

enum ControlId : unsigned short {
    kClaimedCommand = 10,  // no control has it: a command that most dialogs answer with 1

    kAddDataSourceList = 101,

    kDataSourcesList = 103,
    kCloseButton = 104,  // of the Data Sources and the ODBC Drivers dialog
    kSetupButton = 105,
    kDeleteButton = 106,
    kAddButton = 107,
    kDriversButton = 108,
    kOptionsButton = 109,

    kTraceBox = 111,
    kTraceAutoStopBox = 112,
    kTraceFileEdit = 113,
    kTraceFileButton = 114,

    kDeleteDriverButton = 116,
    kDriversList = 117,
    kDriversLabel = 118,
    kAddDriverButton = 119,

    kOptionFlagBox = 121,
    kFirstChoice0 = 122,  // and the two after it: one three-way choice
    kFirstChoice1 = 123,
    kFirstChoice2 = 124,
    kSecondChoice0 = 125,  // and the two after it: another
    kSecondChoice1 = 126,
    kSecondChoice2 = 127,
    kVersionsButton = 128,

    kInstallDriversList = 130,
    kAdvancedButton = 131,

    kDirectoryEdit = 133,
    kDirectoryText = 134,

    kVersionsList = 137,
    kVersionFileName = 138,
    kVersionRole = 139,
    kVersionNumber = 140,
    kVersionDate = 141,
    kVersionSize = 142,

    kTranslatorsList = 144,

    kAboutFirstText = 146,  // and the seven after it
    kAboutLastText = 153
};

}  // namespace jx
