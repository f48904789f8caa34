#!/bin/bash
# Keys, the wheel and the double click on the list of xodbcadmin; fields; the key bar.
# Usage: keys_test.sh XODBCADMIN LIBJXSETUP
set -eu
program=$1
setup=$2
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
click 60 $((HEIGHT - 125))
remove_chosen
resize_to 560 360
press End
resize_to 560 350
click 60 $((HEIGHT - 125))
remove_chosen
has_source Source079 || fail "the last row does not stand at the end of the list"
finish

echo "-- letters choose a row, in upper or lower case and in other alphabets; the same letter goes on"
begin_with Alpha beta Zeta Überblick übung
type_text Z
expect_removed Zeta
press Home
type_text Ü
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
click 110 $((HEIGHT - 15))
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
echo "all as it should be"
