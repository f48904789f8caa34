// The dialog in which a user edits one data source.
#pragma once

#include <jxtypes.h>
#include "setup/data_source_form.h"
#include "setup/setup_files.h"

namespace jx::setup {

// SetupForm: the dialog's record.
struct SetupForm {
    const SetupFiles& files;
    bool adds;                      // a new data source, whose name the user can edit
    const char* driver;             // its driver's description
    std::vector<Attribute> before;  // what the file holds
    DataSourceRequest now;          // what the dialog shows
    bool opened = false;            // set by the dialog: it was shown
    bool stored = false;            // set by the dialog: the data source was written
};

// Runs the dialog until the user has stored the data source or cancelled. Without a screen on this thread it is not
// shown, and opened stays false. Exceptions of the screen pass through, and so does std::bad_alloc.
void runSetupDialog(HWND owner, SetupForm& form);

}  // namespace jx::setup
