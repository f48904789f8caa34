// What every dialog procedure does with its messages: the record it works on, and what a command says.
#pragma once

#include <jxdialog.h>

#include <cstdint>

namespace jx::admin {

// Keeps a record's address with a dialog, in two parts, and puts it together again. Null on a window that is none.
void keepRecord(HWND dialog, std::uintptr_t address);
void* keptRecord(HWND dialog);

template <class Record>
Record* recordOf(HWND dialog) {
    return static_cast<Record*>(keptRecord(dialog));
}

// Keeps the record that WM_INITDIALOG brings and gives it back as every later message will find it.
template <class Record>
Record* takeRecord(HWND dialog, std::uintptr_t lparam) {
    keepRecord(dialog, lparam);
    return recordOf<Record>(dialog);
}

// OpenWord: the word that names an open dialog, while the dialog's procedure hears a message. When an exception of a
// driver leaves the procedure instead of an answer, the dialog goes with it, and the word must not name it any longer.
class OpenWord {
public:
    OpenWord(std::uintptr_t& word, HWND dialog) : word_(word), dialog_(dialog) {}
    ~OpenWord() {
        if (!answered_ && word_ == dialog_)
            word_ = 0;
    }
    OpenWord(const OpenWord&) = delete;
    OpenWord& operator=(const OpenWord&) = delete;

    unsigned int answer(unsigned int result) {
        answered_ = true;
        return result;
    }

private:
    std::uintptr_t& word_;
    HWND dialog_;
    bool answered_ = false;
};

// What happened to the control of a WM_COMMAND.
inline int notificationOf(std::uintptr_t lparam) {
    return static_cast<int>((lparam >> 16) & 0xFFFF);
}

// Every dialog ends with the same result: what came of it stands in its record.
inline unsigned int endDialog(HWND dialog) {
    JXW_EndDialog(dialog, 1);
    return 0;
}

inline void enableControl(HWND dialog, unsigned short id, bool enable) {
    JXW_EnableWindow(JXW_GetDlgItem(dialog, id), enable ? 1 : 0);
}

// Selects the first row of a list and enables button, or greys it when the list is empty.
void selectFirstRow(HWND dialog, unsigned short listId, unsigned short button);

}  // namespace jx::admin
