#!/bin/bash
# Clicks through the windows of xodbcadmin on a display of its own and looks at the files and the exit codes.
# Usage: clicks_test.sh XODBCADMIN LIBJXSETUP
set -eu
export LC_ALL=C.UTF-8
program=$1
setup=$2
HOME=$(mktemp -d)
export HOME
unset ODBCINI ODBCINSTINI DISPLAY
server= running=
trap 'kill $running $server 2>/dev/null || true; rm -rf "$HOME"' EXIT

fail() {
    echo "FAILED: $1" >&2
    exit 1
}

# Waits until a command succeeds; xdotool and files are looked at every few milliseconds.
until_true() {
    local end=$((SECONDS + 10))
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $end ] || fail "waited in vain for: $*"
        read -r -t 0.02 <> <(:) || true
    done
}

# The window of a title, in front; its number in $window.
find_window() {
    until_true xdotool search --onlyvisible --name "$1"
    window=$(xdotool search --onlyvisible --name "$1" | tail -n 1)
}
gone() { ! xdotool search --onlyvisible --name "$1"; }
click() { xdotool mousemove --window "$window" "$1" "$2" click "${3:-1}"; }

# The button of a message box that stands on this place counted from the right.
click_answer() {
    local WIDTH HEIGHT
    eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(WIDTH|HEIGHT)=')"
    click $((WIDTH - 16 - 45 - $1 * 106)) $((HEIGHT - 30))
}

echo "-- without a display"
code=0
"$program" 2>"$HOME/told" || code=$?
[ $code -eq 2 ] || fail "exit code $code"
grep -q 'there is no display' "$HOME/told" || fail "$(cat "$HOME/told")"

exec 7>"$HOME/display"
Xvfb -displayfd 7 -screen 0 900x700x24 -nolisten tcp -noreset >/dev/null 2>&1 &
server=$!
exec 7>&-
until_true test -s "$HOME/display"
DISPLAY=:$(cat "$HOME/display")
export DISPLAY
until_true xdotool getdisplaygeometry

printf '[ODBC Data Sources]\nSales=SQLite3\nStock=SQLite3\n[Sales]\nDriver=/d.so\n[Stock]\nDriver=/d.so\n' >"$HOME/.odbc.ini"
printf '[ODBC Drivers]\nSQLite3=Installed\n[SQLite3]\nDriver=/d.so\nSetup=%s\n' "$setup" >"$HOME/.odbcinst.ini"
"$program" &
running=$!

echo "-- a check box and OK store a setting"
find_window '^Data Sources$'
click 476 174
find_window '^Options$'
click 40 56
click 324 222
until_true grep -qx 'Trace=1' "$HOME/.odbc.ini"
until_true gone '^Options$'

echo "-- the second row is chosen, Delete asks, Yes removes it"
find_window '^Data Sources$'
click 60 60
click 476 78
find_window 'ODBC Admin'
click_answer 1
until_true sh -c '! grep -q Stock "$HOME/.odbc.ini"'
grep -qx 'Sales=SQLite3' "$HOME/.odbc.ini" || fail "Sales is gone"

echo "-- No leaves it"
until_true gone 'ODBC Admin'
find_window '^Data Sources$'
click 60 42
click 476 78
find_window 'ODBC Admin'
click_answer 0
until_true gone 'ODBC Admin'
grep -qx 'Sales=SQLite3' "$HOME/.odbc.ini" || fail "Sales is gone"

echo "-- a word typed on the list presses nothing, End goes to the last row"
find_window '^Data Sources$'
click 60 42
xdotool type --delay 1 'easy deletey'
xdotool key End Page_Down Home
click 476 142
find_window '^ODBC Drivers$'
gone 'ODBC Admin' || fail "a letter asked something"
xdotool key Escape
until_true gone '^ODBC Drivers$'
grep -qx 'Sales=SQLite3' "$HOME/.odbc.ini" || fail "Sales is gone"

echo "-- nested dialogs: Drivers, then a driver by hand, with keys"
find_window '^Data Sources$'
click 476 142
find_window '^ODBC Drivers$'
xdotool key F2
find_window '^Register a Driver$'
click 300 24
xdotool type --delay 1 'Mine'
click 300 56
xdotool type --delay 1 '/none/driver.so'
click 324 174
until_true sh -c '[ "$(xdotool search --onlyvisible --name "^Register a Driver$" | wc -l)" = 2 ]'
xdotool key y
until_true grep -qx 'Driver=/none/driver.so' "$HOME/.odbcinst.ini"
xdotool key Return
until_true gone '^Register a Driver$'

echo "-- Escape closes one after the other"
find_window '^ODBC Drivers$'
click 200 270
xdotool key Escape
until_true gone '^ODBC Drivers$'
find_window '^Data Sources$'
click 200 290
xdotool key Escape
code=0
wait $running || code=$?
running=
[ $code -eq 0 ] || fail "exit code $code"
echo "all as it should be"
