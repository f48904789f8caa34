// One batch installation: the order of its steps and its outcome.
#include "install/batch_installation.h"

#include <jxmemory.h>
#include <odbcinst.h>

#include <control_ids.h>
#include "config/message_box.h"
#include "config/text_bytes.h"
#include "install/installation_paths.h"
#include "install/item_installation.h"
#include "install/script_entries.h"
#include "install/script_items.h"

namespace jx::install {

namespace {

// InstallRun: owns the record of one run; the record is released when a host's dialog throws, too.
class InstallRun {
public:
    InstallRun() = default;
    InstallRun(const InstallRun&) = delete;
    InstallRun& operator=(const InstallRun&) = delete;
    ~InstallRun() {
        InstallTerm(record_);
        ramFree(record_);
    }

    // False when memory was short.
    bool begin(unsigned int parent, const unsigned char* infFile, const unsigned char* sourcePath) {
        return InstallInit(parent, record_, infFile, sourcePath) == 0;
    }

    // Releases what the record holds. Its outcome can still be read.
    void end() { InstallTerm(record_); }

    _Install* record() { return record_; }

private:
    _Install* record_ = nullptr;
};

enum class Choice { cancelled, failed, made };

// Lets the user choose drivers.
Choice askForDrivers(unsigned int parent, _Install* install) {
    InstallDriversRecord record{0, install};
    jxDllDialog(parent, JxInstallDriversDialog, InstallDriversDlgProc, &record);
    if (record.proceed == 0)
        return Choice::cancelled;
    JXW_SetCursor(JXW_LoadCursor(0, kJxwWaitCursor));
    return GetTheDriverKeys(install) == 0 ? Choice::made : Choice::failed;
}

// Puts the drivers of this run into the record.
Choice chooseDrivers(unsigned int parent, _Install* install, unsigned char* drivers) {
    const bool isListEmpty = drivers == nullptr || *drivers == 0;
    if (isListEmpty)
        return parent != 0 ? askForDrivers(parent, install) : Choice::made;
    const bool placed =
        PlaceDriversToBeInstalledInInstallStruct(install, drivers) == 0 && GetTheDriverKeys(install) == 0;
    return placed ? Choice::made : Choice::failed;
}

void selectAll(_Install& install) {
    for (InstallItem& item : itemsOf(install))
        item.selected = 1;
}

// Reads the rest of the script and installs; false when a step failed.
bool installChosen(unsigned int parent, _Install* install) {
    PlaceTranslatorsToBeInstalledInInstallStruct(install);
    GetTheNonDriverItems(install);
    if (GetTheOdbcInfEntriesForEachItem(install) != 0)
        return false;
    selectAll(*install);
    return InstallItems(parent, install) == 0;
}

}  // namespace

void reportOutcome(unsigned int parent, bool succeeded, bool anyFileInstalled) {
    if (parent == 0 || (succeeded && !anyFileInstalled))
        return;
    showMessage(parent, asBytes(succeeded ? "Installation completed successfully" : "Installation was aborted"), MB_OK);
}

int installOdbc(unsigned int parent, const unsigned char* infFile, const unsigned char* sourcePath,
                unsigned char* drivers) {
    if (infFile == nullptr)
        return 0;
    InstallRun run;
    if (!run.begin(parent, infFile, sourcePath))
        return 0;
    const bool hasPaths = takePaths(*run.record(), infFile, sourcePath);
    const Choice choice = hasPaths ? chooseDrivers(parent, run.record(), drivers) : Choice::failed;
    if (choice == Choice::cancelled)
        return 0;
    const bool succeeded = choice == Choice::made && installChosen(parent, run.record());
    run.end();
    reportOutcome(parent, succeeded, run.record()->anyFileInstalled != 0);
    JXW_SetCursor(JXW_LoadCursor(0, kJxwArrowCursor));
    return succeeded ? 1 : 0;
}

}  // namespace jx::install
