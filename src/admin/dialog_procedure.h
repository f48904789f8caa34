// What the library's dialog procedures share: the record they work on, and the way from a message to what is done.
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

// Reaction: what a command of one control does. The first that fits is taken.
template <class Record>
struct Reaction {
    static constexpr int kAnything = -1;

    int control;
    void (*react)(HWND dialog, Record& record);
    int notification = kAnything;  // what must have happened to the control
};

enum class Place { centered, unchanged };

// DialogKind: what is a dialog's own.
template <class Record>
struct DialogKind {
    void (*open)(HWND dialog, Record& record);  // fills the controls
    std::span<const Reaction<Record>> reactions{};
    int closing;                                           // the command that ends the dialog, also without a record
    void (*close)(HWND dialog, Record& record) = nullptr;  // what comes before that end
    int claimed = JxClaimedCommand;                        // a command that is answered with 1 and does nothing
    std::uintptr_t* word = nullptr;                        // the exported word that names the dialog while it is open
    Place place = Place::centered;
};

constexpr int kNoCommand = -1;

// Keeps a record's address with a dialog, in two parts, and puts it together again. Null on a window that is none.
void keepRecord(HWND dialog, std::uintptr_t address);
void* keptRecord(HWND dialog);

template <class Record>
Record* recordOf(HWND dialog) {
    return static_cast<Record*>(keptRecord(dialog));
}

// Every dialog ends with the same result: what came of it stands in its record.
inline void endDialog(HWND dialog) {
    JXW_EndDialog(dialog, 1);
}

inline void enableControl(HWND dialog, unsigned short id, bool enable) {
    JXW_EnableWindow(JXW_GetDlgItem(dialog, id), enable ? 1 : 0);
}

// OpenWord: watches over the word that names a dialog while its procedure answers a message. An exception of a driver
// that leaves the procedure ends the dialog too, and the word must not name it any longer.
class OpenWord {
public:
    OpenWord(std::uintptr_t* word, HWND dialog);
    ~OpenWord();
    OpenWord(const OpenWord&) = delete;
    OpenWord& operator=(const OpenWord&) = delete;

private:
    std::uintptr_t* word_;
    HWND dialog_;
    int exceptionsBefore_;
};

// The two messages that mean something to every dialog.
template <class Record>
unsigned int answerOpening(const DialogKind<Record>& kind, HWND dialog, std::uintptr_t address) {
    keepRecord(dialog, address);
    auto* record = recordOf<Record>(dialog);
    if (record == nullptr)
        return 0;
    if (kind.word != nullptr)
        *kind.word = dialog;
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
        if (kind.word != nullptr)
            *kind.word = 0;
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

// A dialog procedure's answer to a message: 1 for a set-up with a record and for the claimed command, else 0.
template <class Record>
unsigned int answer(const DialogKind<Record>& kind, HWND dialog, int message, int wparam, std::uintptr_t lparam) {
    const OpenWord word(kind.word, dialog);
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
