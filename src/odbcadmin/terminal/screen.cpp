// The callbacks between the dialog layer and the terminal.
#include "odbcadmin/terminal/screen.h"

#include <utility>

#include "odbcadmin/assist/help.h"
#include "odbcadmin/assist/lists.h"
#include "odbcadmin/assist/worker.h"
#include "odbcadmin/terminal/desk_painter.h"
#include "odbcadmin/terminal/layout.h"

namespace jx::terminal {

namespace {

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

}  // namespace

Screen::Screen(Terminal& terminal)
    : terminal_(terminal),
      abilities_(terminal.abilities()),
      input_(abilities_, [this](const std::string& what) { beginWork(what); }) {
    assist::setScreen(*this);
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
    const Input input = next();
    if (input.key == Key::gone)
        return 0;
    // A key that was typed for rows that are not there any more does nothing.
    if (std::string changed = assist::noticeChange(dialog); !changed.empty())
        told_ = std::move(changed);
    else
        carryOut(dialog, input);
    return 1;
}

// A double click on something that the first press closed is not meant for what appears there.
Input Screen::next() {
    Input input = terminal_.next();
    const std::pair<HWND, int> front{frontDialog(), messages_.empty() ? 0 : boxes_};
    if (input.key == Key::doublePress && front != pressedIn_)
        input.key = Key::none;
    if (input.key == Key::press)
        pressedIn_ = front;
    return input;
}

// A click on the line of keys is the key that stands there.
Input Screen::meant(HWND dialog, const Input& input) {
    const Rect keys = partsFor(dialog, terminal_.columns(), terminal_.lines()).keys;
    if (!keys.contains(input.place) || (input.key != Key::press && input.key != Key::doublePress))
        return input;
    Input typed;
    typed.time = input.time;
    if (input.key == Key::press)
        typed.key = keyBar(dialog, keys.columns).keyAt(input.place.column);
    return typed;
}

void Screen::carryOut(HWND dialog, const Input& given) {
    const Input input = meant(dialog, given);
    if (input.key == Key::repaint || input.key == Key::none)
        return;
    told_.clear();
    assistant_.beforeAction();
    // What there is to tell comes last: dialogs that open and close on the way tell things of their own.
    std::string said;
    const std::string outer = worker_;
    selections_.around([&] { said = act(dialog, input); });
    endWork();
    setWorker(outer);
    told_ = std::move(said);
}

std::string Screen::act(HWND dialog, const Input& input) {
    const int number = functionNumber(input.key);
    if (number == 0) {
        const Rect area = partsFor(dialog, terminal_.columns(), terminal_.lines()).area;
        return input_.take(dialog, input, area, views_[dialog]);
    }
    for (const assist::FunctionKey& key : assistant_.functionKeys(dialog)) {
        if (key.number != number)
            continue;
        if (!key.working.empty())
            beginWaiting(dialog, key.working);
        return key.press(dialog);
    }
    return {};
}

void Screen::beginWork(const std::string& what) {
    const HWND dialog = frontDialog();
    const std::string worker = assist::workerOf(dialog);
    if (!worker.empty())
        setWorker(worker);
    beginWaiting(dialog, what);
}

void Screen::beginWaiting(HWND dialog, const std::string& what) {
    selections_.begin(dialog);
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
    ++boxes_;
    struct Leave {
        std::vector<Message*>& messages;
        ~Leave() { messages.pop_back(); }
    };
    std::optional<unsigned int> answer;
    {
        const Leave leave{messages_};
        while (!answer) {
            paint();
            const Input input = next();
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

std::string Screen::helpLine(HWND dialog, const Rect& area) const {
    JxwDialogInfo info{};
    JxwControlInfo control{};
    if (JXW_GetDialogInfo(dialog, &info) == 0 || JXW_GetControlInfo(dialog, info.focus, &control) == 0)
        return {};
    const char* row = control.kind == JXW_LISTBOX ? JXW_GetRow(dialog, info.focus, control.selection) : nullptr;
    const Rect list = placeDialog(info, area, {}).of(control);
    if (row != nullptr && !fits(row, rowsOf(list).columns, abilities_.charset))
        return row;
    return assist::helpOn(dialog, info.focus);
}

KeyBar Screen::keyBar(HWND dialog, int columns) {
    return {assistant_.functionKeys(dialog), columns, abilities_.charset};
}

void Screen::paintKeys(Canvas& canvas, const Rect& part) {
    if (messages_.empty()) {
        keyBar(frontDialog(), part.columns).paint(canvas, part);
        return;
    }
    const std::string whole = kBoxKeys;
    const bool hasRoom = static_cast<int>(whole.size()) <= part.columns - 2;
    paintHeading(canvas, part, hasRoom ? whole : kFewBoxKeys);
}

void Screen::paint() {
    abilities_ = terminal_.abilities();
    Canvas canvas(terminal_.columns(), terminal_.lines(), abilities_.charset);
    const HWND front = frontDialog();
    const ScreenParts parts = partsFor(front, canvas.columns(), canvas.lines());
    std::optional<Point> cursor = paintDialogs(canvas, abilities_, parts.area, views_);
    const std::string heading = assist::headingOf(front);
    const std::string named = "odbcadmin - " + heading;
    const bool hasRoom = columnsOf(named, abilities_.charset) <= canvas.columns() - 2;
    paintHeading(canvas, parts.heading, hasRoom ? named : heading);
    const std::string help = !messages_.empty() ? "" : helpLine(front, parts.area);
    paintHelp(canvas, parts.help, told_.empty() ? help : told_);
    for (Message* message : messages_) {
        message->paint(canvas, boxAreaOf(parts));
        cursor.reset();
    }
    paintKeys(canvas, parts.keys);
    terminal_.show(canvas, cursor);
}

}  // namespace jx::terminal
