// Hooks of an installation that record their calls and do what a test wants.
#pragma once

#include <odbcinst.h>

#include <functional>
#include <string>
#include <vector>

namespace jx::test {

// RecordedHooks: while it exists, records the calls of the file transfer's hooks and of the dialog starter. One at a
// time.
class RecordedHooks {
public:
    RecordedHooks();
    ~RecordedHooks();
    RecordedHooks(const RecordedHooks&) = delete;
    RecordedHooks& operator=(const RecordedHooks&) = delete;

    // One text a call: "VersionCheck 0 1", "CopyDisk 0 1", "Decompress SOURCE TARGET", "dialog 129".
    std::vector<std::string> calls;

    unsigned int copyDiskResult = 0;
    std::function<void()> onDecompress = [] {};
    std::function<void(HWND owner, JxDialogProcedure procedure, void* record)> onDialog = [](HWND, JxDialogProcedure,
                                                                                             void*) {};
};

}  // namespace jx::test
