// What the library's dialog procedures share: they find their record and call the function for a message.
//
//     constexpr Reaction<OdbcIns> kReactions[] = {{JxSetupButton, setUp}, {JxDeleteButton, remove}};
//     constexpr DialogKind<OdbcIns> kDialog{.open = open, .reactions = kReactions, .closing = IDCANCEL};
//
//     unsigned int SomeDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
//         return answer(kDialog, hwnd, message, wparam, lparam);
//     }
#pragma once

#include <jxdialog.h>

#include <cstdint>
#include <span>

#include <control_ids.h>

namespace jx::admin {

// Reaction: the function to call for a command of a control. The first one that matches is called.
template <class Record>
struct Reaction {
    static constexpr int kAnything = -1;

    int control;
    void (*react)(HWND dialog, Record& record);
    int notification = kAnything;  // only for this one: LBN_SELCHANGE, LBN_DBLCLK
};

enum class Place { centered, unchanged };

// DialogKind: what distinguishes one dialog from the others.
template <class Record>
struct DialogKind {
    void (*open)(HWND dialog, Record& record);  // fills the controls
    std::span<const Reaction<Record>> reactions{};
    int closing;                                           // the command that ends the dialog, even without a record
    void (*close)(HWND dialog, Record& record) = nullptr;  // called before it ends
    int claimed = JxClaimedCommand;                        // a command that returns 1 and does nothing
    std::uintptr_t* handle = nullptr;                      // exported; holds the dialog's handle while it is open
    Place place = Place::centered;
};

constexpr int kNoCommand = -1;

// Stores the address of a record with a dialog, in two parts, and reads it back. Null when the window does not exist.
void keepRecord(HWND dialog, std::uintptr_t address);
void* keptRecord(HWND dialog);

template <class Record>
Record* recordOf(HWND dialog) {
    return static_cast<Record*>(keptRecord(dialog));
}

// Every dialog ends with this result. What the user chose is in its record.
inline void endDialog(HWND dialog) {
    JXW_EndDialog(dialog, 1);
}

// Says why the selected row cannot be used: it is not "name (driver)" where it should be, or a name has more than the
// 49 bytes that the record has room for; a name that is cut could be another one's. Shows nothing if no row is
// selected.
void refuseRow(HWND dialog, unsigned short listId);

inline void enableControl(HWND dialog, unsigned short id, bool enable) {
    JXW_EnableWindow(JXW_GetDlgItem(dialog, id), enable ? 1 : 0);
}

// OpenHandle: clears the exported handle of a dialog when an exception of a driver leaves its procedure, since that
// ends the dialog.
class OpenHandle {
public:
    OpenHandle(std::uintptr_t* handle, HWND dialog);
    ~OpenHandle();
    OpenHandle(const OpenHandle&) = delete;
    OpenHandle& operator=(const OpenHandle&) = delete;

private:
    std::uintptr_t* handle_;
    HWND dialog_;
    int exceptionsBefore_;
};

// The answers to the two messages that all dialogs handle.
template <class Record>
unsigned int answerOpening(const DialogKind<Record>& kind, HWND dialog, std::uintptr_t address) {
    keepRecord(dialog, address);
    auto* record = recordOf<Record>(dialog);
    if (record == nullptr)
        return 0;
    if (kind.handle != nullptr)
        *kind.handle = dialog;
    kind.open(dialog, *record);
    if (kind.place == Place::centered)
        winCenterBox(dialog);
    return 1;
}

template <class Record>
unsigned int answerCommand(const DialogKind<Record>& kind, HWND dialog, int control, int notification) {
    if (control == kind.claimed)
        return 1;
    auto* record = recordOf<Record>(dialog);
    if (control == kind.closing) {
        if (record != nullptr && kind.close != nullptr)
            kind.close(dialog, *record);
        if (kind.handle != nullptr)
            *kind.handle = 0;
        endDialog(dialog);
        return 0;
    }
    for (const Reaction<Record>& each : kind.reactions) {
        const bool fits = each.control == control &&
                          (each.notification == Reaction<Record>::kAnything || each.notification == notification);
        if (fits && record != nullptr) {
            each.react(dialog, *record);
            return 0;
        }
    }
    return 0;
}

// The result of a dialog procedure: 1 when it was opened with a record and for the claimed command, else 0.
template <class Record>
unsigned int answer(const DialogKind<Record>& kind, HWND dialog, int message, int wparam, std::uintptr_t lparam) {
    const OpenHandle handle(kind.handle, dialog);
    switch (message) {
        case WM_INITDIALOG:
            return answerOpening(kind, dialog, lparam);
        case WM_COMMAND:
            return answerCommand(kind, dialog, wparam, static_cast<int>((lparam >> 16) & 0xFFFF));
        default:
            return 0;
    }
}

}  // namespace jx::admin
