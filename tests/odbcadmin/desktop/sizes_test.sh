#!/bin/bash
# The windows of xodbcadmin on screens of any size and resolution.
# Usage: sizes_test.sh XODBCADMIN LIBJXSETUP
set -eu
program=$1
setup=$2
. "$(dirname "$0")/display.sh"

# The size of the main dialog's window, as "WIDTH HEIGHT".
opened_size() {
    start
    echo "$WIDTH $HEIGHT" >"$HOME.display/size"
    finish
}
expect_size() {
    [ "$(cat "$HOME.display/size")" = "$1 $2" ] || fail "$(cat "$HOME.display/size") instead of $1 $2"
}
expect_on_screen() {
    find_window "$1"
    [ "$X" -ge 0 ] && [ "$Y" -ge 0 ] && [ $((X + WIDTH)) -le "$screenWidth" ] && [ $((Y + HEIGHT)) -le "$screenHeight" ] ||
        fail "$1 is not on the screen: $X $Y $WIDTH $HEIGHT"
}

write_sources Alpha Beta
echo "-- as large as the desktop's factor says, whichever way it says it"
open_display 2600x2000
opened_size
read -r width height <"$HOME.display/size"
[ "$width" = 560 ] || fail "$width is not 560"
GDK_SCALE=2 opened_size
expect_size $((2 * width)) $((2 * height))
QT_SCALE_FACTOR=1.5 opened_size
expect_size $((width * 3 / 2)) $((height * 3 / 2))
GDK_SCALE=nonsense QT_SCALE_FACTOR=-3 opened_size
expect_size "$width" "$height"
open_display 2600x2000 'Xft.dpi: 192'
opened_size
expect_size $((2 * width)) $((2 * height))
GDK_SCALE=2 opened_size
expect_size $((2 * width)) $((2 * height))

echo "-- at 192 dpi everything stands at twice its place"
start
click $((2 * 476)) $((2 * 142))
find_window 'ODBC Drivers'
press Escape
until_true gone 'ODBC Drivers'
find_window 'Data Sources'
finish

echo "-- 200 rows on a large screen: a click far below chooses a row behind the 200th"
open_display 1200x4200
# shellcheck disable=SC2046
write_sources $(seq 0 249)
start
resize_to 800 4000
click 60 $((32 + 230 * 16))
remove_chosen
found=$(comm -13 <(sources | sort) <(seq 0 249 | sort))
[ "$found" -ge 199 ] || fail "the click chose $found"
echo "-- what is right of the list has kept its distance to the edge"
click $((800 - 84)) 78
find_window '.*ODBC Admin'
press Escape
until_true gone '.*ODBC Admin'
find_window 'Data Sources'
finish

echo "-- a long list opens a higher window, but not one higher than the screen"
open_display 1024x600
screenWidth=1024 screenHeight=600
start
[ "$HEIGHT" -gt "$height" ] || fail "the window is $HEIGHT high"
expect_on_screen 'Data Sources'

# Every dialog of the library that can be reached, one inside of the other, then closed again.
walk() {
    expect_on_screen 'Data Sources'
    press alt+o
    expect_on_screen Options
    press Escape
    until_true gone Options
    find_window 'Data Sources'
    press alt+a
    expect_on_screen 'Add Data Source'
    press Home Return
    expect_on_screen 'Data Source Setup'
    press F1
    expect_on_screen Help
    press Escape
    until_true gone Help
    find_window 'Data Source Setup'
    press Escape
    until_true gone 'Data Source Setup'
    until_true gone 'Add Data Source'
    find_window 'Data Sources'
    press alt+r
    expect_on_screen 'ODBC Drivers'
    press alt+a
    expect_on_screen 'Add Driver'
    press Escape
    until_true gone 'Add Driver'
    find_window 'ODBC Drivers'
    press F2
    expect_on_screen 'Register a Driver'
    press Escape
    until_true gone 'Register a Driver'
    find_window 'ODBC Drivers'
    press Escape
    until_true gone 'ODBC Drivers'
    find_window 'Data Sources'
}
echo "-- 1024x600: every dialog is on the screen"
walk
finish

echo "-- 640x480, also at 192 dpi, where the dialogs scroll to what has the focus"
write_sources Alpha Beta
open_display 640x480
screenWidth=640 screenHeight=480
start
walk
finish
open_display 640x480 'Xft.dpi: 192'
start
walk
# OK is off the screen at first. With the focus it stands at the lower edge of what scrolls.
press alt+o
find_window Options
press alt+t Tab Tab Tab Tab
click $((WIDTH - 300)) $((HEIGHT - 180))
until_true gone Options
until_true grep -qx 'Trace=1' "$HOME/.odbc.ini"
find_window 'Data Sources'
finish
echo "all as it should be"
