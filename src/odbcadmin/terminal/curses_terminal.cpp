// Opening, painting and closing with ncurses.
#include "odbcadmin/terminal/curses_terminal.h"

#include <fcntl.h>
#include <langinfo.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

// ncurses defines short names for everything; it comes last.
#include "odbcadmin/terminal/curses.h"
// clang-format off
#include <term.h>
// clang-format on
// term.h names every capability; these names are used here for other things.
#undef lines
#undef columns

namespace jx::terminal {

namespace {

constexpr short kBarPair = 1, kSelectedPair = 2, kAlarmPair = 3;

// How long the next byte of an escape sequence may take to arrive, in milliseconds: slow lines tear them apart.
constexpr int kEscapeDelay = 300;

FILE* openCopy(int descriptor, const char* mode) {
    const int copy = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 3);
    return copy >= 0 ? ::fdopen(copy, mode) : nullptr;
}

bool can(const char* capability) {
    const char* text = tigetstr(const_cast<char*>(capability));
    // NOLINTNEXTLINE(performance-no-int-to-ptr): what tigetstr answers for a name that is not a text
    return text != nullptr && text != reinterpret_cast<const char*>(-1);
}

std::string collected;

int collect(int byte) {
    collected.push_back(static_cast<char>(byte));
    return byte;
}

// A capability's bytes without the pauses of terminals of old.
void addCapability(std::string& bytes, const char* capability) {
    if (!can(capability))
        return;
    collected.clear();
    tputs(tigetstr(const_cast<char*>(capability)), 1, collect);
    bytes += collected;
}

// newterm does not clean up behind itself for a terminal that it does not know.
bool isKnown(const char* kind, int descriptor) {
    int error = 0;
    if (setupterm(const_cast<char*>(kind), descriptor, &error) != OK)
        return false;
    del_curterm(cur_term);
    return true;
}

unsigned long attributeOf(short pair) {
    return static_cast<unsigned long>(COLOR_PAIR(pair));
}

// Ncurses ignores the stop signal while it paints; held back it comes afterwards instead of never.
class StopLater {
public:
    StopLater() {
        sigset_t stop;
        sigemptyset(&stop);
        sigaddset(&stop, SIGTSTP);
        ::sigprocmask(SIG_BLOCK, &stop, &before_);
    }
    ~StopLater() { ::sigprocmask(SIG_SETMASK, &before_, nullptr); }
    StopLater(const StopLater&) = delete;
    StopLater& operator=(const StopLater&) = delete;

private:
    sigset_t before_{};
};

bool wantsColors() {
    const char* refused = std::getenv("NO_COLOR");
    return refused == nullptr || *refused == '\0';
}

}  // namespace

CursesTerminal::CursesTerminal(int input, int output, const char* kind)
    : input_(openCopy(input, "r")), output_(openCopy(output, "w")) {
    if (input_ == nullptr || output_ == nullptr)
        return;
    if (!isKnown(kind, output))
        return;
    ::tcgetattr(output, &before_);
    if (std::getenv("ESCDELAY") == nullptr)
        set_escdelay(kEscapeDelay);
    screen_ = newterm(const_cast<char*>(kind), output_.get(), input_.get());
    if (screen_ == nullptr)
        return;
    setUp();
    guard_ = std::make_unique<Guard>(::fileno(output_.get()), before_, farewell());
}

CursesTerminal::~CursesTerminal() {
    if (screen_ == nullptr)
        return;
    endwin();
    setPasteBrackets(/*on=*/false);
    guard_.reset();
    delscreen(static_cast<SCREEN*>(screen_));
}

void CursesTerminal::setUp() {
    cbreak();
    noecho();
    nonl();
    intrflush(stdscr, FALSE);
    keypad(stdscr, TRUE);
    nodelay(stdscr, TRUE);
    leaveok(stdscr, FALSE);
    abilities_.charset = std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0 ? Charset::utf8 : Charset::ascii;
    abilities_.dim = can("dim");
    abilities_.underline = can("smul");
    chooseColors();
    mousemask(BUTTON1_PRESSED | BUTTON4_PRESSED | BUTTON5_PRESSED, nullptr);
    setPasteBrackets(/*on=*/true);
    mouseinterval(0);  // presses are told at once and counted here
    hasMouse_ = can("kmous");
}

