// Delivers messages at once, and queues posted ones.
#include "jxutl/dialog/messages.h"

#include <cstring>
#include <utility>

#include <jxwindow.h>
#include "jxutl/dialog/controls.h"
#include "jxutl/dialog/desk.h"

namespace jx::dialog {

namespace {

// What a list box returns, and whether its look changed.
struct Answer {
    int value;
    bool changed;
};

const char* asText(std::uintptr_t lparam) {
    return reinterpret_cast<const char*>(lparam);  // NOLINT(performance-no-int-to-ptr): messages carry addresses so
}

Answer insertRow(ListBox& list, int row, const char* text) {
    if (text == nullptr)
        return {LB_ERR, false};
    return orWhenShort(Answer{LB_ERRSPACE, false}, [&] { return Answer{list.insert(row, text), true}; });
}

int copyRow(const ListBox& list, int row, std::uintptr_t buffer) {
    const std::string* text = list.row(row);
    if (text == nullptr || buffer == 0)
        return LB_ERR;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): messages carry addresses so
    std::memcpy(reinterpret_cast<char*>(buffer), text->c_str(), text->size() + 1);
    return static_cast<int>(text->size());
}

int rowLength(const ListBox& list, int row) {
    const std::string* text = list.row(row);
    return text != nullptr ? static_cast<int>(text->size()) : LB_ERR;
}

Answer clearRows(ListBox& list) {
    list.clear();
    return {0, true};
}

Answer answerList(ListBox& list, int message, int wparam, std::uintptr_t lparam) {
    switch (message) {
        case LB_ADDSTRING:
            return insertRow(list, -1, asText(lparam));
        case LB_INSERTSTRING:
            return insertRow(list, wparam, asText(lparam));
        case LB_DELETESTRING:
            return {list.remove(wparam), true};
        case LB_RESETCONTENT:
            return clearRows(list);
        case LB_SETCURSEL:
            return {list.select(wparam), true};
        case LB_GETCURSEL:
            return {list.selection(), false};
        case LB_GETTEXT:
            return {copyRow(list, wparam, lparam), false};
        case LB_GETTEXTLEN:
            return {rowLength(list, wparam), false};
        case LB_GETCOUNT:
            return {list.rowCount(), false};
        default:
            return {0, false};
    }
}

int answerBox(const Window& box, int message, int wparam) {
    if (message == BM_GETCHECK)
        return box.control->checked ? 1 : 0;
    if (message == BM_SETCHECK)
        setChecked(box, wparam != 0);
    return 0;
}

}  // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): kept alive while its procedure runs
int callProcedure(DialogPointer dialog, int message, int wparam, std::uintptr_t lparam) {
    return static_cast<int>(dialog->procedure(dialog->handle, message, wparam, lparam));
}

void notify(const DialogPointer& dialog, unsigned short id, int notification) {
    callProcedure(dialog, WM_COMMAND, id, static_cast<std::uintptr_t>(notification) << 16);
}

int answer(const Window& window, int message, int wparam, std::uintptr_t lparam) {
    if (window.control->isBox())
        return answerBox(window, message, wparam);
    if (window.control->kind != JXW_LISTBOX)
        return 0;
    const Answer answered = answerList(window.control->list, message, wparam, lparam);
    if (answered.changed)
        notifyChanged(window);
    return answered.value;
}

}  // namespace jx::dialog

using namespace jx::dialog;

int JXW_IsWindow(HWND hwnd) {
    return windowOf(hwnd) ? 1 : 0;
}

int JXW_SendMessage(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    Window window = windowOf(hwnd);
    if (!window)
        return 0;
    if (window.control != nullptr)
        return answer(window, message, wparam, lparam);
    return callProcedure(std::move(window.dialog), message, wparam, lparam);
}

int JXW_SendDlgItemMessage(HWND dialog, unsigned short id, int message, int wparam, uintptr_t lparam) {
    const Window window = itemOf(dialog, id);
    return window ? answer(window, message, wparam, lparam) : 0;
}

int JXW_PostMessage(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    const Window window = windowOf(hwnd);
    if (!window || window.dialog->ended)
        return 0;
    return orWhenShort(0, [&] {
        existingDesk()->post(hwnd, message, wparam, lparam);
        return 1;
    });
}

int JXW_DispatchMessages(HWND dialog) {
    const DialogPointer only = dialogOf(dialog);
    Desk* own = existingDesk();
    if (own == nullptr || (dialog != 0 && only == nullptr))
        return 0;
    const std::uint64_t last = own->lastPosted();
    int delivered = 0;
    PostedMessage next{};
    while (own->takePosted(only.get(), last, next)) {
        const Window window = windowOf(next.window);
        if (!window || window.dialog->ended)
            continue;
        ++delivered;
        JXW_SendMessage(next.window, next.message, next.wparam, next.lparam);
    }
    return delivered;
}
