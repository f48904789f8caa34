#!/bin/bash
# Clicks through the windows of xodbcadmin and looks at the files and the exit codes; and its command line.
# Usage: clicks_test.sh XODBCADMIN LIBJXSETUP
set -eu
program=$1
setup=$2
. "$(dirname "$0")/display.sh"
told=$HOME.display/told

# Runs the program, which ends by itself: expect_end CODE TEXT ARGUMENT...
expect_end() {
    local code=0 wanted=$1 text=$2
    shift 2
    "$program" "$@" >"$told" 2>&1 || code=$?
    [ $code -eq "$wanted" ] || fail "exit code $code of $*"
    grep -q -- "$text" "$told" || fail "$* printed $(cat "$told")"
}

echo "-- without a display, and without a need for one"
expect_end 2 'there is no display'
expect_end 0 '^Usage: xodbcadmin .*--home DIR' --help
expect_end 0 '^xodbcadmin [0-9]' --version
expect_end 2 'there is no option --hom3' --hom3
expect_end 2 '--home needs a folder' --home
expect_end 2 '--home needs a folder' --home ''
expect_end 2 'no argument such as Sales' Sales
expect_end 7 'Cannot use /nowhere/at/all as home: No such file' --home /nowhere/at/all

open_display 900x700
write_sources Sales Stock
start

echo "-- titles and windows carry the program's name"
xprop -id "$window" WM_CLASS | grep -q '"xodbcadmin"' || fail "$(xprop -id "$window" WM_CLASS)"

echo "-- access keys are underlined, in labels too"
underlined=
for line in $(seq $((Y + 20)) $((Y + 32))); do
    [ "$(colours $((X + 19)) "$line" 7 | sort -u | tr '\n' ' ')" != "000000 " ] || underlined=yes
done
[ -n "$underlined" ] || fail "there is no line below the D of Data sources"

echo "-- a check box and OK store a setting"
click 476 174
find_window Options
click 40 56
click 324 222
until_true grep -qx 'Trace=1' "$HOME/.odbc.ini"
until_true gone Options

echo "-- the second row is chosen, Delete asks, Yes removes it"
find_window 'Data Sources'
click 60 60
click 476 78
find_window '.*ODBC Admin'
click_answer 1
until_true lacks_source Stock
has_source Sales || fail "Sales is gone"

echo "-- No leaves it"
until_true gone '.*ODBC Admin'
find_window 'Data Sources'
click 60 42
click 476 78
find_window '.*ODBC Admin'
click_answer 0
until_true gone '.*ODBC Admin'
has_source Sales || fail "Sales is gone"

echo "-- nested dialogs: Drivers, then a driver by hand, with keys"
find_window 'Data Sources'
click 476 142
find_window 'ODBC Drivers'
press F2
find_window 'Register a Driver'
click 300 120
type_text Mine
click 300 152
type_text /none/driver.so
click 324 254
find_box 'Register a Driver'
press y
until_true grep -qx 'Driver=/none/driver.so' "$HOME/.odbcinst.ini"
find_box 'Register a Driver'
press Return
until_true gone 'Register a Driver'

echo "-- Escape closes one after the other"
find_window 'ODBC Drivers'
press Escape
until_true gone 'ODBC Drivers'
find_window 'Data Sources'
press Escape
code=0
wait $running || code=$?
running=
[ $code -eq 0 ] || fail "exit code $code"

echo "-- colours are those of the desktop: white on black, in the list too"
xprop -root -f RESOURCE_MANAGER 8s -set RESOURCE_MANAGER "*background: black
*foreground: white"
start
[ "$(colours $((X + 5)) $((Y + 5)) 1)$(colours $((X + 300)) $((Y + 200)) 1)" = 000000000000 ] || fail "the background is not black"
for line in $(seq $((Y + 36)) $((Y + 48))); do colours $((X + 18)) "$line" 100; done | grep -q ffffff || fail "nothing is white"
[ "$(colours $((X + 16)) $((Y + 150)) 1)" = ffffff ] || fail "the list has no edge that can be seen"
finish
xprop -root -remove RESOURCE_MANAGER

echo "-- --home takes the files of another folder"
mkdir "$HOME/other"
mv "$HOME/.odbcinst.ini" "$HOME/other"
printf '[ODBC Data Sources]\nElsewhere=SQLite3\n[Elsewhere]\nDriver=/d.so\n' >"$HOME/other/.odbc.ini"
ODBCINI=$HOME/.odbc.ini start --home "$HOME/other"
press Home
remove_chosen
finish
! grep -q Elsewhere "$HOME/other/.odbc.ini" || fail "$(cat "$HOME/other/.odbc.ini")"
has_source Sales || fail "Sales is gone"

echo "-- nothing but the files is left in the home folder"
[ "$(cd "$HOME" && find . -mindepth 1 | sort | tr '\n' ' ')" = './.odbc.ini ./other ./other/.odbc.ini ./other/.odbcinst.ini ' ] ||
    fail "$(find "$HOME")"
echo "all as it should be"
