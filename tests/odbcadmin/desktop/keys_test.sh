#!/bin/bash
# Keys, the wheel and the double click on the list of xodbcadmin; fields; the key bar.
# Usage: keys_test.sh XODBCADMIN LIBJXSETUP CLOSE_WINDOW
set -eu
program=$1
setup=$2
close_window=$3
. "$(dirname "$0")/display.sh"
open_display 900x700
setxkbmap de  # a keyboard with Ü

# Which row is chosen is seen by what a command does to it: it is removed.
begin_with() {
    write_sources "$@"
    start
    click 60 42
}
expect_removed() {
    remove_chosen
    lacks_source "$1" || fail "$1 is still there: $(sources | tr '\n' ' ')"
}

many=$(seq -f 'Source%03g' 0 79)

echo "-- End, Home, PageDown and PageUp move the selection, not only what is seen"
# shellcheck disable=SC2086
begin_with $many
press End
expect_removed Source079
press Home
expect_removed Source000
press Home Next Next Prior Prior
expect_removed Source001
press Home Down Down Up
expect_removed Source003
finish

echo "-- End shows the last row at the end of the list, with no empty room below, also after the window was made lower"
# shellcheck disable=SC2086
begin_with $many
press End
click 60 $((HEIGHT - 130))
remove_chosen
resize_to 560 480
press End
resize_to 560 470
click 60 $((HEIGHT - 130))
remove_chosen
has_source Source079 || fail "the last row does not stand at the end of the list"
finish

# What the user does while the program is stopped arrives all at once.
stop() { kill -STOP "$(pgrep -P $running)"; }
continue_it() { kill -CONT "$(pgrep -P $running)"; }

echo "-- keys that arrive at once are understood one after the other"
begin_with Alpha Beta Gamma Delta
stop
press Home Down Down Up Down Tab
continue_it
press shift+Tab
expect_removed Gamma
finish

echo "-- a question is answered, whatever else is to be done, but not by a key that was pressed before it was there"
begin_with Alpha Beta
stop
press alt+e y Return
"$close_window" "$window"
continue_it
find_window '.*ODBC Admin'
press n
until_true gone '.*ODBC Admin'
[ "$(sources | wc -l)" -eq 2 ] || fail "$(sources)"
code=0
wait $running || code=$?
running=
[ $code -eq 0 ] || fail "exit code $code"

echo "-- letters choose a row, in upper or lower case and in other alphabets; the same letter goes on"
begin_with Alpha beta Zeta Überblick übung
type_text Z
expect_removed Zeta
press Home
type_foreign Ü
expect_removed Überblick
finish
begin_with Berta bert Bernd
press Home b b
expect_removed Bernd
finish

echo "-- / searches inside of the rows until Enter, which presses nothing"
begin_with Alpha Northwind Southwind
press slash
type_text thwi
press Return
expect_removed Northwind
finish

echo "-- a letter that no row begins with presses no button"
begin_with Alpha Beta
type_text 'eyecadro'
press Home
expect_removed Alpha
finish

echo "-- the wheel scrolls, and a click takes the row that is then there"
# shellcheck disable=SC2086
begin_with $many
click 60 60 5
click 60 60 5
click 60 60 5
click 60 42 1
remove_chosen
lacks_source Source000 && fail "the wheel did not scroll"
[ "$(sources | wc -l)" -eq 79 ] || fail "not one source was removed"
finish

echo "-- a double click sets the data source up"
begin_with Alpha Beta
xdotool mousemove --window "$window" 60 60 click --repeat 2 --delay 20 1
find_window 'Data Source Setup'
press Escape
until_true gone 'Data Source Setup'
find_window 'Data Sources'
finish

echo "-- a click below the last row leaves the one that is chosen"
begin_with Alpha Beta
press End
click 60 150
expect_removed Beta
finish

echo "-- the cross in a frame is Cancel, and No in a question"
begin_with Alpha Beta
press alt+o
find_window Options
press alt+t
"$close_window" "$window"
until_true gone Options
! grep -q Trace "$HOME/.odbc.ini" || fail "the options were stored"
find_window 'Data Sources'
press alt+e
find_window '.*ODBC Admin'
"$close_window" "$window"
until_true gone '.*ODBC Admin'
[ "$(sources | wc -l)" -eq 2 ] || fail "$(sources)"
find_window 'Data Sources'
finish

