// Keeps one thread's dialogs and gives out handles.
#include "jxutl/dialog/desk.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <utility>

#include "jxutl/thread/thread_data.h"

namespace jx::dialog {

namespace {

// Handles only count up, over all threads, so none is given out twice. The first is above the small numbers that
// callers pass when any window but 0 will do.
constexpr HWND kFirstHandle = 0x10000;
std::atomic<HWND> nextHandle{kFirstHandle};

// The first of count new handles in a row; 0 when handles have run out.
HWND takeHandles(std::size_t count) {
    HWND first = nextHandle.load();
    do {
        if (count > std::numeric_limits<HWND>::max() - first)
            return 0;
    } while (!nextHandle.compare_exchange_weak(first, first + static_cast<HWND>(count)));
    return first;
}

bool belongsTo(HWND window, const Dialog& dialog) {
    return window >= dialog.handle && window - dialog.handle <= dialog.controls.size();
}

}  // namespace

Window Desk::find(HWND hwnd) {
    auto after = dialogs_.upper_bound(hwnd);
    if (after == dialogs_.begin())
        return {};
    const DialogPointer& dialog = std::prev(after)->second;
    if (!belongsTo(hwnd, *dialog))
        return {};
    Control* control = hwnd == dialog->handle ? nullptr : &dialog->controls[hwnd - dialog->handle - 1];
    return {dialog, control};
}

bool Desk::enter(const DialogPointer& dialog) {
    const HWND handle = takeHandles(dialog->controls.size() + 1);
    if (handle == 0)
        return false;
    dialogs_.emplace(handle, dialog);
    dialog->handle = handle;
    return true;
}

DialogPointer Desk::ownedBy(HWND owner) const {
    const auto owned = std::find_if(dialogs_.rbegin(), dialogs_.rend(),
                                    [owner](const auto& entry) { return entry.second->owner == owner; });
    return owned == dialogs_.rend() ? nullptr : owned->second;
}

void Desk::remove(const DialogPointer& dialog) {
    while (const DialogPointer owned = ownedBy(dialog->handle))
        remove(owned);
    // The screen is called once, even if it destroys the dialog again meanwhile.
    if (std::exchange(dialog->shown, false) && screen.closed != nullptr)
        screen.closed(screen.context, dialog->handle);
    dialogs_.erase(dialog->handle);
    std::erase_if(queue_, [&](const PostedMessage& posted) { return belongsTo(posted.window, *dialog); });
    passFocusFrom(*dialog);
}

// The focus returns to the owner, or to the dialog opened last.
void Desk::passFocusFrom(const Dialog& gone) {
    if (active_ != gone.handle)
        return;
    active_ = 0;
    DialogPointer heir = find(gone.owner).dialog;
    if (heir == nullptr && !dialogs_.empty())
        heir = dialogs_.rbegin()->second;
    if (heir != nullptr)
        activate(heir);
}

void Desk::activate(const DialogPointer& dialog) {
    if (active_ == dialog->handle)
        return;
    const DialogPointer before = active();
    active_ = dialog->handle;
    if (before != nullptr)
        notifyChanged(*before, 0);
    notifyChanged(*dialog, 0);
}

HWND Desk::next(HWND previous) const {
    const auto after = dialogs_.upper_bound(previous);
    return after == dialogs_.end() ? 0 : after->first;
}

void Desk::post(HWND window, int message, int wparam, std::uintptr_t lparam) {
    queue_.push_back({posted_ + 1, window, message, wparam, lparam});
    ++posted_;
}

bool Desk::takePosted(const Dialog* dialog, std::uint64_t last, PostedMessage& message) {
    const auto found = std::find_if(queue_.begin(), queue_.end(), [&](const PostedMessage& posted) {
        return dialog == nullptr || belongsTo(posted.window, *dialog);
    });
    if (found == queue_.end() || found->number > last)
        return false;
    message = *found;
    queue_.erase(found);
    return true;
}

void Desk::notifyOpened(Dialog& dialog) const {
    dialog.shown = true;
    if (screen.opened != nullptr)
        screen.opened(screen.context, dialog.handle);
}

void Desk::notifyChanged(const Dialog& dialog, unsigned short id) const {
    if (dialog.shown && screen.changed != nullptr)
        screen.changed(screen.context, dialog.handle, id);
}

Desk* existingDesk() {
    const ThreadData* data = existingThreadData();
    return data != nullptr ? data->desk.get() : nullptr;
}

Desk* desk() {
    ThreadData* data = threadData();
    if (data == nullptr)
        return nullptr;
    if (data->desk == nullptr)
        data->desk = orWhenShort(std::shared_ptr<Desk>(), [] { return std::make_shared<Desk>(); });
    return data->desk.get();
}

Window windowOf(HWND hwnd) {
    Desk* own = existingDesk();
    return own != nullptr ? own->find(hwnd) : Window{};
}

Window itemOf(HWND dialog, unsigned short id) {
    Window window = windowOf(dialog);
    if (!window.isDialog() || id == 0)
        return {};
    auto& controls = window.dialog->controls;
    const auto control = std::find_if(controls.begin(), controls.end(), [id](const Control& c) { return c.id == id; });
    return control == controls.end() ? Window{} : Window{window.dialog, &*control};
}

DialogPointer dialogOf(HWND hwnd) {
    const Window window = windowOf(hwnd);
    return window.isDialog() ? window.dialog : nullptr;
}

void notifyChanged(const Window& window) {
    existingDesk()->notifyChanged(*window.dialog, window.control != nullptr ? window.control->id : 0);
}

void notifyChanged(const Dialog& dialog) {
    existingDesk()->notifyChanged(dialog, 0);
}

}  // namespace jx::dialog
