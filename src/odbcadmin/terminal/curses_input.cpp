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
constexpr unsigned int kRedraw = 12;  // Ctrl-L
constexpr long kDoublePress = 500;    // milliseconds
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

Key keyOfCode(unsigned int code) {
    constexpr std::pair<unsigned int, Key> kKeys[] = {
        {KEY_UP, Key::up},        {KEY_DOWN, Key::down},      {KEY_LEFT, Key::left},
        {KEY_RIGHT, Key::right},  {KEY_HOME, Key::home},      {KEY_END, Key::end},
        {KEY_PPAGE, Key::pageUp}, {KEY_NPAGE, Key::pageDown}, {KEY_BACKSPACE, Key::backspace},
        {KEY_DC, Key::erase},     {KEY_ENTER, Key::enter},    {KEY_BTAB, Key::backTab},
        {KEY_F(1), Key::f1},      {KEY_F(2), Key::f2},        {KEY_RESIZE, Key::repaint}};
    return keyIn(kKeys, code);
}

Key keyOfControl(unsigned int code) {
    constexpr std::pair<unsigned int, Key> kKeys[] = {
        {'\r', Key::enter},         {'\n', Key::enter},           {'\t', Key::tab},
        {'\b', Key::backspace},     {kDelete, Key::backspace},    {ctrl('A'), Key::home},
        {ctrl('E'), Key::end},      {ctrl('K'), Key::eraseToEnd}, {ctrl('U'), Key::eraseToBegin},
        {ctrl('W'), Key::eraseWord}};
    return keyIn(kKeys, code);
}

// The keys that terminals send as "CSI parameter final" or "SS3 final" although their description does not have them.
Key keyOfSequence(char final, unsigned int parameter) {
    constexpr std::pair<char, Key> kFinals[] = {
        {'A', Key::up},  {'B', Key::down},    {'C', Key::right}, {'D', Key::left}, {'H', Key::home},
        {'F', Key::end}, {'Z', Key::backTab}, {'P', Key::f1},    {'Q', Key::f2},   {'M', Key::enter}};
    constexpr std::pair<unsigned int, Key> kNumbers[] = {{1, Key::home},   {3, Key::erase},    {4, Key::end},
                                                         {5, Key::pageUp}, {6, Key::pageDown}, {7, Key::home},
                                                         {8, Key::end},    {11, Key::f1},      {12, Key::f2}};
    return final == '~' ? keyIn(kNumbers, parameter) : keyIn(kFinals, final);
}

bool readKey(bool& isCode, unsigned int& code) {
    wint_t read = 0;
    const int result = get_wch(&read);
    isCode = result == KEY_CODE_YES;
    code = read;
    return result != ERR;
}

}  // namespace

void CursesTerminal::add(Key key) {
    Input input;
    input.key = key;
    input.time = now();
    ready_.push_back(input);
}

// The bytes of a character; none of what the locale does not have.
std::string CursesTerminal::bytesOf(unsigned int code) {
    char bytes[MB_LEN_MAX] = {};
    std::mbstate_t shift{};
    const std::size_t length = std::wcrtomb(bytes, static_cast<wchar_t>(code), &shift);
    return length == static_cast<std::size_t>(-1) ? std::string() : std::string(bytes, length);
}

void CursesTerminal::addCharacter(unsigned int code, bool alt) {
    Input input;
    input.text = bytesOf(code);
    if (input.text.empty())
        return;
    input.key = Key::character;
    input.alt = alt;
    input.time = now();
    ready_.push_back(input);
}

// A sequence that the terminal's description does not have, behind its first two bytes: it is read to its end, so that
// none of it is taken for what the user typed. Without more behind it, it was Alt and that character.
void CursesTerminal::takeSequence(unsigned int second) {
    bool isCode = false;
    unsigned int code = 0;
    unsigned int parameter = 0;
    if (!readKey(isCode, code)) {
        addCharacter(second, /*alt=*/true);
        return;
    }
    constexpr unsigned int kMost = 10000;
    while (!isCode && code >= ' ' && code < '@') {
        if (code >= '0' && code <= '9')
            parameter = std::min(parameter * 10 + (code - '0'), kMost);
        if (!readKey(isCode, code))
            return;
    }
    if (isCode)
        takeKey(isCode, code);
    else if (code == '~' && parameter == kPasteBegins)
        isPasting_ = true;
    else
        add(keyOfSequence(static_cast<char>(code), parameter));
}

// What is pasted is collected up to the sequence that ends it, and becomes one input.
void CursesTerminal::takePasted(bool isCode, unsigned int code) {
    if (isCode)
        return;
    pasted_ += bytesOf(code);
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
        addCharacter(code, /*alt=*/true);
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
        addCharacter(code, /*alt=*/false);
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

// Waits for the terminal or a signal; false when the terminal is gone.
bool CursesTerminal::waitForMore() {
    pollfd sources[] = {{::fileno(input_.get()), POLLIN, 0}, {guard_->wakeDescriptor(), POLLIN, 0}};
    if (::poll(sources, 2, -1) < 0)
        return errno == EINTR;
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
