// Keys, mouse and signals from a terminal, by way of ncurses.
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cwchar>
#include <utility>
#include <vector>

#include "odbcadmin/terminal/curses_terminal.h"

// ncurses defines short names for everything; it comes last.
#include "odbcadmin/terminal/curses.h"

namespace jx::terminal {

namespace {

constexpr unsigned int kEscape = 27;
constexpr unsigned int kDelete = 127;
constexpr unsigned int kRedraw = 12;       // Ctrl-L
constexpr unsigned int kFirstPart = 0x80;  // bytes of characters beyond ASCII
constexpr long kDoublePress = 500;         // milliseconds
constexpr unsigned int kPasteBegins = 200;
constexpr std::string_view kPasteEnd = "\033[201~";

long now() {
    using namespace std::chrono;
    return static_cast<long>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

constexpr unsigned int ctrl(char letter) {
    return static_cast<unsigned int>(letter) & 0x1FU;
}

template <class Code, std::size_t Size>
Key keyIn(const std::pair<Code, Key> (&table)[Size], Code code) {
    for (const auto& [each, key] : table)
        if (each == code)
            return key;
    return Key::none;
}

// Keys that only some descriptions have, and that have no number of their own.
Key keyOfName(unsigned int code) {
    const char* name = keyname(static_cast<int>(code));
    if (name == nullptr)
        return Key::none;
    const std::string_view text = name;
    return text == "kLFT5" ? Key::wordLeft : text == "kRIT5" ? Key::wordRight : Key::none;
}

Key keyOfCode(unsigned int code) {
    constexpr std::pair<unsigned int, Key> kKeys[] = {
        {KEY_UP, Key::up},         {KEY_DOWN, Key::down},      {KEY_LEFT, Key::left},
        {KEY_RIGHT, Key::right},   {KEY_HOME, Key::home},      {KEY_END, Key::end},
        {KEY_PPAGE, Key::pageUp},  {KEY_NPAGE, Key::pageDown}, {KEY_BACKSPACE, Key::backspace},
        {KEY_DC, Key::erase},      {KEY_ENTER, Key::enter},    {KEY_BTAB, Key::backTab},
        {KEY_RESIZE, Key::repaint}};
    constexpr unsigned int kLastFunctionKey = 12;
    if (code >= KEY_F(1) && code <= KEY_F(kLastFunctionKey))
        return functionKey(static_cast<int>(code - KEY_F0));
    const Key key = keyIn(kKeys, code);
    return key != Key::none ? key : keyOfName(code);
}

Key keyOfControl(unsigned int code) {
    constexpr std::pair<unsigned int, Key> kKeys[] = {
        {'\r', Key::enter},          {'\n', Key::enter},           {'\t', Key::tab},
        {'\b', Key::backspace},      {kDelete, Key::backspace},    {ctrl('A'), Key::home},
        {ctrl('E'), Key::end},       {ctrl('B'), Key::left},       {ctrl('F'), Key::right},
        {ctrl('P'), Key::up},        {ctrl('N'), Key::down},       {ctrl('D'), Key::erase},
        {ctrl('W'), Key::eraseWord}, {ctrl('K'), Key::eraseToEnd}, {ctrl('U'), Key::eraseToBegin},
        {ctrl('_'), Key::undo}};
    return keyIn(kKeys, code);
}

// The keys that terminals send as "CSI parameter final" or "SS3 final" although their description does not have them.
Key keyOfSequence(char final, unsigned int parameter, unsigned int modifier) {
    constexpr unsigned int kCtrl = 5;
    if (modifier == kCtrl && (final == 'C' || final == 'D'))
        return final == 'C' ? Key::wordRight : Key::wordLeft;
    constexpr std::pair<char, Key> kFinals[] = {{'A', Key::up},      {'B', Key::down}, {'C', Key::right},
                                                {'D', Key::left},    {'H', Key::home}, {'F', Key::end},
                                                {'Z', Key::backTab}, {'P', Key::f1},   {'Q', Key::f2},
                                                {'R', Key::f3},      {'S', Key::f4},   {'M', Key::enter}};
    constexpr std::pair<unsigned int, Key> kNumbers[] = {
        {1, Key::home}, {3, Key::erase}, {4, Key::end},  {5, Key::pageUp}, {6, Key::pageDown},
        {7, Key::home}, {8, Key::end},   {11, Key::f1},  {12, Key::f2},    {13, Key::f3},
        {14, Key::f4},  {15, Key::f5},   {17, Key::f6},  {18, Key::f7},    {19, Key::f8},
        {20, Key::f9},  {21, Key::f10},  {23, Key::f11}, {24, Key::f12}};
    return final == '~' ? keyIn(kNumbers, parameter) : keyIn(kFinals, final);
}

// A key of ncurses, or a byte: characters are put together here, since ncurses forgets the begin of one whose rest
// comes late.
bool readKey(bool& isCode, unsigned int& code) {
    const int read = getch();
    if (read == ERR)
        return false;
    isCode = read >= KEY_CODE_YES;
    code = static_cast<unsigned int>(read);
    return true;
}

}  // namespace

void CursesTerminal::add(Key key) {
    Input input;
    input.key = key;
    input.time = now();
    ready_.push_back(input);
}

// A byte of a character. What the locale does not have is dropped.
void CursesTerminal::addByte(unsigned int code, bool alt) {
    unfinished_ += static_cast<char>(code);
    isUnfinishedAlt_ = isUnfinishedAlt_ || alt;
    std::mbstate_t shift{};
    const std::size_t length = std::mbrtowc(nullptr, unfinished_.data(), unfinished_.size(), &shift);
    if (length == static_cast<std::size_t>(-2))
        return;
    Input input;
    input.text = std::exchange(unfinished_, {});
    input.alt = std::exchange(isUnfinishedAlt_, false);
    if (length != static_cast<std::size_t>(-1)) {
        input.key = Key::character;
        input.time = now();
        ready_.push_back(input);
    } else if (input.text.size() > 1) {
        addByte(code, /*alt=*/false);
    }
}

// A key that belongs to a sequence: on a slow line it may come as late as ncurses itself would wait for it.
bool CursesTerminal::readRest(bool& isCode, unsigned int& code) const {
    if (readKey(isCode, code))
        return true;
    pollfd source{::fileno(input_.get()), POLLIN, 0};
    return ::poll(&source, 1, get_escdelay()) > 0 && readKey(isCode, code);
}

// A sequence that the terminal's description does not have, behind its first two bytes: it is read to its end, so that
// none of it is taken for what the user typed. Without more behind it, it was Alt and that character.
void CursesTerminal::takeSequence(unsigned int second) {
    bool isCode = false;
    unsigned int code = 0;
    std::vector<unsigned int> parameters(1);
    if (!readRest(isCode, code)) {
        addByte(second, /*alt=*/true);
        return;
    }
    constexpr unsigned int kMost = 10000;
    while (!isCode && code >= ' ' && code < '@') {
        if (code >= '0' && code <= '9')
            parameters.back() = std::min(parameters.back() * 10 + (code - '0'), kMost);
        else if (code == ';')
            parameters.push_back(0);
        if (!readRest(isCode, code))
            return;
    }
    const unsigned int parameter = parameters.front();
    const unsigned int modifier = parameters.size() > 1 ? parameters[1] : 0;
    if (isCode)
        takeKey(isCode, code);
    else if (code == '~' && parameter == kPasteBegins)
        isPasting_ = true;
    else
        add(keyOfSequence(static_cast<char>(code), parameter, modifier));
}

// What is pasted is collected up to the sequence that ends it, and becomes one input.
void CursesTerminal::takePasted(bool isCode, unsigned int code) {
    if (isCode)
        return;
    pasted_ += static_cast<char>(code);
    if (!pasted_.ends_with(kPasteEnd))
        return;
    pasted_.resize(pasted_.size() - kPasteEnd.size());
    isPasting_ = false;
    add(Key::paste);
    ready_.back().text = std::exchange(pasted_, {});
}

// Alt arrives as an escape and the character.
void CursesTerminal::takeEscape() {
    bool isCode = false;
    unsigned int code = 0;
    if (!readKey(isCode, code)) {
        add(Key::escape);
    } else if (!isCode && (code == '[' || code == 'O')) {
        takeSequence(code);
    } else if (!isCode && code >= ' ' && code != kDelete) {
        addByte(code, /*alt=*/true);
    } else {
        add(Key::escape);
        takeKey(isCode, code);
    }
}

void CursesTerminal::pressedAt(Point place) {
    Input input;
    input.time = now();
    input.place = place;
    const bool isSecond =
        lastPress_.key == Key::press && lastPress_.place == place && input.time - lastPress_.time <= kDoublePress;
    input.key = isSecond ? Key::doublePress : Key::press;
    lastPress_ = input;
    ready_.push_back(input);
}

// What the mouse did since the last key arrives as one key, the newest event first.
void CursesTerminal::takeMouse() {
    std::vector<MEVENT> events;
    MEVENT event{};
    while (getmouse(&event) == OK)
        events.push_back(event);
    for (auto each = events.rbegin(); each != events.rend(); ++each) {
        const Point place{each->x, each->y};
        if ((each->bstate & BUTTON1_PRESSED) != 0) {
            pressedAt(place);
        } else if ((each->bstate & (BUTTON4_PRESSED | BUTTON5_PRESSED)) != 0) {
            add((each->bstate & BUTTON4_PRESSED) != 0 ? Key::wheelUp : Key::wheelDown);
            ready_.back().place = place;
        }
    }
}

void CursesTerminal::takeKey(bool isCode, unsigned int code) {
    if (isCode || code < kFirstPart)
        unfinished_.clear();
    if (isPasting_) {
        takePasted(isCode, code);
    } else if (isCode && code == KEY_MOUSE) {
        takeMouse();
    } else if (isCode) {
        add(keyOfCode(code));
    } else if (code == kEscape) {
        takeEscape();
    } else if (code == kRedraw) {
        clearok(curscr, TRUE);
        add(Key::repaint);
    } else if (code < ' ' || code == kDelete) {
        add(keyOfControl(code));
    } else {
        addByte(code, /*alt=*/false);
    }
}

// Takes what has come; false when there is nothing.
bool CursesTerminal::takeKeys() {
    bool isCode = false;
    unsigned int code = 0;
    if (!readKey(isCode, code))
        return false;
    takeKey(isCode, code);
    return true;
}

void CursesTerminal::takeSignals() {
    if (!guard_->takeWake())
        return;
    if (guard_->takeStopped()) {
        endwin();
        setPasteBrackets(/*on=*/true);
        clearok(curscr, TRUE);
    }
    winsize size{};
    if (::ioctl(::fileno(output_.get()), TIOCGWINSZ, &size) == 0 && size.ws_row > 0 && size.ws_col > 0 &&
        (size.ws_row != getmaxy(stdscr) || size.ws_col != getmaxx(stdscr)))
        resizeterm(size.ws_row, size.ws_col);
    add(Key::repaint);
}

// Waits for the terminal or a signal, at most a second: then the screen may look whether files have changed. False when
// the terminal is gone.
bool CursesTerminal::waitForMore() {
    pollfd sources[] = {{::fileno(input_.get()), POLLIN, 0}, {guard_->wakeDescriptor(), POLLIN, 0}};
    constexpr int kGlance = 1000;
    const int ready = ::poll(sources, 2, kGlance);
    if (ready < 0)
        return errno == EINTR;
    if (ready == 0) {
        add(Key::none);
        return true;
    }
    if (sources[1].revents != 0)
        takeSignals();
    if ((sources[0].revents & POLLIN) == 0)
        return sources[0].revents == 0;
    int waiting = 0;
    if (::ioctl(sources[0].fd, FIONREAD, &waiting) != 0)
        return (sources[0].revents & (POLLHUP | POLLERR)) == 0;
    return waiting > 0;
}

void CursesTerminal::beforeWork() {
    while (takeKeys()) {
    }
}

Input CursesTerminal::next() {
    while (ready_.empty()) {
        if (!takeKeys() && !waitForMore() && ready_.empty())
            add(Key::gone);
    }
    Input input = ready_.front();
    ready_.pop_front();
    return input;
}

}  // namespace jx::terminal