echo "-- in fields Ctrl-C, Ctrl-V, Ctrl-X and Ctrl-Z do what they do elsewhere, and the middle button pastes"
begin_with Alpha
press F2
find_window 'Register a Driver'
click 300 120
type_text Copied
press ctrl+a ctrl+c Tab ctrl+a ctrl+v Home
type_text Wrong
press ctrl+z
click 300 120
press ctrl+a ctrl+x
type_text Middle
xdotool mousemove --window "$window" 170 120 click --repeat 2 --delay 20 1
click 300 184 2
xdotool key alt+n
press ctrl+a
type_text Entered
press Return
find_box 'Register a Driver'
press y
until_true grep -q '^\[Entered\]$' "$HOME/.odbcinst.ini"
sed -n '/^\[Entered\]$/,$p' "$HOME/.odbcinst.ini" >"$HOME.display/entered"
grep -qx 'Driver=.*Copied' "$HOME.display/entered" || fail "$(cat "$HOME.display/entered")"
grep -q '^Setup=.*Middle' "$HOME.display/entered" || fail "$(cat "$HOME.display/entered")"
find_box 'Register a Driver'
press Return
until_true gone 'Register a Driver'
find_window 'Data Sources'
finish

echo "-- Ctrl-C in a message copies the chosen word, else all of it"
begin_with Alpha
press F1
find_window Help
xdotool mousemove --window "$window" 90 28 click --repeat 2 --delay 20 1
press ctrl+c Escape
until_true gone Help
find_window 'Data Sources'
press alt+o
find_window Options
press alt+f ctrl+a ctrl+v Return
until_true grep -qx 'TraceFile=Data' "$HOME/.odbc.ini"
until_true gone Options
find_window 'Data Sources'
press alt+e
find_window '.*ODBC Admin'
press ctrl+c Escape
until_true gone '.*ODBC Admin'
find_window 'Data Sources'
press alt+o
find_window Options
press alt+f ctrl+a ctrl+v Return
until_true grep -qx 'TraceFile=Remove the data source "Alpha"? Its settings are deleted and cannot be restored.' "$HOME/.odbc.ini"
until_true gone Options
find_window 'Data Sources'
finish

echo "-- Tab completes a path, and goes on where there is nothing to complete"
mkdir "$HOME/drivers"
: >"$HOME/drivers/libsample.so"
begin_with Alpha
press F2
find_window 'Register a Driver'
press alt+n
type_text Completed
press Tab ctrl+a
type_text "$HOME/dri"
press Tab
type_text lib
press Tab Tab ctrl+a BackSpace Return
find_box 'Register a Driver'
press y
until_true grep -qx "Driver=$HOME/drivers/libsample.so" "$HOME/.odbcinst.ini"
find_box 'Register a Driver'
press Return
until_true gone 'Register a Driver'
find_window 'Data Sources'
finish

echo "-- text that is pasted presses nothing, on a list and in a question"
begin_with Alpha Beta
press F2
find_window 'Register a Driver'
click 300 120
type_text 'eyey'
press ctrl+a ctrl+c Escape
until_true gone 'Register a Driver'
find_window 'Data Sources'
click 60 42
press ctrl+v shift+Insert
click 60 42 2
press alt+e
find_window '.*ODBC Admin'
press ctrl+v shift+Insert
click 100 30 2
press Escape
until_true gone '.*ODBC Admin'
find_window 'Data Sources'
[ "$(sources | wc -l)" -eq 2 ] || fail "$(sources)"
finish

echo "-- the keys of the key bar can be clicked"
begin_with Alpha
click 90 $((HEIGHT - 15))
find_window 'Register a Driver'
click 30 $((HEIGHT - 15))
find_window Help
press Return
until_true gone Help
find_window 'Register a Driver'
press Escape
until_true gone 'Register a Driver'
find_window 'Data Sources'
finish

echo "-- F4 shows values, F6 copies, F7 renames, F8 leaves the rows that contain a text"
begin_with Alpha Beta
press F4
find_window 'Values of Alpha'
press Escape
until_true gone 'Values of Alpha'
find_window 'Data Sources'
press F6
find_window 'Copy a Data Source'
press ctrl+a
type_text Gamma
press Return
until_true has_source Gamma
until_true gone 'Copy a Data Source'
find_window 'Data Sources'
press F7
find_window 'Rename a Data Source'
press ctrl+a
type_text Delta
press Return
until_true has_source Delta
has_source Gamma && fail "it was copied, not renamed"
until_true gone 'Rename a Data Source'
find_window 'Data Sources'
press F8
find_window Filter
type_text bet
press Return
until_true gone Filter
find_window 'Data Sources'
press Home
expect_removed Beta
finish
echo "all as it should be"