void CursesTerminal::chooseColors() {
    hasColors_ = wantsColors() && has_colors() && start_color() == OK && COLORS >= 8;
    if (!hasColors_)
        return;
    // Texts keep the colours the user chose for the terminal, light or dark.
    use_default_colors();
    init_pair(kBarPair, COLOR_WHITE, COLOR_BLUE);
    init_pair(kSelectedPair, COLOR_BLACK, COLOR_CYAN);
    init_pair(kAlarmPair, COLOR_RED, -1);
}

unsigned long CursesTerminal::attributesOf(Look look) const {
    switch (look) {
        case Look::bar:
            return hasColors_ ? attributeOf(kBarPair) : A_REVERSE;
        case Look::barKey:
            return A_BOLD | (hasColors_ ? attributeOf(kBarPair) : A_REVERSE);
        case Look::title:
            return A_BOLD;
        case Look::key:
            return abilities_.underline ? A_UNDERLINE : A_BOLD;
        case Look::field:
            return abilities_.underline ? A_UNDERLINE : A_NORMAL;
        case Look::selected:
            return hasColors_ ? attributeOf(kSelectedPair) : A_BOLD | A_UNDERLINE;
        case Look::focus:
            return A_REVERSE;
        case Look::grey:
            return A_DIM;
        case Look::alarm:
            return A_BOLD | (hasColors_ ? attributeOf(kAlarmPair) : A_NORMAL);
        case Look::plain:
            break;
    }
    return A_NORMAL;
}

// With its brackets pasted text is known from what is typed. Terminals that do not have them pass over the request.
void CursesTerminal::setPasteBrackets(bool on) {
    const std::string_view request = on ? "\033[?2004h" : "\033[?2004l";
    hasPasteBrackets_ = can("kmous");
    if (hasPasteBrackets_ && ::write(::fileno(output_.get()), request.data(), request.size()) < 0)
        hasPasteBrackets_ = false;
}

// The picture is not trusted either: a library may have written to the terminal.
void CursesTerminal::afterWork() {
    flushinp();
    reset_prog_mode();
    setPasteBrackets(/*on=*/true);
    clearok(curscr, TRUE);
}

std::string CursesTerminal::farewell() const {
    std::string bytes;
    if (hasPasteBrackets_)
        bytes += "\033[?2004l";
    if (hasMouse_)
        bytes += "\033[?1000l\033[?1006l";
    for (const char* capability : {"rmkx", "sgr0", "op", "cnorm", "rmcup"})
        addCapability(bytes, capability);
    // A terminal without a second picture goes on below this one.
    if (!can("rmcup"))
        bytes += "\r\n";
    return bytes;
}

Abilities CursesTerminal::abilities() const {
    return abilities_;
}

int CursesTerminal::columns() const {
    return getmaxx(stdscr);
}

int CursesTerminal::lines() const {
    return getmaxy(stdscr);
}

void CursesTerminal::putLine(const Canvas& canvas, int line) {
    int column = 0;
    while (column < canvas.columns()) {
        const int begin = column;
        const Look look = canvas.at({column, line}).look;
        std::string text;
        for (; column < canvas.columns() && canvas.at({column, line}).look == look; ++column)
            text += canvas.at({column, line}).text;
        attrset(static_cast<int>(attributesOf(look)));
        mvaddstr(line, begin, text.c_str());
    }
}

void CursesTerminal::show(const Canvas& canvas, std::optional<Point> cursor) {
    erase();
    for (int line = 0; line < canvas.lines(); ++line)
        putLine(canvas, line);
    attrset(A_NORMAL);
    curs_set(cursor ? 1 : 0);
    const Point place = cursor.value_or(Point{0, 0});
    move(place.line, place.column);
    const StopLater whilePainting;
    refresh();
}

}  // namespace jx::terminal
