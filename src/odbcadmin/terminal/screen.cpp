// The callbacks between the dialog layer and the terminal.
#include "odbcadmin/terminal/screen.h"

#include <utility>

#include "odbcadmin/assist/help.h"
#include "odbcadmin/assist/worker.h"
#include "odbcadmin/terminal/desk_painter.h"

namespace jx::terminal {

namespace {

constexpr const char* kKeys = "Tab next  Arrows choose  Enter <button>  Esc leave  F1 help  F2 new driver";
constexpr const char* kFewKeys = "Tab Enter Esc  F1 help  F2 new driver";
constexpr const char* kBoxKeys = "Enter or the marked letter answers  Arrows scroll";
constexpr const char* kFewBoxKeys = "Enter answers  Arrows scroll";

HWND frontDialog() {
    HWND front = 0;
    for (HWND dialog = JXW_NextDialog(0); dialog != 0; dialog = JXW_NextDialog(dialog))
        front = dialog;
    return front;
}

ScreenParts partsFor(HWND dialog, int columns, int lines) {
    JxwDialogInfo info{};
    JXW_GetDialogInfo(dialog, &info);
    return partsOf(columns, lines, wantedLines(info));
}

std::string keysFor(bool isBox, int columns) {
    std::string whole = isBox ? kBoxKeys : kKeys;
    if (static_cast<int>(whole.size()) <= columns - 2)
        return whole;
    return isBox ? kFewBoxKeys : kFewKeys;
}

}  // namespace

Screen::Screen(Terminal& terminal)
    : terminal_(terminal),
      abilities_(terminal.abilities()),
      input_(abilities_, [this](const std::string& what) { beginWork(what); }) {
    JxwScreen table{};
    table.context = this;
    table.opened = [](void* context, HWND dialog) { self(context).opened(dialog); };
    table.closed = [](void* context, HWND dialog) { self(context).closed(dialog); };
    table.wait = [](void* context, HWND dialog) { return self(context).wait(dialog); };
    table.messageBox = [](void* context, HWND /*owner*/, const char* text, const char* title, unsigned int style) {
        return self(context).ask(text, title, style);
    };
    table.cursor = [](void* context, unsigned int cursor) { self(context).setCursor(cursor); };
    JXW_SetScreen(&table);
}

Screen::~Screen() {
    JXW_SetScreen(nullptr);
}

void Screen::opened(HWND dialog) {
    endWork();
    views_[dialog];
    told_.clear();
    assistant_.opened(dialog);
}

void Screen::closed(HWND dialog) {
    views_.erase(dialog);
    resumeWork();
}

int Screen::wait(HWND dialog) {
    paint();
    const Input input = terminal_.next();
    if (input.key == Key::gone)
        return 0;
    carryOut(dialog, input);
    return 1;
}

void Screen::carryOut(HWND dialog, const Input& input) {
    if (input.key == Key::repaint || input.key == Key::none)
        return;
    told_.clear();
    assistant_.beforeAction();
    if (input.key == Key::f2) {
        assistant_.registerDriver(dialog);
    } else if (input.key == Key::f1) {
        guiMessageBox(dialog, reinterpret_cast<const unsigned char*>(assist::helpOnAll(dialog).c_str()),
                      reinterpret_cast<const unsigned char*>("Help"), MB_OK);
    } else {
        const Rect area = partsFor(dialog, terminal_.columns(), terminal_.lines()).area;
        // What there is to tell comes last: dialogs that open and close on the way tell things of their own.
        std::string said;
        const std::string outer = worker_;
        selections_.around([&] { said = input_.take(dialog, input, area, views_[dialog]); });
        endWork();
        setWorker(outer);
        told_ = std::move(said);
    }
}

void Screen::beginWork(const std::string& what) {
    const HWND dialog = frontDialog();
    selections_.begin(dialog);
    const std::string worker = assist::workerOf(dialog);
    if (!worker.empty())
        setWorker(worker);
    terminal_.beforeWork();
    isWorking_ = true;
    paintWorking(what);
}

void Screen::setWorker(const std::string& worker) {
    if (worker != worker_)
        terminal_.setWorker(worker);
    worker_ = worker;
}

// A command goes on behind the dialog or the box that it opened.
void Screen::resumeWork() {
    if (!selections_.isInCommand() || isWorking_)
        return;
    terminal_.beforeWork();
    isWorking_ = true;
}

void Screen::endWork() {
    if (std::exchange(isWorking_, false))
        terminal_.afterWork();
}

unsigned int Screen::ask(const char* text, const char* title, unsigned int style) {
    endWork();
    if (input_.cancelled() && assist::asksWhetherCancelled(text))
        return IDOK;
    Message message(assistant_.boxText(text), title, style);
    told_.clear();
    messages_.push_back(&message);
    struct Leave {
        std::vector<Message*>& messages;
        ~Leave() { messages.pop_back(); }
    };
    std::optional<unsigned int> answer;
    {
        const Leave leave{messages_};
        while (!answer) {
            paint();
            const Input input = terminal_.next();
            answer = input.key == Key::gone ? message.leastAnswer() : message.take(input);
        }
    }
    assistant_.boxClosed();
    resumeWork();
    return *answer;
}

// Called while an exception passes, too: what painting throws goes no further.
void Screen::setCursor(unsigned int cursor) {
    try {
        if (cursor == kJxwWaitCursor)
            paintWorking("");
    } catch (...) {
        told_.clear();
    }
}

void Screen::paintWorking(const std::string& what) {
    told_ = "Working" + (what.empty() ? "" : " on " + what.substr(0, what.find("..."))) + ". Please wait.";
    paint();
    told_.clear();
}

std::string Screen::helpLine(HWND dialog) const {
    JxwDialogInfo info{};
    JxwControlInfo control{};
    if (JXW_GetDialogInfo(dialog, &info) == 0 || JXW_GetControlInfo(dialog, info.focus, &control) == 0)
        return {};
    const char* row = control.kind == JXW_LISTBOX ? JXW_GetRow(dialog, info.focus, control.selection) : nullptr;
    if (row != nullptr && columnsOf(row, abilities_.charset) > rowsOf(placeOf(control)).columns)
        return row;
    return assist::helpOn(dialog, info.focus);
}

void Screen::paint() {
    abilities_ = terminal_.abilities();
    Canvas canvas(terminal_.columns(), terminal_.lines(), abilities_.charset);
    const HWND front = frontDialog();
    const ScreenParts parts = partsFor(front, canvas.columns(), canvas.lines());
    std::optional<Point> cursor = paintDialogs(canvas, abilities_, parts.area, views_);
    for (Message* message : messages_) {
        message->paint(canvas, parts.area);
        cursor.reset();
    }
    const std::string heading = assist::headingOf(front);
    const std::string named = "odbcadmin - " + heading;
    const bool hasRoom = columnsOf(named, abilities_.charset) <= canvas.columns() - 2;
    paintHeading(canvas, parts.heading, hasRoom ? named : heading);
    const bool isBox = !messages_.empty();
    const std::string help = !told_.empty() ? told_ : isBox ? "" : helpLine(front);
    paintHelp(canvas, parts.help, help, keysFor(isBox, canvas.columns()));
    terminal_.show(canvas, cursor);
}

}  // namespace jx::terminal
