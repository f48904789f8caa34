# A display of its own for a test of xodbcadmin, and the hands of a user on it. Sourced; the caller has set -eu.
export LC_ALL=C.UTF-8
HOME=$(mktemp -d)
export HOME
unset ODBCINI ODBCINSTINI DISPLAY GDK_SCALE QT_SCALE_FACTOR
server= running=
trap 'kill $running $server 2>/dev/null || true; rm -rf "$HOME" "$HOME.display"' EXIT
export ODBCSYSINI=$HOME.display/etc  # so that no file of this machine counts
mkdir -p "$ODBCSYSINI"  # what the test needs itself is not in the home folder, where nothing but the files may appear

fail() {
    echo "FAILED: $1" >&2
    exit 1
}

# Waits until a command succeeds; windows and files are looked at every few milliseconds.
until_true() {
    local end=$((SECONDS + 10))
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $end ] || fail "waited in vain for: $*"
        read -r -t 0.02 <> <(:) || true
    done
}

# open_display WIDTHxHEIGHT [RESOURCE]: the resource is one line of what a desktop sets, such as "Xft.dpi: 192". Ends the
# display before.
open_display() {
    [ -z "$server" ] || { kill "$server"; wait "$server" || true; }
    : >"$HOME.display/number"
    exec 7>"$HOME.display/number"
    Xvfb -displayfd 7 -screen 0 "$1x24" -nolisten tcp -noreset -fbdir "$HOME.display" >/dev/null 2>&1 &
    server=$!
    exec 7>&-
    until_true test -s "$HOME.display/number"
    DISPLAY=:$(cat "$HOME.display/number")
    export DISPLAY
    until_true xdotool getdisplaygeometry
    [ -z "${2:-}" ] || xprop -root -f RESOURCE_MANAGER 8s -set RESOURCE_MANAGER "$2"
}

# Starts $program with these arguments and finds its first window.
start() {
    "$program" "$@" &
    running=$!
    find_window 'Data Sources'
}

# Closes the program's first window, which must be in front, and looks at the exit code.
finish() {
    local code=0
    xdotool key alt+c
    wait $running || code=$?
    running=
    [ $code -eq "${1:-0}" ] || fail "exit code $code"
}

titled() { xdotool search --onlyvisible --name "^$1 - xodbcadmin\$"; }
gone() { ! titled "$1"; }

# The window of a dialog with that title, in front; its number in $window, its place in $X, $Y, $WIDTH and $HEIGHT. Without
# a window manager the keys go where the mouse is.
find_window() {
    until_true titled "$1"
    window=$(titled "$1" | tail -n 1)
    measure
    xdotool mousemove --window "$window" 2 2
}

# The message box of a dialog with the same title, and not the one before, which is in $window.
find_box() {
    until_true is_box "$1"
    find_window "$1"
}
is_box() {
    local windows
    windows=$(titled "$1")
    [ "$(wc -l <<<"$windows")" = 2 ] && [ "$(tail -n 1 <<<"$windows")" != "$window" ]
}
is_alone() { [ "$(titled "$1" | wc -l)" = 1 ]; }
measure() { eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(X|Y|WIDTH|HEIGHT)=')"; }

click() { xdotool mousemove --window "$window" "$1" "$2" click "${3:-1}"; }
press() { xdotool key --delay 1 "$@"; }
type_text() { xdotool type --delay 1 "$1"; }
# A letter that no key of the display has: it is given one for as long as it is held.
type_foreign() { xdotool type --delay 200 "$1"; }

# The button of a message box that stands on this place counted from the right.
click_answer() { click $((WIDTH - 16 - 45 - $1 * 106)) $((HEIGHT - 30)); }

# Makes the window this large, in the corner of the screen, and waits until it is.
resize_to() {
    xdotool windowmove "$window" 0 0
    xdotool windowsize "$window" "$1" "$2"
    until_true is_size "$1" "$2"
}
is_size() {
    measure
    [ "$WIDTH" = "$1" ] && [ "$HEIGHT" = "$2" ]
}

# The pixels of a line of the screen, as many six-digit colours: colours X Y COUNT. They are read from the display's memory.
colours() {
    local file=$HOME.display/Xvfb_screen0 header map perLine
    header=$(od -An -N4 -tu4 --endian=big "$file")
    map=$(od -An -j76 -N4 -tu4 --endian=big "$file")
    perLine=$(od -An -j48 -N4 -tu4 --endian=big "$file")
    od -An -v -w4 -tx4 -j $((header + map * 12 + $2 * perLine + $1 * 4)) -N $(($3 * 4)) "$file" | cut -c4-
}

sources() { sed -n '/^\[ODBC Data Sources\]$/,/^$/s/=.*//p' "$HOME/.odbc.ini"; }
has_source() { sources | grep -qx "$1"; }
lacks_source() { ! has_source "$1"; }

# write_sources NAME...: data sources of the driver SQLite3, whose setup library is $setup.
write_sources() {
    {
        echo '[ODBC Data Sources]'
        printf '%s=SQLite3\n' "$@"
        echo
        printf '[%s]\nDriver=/d.so\n' "$@"
    } >"$HOME/.odbc.ini"
    printf '[ODBC Drivers]\nSQLite3=Installed\n[SQLite3]\nDriver=/d.so\nSetup=%s\n' "$setup" >"$HOME/.odbcinst.ini"
}

# Removes the data source that is chosen in the list of the main dialog, with its question.
remove_chosen() {
    press alt+e
    find_window '.*ODBC Admin'
    press y
    until_true gone '.*ODBC Admin'
    find_window 'Data Sources'
}
